// SPDX-License-Identifier: GPL-3.0-or-later
// Straights joined through the number order, and the value of a table for the
// 40 points of the opening.
#include "rules/mdTavolata.h"

std::string unisci_sequenza(std::string a, std::string b)
{
    // The trailing blank makes the match end on a whole number.
    if (SEQUENZA_NUMERI.find(b + a + " ") != std::string::npos) return b + a;
    if (SEQUENZA_NUMERI.find(a + b + " ") != std::string::npos) return a + b;
    return a;
}

namespace {
// The human's scan skips a free combination and values straights of three
// cards or more; the computer's stops at the first free combination and
// values a straight of any length. Both differences are the game's own.
Long valore_tavolo(const Tabella2<Byte, 1, 13, 1, 13>& tavolo, bool umano)
{
    Long totale = 0;
    for (long i = 1; i <= 13; ++i) {
        if (tavolo(i, 1) == 0) {
            if (umano) continue;
            break;
        }
        long n = 0;
        while (n < 13 && tavolo(i, n + 1) != 0) ++n;
        if (seme_carta(tavolo(i, 1)) != seme_carta(tavolo(i, 2))) {
            // A set is valued by its third card, so one or two cards add 0.
            long v = numero_carta(tavolo(i, 3));
            if (v > 10) v = 10;
            if (v == 1) v = 11;
            totale += n * v;
        } else if (!umano || n >= 3) {
            for (long k = 1; k <= n; ++k) {
                const long numero = numero_carta(tavolo(i, k));
                long v = numero > 10 ? 10 : numero;
                if (numero == 1 && k == 1) v = 11;
                totale += v;
            }
        }
    }
    return totale;
}
}  // namespace

Long valore_tavolo_umano() { return valore_tavolo(tavolo_umano, true); }
Long valore_tavolo_computer() { return valore_tavolo(tavolo_computer, false); }
bool aperto_umano() { return valore_tavolo_umano() >= 40; }
bool aperto_computer() { return valore_tavolo_computer() >= 40; }
