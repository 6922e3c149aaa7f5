// SPDX-License-Identifier: GPL-3.0-or-later
// How well a label reads: the contrast ratio (1 to 21, as for web pages)
// between its letters and what lies directly behind each of their pixels.
// The simulator measures every score sheet it saves with it; the test of the
// score sheet measures one.
#pragma once

class QLabel;

namespace simulazione {
// The label is drawn twice with all that lies beneath it, once as it is and
// once with its letters see-through; every pixel the letters change is
// compared, in the letters' colour, with the same pixel without them. The
// lowest ratio met; 0 when no letter shows.
double contrasto_minimo(QLabel* etichetta);
}  // namespace simulazione
