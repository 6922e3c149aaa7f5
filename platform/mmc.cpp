// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mmc.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTimer>

#include <fluidsynth.h>

#include <algorithm>
#include <cmath>
#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

Q_LOGGING_CATEGORY(logMusica, "tavolata.musica", QtWarningMsg)

namespace {

constexpr double frequenza = 44100;
// FluidSynth's own gain (0.2) is too quiet beside the card sounds; this keeps
// the loudest song just below full scale.
constexpr double guadagno = 0.6;

// ------------------------------------------------------------ the MIDI file

// The tempo map of a Standard MIDI File: enough to turn milliseconds into
// ticks and back, and to tell a song from a file that is not one.
struct MappaTempi {
    long divisione = 96;  // ticks per quarter note
    double tick_al_secondo_smpte = 0;  // > 0 for files timed in frames
    std::vector<std::pair<long, long>> cambi{{0, 500000}};  // tick, microseconds per quarter
    long ultimo_tick = 0;

    double ms_del_tick(long tick) const
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

    long tick_del_ms(double ms) const
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
};

std::optional<MappaTempi> leggi_midi(const QByteArray& dati)
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

// The same path with each missing part matched without regard to case, so
// that "brezza.mid" finds "Brezza.mid"; empty when nothing matches.
QString trova_senza_maiuscole(const QString& percorso)
{
    const QFileInfo dato(percorso);
    if (dato.isFile()) return dato.absoluteFilePath();
    const QStringList parti = QDir::cleanPath(dato.absoluteFilePath()).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QString trovato = QStringLiteral("/");
    for (const QString& parte : parti) {
        const QDir cartella(trovato);
        QString scelta;
        if (QFileInfo::exists(cartella.filePath(parte))) {
            scelta = parte;
        } else {
            for (const QString& voce : cartella.entryList(QDir::AllEntries | QDir::Hidden | QDir::System))
                if (voce.compare(parte, Qt::CaseInsensitive) == 0) {
                    scelta = voce;
                    break;
                }
        }
        if (scelta.isEmpty()) return {};
        trovato = cartella.filePath(scelta);
    }
    return QFileInfo(trovato).isFile() ? trovato : QString();
}

// ------------------------------------------------------------ the synthesizer

void registra_fluidsynth(int livello, const char* messaggio, void*)
{
    qCDebug(logMusica, "fluidsynth (%d): %s", livello, messaggio);
}

// One song being played, with the start position it has yet to reach: the
// player can only jump there once it has loaded the song, and the notes it
// meets before that jump stay silent.
struct Lettore {
    fluid_player_t* player = nullptr;
    fluid_synth_t* synth = nullptr;
    std::atomic<long> obiettivo{-1};
    std::atomic<bool> salto_chiesto{false};

    void vai_a(long tick)
    {
        salto_chiesto = false;
        obiettivo = tick;
    }

    long tick_attuale() const
    {
        const long o = obiettivo;
        return o >= 0 ? o : fluid_player_get_current_tick(player);
    }

    // Runs on the synthesizer's thread for each event of the song.
    static int evento(void* dati, fluid_midi_event_t* e)
    {
        auto* l = static_cast<Lettore*>(dati);
        const long o = l->obiettivo;
        if (o >= 0) {
            if (!l->salto_chiesto.exchange(true)) fluid_player_seek(l->player, int(o));
            if (fluid_player_get_current_tick(l->player) < o) {
                if (fluid_midi_event_get_type(e) == 0x90) return FLUID_OK;
            } else {
                l->obiettivo = -1;
            }
        }
        return fluid_synth_handle_midi_event(l->synth, e);
    }
};

// One General MIDI synthesizer for the whole program, with its soundfont
// loaded once. It renders to the sound server when there is one; otherwise
// its own clock renders into nothing at the pace of real time, which is what
// moves the songs forward either way.
class Sintetizzatore {
public:
    static Sintetizzatore& uno()
    {
        // Kept for the whole run: the program ends without closing the player.
        static Sintetizzatore* s = new Sintetizzatore;
        return *s;
    }

    // A player for `canzone` starting at `tick`.
    std::unique_ptr<Lettore> nuovo_lettore(const QByteArray& canzone, long tick)
    {
        std::lock_guard<std::mutex> fermo(blocco_);
        fluid_synth_system_reset(synth_);
        auto l = std::make_unique<Lettore>();
        l->synth = synth_;
        l->player = new_fluid_player(synth_);
        if (!l->player) return nullptr;
        l->obiettivo = tick > 0 ? tick : -1;
        fluid_player_set_playback_callback(l->player, Lettore::evento, l.get());
        fluid_player_add_mem(l->player, canzone.constData(), std::size_t(canzone.size()));
        fluid_player_play(l->player);
        ++lettori_;
        return l;
    }

