// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mmc.h"

#include "platform/basic.h"
#include "platform/mappa_tempi.h"
#include "platform/uscita_audio.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTimer>

#include <fluidsynth.h>
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cmath>

Q_LOGGING_CATEGORY(logMusica, "tavolata.musica", QtWarningMsg)

namespace {

// FluidSynth's own gain (0.2) is too quiet beside the card sounds; this keeps
// the loudest song just below full scale.
constexpr double guadagno = 0.6;
// A file that is there but holds no song plays as this much silence, so that
// sequential mode moves past it and a single one does not come round at once.
constexpr long silenzio_ms = 1000;
// A synthesizer let go is kept this long, so that the next song or the same
// one played again does not load the soundfont afresh.
constexpr int riserva_ms = 3000;

// The songs' clock runs this many times faster than real time, with no
// sound at all; 0 = real time, on the sound server when there is one.
double velocita_prova = 0;
// Synthesizers rendering onto the sound server now.
int sul_server = 0;

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

// A General MIDI synthesizer with its soundfont, playing one song into the
// sound server's stream. It exists only while a song is heard: made when the
// song starts on a server, let go when it stops or the server goes.
class Sintetizzatore : public piattaforma::UscitaAudio::Musica {
public:
    // A synthesizer playing `canzone` from `tick`: the one let go last, if it
    // is still kept, otherwise a new one.
    static std::unique_ptr<Sintetizzatore> per(const QByteArray& canzone, long tick)
    {
        std::unique_ptr<Sintetizzatore> s(riserva());
        riserva() = nullptr;
        ++turno();
        if (!s) s.reset(new Sintetizzatore);
        fluid_synth_system_reset(s->synth_);
        s->player_ = new_fluid_player(s->synth_);
        if (!s->player_) return nullptr;
        s->vai_a(tick > 0 ? tick : -1);
        fluid_player_set_playback_callback(s->player_, evento, s.get());
        fluid_player_add_mem(s->player_, canzone.constData(), std::size_t(canzone.size()));
        fluid_player_play(s->player_);
        return s;
    }

    // Lets a synthesizer go: kept a few seconds in case another song follows,
    // then freed, and the memory it held given back to the system.
    static void lascia(std::unique_ptr<Sintetizzatore> s)
    {
        delete_fluid_player(s->player_);
        s->player_ = nullptr;
        fluid_synth_all_sounds_off(s->synth_, -1);
        delete riserva();
        riserva() = s.release();
        const unsigned questo = ++turno();
        QTimer::singleShot(riserva_ms, [questo] {
            if (questo != turno()) return;
            delete riserva();
            riserva() = nullptr;
            malloc_trim(0);
        });
    }

    ~Sintetizzatore() override
    {
        if (player_) delete_fluid_player(player_);
        delete_fluid_synth(synth_);
        delete_fluid_settings(impostazioni_);
    }

    // The song jumps to `tick`; the jump is made on the sound thread.
    void vai_a(long tick)
    {
        salto_chiesto_ = false;
        obiettivo_ = tick;
    }

    void rendi(float* stereo, int fotogrammi) override
    {
        fluid_synth_write_float(synth_, fotogrammi, stereo, 0, 2, stereo, 1, 2);
    }

private:
    Sintetizzatore()
    {
        for (int livello : {FLUID_ERR, FLUID_WARN}) fluid_set_log_function(livello, registra_fluidsynth, nullptr);
        for (int livello : {FLUID_INFO, FLUID_DBG}) fluid_set_log_function(livello, nullptr, nullptr);
        impostazioni_ = new_fluid_settings();
        fluid_settings_setnum(impostazioni_, "synth.sample-rate", piattaforma::UscitaAudio::frequenza);
        fluid_settings_setnum(impostazioni_, "synth.gain", guadagno);
        // No song of ours sends anything to the chorus: without it the sound
        // is the same to the last bit.
        fluid_settings_setint(impostazioni_, "synth.chorus.active", 0);
        // Only the instruments a song chooses have their samples read in:
        // about 5 MB less than the whole soundfont, for a difference in the
        // sound 57 dB below it (notes that start a few samples apart).
        fluid_settings_setint(impostazioni_, "synth.dynamic-sample-loading", 1);
        // Each voice costs some 11 KB of heap (2.8 MB for 256), and cannot be
        // trimmed: Champs sounds 211 voices at once (Brezza 99, the others
        // under 90), and at 200 it takes voices from notes still sounding.
        // The queue that carries notes to the mixer and hands ended voices back
        // is sized from this number once, when the synthesizer is made: made
        // smaller and raised later, it loses the voices a stop ends together.
        fluid_settings_setint(impostazioni_, "synth.polyphony", 256);
        synth_ = new_fluid_synth(impostazioni_);
        for (const char* sf : {"/usr/share/sounds/sf2/default-GM.sf2", "/usr/share/sounds/sf2/TimGM6mb.sf2",
                               "/usr/share/sounds/sf2/FluidR3_GM.sf2"})
            if (QFileInfo::exists(QString::fromLatin1(sf)) && fluid_synth_sfload(synth_, sf, 1) != FLUID_FAILED) break;
    }

