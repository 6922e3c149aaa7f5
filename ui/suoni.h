// SPDX-License-Identifier: GPL-3.0-or-later
// The card sound and the error sound. Neither looks at any setting: the
// caller decides whether the card sound is wanted.
#pragma once

void suona_carta();
void suona_errore();
