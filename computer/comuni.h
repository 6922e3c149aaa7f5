// SPDX-License-Identifier: GPL-3.0-or-later
// What the files of the computer player share: the cells of the table it
// draws on and the small rules of jolly codes and number strings.
#pragma once

#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <string>

namespace computer {

inline Canvas& tela() { return frmTV().tela; }

// The computer's hand lies face down on the top row.
constexpr Long RIGA_MANO = 1;
// A plain jolly in hand (codes 53, 54, 107, 108).
inline bool jolly_semplice(long codice) { return basic::Mod(codice - 1, 54) == 52 || basic::Mod(codice - 1, 54) == 53; }
// What the plain jolly j adds to the card it stands for, besides the 108.
inline long extra_jolly(long j) { return 54 * basic::Int(basic::Mod(j - 1, 54) / 53.0); }
// A card's number as straights join it: " 7", " 13"; " 0" for a jolly or an empty slot.
inline std::string stringa_numero(long codice) { return basic::Str(numero_carta(Byte(codice))); }

// Every jolly of the computer's hand that stands for a card goes back to plain.
void ritira_jolly_in_mano();
// The first slot of the computer's hand that holds a card, 0 when none.
Long prima_carta();

}  // namespace computer
