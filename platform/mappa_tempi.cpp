// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mappa_tempi.h"

#include <algorithm>
#include <cmath>

double MappaTempi::ms_del_tick(long tick) const
{
    if (tick_al_secondo_smpte > 0) return tick * 1000.0 / tick_al_secondo_smpte;
    double ms = 0;
    for (std::size_t i = 0; i < cambi.size(); ++i) {
        const long fine = i + 1 < cambi.size() ? std::min(tick, cambi[i + 1].first) : tick;
        if (fine <= cambi[i].first) break;
        ms += (fine - cambi[i].first) * cambi[i].second / 1000.0 / divisione;
    }
    return ms;
}

long MappaTempi::tick_del_ms(double ms) const
{
    if (tick_al_secondo_smpte > 0) return std::lround(ms * tick_al_secondo_smpte / 1000.0);
    double inizio_ms = 0;
    for (std::size_t i = 0; i < cambi.size(); ++i) {
        const double ms_per_tick = cambi[i].second / 1000.0 / divisione;
        const bool ultimo = i + 1 == cambi.size();
        const double fine_ms = ultimo ? 0 : inizio_ms + (cambi[i + 1].first - cambi[i].first) * ms_per_tick;
        if (ultimo || ms < fine_ms) return cambi[i].first + std::lround((ms - inizio_ms) / ms_per_tick);
        inizio_ms = fine_ms;
    }
    return 0;
}

std::optional<MappaTempi> leggi_mappa_tempi(const QByteArray& dati)
{
    const auto* b = reinterpret_cast<const unsigned char*>(dati.constData());
    const long n = dati.size();
    auto u32 = [&](long i) { return (long(b[i]) << 24) | (long(b[i + 1]) << 16) | (long(b[i + 2]) << 8) | b[i + 3]; };
    auto u16 = [&](long i) { return (long(b[i]) << 8) | b[i + 1]; };
    if (n < 14 || dati.left(4) != "MThd" || u32(4) < 6) return std::nullopt;

    MappaTempi m;
    const long tracce = u16(10);
    const long divisione = u16(12);
    if (divisione & 0x8000) {
        m.tick_al_secondo_smpte = double(-static_cast<signed char>(divisione >> 8)) * (divisione & 0xff);
    } else if (divisione > 0) {
        m.divisione = divisione;
    } else {
        return std::nullopt;
    }

    long trovate = 0;
    for (long p = 8 + u32(4); p + 8 <= n && trovate < tracce;) {
        const long lunghezza = u32(p + 4);
        const long inizio = p + 8, fine = inizio + lunghezza;
        if (fine > n) return std::nullopt;
        const bool traccia = dati.mid(p, 4) == "MTrk";
        p = fine;
        if (!traccia) continue;
        ++trovate;

        long q = inizio, tick = 0;
        int stato = 0;
        auto variabile = [&](long& valore) {
            valore = 0;
            for (int i = 0; i < 4 && q < fine; ++i) {
                valore = (valore << 7) | (b[q] & 0x7f);
                if (!(b[q++] & 0x80)) return true;
            }
            return false;
        };
        while (q < fine) {
            long delta = 0, l = 0;
            if (!variabile(delta) || q >= fine) return std::nullopt;
            tick += delta;
            const int byte = b[q];
            if (byte == 0xff) {
                if (q + 2 > fine) return std::nullopt;
                const int tipo = b[q + 1];
                q += 2;
                if (!variabile(l) || q + l > fine) return std::nullopt;
                if (tipo == 0x51 && l == 3) {
                    const long us = (long(b[q]) << 16) | (long(b[q + 1]) << 8) | b[q + 2];
                    if (us > 0) m.cambi.emplace_back(tick, us);
                }
                q += l;
            } else if (byte == 0xf0 || byte == 0xf7) {
                ++q;
                if (!variabile(l) || q + l > fine) return std::nullopt;
                q += l;
            } else {
                if (byte & 0x80) {
                    stato = byte;
                    ++q;
                } else if (!stato) {
                    return std::nullopt;
                }
                const int tipo = stato & 0xf0;
                q += tipo == 0xc0 || tipo == 0xd0 ? 1 : 2;
                if (q > fine) return std::nullopt;
            }
        }
        m.ultimo_tick = std::max(m.ultimo_tick, tick);
    }
    if (trovate == 0) return std::nullopt;
    // A tempo set at tick 0 replaces the default; later ones follow in order.
    std::stable_sort(m.cambi.begin() + 1, m.cambi.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    if (m.cambi.size() > 1 && m.cambi[1].first == 0) m.cambi.erase(m.cambi.begin());
    return m;
}
