// SPDX-License-Identifier: GPL-3.0-or-later
// Cards on a screen of more than one pixel per table unit: drawn from the
// finer pictures beside the classic ones while these belong together, from
// the classic pictures otherwise, and the red mark still found by reading the
// table back.
#include "aiuto/posizione.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QMenuBar>
#include <QTemporaryDir>
#include <QtTest>

namespace {
const QString media = QStringLiteral(TAVOLATA_SORGENTE "/media");
// The human's first hand cell, and the king of spades in the classic sheet and in the finer one.
const QRectF cella(8, 656, 72, 96), re_di_picche(8 * 71, 5 * 96, 71, 96),
    re_di_picche_fine(re_di_picche.topLeft() * 4, re_di_picche.size() * 4);

// The first hand cell on a table of `scala` device pixels per unit, the card
// drawn from part `parte` of `figura`.
QImage carta_disegnata(const QImage& figura, const QRectF& parte, double scala)
{
    Canvas tela;
    tela.ridimensiona(qRound(1024 * scala), qRound(768 * scala));
    tela.PaintPicture(figura, cella, parte);
    return tela.Image().copy(tela.in_pixel(cella));
}

// The mean step between two pictures of one size, over every channel.
double distanza(const QImage& a, const QImage& b)
{
    double somma = 0;
    for (qsizetype i = 0; i < a.sizeInBytes(); ++i) somma += std::abs(a.constBits()[i] - b.constBits()[i]);
    return somma / double(a.sizeInBytes());
}
}  // namespace

class TestAltaRisoluzione : public QObject {
    Q_OBJECT

private slots:
    void il_segno_ritrovato_a_scala_due()
    {
        FrmTV& f = prova::finestra();
        f.resize(qRound(2048 / f.devicePixelRatioF()), qRound(1536 / f.devicePixelRatioF()) + f.menuBar()->height());
        QApplication::processEvents();
        prova::mano_umano_da("AH 2H 3H 4H 5H");
        disegna_mano(f.tela, mano_umano, false, 0);
        fase = "010";
        turno_umano = f.gioco_avviato = true;
        // The second press finds the marked card by the red of the table.
        for (int slot : {2, 5}) f.Form_MouseDown(1, 0, float(prova::x_colonna(slot)), float(prova::y_riga(43)));
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 3H 4H 5H 2H"));
    }

    // The classic and the finer sheet, each simply stretched over the cell:
    // the card shown is much nearer to the one it was drawn from.
    void la_carta_mostrata_data()
    {
        QTest::addColumn<double>("scala");
        QTest::addColumn<QString>("guasto");
        QTest::addColumn<bool>("dalla_fine");
        QTest::newRow("one pixel per unit: the classic sheet") << 1.0 << "" << false;
        QTest::newRow("two pixels per unit: the finer sheet") << 2.0 << "" << true;
        QTest::newRow("classic sheet replaced: the player's own") << 2.0 << "replaced" << false;
        QTest::newRow("finer sheet damaged: the classic one") << 2.0 << "damaged" << false;
        QTest::newRow("finer sheet missing: the classic one") << 2.0 << "missing" << false;
    }
    void la_carta_mostrata()
    {
        QFETCH(double, scala);
        QFETCH(QString, guasto);
        QFETCH(bool, dalla_fine);
        QTemporaryDir cartella;
        for (const char* f : {"totale.bmp", "totale@4x.png", "SfondoTV2.jpg", "dorso.bmp", "dorsorosso.bmp"})
            QVERIFY(QFile::copy(media + "/" + f, cartella.filePath(QString::fromLatin1(f))));
        if (guasto == "replaced")
            QVERIFY(QImage(media + "/totale.bmp").mirrored().save(cartella.filePath("totale.bmp")));
        if (guasto == "damaged") QVERIFY(QFile::resize(cartella.filePath("totale@4x.png"), 100000));
        if (guasto == "missing") QVERIFY(QFile::remove(cartella.filePath("totale@4x.png")));
        imposta_cartella_programma(cartella.path());
        QCOMPARE(carica_immagini(), 0L);
        const QImage mostrata = carta_disegnata(immagine_carte, re_di_picche, scala);
        const double da_fine =
            distanza(mostrata, carta_disegnata(QImage(media + "/totale@4x.png"), re_di_picche_fine, scala));
        const double da_classica = distanza(mostrata, carta_disegnata(immagine_carte.copy(), re_di_picche, scala));
        QVERIFY2((da_fine < da_classica) == dalla_fine,
                 qPrintable(QStringLiteral("finer %1, classic %2").arg(da_fine).arg(da_classica)));
    }
};

QTEST_MAIN(TestAltaRisoluzione)
#include "tst_alta_risoluzione.moc"
