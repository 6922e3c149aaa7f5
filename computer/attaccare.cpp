// SPDX-License-Identifier: GPL-3.0-or-later
// Attaching: once it has opened, the computer gets rid of cards by putting
// them at either end of a straight or as the fourth card of a set, first on
// its own table, then on the human's.
#include "computer/mdCompTV.h"

#include "computer/comuni.h"

using namespace computer;

namespace {
using Tavolo = Tabella2<Byte, 1, 13, 1, 13>;

// Phase 1: the hand sorted by suit, each card tried at both ends of every
// straight. True when a card went on a straight.
bool attacca_a_sequenze(Tavolo& tavolo, bool umano, bool& ultima)
{
    bool risultato = false;
    ordina_per_seme();
    for (long i = 1; i <= 14; ++i) {
        // The last card is kept for the discard that closes.
        if (ultima_carta(true)) {
            ultima = true;
            return false;
        }
        const Byte carta = mano_computer(i);
        if (carta == 0 || jolly_sul_tavolo(carta)) continue;
        const std::string s = stringa_numero(carta);
        std::string fila;
        for (long c = 1; c <= 13; ++c) {
            if (tavolo(c, 1) == 0) break;
            long p = 1;
            bool altro_seme = false;
            for (; p <= 13 && tavolo(c, p) != 0; ++p) {
                if (seme_carta(tavolo(c, p)) != seme_carta(carta)) {
                    altro_seme = true;
                    break;
                }
                fila += stringa_numero(tavolo(c, p));
            }
            // The numbers read before the other suit showed up stay in the run
            // and go in front of the next combination's.
            if (altro_seme) continue;
            const std::string unita = unisci_sequenza(fila, s);
            if (unita == fila + s) {
                disegna_carta(tela(), c, riga_combinazione(umano, p), carta, false, 0.1);
                tavolo(c, p) = carta;
                cancella_carta(tela(), i, RIGA_MANO);
                mano_computer(i) = 0;
                risultato = true;
                break;
            }
            if (unita == s + fila) {
                for (long k = p - 1; k >= 1; --k) tavolo(c, k + 1) = tavolo(c, k);
                tavolo(c, 1) = carta;
                mano_computer(i) = 0;
                cancella_carta(tela(), i, RIGA_MANO);
                for (long k = 1; k <= p; ++k)
                    disegna_carta(tela(), c, riga_combinazione(umano, k), tavolo(c, k), false, 0.1);
                risultato = true;
                break;
            }
            fila.clear();
        }
    }
    return risultato;
}

// Phase 2: the hand sorted by number, each card tried as the fourth of a set.
// A card put on a set does not count for the result.
void attacca_a_tris(Tavolo& tavolo, bool umano, bool& ultima)
{
    ordina_per_numero();
    for (long i = 1; i <= 14; ++i) {
        if (ultima_carta(true)) {
            ultima = true;
            return;
        }
        const Byte carta = mano_computer(i);
        // Only on its own table does the computer stop at the first free slot.
        if (!umano && carta == 0) return;
        for (long c = 1; c <= 13; ++c) {
            if (tavolo(c, 1) == 0) break;
            if (seme_carta(tavolo(c, 1)) == seme_carta(tavolo(c, 2)) ||
                numero_carta(tavolo(c, 1)) != numero_carta(carta) || tavolo(c, 4) != 0)
                continue;
            bool stesso_seme = false;
            for (long k = 1; k <= 3; ++k) stesso_seme = stesso_seme || seme_carta(tavolo(c, k)) == seme_carta(carta);
            if (stesso_seme) continue;
            tavolo(c, 4) = carta;
            mano_computer(i) = 0;
            disegna_carta(tela(), c, riga_combinazione(umano, 4), carta, false, 0.1);
            cancella_carta(tela(), i, RIGA_MANO);
            break;
        }
    }
}

bool attacca(Tavolo& tavolo, bool umano)
{
    bool ultima = false;
    const bool risultato = attacca_a_sequenze(tavolo, umano, ultima);
    if (ultima) return false;
    attacca_a_tris(tavolo, umano, ultima);
    return ultima ? false : risultato;
}
}  // namespace

bool attacca_proprie() { return attacca(tavolo_computer, false); }

bool attacca_avversario() { return attacca(tavolo_umano, true); }
