// SPDX-License-Identifier: GPL-3.0-or-later
// The check of a player's table before his discard.
#pragma once

// True when the discard may go ahead. A hand that is still full passes at
// once. A table worth less than the opening goes back into the hand whole;
// otherwise only the combinations too short to stay (below three cards for
// the human, below two for the computer) go back.
bool verifica_tavolo(bool umano);
