// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suoni.h"

#include "platform/lettore_wave.h"
#include "ui/mdGraphics.h"

void suona_carta() { piattaforma::PlaySound(cartella_programma() + QStringLiteral("/carta.wav")); }

void suona_errore() { piattaforma::PlaySound(cartella_programma() + QStringLiteral("/errore.wav")); }
