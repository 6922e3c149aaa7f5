// SPDX-License-Identifier: GPL-3.0-or-later
// Laying the marked card into one of the human's combinations and attaching
// it to one of the computer's: the card joins at the top or the bottom when
// it fits, or takes the place of a jolly standing for it, the jolly coming
// back into the hand.
#include "human/frmJolly.h"
#include "human/umano.h"
#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

using namespace umano;

namespace {

// Some position of combination k already holds a jolly.
bool ha_un_jolly(const Tavolo& tavolo, Long k)
{
    for (long j = 1; j <= 13; ++j)
        if (jolly_sul_tavolo(tavolo(k, j))) return true;
    return false;
}

// Asks the player which card the marked plain jolly stands for and gives
// carta_selezionata the jolly's table code.
void dai_valore_al_jolly()
{
    FrmJolly dialogo(&frmTV());
    dialogo.exec();
    carta_selezionata = codice_jolly(carta_selezionata, basic::Val(frmTV().Tag));
}

// The marked card goes to position p of combination k and leaves the hand.
void colloca(Tavolo& tavolo, Long k, Long p, bool del_umano)
{
    Canvas& tela = frmTV().tela;
    tavolo(k, p) = carta_selezionata;
    cancella_carta(tela, posizione_selezionata, riga_mano());
    disegna_combinazione(tela, Byte(k), del_umano);
    imposta_fase(3, '0');
    mano_umano(posizione_selezionata) = 0;
}

// Card c takes the place of the first jolly of combination k that stands for
// a card of its suit and number, and the jolly goes into the marked slot.
bool scambia_jolly(Tavolo& tavolo, Long k, Byte c, bool del_umano)
{
    Canvas& tela = frmTV().tela;
    for (long j = 1; j <= 13; ++j) {
        const long jolly = tavolo(k, j);
        if (jolly_sul_tavolo(jolly) && basic::Mod(c, CARTE_PER_MAZZO) == basic::Mod(jolly, CARTE_PER_MAZZO)) {
            mano_umano(posizione_selezionata) = jolly_ritirato(jolly);
            tavolo(k, j) = c;
            disegna_carta(tela, posizione_selezionata, riga_mano(), mano_umano(posizione_selezionata), false,
                          del_umano ? 0 : 0.1);
            disegna_combinazione(tela, Byte(k), del_umano);
            // On the computer's side the mark flag stays up, although the
            // jolly drawn into the slot has covered the mark.
            if (del_umano) imposta_fase(3, '0');
            return true;
        }
    }
    return false;
}

// The marked card tried on combination k, which holds at least one card.
void aggiungi(Tavolo& tavolo, Long k, bool del_umano)
{
    Long p = 1;
    while (p <= 13 && tavolo(k, p) != 0) ++p;
    const Byte c = carta_selezionata;
    switch (dove_si_aggancia(c, tavolo, k, p - 1)) {
    case Aggancio::in_fondo: break;
    case Aggancio::davanti:
        for (long i = p; i >= 2; --i) tavolo(k, i) = tavolo(k, i - 1);
        tavolo(k, 1) = c;
        carta_selezionata = tavolo(k, p);
        break;
    case Aggancio::nessuno:
        if (!scambia_jolly(tavolo, k, c, del_umano)) suona_errore();
        return;
    }
    // A full combination has no position 14: the game stops here.
    colloca(tavolo, k, p, del_umano);
}

}  // namespace

void FrmTV::giocata(float X)
{
    if (carattere_fase(2) == '0' || carattere_fase(3) == '0') return;
    // The last card is kept for the discard.
    if (carte_in_mano() == 1) return;
    const Long k = basic::CLng(X);
    if (jolly_semplice(carta_selezionata)) {
        if (ha_un_jolly(tavolo_umano, k)) return;
        dai_valore_al_jolly();
    }
    if (tavolo_umano(k, 1) == 0) {
        colloca(tavolo_umano, k, 1, true);
        return;
    }
    aggiungi(tavolo_umano, k, true);
}

void FrmTV::gioca_attacca(Long X)
{
    if (carattere_fase(2) == '0' || carattere_fase(3) == '0') return;
    if (!aperto_umano()) return;
    if (jolly_semplice(carta_selezionata)) {
        if (ha_un_jolly(tavolo_computer, X)) return;
        dai_valore_al_jolly();
    }
    // Tested only after the jolly has its value: a last jolly is named and
    // then kept.
    if (carte_in_mano() == 1) return;
    if (tavolo_computer(X, 1) == 0) return;
    aggiungi(tavolo_computer, X, false);
}
