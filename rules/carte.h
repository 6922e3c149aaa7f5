// SPDX-License-Identifier: GPL-3.0-or-later
// The card code, the one number every part of the game passes around.
//
// 0 is an empty slot; 1-54 the first pack, 55-108 the second, the same 54
// cards in the same order. Within a pack k = (code - 1) Mod 54 gives the suit
// Int(k / 13) + 1 (1 hearts, 2 diamonds, 3 clubs, 4 spades, 5 jolly) and the
// number (k Mod 13) + 1 (ace 1 .. king 13, 0 for a jolly): k = 52 is the
// jolly of the first kind (codes 53 and 107), k = 53 the second (54 and 108).
//
// A jolly laid on the table is stored as the first-pack card t (1-52) it
// stands for plus 108 (first kind) or 162 (second kind). Both are multiples of
// 54, so suit and number read the jolly as that card: every rule treats it as
// the card without a special case, and a table card is a jolly exactly when
// its code is above 108.
#pragma once

#include "platform/basic.h"

#include <string>

// The cards of one pack; code c and c + 54 are the same card for every rule.
constexpr long CARTE_PER_MAZZO = 54;
// Both packs: the codes of the cards in play, and the places of the deck.
constexpr long CARTE = 2 * CARTE_PER_MAZZO;
// The plain jollies of the first pack, first and second kind; the second
// pack's are these plus 54.
constexpr long JOLLY_PRIMO = 53;
constexpr long JOLLY_SECONDO = 54;
// What a laid jolly of each kind adds to the card it stands for.
constexpr long SUL_TAVOLO_PRIMO = 108;
constexpr long SUL_TAVOLO_SECONDO = 162;

// Suit 1-5 of a card code, computed with the sign of the dividend: the empty
// code gives k = -1, which Int(k / 13) turns into suit 0.
inline basic::Byte seme_carta(basic::Byte c)
{
    const basic::Integer k = basic::Mod(long(c) - 1, CARTE_PER_MAZZO);
    return basic::Byte(basic::Int(double(k) / 13.0) + 1);
}

// Number 0-13 of a card code: 0 for a jolly in hand and for the empty code.
inline basic::Byte numero_carta(basic::Byte c)
{
    const basic::Integer k = basic::Mod(long(c) - 1, CARTE_PER_MAZZO);
    if (k > 51) return basic::Byte(0);
    return basic::Byte(basic::Mod(k, 13) + 1);
}

// A plain jolly in a hand: codes 53, 54, 107 and 108. An empty slot is none:
// the computer counts its jollies over every slot of its hand.
inline bool jolly_semplice(long codice)
{
    const long k = basic::Mod(codice - 1, CARTE_PER_MAZZO);
    return k == JOLLY_PRIMO - 1 || k == JOLLY_SECONDO - 1;
}

// A jolly laid on the table, standing for a card.
inline bool jolly_sul_tavolo(long codice) { return codice > SUL_TAVOLO_PRIMO; }

// What the plain jolly j adds to the card it stands for, besides the 108:
// 0 for the first kind, 54 for the second.
inline long extra_jolly(long j)
{
    return CARTE_PER_MAZZO * basic::Int(basic::Mod(j - 1, CARTE_PER_MAZZO) / double(JOLLY_SECONDO - 1));
}

// The table code of the plain jolly `jolly` standing for the first-pack card
// `carta`: 108 + carta for the first kind, 162 + carta for the second.
inline long codice_jolly(long jolly, long carta) { return extra_jolly(jolly) + SUL_TAVOLO_PRIMO + carta; }

// A jolly leaving the table comes back as the plain jolly 53 or 54, whatever
// its pack was.
inline basic::Byte jolly_ritirato(long codice)
{
    return basic::Byte(basic::Int(codice / double(SUL_TAVOLO_SECONDO + 1)) + JOLLY_PRIMO);
}

// Penalty of a card left in hand: jolly 25, ace 11, figures 10, others their number.
inline basic::Long valore_in_mano(basic::Byte c)
{
    long v = numero_carta(c);
    if (v > 10) v = 10;
    if (v == 0) v = 25;
    if (v == 1) v = 11;
    return v;
}

// A card's number as straights join it: " 7", " 13"; " 0" for a jolly or an empty slot.
inline std::string stringa_numero(long codice) { return basic::Str(numero_carta(basic::Byte(codice))); }
