// SPDX-License-Identifier: GPL-3.0-or-later
// The computer's turn: the draw from the stock or the discard pile, the
// laying down, the jollies and the attaching, the discard and the hand-over.
#include "computer/mdCompTV.h"

#include "computer/comuni.h"

#include <array>
#include <cstdint>
#include <set>

using basic::Mod;
using namespace computer;

Byte carte_computer;
Byte jolly_computer;
bool aperto_a_inizio = false;

void computer::ritira_jolly_in_mano()
{
    for (long i = 1; i <= 14; ++i)
        if (jolly_sul_tavolo(mano_computer(i))) mano_computer(i) = jolly_ritirato(mano_computer(i));
}

Long computer::prima_carta()
{
    for (long i = 1; i <= 14; ++i)
        if (mano_computer(i) != 0) return i;
    return 0;
}

namespace {
// The computer's hand and both tables, card by card.
using Fotografia = std::array<std::uint8_t, 14 + 2 * 13 * 13>;
Fotografia fotografia()
{
    Fotografia f{};
    std::size_t n = 0;
    for (long i = 1; i <= 14; ++i) f[n++] = mano_computer(i).valore();
    for (long c = 1; c <= 13; ++c)
        for (long k = 1; k <= 13; ++k) {
            f[n++] = tavolo_computer(c, k).valore();
            f[n++] = tavolo_umano(c, k).valore();
        }
    return f;
}
}  // namespace

void turno_computer()
{
    aperto_a_inizio = aperto_computer();
    pausa(0.5);
    if (aperto_a_inizio && conviene_pozzo())
        pesca_pozzo_computer();
    else
        pesca_tallone_computer();
    pausa(0.5);
    carte_computer = conta_carte();
    jolly_computer = conta_jolly();

    if (carte_computer >= 4) {
        // Goes round while a jolly gets a card. A jolly of the hand swapped
        // back and forth with a table jolly standing for the same card would
        // keep it going for good: the round stops once a pass has brought the
        // hand and both tables back to a state already seen in this turn.
        std::set<Fotografia> visti;
        do {
            cerca_sequenze();
            pausa(0.25);
            cerca_tris();
            pausa(0.25);
            if (aperto_computer()) {
                scambia_jolly();
                pausa(0.25);
            }
        } while (usa_jolly() && visti.insert(fotografia()).second);
        if (!aperto_a_inizio) verifica_apertura();
    }

    if (aperto_computer()) {
        scambia_jolly();
        pausa(0.25);
        do {
            pausa(0.25);
        } while (attacca_proprie());
        do {
            pausa(0.25);
        } while (attacca_avversario());
    }

    scarta_computer();
    if (!controlla_chiusura(true)) turno_umano = true;
}

bool conviene_pozzo()
{
    const Byte t = Byte(long(pozzo(n_pozzo)));
    // The remainder of the code itself: an empty slot matches a top card 54 or
    // 108, so that jolly is never taken while the hand has a free slot.
    for (long i = 1; i <= 14; ++i)
        if (Mod(mano_computer(i), CARTE_PER_MAZZO) == Mod(t, CARTE_PER_MAZZO)) return false;
    const long s = seme_carta(t);
    const long n = numero_carta(t);

    ordina_per_seme();
    long a = 1;
    while (a <= 14 && seme_carta(mano_computer(a)) != s) ++a;
    long b = a;
    while (b <= 14 && seme_carta(mano_computer(b)) == s) ++b;
    if (b - a >= 2) {
        // The block of the suit with the top card in its place by number.
        Sequenza candidata(b - a + 1);
        long g = 1;
        bool messa = false;
        for (long i = a; i < b; ++i) {
            if (!messa && numero_carta(mano_computer(i)) > n) {
                candidata(g++) = t;
                messa = true;
            }
            candidata(g++) = mano_computer(i);
        }
        if (!messa) candidata(g) = t;
        if (cala_sequenza(candidata, 1, Integer(b - a + 1), true)) return true;
    }

    ordina_per_numero();
    a = 1;
    while (a <= 14 && numero_carta(mano_computer(a)) != n) ++a;
    b = a;
    while (b <= 14 && numero_carta(mano_computer(b)) == n) ++b;
    return b - a >= 2;
}

void pesca_pozzo_computer()
{
    const Byte t = Byte(long(pozzo(n_pozzo)));
    const long i = prima_posizione_libera(false);
    mano_computer(i) = t;
    disegna_carta(tela(), i, RIGA_MANO, t, true, 0);
    // A pile of one card has nothing beneath it: the computer's take shows
    // the empty pile instead of reading a slot that does not exist (the
    // human's take of such a pile still stops the game there).
    if (n_pozzo == 1)
        cancella_carta(tela(), colonna_pozzo(), riga_pozzo());
    else
        disegna_carta(tela(), colonna_pozzo(), riga_pozzo(), Byte(long(pozzo(n_pozzo - 1))), false, 0.1);
    n_pozzo = n_pozzo - 1;
}

void pesca_tallone_computer()
{
    tallone = tallone + 1;
    const long i = prima_posizione_libera(false);
    mano_computer(i) = mazzo(tallone);
    disegna_carta(tela(), i, RIGA_MANO, mazzo(tallone), true, 0);
    if (tallone == CARTE) {
        frmTV().Rimescola();
        n_pozzo = 0;
        disegna_carta(tela(), colonna_tallone(), riga_pozzo(), mazzo(28), true, 0);
        cancella_carta(tela(), colonna_pozzo(), riga_pozzo());
        tallone = 27;
    } else {
        // The stock shows the back of the very card that comes next.
        disegna_carta(tela(), colonna_tallone(), riga_pozzo(), mazzo(tallone + 1), true, 0);
    }
}

void scarta_computer()
{
    ritira_jolly_in_mano();
    long p = 0;
    if (ultima_carta(true)) {
        p = prima_carta();
    } else if (const long doppione = cerca_doppione(); doppione > 0) {
        p = doppione;
    } else {
        // The lowest card goes first, so aces and jollies stay in hand to the
        // end although they cost the most when the human closes.
        for (long k = 2; k <= 13 && p == 0; ++k)
            for (long i = 1; i <= 14 && p == 0; ++i)
                if (numero_carta(mano_computer(i)) == k) p = i;
        if (p == 0) p = prima_carta();
    }
    cancella_carta(tela(), p, RIGA_MANO);
    disegna_carta(tela(), colonna_pozzo(), riga_pozzo(), mano_computer(p), false, 0);
    n_pozzo = n_pozzo + 1;
    pozzo(n_pozzo) = long(mano_computer(p));
    mano_computer(p) = 0;
}

Byte cerca_doppione()
{
    for (long i = 14; i >= 1; --i) {
        const Byte carta = mano_computer(i);
        if (numero_carta(carta) == 0) continue;
        for (long j = i - 1; j >= 1; --j)
            if (numero_carta(mano_computer(j)) == numero_carta(carta) &&
                seme_carta(mano_computer(j)) == seme_carta(carta))
                return Byte(i);
    }
    return Byte(0);
}

bool ultima_carta(bool computer)
{
    long n = 0;
    for (long i = 1; i <= 14; ++i) n += (computer ? long(mano_computer(i)) : long(mano_umano(i))) > 0;
    return n == 1;
}

Byte conta_carte()
{
    long n = 0;
    for (long i = 1; i <= 14; ++i) n += mano_computer(i) > 0;
    return Byte(n);
}

Byte conta_jolly()
{
    long n = 0;
    for (long i = 1; i <= 14; ++i) n += jolly_semplice(mano_computer(i));
    return Byte(n);
}
