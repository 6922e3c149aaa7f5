// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/uscita_audio.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <pulse/pulseaudio.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>

namespace piattaforma {

namespace {

// How much sound the server holds ahead of what it plays: a wave asked for
// now is heard after at most this long, and the song is rendered in blocks
// of about a quarter of it.
constexpr pa_usec_t anticipo_us = 80000;
// How long the stream stays open after the last wave has sounded, with no song.
constexpr int resta_aperta_ms = 5000;
// While a song is on and the server is away, how often it is looked for.
constexpr int riprova_ms = 1000;

const char* const nome = "Tavolata";
const char* const icona = "io.github.tavolata.Tavolata";

// Whether the server's socket takes a connection, without talking to it:
// looking for a server that is away costs a few microseconds this way. Where
// the server cannot be told from the environment, the answer is yes and
// libpulse finds out.
bool server_raggiungibile(const QByteArray& noto)
{
    QByteArray percorso = qgetenv("PULSE_SERVER");
    if (percorso.isEmpty()) percorso = noto;
    if (percorso.isEmpty()) {
        QByteArray cartella = qgetenv("PULSE_RUNTIME_PATH");
        if (cartella.isEmpty() && !qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
            cartella = qgetenv("XDG_RUNTIME_DIR") + "/pulse";
        if (cartella.isEmpty()) return true;
        percorso = cartella + "/native";
    }
    if (percorso.startsWith('{')) percorso = percorso.mid(percorso.indexOf('}') + 1);
    if (percorso.startsWith("unix:")) percorso = percorso.mid(5);
    sockaddr_un indirizzo{};
    if (!percorso.startsWith('/') || percorso.contains(' ') || percorso.size() >= qsizetype(sizeof indirizzo.sun_path))
        return true;
    indirizzo.sun_family = AF_UNIX;
    std::memcpy(indirizzo.sun_path, percorso.constData(), std::size_t(percorso.size()));
    const int presa = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (presa < 0) return true;
    const bool risponde = ::connect(presa, reinterpret_cast<const sockaddr*>(&indirizzo), sizeof indirizzo) == 0;
    ::close(presa);
    return risponde;
}

pa_proplist* proprieta()
{
    pa_proplist* p = pa_proplist_new();
    pa_proplist_sets(p, PA_PROP_APPLICATION_NAME, nome);
    pa_proplist_sets(p, PA_PROP_APPLICATION_ID, icona);
    pa_proplist_sets(p, PA_PROP_APPLICATION_ICON_NAME, icona);
    pa_proplist_sets(p, PA_PROP_MEDIA_ROLE, "game");
    return p;
}

}  // namespace

struct UscitaAudio::Stato {
    // Owned by the window's thread; the sound thread only reads them under
    // the main loop's lock.
    pa_threaded_mainloop* ciclo = nullptr;
    pa_context* contesto = nullptr;
    pa_stream* flusso = nullptr;
    std::atomic<unsigned> generazione{0};  // of the connection, so that news of an old one is ignored
    std::atomic<bool> pronta{false};
    QByteArray server_noto;

    // The mix, shared with the sound thread.
    std::mutex miscela;
    std::shared_ptr<const std::vector<float>> onda;
    std::size_t posizione = 0;
    Musica* musica = nullptr;

    bool musica_richiesta = false;
    QElapsedTimer da_avvio;
    qint64 fine_onda_ms = -1;  // on da_avvio's clock
    qint64 fallito_ms = -1;  // when a connection last failed before its stream opened
    bool aperta = false;  // the current connection's stream has opened
    QTimer riprova, chiusura;
    UscitaAudio* uscita = nullptr;

    // Tells the game's thread, from the sound thread, that connection g has
    // opened or been lost.
    void segnala(void (UscitaAudio::*cosa)(unsigned), unsigned g)
    {
        UscitaAudio* u = uscita;
        QMetaObject::invokeMethod(
            u, [u, cosa, g] { (u->*cosa)(g); }, Qt::QueuedConnection);
    }