    void elimina_lettore(std::unique_ptr<Lettore>& l)
    {
        if (!l) return;
        std::lock_guard<std::mutex> fermo(blocco_);
        delete_fluid_player(l->player);
        fluid_synth_all_sounds_off(synth_, -1);
        --lettori_;
        l.reset();
    }

    void imposta_orologio(double velocita)
    {
        ferma_uscita();
        avvia_uscita(velocita);
    }

    bool su_dispositivo() const { return driver_ != nullptr; }

private:
    Sintetizzatore()
    {
        for (int livello : {FLUID_ERR, FLUID_WARN}) fluid_set_log_function(livello, registra_fluidsynth, nullptr);
        for (int livello : {FLUID_INFO, FLUID_DBG}) fluid_set_log_function(livello, nullptr, nullptr);
        impostazioni_ = new_fluid_settings();
        fluid_settings_setnum(impostazioni_, "synth.sample-rate", frequenza);
        fluid_settings_setnum(impostazioni_, "synth.gain", guadagno);
        fluid_settings_setint(impostazioni_, "audio.period-size", 512);
        fluid_settings_setint(impostazioni_, "audio.periods", 8);
        fluid_settings_setstr(impostazioni_, "audio.pulseaudio.media-role", "game");
        synth_ = new_fluid_synth(impostazioni_);
        for (const char* sf : {"/usr/share/sounds/sf2/default-GM.sf2", "/usr/share/sounds/sf2/TimGM6mb.sf2",
                               "/usr/share/sounds/sf2/FluidR3_GM.sf2"})
            if (QFileInfo::exists(QString::fromLatin1(sf)) && fluid_synth_sfload(synth_, sf, 1) != FLUID_FAILED) break;
        avvia_uscita(0);
    }

    // The sound server's callback and the clock's: one block of the song.
    static int rendi(void* dati, int len, int nfx, float* fx[], int nout, float* out[])
    {
        auto* s = static_cast<Sintetizzatore*>(dati);
        std::lock_guard<std::mutex> fermo(s->blocco_);
        if (nfx == 0 && nout >= 2) {
            float* effetti[4] = {out[0], out[1], out[0], out[1]};
            return fluid_synth_process(s->synth_, len, 4, effetti, nout, out);
        }
        return fluid_synth_process(s->synth_, len, nfx, fx, nout, out);
    }

    void avvia_uscita(double velocita)
    {
        if (velocita <= 0) {
            // The sound server, as the wave player uses it.
            fluid_settings_setstr(impostazioni_, "audio.driver", "pulseaudio");
            driver_ = new_fluid_audio_driver2(impostazioni_, rendi, this);
            if (driver_) return;
            velocita = 1;
        }
        fine_orologio_ = false;
        orologio_ = std::thread([this, velocita] { batti_il_tempo(velocita); });
    }

    void ferma_uscita()
    {
        if (driver_) delete_fluid_audio_driver(driver_);
        driver_ = nullptr;
        if (orologio_.joinable()) {
            fine_orologio_ = true;
            orologio_.join();
        }
    }

    // Renders only while a song is loaded; idle otherwise.
    void batti_il_tempo(double velocita)
    {
        using orologio = std::chrono::steady_clock;
        constexpr int blocco = 512;
        std::vector<float> sinistra(blocco), destra(blocco);
        float* uscite[2] = {sinistra.data(), destra.data()};
        auto base = orologio::now();
        long long fotogrammi = 0;
        while (!fine_orologio_) {
            bool occupato;
            {
                std::lock_guard<std::mutex> fermo(blocco_);
                occupato = lettori_ > 0;
            }
            if (!occupato) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                base = orologio::now();
                fotogrammi = 0;
                continue;
            }
            std::fill(sinistra.begin(), sinistra.end(), 0.f);
            std::fill(destra.begin(), destra.end(), 0.f);
            rendi(this, blocco, 0, nullptr, 2, uscite);
            fotogrammi += blocco;
            std::this_thread::sleep_until(
                base + std::chrono::duration_cast<orologio::duration>(
                           std::chrono::duration<double>(fotogrammi / (frequenza * velocita))));
        }
    }

    fluid_settings_t* impostazioni_ = nullptr;
    fluid_synth_t* synth_ = nullptr;
    fluid_audio_driver_t* driver_ = nullptr;
    std::thread orologio_;
    std::atomic<bool> fine_orologio_{false};
    std::mutex blocco_;  // held while a block is rendered and while players change
    int lettori_ = 0;
};

}  // namespace

