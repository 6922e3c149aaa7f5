// SPDX-License-Identifier: GPL-3.0-or-later
// Laying down: the two sorts of the hand, the scans for straights and sets,
// and the opening that keeps or takes back what a turn has laid.
#include "computer/mdCompTV.h"

#include "computer/comuni.h"

using basic::Mod;
using namespace computer;

namespace {
// Moves every card whose key is k to the front, for k from the highest key
// down: the hand ends up ascending, and cards with the same key in the
// reverse of their previous order. Key 0 is never moved.
template <class Chiave>
void ordina_per(long chiave_alta, Chiave chiave)
{
    for (long k = chiave_alta; k >= 1; --k) {
        for (long i = 1; i <= 14; ++i) {
            if (chiave(mano_computer(i)) != k) continue;
            const Byte carta = mano_computer(i);
            for (long j = i; j >= 2; --j) mano_computer(j) = mano_computer(j - 1);
            mano_computer(1) = carta;
        }
    }
    disegna_mano(tela(), mano_computer, true, 0);
}

// Lays the run of `conta` cards that goes down from position `cima`.
template <class Seq>
void posa_sequenza(Seq& seq, long cima, long conta)
{
    const long c = prima_combinazione_libera(false);
    if (c == 0) return;  // every column of the table is taken: the cards stay in hand
    for (long k = 1; k <= conta; ++k) {
        const long i = cima - k + 1;
        tavolo_computer(c, k) = seq(i);
        if (aperto_a_inizio) disegna_carta(tela(), c, riga_combinazione(false, k), seq(i), false, 0.1);
        cancella_carta(tela(), i, RIGA_MANO);
        seq(i) = 0;
    }
}

template <class Seq>
bool cala_sequenza_in(Seq& seq, long primo, long ultimo, bool solo_verifica)
{
    // Fewer than four positions are never looked at, so three cards of a suit
    // alone are not a straight to the computer.
    if (ultimo - primo < 3) return false;
    long cima = ultimo;
    for (;;) {
        long conta = 1;
        std::string fila = stringa_numero(seq(cima));
        std::string prossima = stringa_numero(seq(cima - 1));
        // Only position 1 stops the run, not `primo`: a straight may run on
        // into the highest cards of the suit sorted below.
        while (unisci_sequenza(fila, prossima) == fila + prossima) {
            fila += prossima;
            ++conta;
            prossima = conta == cima ? "basta" : stringa_numero(seq(cima - conta));
        }
        if (conta >= 3) {
            if (solo_verifica) return true;
            posa_sequenza(seq, cima, conta);
        }
        --cima;
        if (cima <= primo + 2) return false;
    }
}
}  // namespace

void ordina_per_seme()
{
    ordina_per(52, [](Byte c) { return Mod(c, CARTE_PER_MAZZO); });
}

void ordina_per_numero()
{
    ordina_per(13, [](Byte c) { return long(numero_carta(c)); });
}

void cerca_sequenze()
{
    ordina_per_seme();
    pausa(1);
    long a = 1;
    for (long s = 1; s <= 4; ++s) {
        if (mano_computer(a) == 0) break;
        long b = a;
        while (b <= 14 && seme_carta(mano_computer(b)) == s) ++b;
        // A suit that runs up to slot 14 is passed over.
        if (b <= 14) {
            if (b - a >= 3) cala_sequenza(mano_computer, Integer(a), Integer(b - 1), false);
            a = b;
        }
    }
}

bool cala_sequenza(Tabella<Byte, 1, 14>& sequenza, Integer primo, Integer ultimo, bool solo_verifica)
{
    return cala_sequenza_in(sequenza, primo, ultimo, solo_verifica);
}

bool cala_sequenza(Sequenza& sequenza, Integer primo, Integer ultimo, bool solo_verifica)
{
    return cala_sequenza_in(sequenza, primo, ultimo, solo_verifica);
}

void cerca_tris()
{
    ordina_per_numero();
    pausa(1);
    const long n = conta_carte();
    long attuale = numero_carta(mano_computer(1));
    long a = 1;
    // The last group is never handed over: without a jolly or a gap after
    // them, the highest cards in hand are never laid as a set.
    for (long e = 2; e <= n; ++e) {
        if (numero_carta(mano_computer(e)) == attuale) continue;
        cala_tris(a, e);
        attuale = numero_carta(mano_computer(e));
        a = e;
    }
}

void cala_tris(Long a, Long e)
{
    if (e - a < 3) return;
    // One card of each suit: twins do not count twice.
    Tabella<Byte, 1, 4> scelta;
    long semi = 0;
    for (long s = 1; s <= 4; ++s) {
        for (long i = a; i < e; ++i) {
            if (seme_carta(mano_computer(i)) == s) {
                scelta(s) = mano_computer(i);
                ++semi;
                break;
            }
        }
    }
    if (semi < 3) return;
    const long c = prima_combinazione_libera(false);
    if (c == 0) return;  // every column of the table is taken: the cards stay in hand
    long k = 1;
    for (long s = 1; s <= 4; ++s) {
        const Byte carta = scelta(s);
        if (carta == 0) continue;
        tavolo_computer(c, k) = carta;
        if (aperto_a_inizio) disegna_carta(tela(), c, riga_combinazione(false, k), carta, false, 0.1);
        // The cell erased is a + k, not the card's own: the next sort redraws the row.
        cancella_carta(tela(), a + k, RIGA_MANO);
        for (long i = 1; i <= 14; ++i) {
            if (mano_computer(i) == carta) {
                mano_computer(i) = 0;
                break;
            }
        }
        ++k;
    }
}

Byte prima_combinazione_libera(bool umano)
{
    for (long c = 1; c <= 13; ++c)
        if ((umano ? tavolo_umano(c, 1) : tavolo_computer(c, 1)) == 0) return Byte(c);
    return Byte(0);
}

void verifica_apertura()
{
    if (prima_posizione_libera(false) == 15) return;
    if (!aperto_computer()) {
        for (long c = 1; c <= 13; ++c)
            for (long k = 1; k <= 13 && tavolo_computer(c, k) != 0; ++k)
                mano_computer(prima_posizione_libera(false)) = tavolo_computer(c, k);
        disegna_mano(tela(), mano_computer, true, 0);
        tavolo_computer.azzera();
        return;
    }
    for (long c = 1; c <= 13 && tavolo_computer(c, 1) != 0; ++c) disegna_combinazione(tela(), Byte(c), false);
}
