#include "platform/lettore_wave.h"

namespace piattaforma {
namespace {
QStringList richiesti;
}
void PlaySound(const QString& percorso) { richiesti << percorso; }
namespace prova {
const QStringList& suoni_richiesti() { return richiesti; }
void azzera_suoni() { richiesti.clear(); }
}  // namespace prova
}  // namespace piattaforma
