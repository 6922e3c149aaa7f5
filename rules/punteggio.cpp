// SPDX-License-Identifier: GPL-3.0-or-later
// The end of a hand: the loser's cards are counted, the totals shown on the
// score sheet, and at 101 the game is over.
#include "rules/mdTavolata.h"

#include "platform/dialoghi.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

namespace {
// Loads element i of a label array on the score sheet. An element still
// loaded from a sheet that was never dismissed is used again.
Etichetta* carica_etichetta(basic::Tabella<Etichetta*, 0, 2>& schiera, long i, QWidget* foglio)
{
    if (!schiera(i)) {
        schiera(i) = new Etichetta(foglio);
        schiera(i)->setFont(schiera(0)->font());
        schiera(i)->setStyleSheet(QStringLiteral("color: white; background: transparent;"));
        QObject::connect(schiera(i), &Etichetta::Click, foglio, [] {
            basic::protetto([] { frmTV().picture_score_Click(); });
        });
    }
    return schiera(i);
}

void scarica_etichetta(basic::Tabella<Etichetta*, 0, 2>& schiera, long i)
{
    if (schiera(i)) {
        schiera(i)->hide();
        schiera(i)->deleteLater();
        schiera(i) = nullptr;
    }
}

void scarica_etichette(FrmTV& f)
{
    for (long i = 1; i <= 2; ++i) {
        scarica_etichetta(f.lblName, i);
        scarica_etichetta(f.lblScore, i);
    }
}
}  // namespace

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

    const double W = larghezza_tavolo / 2.0;
    for (long i = 1; i <= 2; ++i) {
        Etichetta* nome = carica_etichetta(lblName, i, picture_score);
        nome->setText(QString::fromStdString(nomi(i)));
        posiziona(nome, QRectF((i - 1) * W / 2 + 20, 20, W / 2 - 40, 30));
        nome->show();
        Etichetta* totale = carica_etichetta(lblScore, i, picture_score);
        totale->setText(QString::number(punti(i)));
        posiziona(totale, QRectF((i - 1) * W / 2 + 20, 60, W / 2 - 40, 30));
        totale->show();
    }
    Label5->adjustSize();
    const double scala = tavolo->width() / Canvas::larghezza_logica;
    const double larghezza5 = Label5->width() / scala;
    posiziona(Label5, QRectF((W - larghezza5) / 2, 120, larghezza5, Label5->height() / scala));
    Label5->show();
    picture_score->show();
    picture_score->raise();

    if (punti(chi) >= 101) {
        const int risposta = piattaforma::MsgBox(nomi(chi) + " lost.\nDo you want to play again ?",
                                                 piattaforma::vbYesNo, piattaforma::vbQuestion);
        if (risposta == piattaforma::vbYes) {
            punti(1) = 0;
            punti(2) = 0;
            scarica_etichette(*this);
            picture_score->hide();
            gioco_imposta();
        } else {
            Form_Unload();
        }
    }
}

void FrmTV::picture_score_Click()
{
    setMousePointer(13);
    picture_score->hide();
    scarica_etichette(*this);
    inizia_computer = !inizia_computer;
    gioco_imposta();
}
