// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/lettore_wave.h"

#include "platform/basic.h"
#include "platform/uscita_audio.h"

#include <QFile>
#include <QHash>

#include <samplerate.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <cmath>
#include <ctime>
#include <memory>
#include <optional>
#include <vector>

namespace piattaforma {

namespace {

// Samples ready for the sound server: interleaved stereo at the output's
// rate, and the length of the file they came from.
struct Onda {
    std::shared_ptr<const std::vector<float>> campioni;
    long durata_ms = 0;
};

// Any channel count and rate the file has, as the output takes it: mono on
// both sides, the first two channels of more, resampled when the rate differs.
Onda per_l_uscita(std::vector<float> letti, long fotogrammi, int canali, int frequenza)
{
    auto stereo = std::make_shared<std::vector<float>>(std::size_t(fotogrammi) * 2);
    for (long i = 0; i < fotogrammi; ++i) {
        (*stereo)[std::size_t(2 * i)] = letti[std::size_t(i * canali)];
        (*stereo)[std::size_t(2 * i + 1)] = letti[std::size_t(i * canali + (canali > 1 ? 1 : 0))];
    }
    const long durata_ms = long(fotogrammi * 1000LL / frequenza);
    if (frequenza == UscitaAudio::frequenza) return Onda{stereo, durata_ms};
    const double rapporto = double(UscitaAudio::frequenza) / frequenza;
    auto ricampionata = std::make_shared<std::vector<float>>(std::size_t(std::ceil(fotogrammi * rapporto) + 1) * 2);
    SRC_DATA d{};
    d.data_in = stereo->data();
    d.input_frames = fotogrammi;
    d.data_out = ricampionata->data();
    d.output_frames = long(ricampionata->size() / 2);
    d.src_ratio = rapporto;
    if (src_simple(&d, SRC_SINC_FASTEST, 2) != 0) return Onda{stereo, durata_ms};
    ricampionata->resize(std::size_t(d.output_frames_gen) * 2);
    return Onda{ricampionata, durata_ms};
}

std::optional<Onda> leggi_onda(const QString& percorso)
{
    constexpr sf_count_t piu_lunga = 44100LL * 60 * 5;  // a sound, not a song
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(percorso).constData(), SFM_READ, &info);
    if (!file) return std::nullopt;
    std::optional<Onda> onda;
    if (info.frames > 0 && info.channels >= 1 && info.channels <= 8 && info.samplerate >= 1000 &&
        info.samplerate <= 384000) {
        const sf_count_t fotogrammi = std::min(info.frames, piu_lunga);
        std::vector<float> letti(std::size_t(fotogrammi * info.channels));
        const sf_count_t quanti = sf_readf_float(file, letti.data(), fotogrammi);
        if (quanti > 0) onda = per_l_uscita(std::move(letti), long(quanti), info.channels, info.samplerate);
    }
    sf_close(file);
    return onda;
}

// The game plays the same two sounds all the time: what a file decoded to is
// kept and used again while the file stays as it was (same size, same time of
// change). A file changed in the last few seconds is always read afresh: the
// file system's clock is coarse, and a file rewritten twice within one tick
// with the same size would otherwise pass for unchanged.
std::optional<Onda> onda_del_file(const QString& percorso)
{
    struct Letta {
        struct stat stato;
        std::optional<Onda> onda;
    };
    static QHash<QString, Letta> lette;
    struct stat stato {};
    if (::stat(QFile::encodeName(percorso).constData(), &stato) != 0 || !S_ISREG(stato.st_mode)) {
        lette.remove(percorso);
        return std::nullopt;
    }
    auto uguali = [](const struct stat& a, const struct stat& b) {
        return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
               a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
               a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
    };
    const auto it = lette.constFind(percorso);
    if (it != lette.constEnd() && uguali(it->stato, stato)) return it->onda;
    std::optional<Onda> onda = leggi_onda(percorso);
    const std::time_t adesso = std::time(nullptr);
    if (adesso - stato.st_mtim.tv_sec >= 3 && adesso - stato.st_ctim.tv_sec >= 3) {
        if (lette.size() > 32) lette.clear();
        lette.insert(percorso, Letta{stato, onda});
    } else {
        lette.remove(percorso);
    }
    return onda;
}

// What plays for a missing or unreadable file: a short soft chime.
const Onda& suono_predefinito()
{
    static const Onda onda = [] {
        constexpr int frequenza = UscitaAudio::frequenza;
        constexpr int fotogrammi = frequenza * 22 / 100;
        std::vector<float> campioni(fotogrammi);
        for (int i = 0; i < fotogrammi; ++i) {
            const double t = double(i) / frequenza;
            const double attacco = std::min(1.0, t / 0.004);
            const double inviluppo = attacco * std::exp(-t / 0.06);
            const double tono = std::sin(2 * M_PI * 880 * t) + 0.35 * std::sin(2 * M_PI * 1760 * t);
            campioni[std::size_t(i)] = float(9000.0 / 32768 * inviluppo * tono);
        }
        return per_l_uscita(std::move(campioni), fotogrammi, 1, frequenza);
    }();
    return onda;
}

QStringList richiesti;
prova::SuonoSuonato ultimo;

}  // namespace

void PlaySound(const QString& percorso)
{
    if (basic::prova::attivo()) richiesti << percorso;
    const std::optional<Onda> letta = onda_del_file(percorso);
    const Onda& onda = letta ? *letta : suono_predefinito();
    ultimo = {percorso, !letta, onda.durata_ms, false};
    ultimo.su_dispositivo = UscitaAudio::una().suona(onda.campioni);
}

namespace prova {
const QStringList& suoni_richiesti() { return richiesti; }
void azzera_suoni()
{
    richiesti.clear();
    ultimo = {};
}
SuonoSuonato ultimo_suono() { return ultimo; }
}  // namespace prova

}  // namespace piattaforma
