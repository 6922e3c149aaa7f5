// SPDX-License-Identifier: GPL-3.0-or-later
#include "onde.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace onde {

namespace {

// A two-pole band-pass filter (the usual biquad of the audio cookbook).
class PassaBanda {
public:
    PassaBanda(double centro, double q)
    {
        const double w = 2 * M_PI * centro / frequenza;
        const double alfa = std::sin(w) / (2 * q);
        const double a0 = 1 + alfa;
        b0_ = alfa / a0;
        b2_ = -alfa / a0;
        a1_ = -2 * std::cos(w) / a0;
        a2_ = (1 - alfa) / a0;
    }
    double operator()(double x)
    {
        const double y = b0_ * x + b2_ * x2_ - a1_ * y1_ - a2_ * y2_;
        x2_ = x1_;
        x1_ = x;
        y2_ = y1_;
        y1_ = y;
        return y;
    }

private:
    double b0_, b2_, a1_, a2_;
    double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

// White noise from a fixed seed, so that the sounds come out the same each time.
class Rumore {
public:
    double operator()()
    {
        stato_ = stato_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return double(stato_ >> 40) / double(1ULL << 23) - 1.0;
    }

private:
    std::uint64_t stato_ = 0x2545F4914F6CDD1DULL;
};

void normalizza(std::vector<float>& v, double picco)
{
    float massimo = 0;
    for (float x : v) massimo = std::max(massimo, std::abs(x));
    if (massimo > 0)
        for (float& x : v) x = float(x * picco / massimo);
}

// Fades the last `ms` milliseconds to silence, so the sound ends without a click.
void chiudi(std::vector<float>& v, double ms)
{
    const std::size_t n = std::min(v.size(), std::size_t(ms * frequenza / 1000));
    for (std::size_t i = 0; i < n; ++i) v[v.size() - n + i] *= float(1.0 - double(i + 1) / n);
}

}  // namespace

std::vector<float> suono_carta()
{
    // A soft slap of paper on felt: a band of noise with a quick attack and a
    // fast decay, a smaller second touch as the card settles, and a faint thud.
    const int n = frequenza * 110 / 1000;
    std::vector<float> v(std::size_t(n), 0.f);
    Rumore rumore;
    PassaBanda carta(2200, 0.8), feltro(900, 0.7);
    for (int i = 0; i < n; ++i) {
        const double t = double(i) / frequenza;
        const double colpo = std::min(1.0, t / 0.0015) * std::exp(-t / 0.016);
        const double t2 = t - 0.028;
        const double assestamento = t2 > 0 ? 0.35 * std::min(1.0, t2 / 0.002) * std::exp(-t2 / 0.012) : 0.0;
        const double r = rumore();
        const double fruscio = carta(r) * (colpo + assestamento) + 0.6 * feltro(r) * colpo;
        const double tonfo = 0.25 * std::sin(2 * M_PI * 130 * t) * std::exp(-t / 0.012) * std::min(1.0, t / 0.002);
        v[std::size_t(i)] = float(fruscio + tonfo);
    }
    normalizza(v, 0.7);
    chiudi(v, 12);
    return v;
}

std::vector<float> suono_errore()
{
    // Two low, soft, falling tones, like a muffled wooden "uh-oh".
    const int n = frequenza * 260 / 1000;
    std::vector<float> v(std::size_t(n), 0.f);
    struct Tono {
        double inizio, durata, frequenza;
    };
    for (const Tono& tono : {Tono{0.0, 0.115, 330.0}, Tono{0.130, 0.130, 262.0}}) {
        for (int i = 0; i < n; ++i) {
            const double t = double(i) / frequenza - tono.inizio;
            if (t < 0 || t > tono.durata) continue;
            const double attacco = std::min(1.0, t / 0.006);
            const double rilascio = std::min(1.0, (tono.durata - t) / 0.02);
            const double inviluppo = attacco * rilascio * std::exp(-t / 0.09);
            const double w = 2 * M_PI * tono.frequenza * t;
            v[std::size_t(i)] += float(inviluppo * (std::sin(w) + 0.35 * std::sin(2 * w) + 0.12 * std::sin(3 * w)));
        }
    }
    normalizza(v, 0.45);
    chiudi(v, 8);
    return v;
}

bool scrivi_wav(const std::string& percorso, const std::vector<float>& campioni, std::string& errore)
{
    SF_INFO info{};
    info.samplerate = frequenza;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* file = sf_open(percorso.c_str(), SFM_WRITE, &info);
    if (!file) {
        errore = "cannot write " + percorso + ": " + sf_strerror(nullptr);
        return false;
    }
    const sf_count_t scritti = sf_writef_float(file, campioni.data(), sf_count_t(campioni.size()));
    sf_close(file);
    if (scritti != sf_count_t(campioni.size())) {
        errore = "short write to " + percorso;
        return false;
    }
    return true;
}

}  // namespace onde
