// SPDX-License-Identifier: GPL-3.0-or-later
// What the files of the computer player share: the cells of the table it
// draws on.
#pragma once

#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <string>

namespace computer {

inline Canvas& tela() { return frmTV().tela; }

// The computer's hand lies face down on the top row.
constexpr Long RIGA_MANO = 1;

// Every jolly of the computer's hand that stands for a card goes back to plain.
void ritira_jolly_in_mano();
// The first slot of the computer's hand that holds a card, 0 when none.
Long prima_carta();

}  // namespace computer
