// SPDX-License-Identifier: GPL-3.0-or-later
// The wave player: plays a wave file asynchronously on one channel, as the
// system call of the classic toolkit does. A new sound replaces one still
// playing; nothing ever waits for a sound; a file that is missing or cannot be
// read plays a short default sound instead. Works without an audio device.
#pragma once

#include <QString>
#include <QStringList>

namespace piattaforma {

void PlaySound(const QString& percorso);

namespace prova {
// Every file the game asked to play, in order (the path as given), kept
// only while the test hook is on.
const QStringList& suoni_richiesti();
void azzera_suoni();

// What the channel took on at the last request.
struct SuonoSuonato {
    QString percorso;  // as requested
    bool predefinito = false;  // the file could not be read: the default sound instead
    long durata_ms = 0;  // of the samples handed to the channel
    bool su_dispositivo = false;  // a sound device took it (false without one)
};
SuonoSuonato ultimo_suono();
}  // namespace prova

}  // namespace piattaforma
