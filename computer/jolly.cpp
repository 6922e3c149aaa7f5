// SPDX-License-Identifier: GPL-3.0-or-later
// The computer's jollies: a jolly of the hand is given the card that would
// complete a straight or a set, and jollies standing on either table are won
// back with the real card.
#include "computer/mdCompTV.h"

#include "computer/comuni.h"

using basic::Mod;
using namespace computer;

namespace {
// Swaps the jolly at (c, k) of a table for the real card from the hand, if
// the hand holds it; true when it did.
bool scambia_da(Tabella2<Byte, 1, 13, 1, 13>& tavolo, bool umano, long c, long k)
{
    const Byte jolly = tavolo(c, k);
    for (long i = 1; i <= 14; ++i) {
        const Byte carta = mano_computer(i);
        if (numero_carta(carta) != numero_carta(jolly) || seme_carta(carta) != seme_carta(jolly)) continue;
        tavolo(c, k) = carta;
        mano_computer(i) = jolly_ritirato(jolly);
        disegna_combinazione(tela(), Byte(c), umano);
        // The pause differs between the two sides; a back is drawn without one anyway.
        disegna_carta(tela(), i, RIGA_MANO, mano_computer(i), true, umano ? 0.1 : 0);
        return true;
    }
    return false;
}
}  // namespace

bool usa_jolly()
{
    jolly_computer = conta_jolly();
    if (jolly_computer == 0) return false;
    ritira_jolly_in_mano();
    long j = 0, q = 0;
    for (long i = 1; i <= 14 && q == 0; ++i) {
        if (jolly_semplice(mano_computer(i))) {
            j = mano_computer(i);
            q = i;
        }
    }
    // Both are tried with the same jolly and slot, even after the straight has
    // taken it; the slot is the one found before their sorts.
    bool risultato = jolly_in_sequenza(Byte(j), Byte(q));
    if (jolly_in_tris(Byte(j), Byte(q))) risultato = true;
    return risultato;
}

bool jolly_in_sequenza(Byte j, Byte q)
{
    ordina_per_seme();
    const long extra = extra_jolly(j);
    long a = 1;
    for (long s = 1; s <= 4; ++s) {
        long b = a;
        while (b <= 14 && seme_carta(mano_computer(b)) == s) ++b;
        if (b - a >= 2) {
            // The block of the suit with one free position, the gap, which
            // starts at the top and moves down one card at a time.
            const long n = b - a + 1;
            Sequenza candidata(n);
            for (long g = 1; g < n; ++g) candidata(g) = mano_computer(a + g - 1);
            for (long g = n; g >= 2; --g) {
                if (numero_carta(candidata(g - 1)) != 13) {
                    candidata(g) = Byte(Mod(candidata(g - 1) + 1, CARTE_PER_MAZZO) + SUL_TAVOLO_PRIMO + extra);
                    if (cala_sequenza(candidata, 1, Integer(n), true)) {
                        mano_computer(q) = candidata(g);
                        return true;
                    }
                }
                if (g != n) {
                    // One below an ace of hearts is no card at all; kept as it is.
                    candidata(g) = Byte(Mod(candidata(g + 1) - 1, CARTE_PER_MAZZO) + SUL_TAVOLO_PRIMO + extra);
                    if (cala_sequenza(candidata, 1, Integer(n), true)) {
                        mano_computer(q) = candidata(g);
                        return true;
                    }
                }
                candidata(g) = candidata(g - 1);
            }
        }
        a = b;
    }
    return false;
}

bool jolly_in_tris(Byte j, Byte q)
{
    ordina_per_numero();
    const long extra = extra_jolly(j);
    for (long n = 13; n >= 1; --n) {
        long k1 = 0;
        for (long i = q - 1; i >= 1 && k1 == 0; --i)
            if (numero_carta(mano_computer(i)) == n) k1 = i;
        long k2 = 0;
        for (long i = k1; i >= 1 && k2 == 0; --i)
            if (numero_carta(mano_computer(i)) != n) k2 = i;
        if (k1 - k2 < 2) continue;
        // Twins of one suit count once.
        Tabella<bool, 1, 4> presente;
        long semi = 0;
        for (long i = k2 + 1; i <= k1; ++i) {
            const long s = seme_carta(mano_computer(i));
            if (!presente(s)) {
                presente(s) = true;
                ++semi;
            }
        }
        if (semi < 2) continue;
        for (long s = 1; s <= 4; ++s) {
            if (presente(s)) continue;
            mano_computer(q) = Byte(SUL_TAVOLO_PRIMO + (n + (s - 1) * 13) + extra);
            return true;
        }
    }
    return false;
}

void scambia_jolly()
{
    for (long c = 1; c <= 13; ++c) {
        for (long k = 1; k <= 13; ++k) {
            // A jolly of the computer's that the hand cannot win back hides
            // the human's card at the same place from this scan.
            if (jolly_sul_tavolo(tavolo_computer(c, k))) {
                if (scambia_da(tavolo_computer, false, c, k)) break;
            } else if (jolly_sul_tavolo(tavolo_umano(c, k))) {
                if (scambia_da(tavolo_umano, true, c, k)) break;
            }
        }
    }
}
