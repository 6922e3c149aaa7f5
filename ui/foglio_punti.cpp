// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/foglio_punti.h"

#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

namespace {
// Paper, nearly opaque: a hint of the table shows through, and dark letters
// on it stay above 4.5 : 1 against anything a card or the felt can put there.
const QColor CARTA(252, 248, 232, 235);
const QColor INCHIOSTRO(16, 16, 16);
const QColor ROSSO(176, 0, 0);

QFont carattere(const QString& famiglia, bool grassetto)
{
    QFont f(famiglia, 12);
    f.setBold(grassetto);
    f.setUnderline(grassetto);
    return f;
}

void veste(Etichetta* e, const QColor& testo)
{
    QPalette pal = e->palette();
    pal.setColor(QPalette::WindowText, testo);
    e->setPalette(pal);
    e->lastra = CARTA;
}

// Loads element i of a label array on the score sheet. An element still
// loaded from a sheet that was never dismissed is used again.
Etichetta* carica_etichetta(FrmTV& f, basic::Tabella<Etichetta*, 0, 2>& schiera, long i)
{
    if (!schiera(i)) {
        schiera(i) = new Etichetta(f.picture_score);
        f.imposta_carattere(schiera(i), carattere(QStringLiteral("Times New Roman"), false));
        veste(schiera(i), INCHIOSTRO);
        schiera(i)->setAlignment(Qt::AlignCenter);
        QObject::connect(schiera(i), &Etichetta::Click, f.picture_score,
                         [] { basic::protetto([] { frmTV().picture_score_Click(); }); });
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
}  // namespace

namespace foglio_punti {

void crea(FrmTV& f)
{
    f.Label5 = new Etichetta(QStringLiteral("Click here to continue"), f.picture_score);
    f.imposta_carattere(f.Label5, carattere(QStringLiteral("MS Sans Serif"), true));
    veste(f.Label5, ROSSO);
    f.Label5->adjustSize();
    QObject::connect(f.Label5, &Etichetta::Click, &f, [&f] { basic::protetto([&] { f.Label5_Click(); }); });

    for (Etichetta** e : {&f.lblName(0), &f.lblScore(0)}) {
        *e = new Etichetta(QStringLiteral("Label1"), f.picture_score);
        f.imposta_carattere(*e, carattere(QStringLiteral("Times New Roman"), false));
        (*e)->hide();
    }
}

void mostra(FrmTV& f)
{
    const double W = larghezza_tavolo / 2.0;
    for (long i = 1; i <= 2; ++i) {
        Etichetta* nome = carica_etichetta(f, f.lblName, i);
        nome->setText(QString::fromStdString(nomi(i)));
        f.posiziona(nome, QRectF((i - 1) * W / 2 + 20, 20, W / 2 - 40, 30));
        nome->show();
        Etichetta* totale = carica_etichetta(f, f.lblScore, i);
        totale->setText(QString::number(punti(i)));
        f.posiziona(totale, QRectF((i - 1) * W / 2 + 20, 60, W / 2 - 40, 30));
        totale->show();
    }
    colloca_invito(f);
    f.Label5->show();
    f.picture_score->show();
    f.picture_score->raise();
}

void nascondi(FrmTV& f)
{
    f.picture_score->hide();
    for (long i = 1; i <= 2; ++i) {
        scarica_etichetta(f.lblName, i);
        scarica_etichetta(f.lblScore, i);
    }
}

void colloca_invito(FrmTV& f)
{
    f.Label5->adjustSize();
    const double sx = f.tavolo->width() / Canvas::larghezza_logica;
    const double sy = f.tavolo->height() / Canvas::altezza_logica;
    const double larghezza = f.Label5->width() / sx;
    f.posiziona(f.Label5, QRectF((larghezza_tavolo / 2.0 - larghezza) / 2, 120, larghezza, f.Label5->height() / sy));
}

QRect sul_schermo(FrmTV& f) { return QRect(f.picture_score->mapToGlobal(QPoint(0, 0)), f.picture_score->size()); }

}  // namespace foglio_punti