    static Sintetizzatore*& riserva()
    {
        static Sintetizzatore* s = nullptr;
        return s;
    }
    static unsigned& turno()
    {
        static unsigned t = 0;
        return t;
    }

    // Runs on the sound thread for each event of the song. The player can
    // only jump once it has loaded the song, and the notes it meets before
    // the jump stay silent.
    static int evento(void* dati, fluid_midi_event_t* e)
    {
        auto* s = static_cast<Sintetizzatore*>(dati);
        const long o = s->obiettivo_;
        if (o >= 0) {
            if (!s->salto_chiesto_.exchange(true)) fluid_player_seek(s->player_, int(o));
            if (fluid_player_get_current_tick(s->player_) < o) {
                if (fluid_midi_event_get_type(e) == 0x90) return FLUID_OK;
            } else {
                s->obiettivo_ = -1;
            }
        }
        return fluid_synth_handle_midi_event(s->synth_, e);
    }

    fluid_settings_t* impostazioni_ = nullptr;
    fluid_synth_t* synth_ = nullptr;
    fluid_player_t* player_ = nullptr;
    std::atomic<long> obiettivo_{-1};
    std::atomic<bool> salto_chiesto_{false};
};

}  // namespace

// ------------------------------------------------------------ the control

struct MMControl::Impl {
    int modo = mciModeNotOpen;
    QByteArray canzone;  // empty for a file that holds no song
    MappaTempi mappa;
    // The song's time: where it stood when its clock last started, or where
    // it stands while stopped. The clock runs whether or not it is heard.
    long da_ms = 0;
    QElapsedTimer orologio;
    QTimer fine;
    std::unique_ptr<Sintetizzatore> sintetizzatore;
    QEventLoop* attesa = nullptr;
};

MMControl::MMControl(QObject* parent) : QObject(parent), d_(std::make_unique<Impl>())
{
    d_->fine.setSingleShot(true);
    d_->fine.setTimerType(Qt::PreciseTimer);
    connect(&d_->fine, &QTimer::timeout, this, &MMControl::controlla_fine);
    connect(&piattaforma::UscitaAudio::una(), &piattaforma::UscitaAudio::collegamento, this,
            &MMControl::segui_il_suono);
}

MMControl::~MMControl()
{
    if (d_->modo == mciModePlay) {
        d_->modo = mciModeStop;
        segui_il_suono();
    }
}

void MMControl::prova_orologio(double velocita) { velocita_prova = velocita; }

bool MMControl::suona_su_dispositivo() { return sul_server > 0; }

void MMControl::Command(const QString& comando)
{
    const QString c = comando.trimmed().toLower();
    const bool attendi = Wait;
    const long da = From;
    Wait = false;
    From = -1;
    const bool registra = basic::prova::attivo();

    if (c == QLatin1String("open")) {
        if (registra) registro << c + QLatin1Char(' ') + FileName;
        apri();
    } else if (c == QLatin1String("play")) {
        if (registra) registro << (da >= 0 ? c + QStringLiteral(" from ") + QString::number(da) : c);
        suona(da);
        if (attendi && d_->modo == mciModePlay) {
            QEventLoop attesa;
            d_->attesa = &attesa;
            attesa.exec();
            d_->attesa = nullptr;
        }
    } else {
        if (registra) registro << c;
        if (c == QLatin1String("close")) chiudi();
    }
}