// ------------------------------------------------------------ the control

struct MMControl::Impl {
    int modo = mciModeNotOpen;
    QByteArray canzone;
    MappaTempi mappa;
    long fermo_a_ms = 0;  // where a stopped song stands
    std::unique_ptr<Lettore> lettore;
    QTimer sorveglianza;
    QEventLoop* attesa = nullptr;
};

MMControl::MMControl(QObject* parent) : QObject(parent), d_(std::make_unique<Impl>())
{
    d_->sorveglianza.setInterval(20);
    connect(&d_->sorveglianza, &QTimer::timeout, this, &MMControl::controlla_fine);
}

MMControl::~MMControl()
{
    if (d_->lettore) Sintetizzatore::uno().elimina_lettore(d_->lettore);
}

void MMControl::prova_orologio(double velocita) { Sintetizzatore::uno().imposta_orologio(velocita); }

bool MMControl::suona_su_dispositivo() { return Sintetizzatore::uno().su_dispositivo(); }

void MMControl::Command(const QString& comando)
{
    const QString c = comando.trimmed().toLower();
    const bool attendi = Wait;
    const long da = From;
    Wait = false;
    From = -1;

    if (c == QLatin1String("open")) {
        registro << c + QLatin1Char(' ') + FileName;
        apri();
    } else if (c == QLatin1String("play")) {
        registro << (da >= 0 ? c + QStringLiteral(" from ") + QString::number(da) : c);
        suona(da);
        if (attendi && d_->modo == mciModePlay) {
            QEventLoop attesa;
            d_->attesa = &attesa;
            attesa.exec();
            d_->attesa = nullptr;
        }
    } else {
        registro << c;
        if (c == QLatin1String("close")) chiudi();
    }
}

int MMControl::Mode() const { return d_->modo; }

long MMControl::Length() const
{
    return d_->modo == mciModeNotOpen ? 0 : std::lround(d_->mappa.ms_del_tick(d_->mappa.ultimo_tick));
}

long MMControl::Position() const
{
    if (d_->modo != mciModePlay) return d_->fermo_a_ms;
    return std::min(Length(), std::lround(d_->mappa.ms_del_tick(d_->lettore->tick_attuale())));
}

void MMControl::apri()
{
    if (d_->modo != mciModeNotOpen) chiudi();
    const QString percorso = trova_senza_maiuscole(FileName);
    QFile file(percorso);
    if (percorso.isEmpty() || !file.open(QIODevice::ReadOnly)) return;
    const QByteArray dati = file.readAll();
    const auto mappa = leggi_midi(dati);
    if (!mappa) return;
    d_->canzone = dati;
    d_->mappa = *mappa;
    d_->fermo_a_ms = 0;
    d_->modo = mciModeStop;
}

void MMControl::suona(long da_ms)
{
    if (d_->modo == mciModeNotOpen) return;
    Sintetizzatore& s = Sintetizzatore::uno();
    if (d_->modo == mciModePlay) {
        notifica_piu_tardi(mciSuperseded);
        if (da_ms >= 0) d_->lettore->vai_a(d_->mappa.tick_del_ms(da_ms));
        return;
    }
    if (da_ms < 0) da_ms = d_->fermo_a_ms;
    if (da_ms >= Length()) da_ms = 0;  // a song that has ended plays again from its start
    s.elimina_lettore(d_->lettore);
    d_->lettore = s.nuovo_lettore(d_->canzone, d_->mappa.tick_del_ms(da_ms));
    if (!d_->lettore) return;
    d_->modo = mciModePlay;
    d_->sorveglianza.start();
}

void MMControl::chiudi()
{
    if (d_->modo == mciModePlay) notifica_piu_tardi(mciAborted);
    if (d_->lettore) Sintetizzatore::uno().elimina_lettore(d_->lettore);
    d_->sorveglianza.stop();
    d_->canzone.clear();
    d_->modo = mciModeNotOpen;
    d_->fermo_a_ms = 0;
    if (d_->attesa) d_->attesa->quit();
}

void MMControl::controlla_fine()
{
    if (d_->modo != mciModePlay || fluid_player_get_status(d_->lettore->player) != FLUID_PLAYER_DONE) return;
    Sintetizzatore::uno().elimina_lettore(d_->lettore);
    d_->sorveglianza.stop();
    d_->modo = mciModeStop;
    d_->fermo_a_ms = Length();
    if (d_->attesa) d_->attesa->quit();
    emit Done(mciSuccessful);
}

void MMControl::notifica_piu_tardi(int codice)
{
    QMetaObject::invokeMethod(this, [this, codice] { emit Done(codice); }, Qt::QueuedConnection);
}
