// SPDX-License-Identifier: GPL-3.0-or-later
// The first act of every turn of the human: a card from the stock or, once
// he has opened, the top card of the discard pile.
#include "human/umano.h"
#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

using namespace umano;

void FrmTV::gioca_proposta_pescare_tallone()
{
    if (carattere_fase(2) == '1') return;
    tallone = tallone + 1;
    const Long k = prima_posizione_libera(true);
    mano_umano(k) = mazzo(tallone);
    disegna_carta(tela, k, riga_mano(), mazzo(tallone), false, 0);
    imposta_fase(2, '1');

    if (tallone == CARTE) {
        // The last card of the stock: the discard pile becomes the new stock.
        Rimescola();
        n_pozzo = 0;
        disegna_carta(tela, colonna_tallone(), riga_pozzo(), mazzo(28), true, 0);
        cancella_carta(tela, colonna_pozzo(), riga_pozzo());
        tallone = 27;
    } else {
        // The stock shows the back of the very card that comes next.
        disegna_carta(tela, colonna_tallone(), riga_pozzo(), mazzo(tallone + 1), true, 0);
    }
}

void FrmTV::gioca_proposta_pescare_pozzo()
{
    if (carattere_fase(2) == '1') return;
    if (!aperto_umano()) {
        suona_errore();
        return;
    }
    const Long k = prima_posizione_libera(true);
    if (k <= 14) {
        mano_umano(k) = pozzo(n_pozzo);
        disegna_carta(tela, k, riga_mano(), pozzo(n_pozzo), false, 0);
    }
    // With a single card on the pile this reads below its bottom and the game
    // stops, the card already in the hand: the empty pile is never shown here.
    disegna_carta(tela, colonna_pozzo(), riga_pozzo(), pozzo(n_pozzo - 1), false, 0);
    if (n_pozzo == 1) cancella_carta(tela, colonna_pozzo(), riga_pozzo());
    n_pozzo = n_pozzo - 1;
    imposta_fase(2, '1');
}
