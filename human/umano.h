// SPDX-License-Identifier: GPL-3.0-or-later
// What the procedures of the human's turn share: the places of the hand and
// of the discard pile on the table, the phase code read and written one
// character at a time, and the fit test that decides where a
// marked card joins a combination (laying on the own table and attaching to
// the computer's use the same test).
#pragma once

#include "rules/mdTavolata.h"
#include "ui/mdGraphics.h"

#include <string>

namespace umano {

using Tavolo = Tabella2<Byte, 1, 13, 1, 13>;

// The human's hand lies face up on row 41; slot k is column k.
inline Long riga_mano() { return righe_tavolo - 7; }
// Character n (from 1) of `fase`; a blank when the code is shorter.
inline char carattere_fase(std::size_t n) { return fase.size() >= n ? fase[n - 1] : ' '; }
// Replaces character n of `fase` in place; a shorter code is left alone.
inline void imposta_fase(std::size_t n, char valore)
{
    if (fase.size() >= n) fase[n - 1] = valore;
}

// Cards in the human's hand.
long carte_in_mano();

// Where card c joins combination k of a table that holds n cards (n >= 1):
// a set takes its number in a suit it lacks, at the end; a straight takes the
// number next to its top (in front) or to its bottom (at the end), in its suit.
enum class Aggancio { nessuno, davanti, in_fondo };
Aggancio dove_si_aggancia(Byte c, const Tavolo& tavolo, Long k, Long n);

}  // namespace umano
