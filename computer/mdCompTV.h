// SPDX-License-Identifier: GPL-3.0-or-later
// mdCompTV: the computer player. One call of turno_computer plays the
// computer's whole turn, from the draw to the discard, straight on the shared
// tables of mdTavolata. The scans are simple on purpose: the computer lays
// whatever they find, in the order they find it.
#pragma once

#include "rules/mdTavolata.h"

#include <vector>

// Set afresh at the start of every turn of the computer.
extern Byte carte_computer;  // cards in hand after the draw
extern Byte jolly_computer;  // plain jollies in hand
extern bool aperto_a_inizio;  // the computer had opened when the turn began

// A row of card codes the computer puts together to try a card or a jolly in
// a straight before it commits to it: positions 1 to n, checked like a table.
class Sequenza {
public:
    explicit Sequenza(long n) : v_(std::size_t(n)) {}
    Byte& operator()(long i)
    {
        if (i < 1 || i > alto()) basic::errore(9);
        return v_[std::size_t(i - 1)];
    }
    long alto() const { return long(v_.size()); }

private:
    std::vector<Byte> v_;
};

// ----- the turn, the draw and the discard (turno.cpp)
void turno_computer();
// True when the top of the discard pile is worth taking.
bool conviene_pozzo();
void pesca_pozzo_computer();
void pesca_tallone_computer();
void scarta_computer();
// The slot of a card whose twin (same suit and number) is also in hand, the
// later of the two; 0 when there is none.
Byte cerca_doppione();
// True when the hand (the computer's when `computer`) holds exactly one card.
bool ultima_carta(bool computer);
Byte conta_carte();
Byte conta_jolly();

// ----- laying down and opening (calare.cpp)
void ordina_per_seme();
void ordina_per_numero();
void cerca_sequenze();
// Looks for runs of three or more in positions up to `ultimo`; lays them on
// the computer's table, or with `solo_verifica` only tells whether there is one.
bool cala_sequenza(Tabella<Byte, 1, 14>& sequenza, Integer primo, Integer ultimo, bool solo_verifica);
bool cala_sequenza(Sequenza& sequenza, Integer primo, Integer ultimo, bool solo_verifica);
void cerca_tris();
// Lays a three of a kind or a quartet from the group in slots primo to fine - 1.
void cala_tris(Long primo, Long fine);
// The first free combination of a table (the computer's unless `umano`), 0 when none.
Byte prima_combinazione_libera(bool umano);
void verifica_apertura();

// ----- jollies (jolly.cpp)
bool usa_jolly();
bool jolly_in_sequenza(Byte j, Byte q);
bool jolly_in_tris(Byte j, Byte q);
void scambia_jolly();

// ----- attaching (attaccare.cpp)
bool attacca_proprie();
bool attacca_avversario();
