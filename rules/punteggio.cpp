// SPDX-License-Identifier: GPL-3.0-or-later
// The end of a hand: the loser's cards are counted, the totals shown on the
// score sheet, and at 101 the game is over.
#include "rules/mdTavolata.h"

#include "platform/dialoghi.h"
#include "ui/foglio_punti.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

void FrmTV::MostraPunteggio(Byte chi)
{
    fase = "000";
    DoEvents();
    prepara_pannello(tela, *picture_score);

    for (long i = 1; i <= 14; ++i) {
        if (chi == 2) {
            if (mano_computer(i) == 0) continue;
            disegna_carta(tela, i, 1, mano_computer(i), false, 0.1);
            punti(2) = punti(2) + valore_in_mano(mano_computer(i));
        } else {
            if (mano_umano(i) == 0) continue;
            punti(chi) = punti(chi) + valore_in_mano(Byte(long(mano_umano(i))));
        }
    }

    foglio_punti::mostra(*this);

    if (punti(chi) >= 101) {
        // The question opens beside the sheet: both totals stay in view.
        const int risposta =
            piattaforma::MsgBox(nomi(chi) + " lost.\nDo you want to play again ?", piattaforma::vbYesNo,
                                piattaforma::vbQuestion, "", foglio_punti::sul_schermo(*this));
        if (risposta == piattaforma::vbYes) {
            punti(1) = 0;
            punti(2) = 0;
            foglio_punti::nascondi(*this);
            gioco_imposta();
        } else {
            Form_Unload();
        }
    }
}

void FrmTV::picture_score_Click()
{
    setMousePointer(13);
    foglio_punti::nascondi(*this);
    inizia_computer = !inizia_computer;
    gioco_imposta();
}