    static void stato_contesto(pa_context* c, void* dati);
    static void stato_flusso(pa_stream* f, void* dati);
    static void scrivi(pa_stream* f, std::size_t byte, void* dati);
};

void UscitaAudio::Stato::stato_contesto(pa_context* c, void* dati)
{
    auto* s = static_cast<Stato*>(dati);
    const unsigned g = s->generazione;
    switch (pa_context_get_state(c)) {
    case PA_CONTEXT_READY: {
        const pa_sample_spec formato{PA_SAMPLE_FLOAT32NE, frequenza, 2};
        pa_proplist* p = proprieta();
        s->flusso = pa_stream_new_with_proplist(c, nome, &formato, nullptr, p);
        pa_proplist_free(p);
        if (!s->flusso) break;
        pa_stream_set_state_callback(s->flusso, stato_flusso, s);
        pa_stream_set_write_callback(s->flusso, scrivi, s);
        pa_buffer_attr attesa;
        attesa.maxlength = attesa.prebuf = attesa.minreq = attesa.fragsize = std::uint32_t(-1);
        attesa.tlength = std::uint32_t(pa_usec_to_bytes(anticipo_us, &formato));
        if (pa_stream_connect_playback(s->flusso, nullptr, &attesa, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0)
            s->segnala(&UscitaAudio::persa, g);
        break;
    }
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        s->pronta = false;
        s->segnala(&UscitaAudio::persa, g);
        break;
    default: break;
    }
}

void UscitaAudio::Stato::stato_flusso(pa_stream* f, void* dati)
{
    auto* s = static_cast<Stato*>(dati);
    const unsigned g = s->generazione;
    switch (pa_stream_get_state(f)) {
    case PA_STREAM_READY:
        s->pronta = true;
        s->segnala(&UscitaAudio::aperta, g);
        break;
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        s->pronta = false;
        s->segnala(&UscitaAudio::persa, g);
        break;
    default: break;
    }
}

// The server asks for more: the song's block, with the wave added on top.
void UscitaAudio::Stato::scrivi(pa_stream* f, std::size_t byte, void* dati)
{
    auto* s = static_cast<Stato*>(dati);
    void* memoria = nullptr;
    if (pa_stream_begin_write(f, &memoria, &byte) < 0 || !memoria) return;
    auto* campioni = static_cast<float*>(memoria);
    const int fotogrammi = int(byte / (2 * sizeof(float)));
    {
        std::lock_guard<std::mutex> fermo(s->miscela);
        if (s->musica)
            s->musica->rendi(campioni, fotogrammi);
        else
            std::fill(campioni, campioni + 2 * fotogrammi, 0.f);
        if (s->onda) {
            const std::vector<float>& onda = *s->onda;
            const std::size_t n = std::min<std::size_t>(onda.size() - s->posizione, std::size_t(2 * fotogrammi));
            for (std::size_t i = 0; i < n; ++i)
                campioni[i] = std::clamp(campioni[i] + onda[s->posizione + i], -1.f, 1.f);
            s->posizione += n;
            if (s->posizione >= onda.size()) s->onda.reset();
        }
    }
    pa_stream_write(f, memoria, std::size_t(fotogrammi) * 2 * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE);
}

UscitaAudio& UscitaAudio::una()
{
    // Lives for the whole run; the stream is closed as the application ends.
    static UscitaAudio* u = [] {
        auto* nuova = new UscitaAudio;
        qAddPostRoutine([] { una().smonta(); });
        return nuova;
    }();
    return *u;
}

UscitaAudio::UscitaAudio() : s_(std::make_unique<Stato>())
{
    s_->uscita = this;
    s_->da_avvio.start();
    s_->riprova.setInterval(riprova_ms);
    connect(&s_->riprova, &QTimer::timeout, this, [this] {
        if (!serve())
            s_->riprova.stop();
        else if (!s_->ciclo)
            collega();
    });
    s_->chiusura.setSingleShot(true);
    connect(&s_->chiusura, &QTimer::timeout, this, &UscitaAudio::controlla_se_serve);
}

UscitaAudio::~UscitaAudio() { smonta(); }

bool UscitaAudio::collegata() const { return s_->pronta; }

bool UscitaAudio::serve() const
{
    return s_->musica_richiesta || (s_->fine_onda_ms >= 0 && s_->da_avvio.elapsed() < s_->fine_onda_ms);
}

bool UscitaAudio::suona(std::shared_ptr<const std::vector<float>> onda)
{
    const qint64 durata_ms = qint64(onda->size() / 2 * 1000 / frequenza);
    {
        std::lock_guard<std::mutex> fermo(s_->miscela);
        s_->onda = std::move(onda);
        s_->posizione = 0;
    }
    s_->fine_onda_ms = s_->da_avvio.elapsed() + durata_ms + anticipo_us / 1000;
    if (!s_->ciclo) collega();
    if (!s_->musica_richiesta) s_->chiusura.start(int(durata_ms) + resta_aperta_ms);
    return s_->pronta;
}

void UscitaAudio::richiedi_musica(bool accesa)
{
    s_->musica_richiesta = accesa;
    if (accesa && !s_->ciclo) collega();
    if (!accesa) s_->chiusura.start(resta_aperta_ms);
}

void UscitaAudio::imposta_musica(Musica* m)
{
    std::lock_guard<std::mutex> fermo(s_->miscela);
    s_->musica = m;
}

void UscitaAudio::togli_musica(Musica* m)
{
    std::lock_guard<std::mutex> fermo(s_->miscela);
    if (s_->musica == m) s_->musica = nullptr;
}

void UscitaAudio::collega()
{
    if (s_->ciclo) return;
    // Where the server cannot be probed, a failed connection is tried again
    // after a second at the soonest, not at every card drawn.
    const bool appena_fallito = s_->fallito_ms >= 0 && s_->da_avvio.elapsed() - s_->fallito_ms < riprova_ms - 100;
    if (appena_fallito || !server_raggiungibile(s_->server_noto)) {
        if (serve()) s_->riprova.start();
        return;
    }
    ++s_->generazione;
    s_->aperta = false;
    s_->ciclo = pa_threaded_mainloop_new();
    pa_proplist* p = proprieta();
    s_->contesto = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(s_->ciclo), nome, p);
    pa_proplist_free(p);
    pa_context_set_state_callback(s_->contesto, Stato::stato_contesto, s_.get());
    if (pa_context_connect(s_->contesto, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 ||
        pa_threaded_mainloop_start(s_->ciclo) < 0) {
        s_->fallito_ms = s_->da_avvio.elapsed();
        smonta();
        if (serve()) s_->riprova.start();
    }
}

void UscitaAudio::smonta()
{
    if (!s_->ciclo) return;
    ++s_->generazione;
    s_->pronta = false;
    pa_threaded_mainloop_lock(s_->ciclo);
    if (s_->flusso) {
        pa_stream_set_write_callback(s_->flusso, nullptr, nullptr);
        pa_stream_set_state_callback(s_->flusso, nullptr, nullptr);
        pa_stream_disconnect(s_->flusso);
        pa_stream_unref(s_->flusso);
        s_->flusso = nullptr;
    }
    pa_context_set_state_callback(s_->contesto, nullptr, nullptr);
    pa_context_disconnect(s_->contesto);
    pa_context_unref(s_->contesto);
    s_->contesto = nullptr;
    pa_threaded_mainloop_unlock(s_->ciclo);
    pa_threaded_mainloop_stop(s_->ciclo);
    pa_threaded_mainloop_free(s_->ciclo);
    s_->ciclo = nullptr;
}

void UscitaAudio::aperta(unsigned generazione)
{
    if (generazione != s_->generazione || !s_->pronta) return;
    s_->riprova.stop();
    s_->aperta = true;
    s_->fallito_ms = -1;
    pa_threaded_mainloop_lock(s_->ciclo);
    if (const char* server = pa_context_get_server(s_->contesto)) s_->server_noto = server;
    pa_threaded_mainloop_unlock(s_->ciclo);
    {
        // A wave asked for while the stream opened is heard; an older one is not.
        std::lock_guard<std::mutex> fermo(s_->miscela);
        if (s_->da_avvio.elapsed() >= s_->fine_onda_ms) s_->onda.reset();
    }
    emit collegamento(true);
}

void UscitaAudio::persa(unsigned generazione)
{
    if (generazione != s_->generazione) return;
    if (!s_->aperta) s_->fallito_ms = s_->da_avvio.elapsed();
    smonta();
    emit collegamento(false);
    if (serve()) s_->riprova.start();
}

void UscitaAudio::controlla_se_serve()
{
    if (serve()) {
        if (!s_->musica_richiesta) s_->chiusura.start(int(s_->fine_onda_ms - s_->da_avvio.elapsed()) + resta_aperta_ms);
        return;
    }
    if (!s_->ciclo) return;
    const bool era = s_->pronta;
    smonta();
    if (era) emit collegamento(false);
}

}  // namespace piattaforma
