// SPDX-License-Identifier: GPL-3.0-or-later
// The score sheet's labels: the two names and the two totals, loaded over the
// shaded copy of the table when a hand ends and unloaded when the sheet is
// dismissed, and "Click here to continue" centred under them. Each caption
// stands on a paper plate of its own, so that it reads over any card that
// lies beneath the sheet.
#pragma once

#include <QRect>

class FrmTV;

namespace foglio_punti {
// The labels that live as long as the window: "Click here to continue" and
// element 0 of the two label arrays.
void crea(FrmTV& f);
// Loads lblName(i) and lblScore(i) of both players with their names and
// totals, places them and "Click here to continue", and shows the sheet on
// top of the table.
void mostra(FrmTV& f);
// Hides the sheet and unloads the labels of both players.
void nascondi(FrmTV& f);
// Centres "Click here to continue" on the sheet at the size of its letters.
void colloca_invito(FrmTV& f);
// The sheet on the screen, in global pixels: what the end-of-game question
// must leave in view.
QRect sul_schermo(FrmTV& f);
}  // namespace foglio_punti
