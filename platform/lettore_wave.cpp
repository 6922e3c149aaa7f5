// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/lettore_wave.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QMediaDevices>
#include <QPointer>

#include <sndfile.h>
#include <sys/stat.h>

#include <cmath>
#include <ctime>
#include <optional>

namespace piattaforma {

namespace {

// Samples ready for the sound device: 16-bit, interleaved.
struct Onda {
    QAudioFormat formato;
    QByteArray campioni;

    long durata_ms() const
    {
        const int byte_al_secondo = formato.bytesForDuration(1000000);
        return byte_al_secondo > 0 ? long(campioni.size() * 1000LL / byte_al_secondo) : 0;
    }
};

QAudioFormat formato_16bit(int frequenza, int canali)
{
    QAudioFormat f;
    f.setSampleRate(frequenza);
    f.setChannelCount(canali);
    f.setSampleFormat(QAudioFormat::Int16);
    return f;
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
        QByteArray campioni(qsizetype(fotogrammi * info.channels * 2), Qt::Uninitialized);
        const sf_count_t letti = sf_readf_short(file, reinterpret_cast<short*>(campioni.data()), fotogrammi);
        if (letti > 0) {
            campioni.resize(qsizetype(letti * info.channels * 2));
            onda = Onda{formato_16bit(info.samplerate, info.channels), campioni};
        }
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
    struct stat stato{};
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
        constexpr int frequenza = 44100;
        constexpr int fotogrammi = frequenza * 22 / 100;
        QByteArray campioni(fotogrammi * 2, Qt::Uninitialized);
        auto* s = reinterpret_cast<qint16*>(campioni.data());
        for (int i = 0; i < fotogrammi; ++i) {
            const double t = double(i) / frequenza;
            const double attacco = std::min(1.0, t / 0.004);
            const double inviluppo = attacco * std::exp(-t / 0.06);
            const double tono = std::sin(2 * M_PI * 880 * t) + 0.35 * std::sin(2 * M_PI * 1760 * t);
            s[i] = qint16(std::lround(9000 * inviluppo * tono));
        }
        return Onda{formato_16bit(frequenza, 1), campioni};
    }();
    return onda;
}

// The one channel: the sound it plays and the device stream that takes it.
// It belongs to the application, so it goes before the sound system does.
class Canale : public QObject {
public:
    using QObject::QObject;

    // Returns whether a sound device took the samples.
    bool suona(const Onda& onda)
    {
        ferma();
        const QAudioDevice dispositivo = QMediaDevices::defaultAudioOutput();
        if (dispositivo.isNull()) return false;
        dati_.setData(onda.campioni);
        dati_.open(QIODevice::ReadOnly);
        uscita_ = new QAudioSink(dispositivo, onda.formato, this);
        uscita_->start(&dati_);
        return uscita_->error() == QAudio::NoError;
    }

private:
    void ferma()
    {
        if (uscita_) {
            uscita_->stop();
            delete uscita_;
            uscita_ = nullptr;
        }
        dati_.close();
    }

    QAudioSink* uscita_ = nullptr;
    QBuffer dati_{this};
};

Canale* canale()
{
    static QPointer<Canale> c;
    if (!c && QCoreApplication::instance()) c = new Canale(QCoreApplication::instance());
    return c;
}

QStringList richiesti;
prova::SuonoSuonato ultimo;

}  // namespace

void PlaySound(const QString& percorso)
{
    richiesti << percorso;
    const std::optional<Onda> letta = onda_del_file(percorso);
    const Onda& onda = letta ? *letta : suono_predefinito();
    ultimo = {percorso, !letta, onda.durata_ms(), false};
    if (Canale* c = canale()) ultimo.su_dispositivo = c->suona(onda);
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
