// SPDX-License-Identifier: GPL-3.0-or-later
// mdTavolata: every table of the game's state, holding the card codes of
// rules/carte.h. There is one game: the tables are module-level and every
// part of the program reads and writes them directly.
#pragma once

#include "platform/basic.h"
#include "rules/carte.h"

#include <string>

using basic::Byte;
using basic::Integer;
using basic::Long;
using basic::Tabella;
using basic::Tabella2;

// The ascending number order of straights: ace above the king, ace below the 2.
inline const std::string SEQUENZA_NUMERI = " 1 13 12 11 10 9 8 7 6 5 4 3 2 1 ";

extern Tabella<Byte, 1, CARTE> mazzo;  // the shuffled deck
extern Integer tallone;  // slot of mazzo last taken from the stock
extern Tabella<Integer, 1, 82> pozzo;  // the discard pile, bottom first
extern Integer n_pozzo;  // cards on the discard pile
extern Tabella<Integer, 1, 14> mano_umano;  // the human's hand (16-bit)
extern Tabella<Byte, 1, 14> mano_computer;  // the computer's hand
extern Tabella2<Byte, 1, 13, 1, 13> tavolo_umano;  // the human's combinations
extern Tabella2<Byte, 1, 13, 1, 13> tavolo_computer;  // the computer's combinations
extern Tabella<Long, 1, 2> punti;  // penalty totals: 1 the human, 2 the computer
extern Tabella<std::string, 1, 2> nomi;  // 2 is never set: the computer has no name
extern std::string fase;  // "000", "010", "011", "100": see the human's turn
extern bool turno_umano;
extern bool inizia_computer;
extern Integer carta_selezionata;
extern Long posizione_selezionata;
extern bool attesa_timer;
extern bool uscita;

// The first empty slot of a hand (the human's when `umano`), 15 when full.
Byte prima_posizione_libera(bool umano);

// After a discard: true when the hand checked is empty, and then the hand is
// scored (the computer's hand: the computer has closed).
bool controlla_chiusura(bool computer);

// Waits t units of 0.6 s on Timer1 while the window keeps handling events.
// Should a new hand be dealt meanwhile, it throws basic::AttesaSuperata
// instead of returning: what waited belonged to the old hand.
void pausa(double t);
// Lets the window handle the events already pending, with the same ending as
// pausa when one of them deals a new hand.
void DoEvents();
// Hands dealt since the program started: every deal counts itself first.
extern long mani_distribuite;
// The tick of Timer1.
void Timer1_Timer();
// Test hook: every pause is multiplied by this (1 in the game).
extern double fattore_pause;
// Test hook: told the length of every pause asked, in units of 0.6 s, before
// it is shrunk (none in the game).
extern void (*ascolta_pausa)(double t);

// Straights: joins the number string b in front of or behind a when the
// result follows SEQUENZA_NUMERI; returns a unchanged otherwise.
std::string unisci_sequenza(std::string a, std::string b);
// The value of a player's combinations reaches the 40 of the opening.
bool aperto_umano();
bool aperto_computer();
// The value of the combinations on a table, as the opening counts it.
Long valore_tavolo_umano();
Long valore_tavolo_computer();

// Sets every table to its state when the window loads (tests start from it).
void azzera_stato();

// The random numbers of the shuffles: uniform single-precision values in
// [0, 1), the generator seeded from the clock at each shuffle. Tests and the
// simulator fix the seed once instead, and the sequence then runs on.
void randomize_timer();
float Rnd();
void fissa_seme(unsigned seme);