int MMControl::Mode() const { return d_->modo; }

long MMControl::Length() const
{
    if (d_->modo == mciModeNotOpen) return 0;
    if (d_->canzone.isEmpty()) return silenzio_ms;
    return std::lround(d_->mappa.ms_del_tick(d_->mappa.ultimo_tick));
}

long MMControl::Position() const
{
    if (d_->modo != mciModePlay) return d_->da_ms;
    const double velocita = velocita_prova > 0 ? velocita_prova : 1;
    return std::min(Length(), d_->da_ms + long(d_->orologio.elapsed() * velocita));
}

void MMControl::apri()
{
    if (d_->modo != mciModeNotOpen) chiudi();
    const QString percorso = trova_senza_maiuscole(FileName);
    QFile file(percorso);
    if (percorso.isEmpty() || !file.open(QIODevice::ReadOnly)) return;
    const QByteArray dati = file.readAll();
    const auto mappa = leggi_mappa_tempi(dati);
    // A file that is there but is no song, or a song of no length, is kept
    // as a short silence: it ends like any song.
    const bool canzone = mappa && mappa->ms_del_tick(mappa->ultimo_tick) >= 1;
    d_->canzone = canzone ? dati : QByteArray();
    d_->mappa = canzone ? *mappa : MappaTempi();
    d_->da_ms = 0;
    d_->modo = mciModeStop;
}

void MMControl::suona(long da_ms)
{
    if (d_->modo == mciModeNotOpen) return;
    if (d_->modo == mciModePlay) {
        notifica_piu_tardi(mciSuperseded);
        if (da_ms < 0) return;
        d_->da_ms = std::min(da_ms, Length());
        d_->orologio.start();
        if (d_->sintetizzatore) d_->sintetizzatore->vai_a(d_->mappa.tick_del_ms(double(d_->da_ms)));
    } else {
        if (da_ms < 0) da_ms = d_->da_ms;
        if (da_ms >= Length()) da_ms = 0;  // a song that has ended plays again from its start
        d_->da_ms = da_ms;
        d_->orologio.start();
        d_->modo = mciModePlay;
        segui_il_suono();
    }
    const double velocita = velocita_prova > 0 ? velocita_prova : 1;
    d_->fine.start(std::max(1, int(std::ceil((Length() - d_->da_ms) / velocita))));
}

void MMControl::chiudi()
{
    if (d_->modo == mciModePlay) notifica_piu_tardi(mciAborted);
    d_->fine.stop();
    d_->canzone.clear();
    d_->modo = mciModeNotOpen;
    d_->da_ms = 0;
    segui_il_suono();
    if (d_->attesa) d_->attesa->quit();
}

void MMControl::controlla_fine()
{
    if (d_->modo != mciModePlay) return;
    d_->modo = mciModeStop;
    d_->da_ms = Length();
    segui_il_suono();
    if (d_->attesa) d_->attesa->quit();
    emit Done(mciSuccessful);
}

// The song is heard while it plays and a stream is open: the synthesizer
// starts where the song's clock stands, and goes when either ends. Without a
// server the song only keeps its time.
void MMControl::segui_il_suono()
{
    auto& uscita = piattaforma::UscitaAudio::una();
    const bool sentita = d_->modo == mciModePlay && velocita_prova <= 0 && !d_->canzone.isEmpty();
    uscita.richiedi_musica(sentita);
    if (sentita && uscita.collegata() && !d_->sintetizzatore) {
        d_->sintetizzatore = Sintetizzatore::per(d_->canzone, d_->mappa.tick_del_ms(double(Position())));
        if (!d_->sintetizzatore) return;
        uscita.imposta_musica(d_->sintetizzatore.get());
        ++sul_server;
    } else if ((!sentita || !uscita.collegata()) && d_->sintetizzatore) {
        uscita.togli_musica(d_->sintetizzatore.get());
        --sul_server;
        Sintetizzatore::lascia(std::move(d_->sintetizzatore));
    }
}

void MMControl::notifica_piu_tardi(int codice)
{
    QMetaObject::invokeMethod(
        this, [this, codice] { emit Done(codice); }, Qt::QueuedConnection);
}
