// SPDX-License-Identifier: GPL-3.0-or-later
// A copy of every table of the game taken between two moves, and the small
// facts about cards the simulator needs to judge what a move did.
#pragma once

#include "rules/carte.h"

#include <array>
#include <cstdint>
#include <string>

namespace simulazione {

struct Istantanea {
    std::array<long, CARTE + 1> mazzo{};  // slots 1-108
    long tallone = 0;
    std::array<long, 83> pozzo{};  // slots 1-82
    long n_pozzo = 0;
    std::array<long, 15> mano_umano{}, mano_computer{};  // slots 1-14
    std::array<std::array<long, 14>, 14> tavolo_umano{}, tavolo_computer{};  // (1-13, 1-13)
    std::array<long, 3> punti{};
    std::string fase;
    bool turno_umano = false;
    bool inizia_computer = false;
    long carta_selezionata = 0;
    long posizione_selezionata = 0;

    bool operator==(const Istantanea&) const = default;
};

Istantanea fotografa();
// Folds the text or every table of `s` into the running hash `h` (FNV-1a).
std::uint64_t impronta(std::uint64_t h, const std::string& testo);
std::uint64_t impronta(std::uint64_t h, const Istantanea& s);

// The physical card a code stands for: 0-51 a card (both packs alike),
// JOLLY for any jolly, plain or standing on the table; -1 for an empty slot.
constexpr int JOLLY = 52;
int classe_carta(long codice);

// Suit 1-5 and number 0-13 as the game reads them (a standing jolly as the
// card it stands for).
int seme(long codice);
int numero(long codice);
// A plain jolly: 53, 54, 107, 108.
bool jolly_semplice(long codice);
// Penalty of a card left in hand: jolly 25, ace 11, figures 10, the rest its number.
long penalita(long codice);

// How many cards of each physical kind are in play: both hands, both tables,
// the live part of the pile and what is left of the stock.
std::array<int, JOLLY + 1> conta_carte(const Istantanea& s);
// The 108 cards of a fresh deal: every card twice, four jollies.
std::array<int, JOLLY + 1> carte_di_un_mazzo();

// Cards in a combination, up to its first empty position.
int lunghezza(const std::array<long, 14>& combinazione);
bool mano_vuota(const std::array<long, 15>& mano);
bool tavolo_vuoto(const std::array<std::array<long, 14>, 14>& tavolo);

// Readable dumps for failure reports.
std::string testo_mano(const std::array<long, 15>& mano);
std::string testo_tavolo(const std::array<std::array<long, 14>, 14>& tavolo);
std::string testo_stato(const Istantanea& s);

}  // namespace simulazione
