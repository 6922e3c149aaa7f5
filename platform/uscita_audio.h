// SPDX-License-Identifier: GPL-3.0-or-later
// The game's one way out to the sound server: a single stream that carries
// the song and the one wave channel mixed together, named after the game in
// the desktop's sound settings.
//
// The stream exists only while there is something to play: a song that is on,
// or a wave still sounding (and a few seconds after it, so that the sounds of
// a hand in progress do not open it afresh each time). Idle, the game holds no
// connection and no sound thread. When the server goes away the stream is let
// go; while a song is on, the output looks for the server again every second
// and opens a new stream as soon as it is back. Without a server nothing
// waits and nothing is rendered.
#pragma once

#include <QObject>

#include <memory>
#include <vector>

namespace piattaforma {

class UscitaAudio : public QObject {
    Q_OBJECT
public:
    // The stream's samples: interleaved stereo floats at this rate.
    static constexpr int frequenza = 44100;

    // Whatever renders the song. rendi() runs on the sound thread and writes
    // (not adds) `fotogrammi` interleaved stereo frames.
    class Musica {
    public:
        virtual ~Musica() = default;
        virtual void rendi(float* stereo, int fotogrammi) = 0;
    };

    static UscitaAudio& una();

    // Plays a wave, interleaved stereo at `frequenza`, in place of the one
    // sounding. True when a stream on a server is open to take it now; the
    // first sound after a quiet spell waits for the stream to open.
    bool suona(std::shared_ptr<const std::vector<float>> onda);

    // While a song is on the output keeps its stream, or looks for the server
    // again after losing it.
    void richiedi_musica(bool accesa);
    // The song's renderer joins the mix (only while collegata()); togli_musica
    // takes it out again, once the block being rendered is done.
    void imposta_musica(Musica* m);
    void togli_musica(Musica* m);

    // A stream on a server is open.
    bool collegata() const;

signals:
    // The stream has opened (true) or is gone (false). On the window's thread.
    void collegamento(bool collegata);

private:
    UscitaAudio();
    ~UscitaAudio() override;
    void collega();
    void smonta();
    void aperta(unsigned generazione);
    void persa(unsigned generazione);
    bool serve() const;
    void controlla_se_serve();

    struct Stato;
    std::unique_ptr<Stato> s_;
};

}  // namespace piattaforma
