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
// Every file the game asked to play, in order (the path as given).
const QStringList& suoni_richiesti();
void azzera_suoni();
}  // namespace prova

}  // namespace piattaforma
