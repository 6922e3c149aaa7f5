// SPDX-License-Identifier: GPL-3.0-or-later
// The drawing module: which picture lands in which cell, the grid, the
// pauses of the drawing, and the shaded score sheet.
#include "aiuto/posizione.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

class TestDisegno : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void colonne_e_righe_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<int>("colonna");
        QTest::newRow("left margin") << 7.0 << 0;
        QTest::newRow("first column") << 8.0 << 1;
        QTest::newRow("end of the first") << 79.9 << 1;
        QTest::newRow("second column") << 80.0 << 2;
        QTest::newRow("left of the window") << -1.0 << 0;
    }
    void colonne_e_righe()
    {
        QFETCH(double, x);
        QFETCH(int, colonna);
        QCOMPARE(long(colonna_da_x(float(x))), long(colonna));
        QCOMPARE(long(riga_da_y(15)), 0L);
        QCOMPARE(long(riga_da_y(16)), 1L);
        QCOMPARE(long(riga_da_y(767)), 47L);
    }

    // A card drawn over the 5 of hearts: what the cell shows then (the face
    // of the card named, or the back of its pack), and the rustle heard.
    void carte_coperte_e_scoperte_data()
    {
        QTest::addColumn<int>("codice");
        QTest::addColumn<bool>("coperta");
        QTest::addColumn<QString>("mostra");
        QTest::newRow("face of the 7 of clubs") << 33 << false << "7C";
        QTest::newRow("second pack face") << 87 << false << "7C";
        QTest::newRow("the first pack's last card: its back") << 54 << true << "AH";
        QTest::newRow("the second pack's first card: the red back") << 55 << true << "AH'";
        QTest::newRow("second-pack jolly back") << 108 << true << "AH'";
        QTest::newRow("table jolly shows the jolly face") << 141 << false << "J1";
        QTest::newRow("second-kind table jolly face") << 195 << false << "J2";
        QTest::newRow("table jolly back is the first pack's") << 195 << true << "AH";
        QTest::newRow("code 0 draws nothing") << 0 << false << "5H";
    }
    void carte_coperte_e_scoperte()
    {
        QFETCH(int, codice);
        QFETCH(bool, coperta);
        QFETCH(QString, mostra);
        FrmTV& f = frmTV();
        disegna_carta(f.tela, 5, 24, Byte(5), false, 0);
        prova::azzera_suoni();
        QCOMPARE(disegna_carta(f.tela, 5, 24, Byte(codice), coperta, 0.1), codice != 0);
        QVERIFY(prova::cella_mostra(5, 24, prova::carta(mostra.toStdString()), coperta));
        QCOMPARE(prova::quanti_suoni("carta.wav"), int(codice != 0 && !coperta));
    }

    // The pauses at real speed, 0.1 unit being 60 ms: a face-up card waits,
    // a face-down one never does; a pause lets events through, and a pause
    // begun inside it shares its timer and flag, so its end ends both.
    void le_pause()
    {
        FrmTV& f = frmTV();
        fattore_pause = 1;
        bool gestito = false;
        QTimer::singleShot(10, [&] {
            gestito = true;
            pausa(0.1);
        });
        QElapsedTimer t;
        t.start();
        pausa(2);
        const qint64 annidata = t.restart();
        disegna_carta(f.tela, 2, 24, Byte(20), false, 0.25);
        const qint64 scoperta = t.restart();
        disegna_carta(f.tela, 2, 24, Byte(20), true, 1);
        const qint64 coperta = t.elapsed();
        fattore_pause = 0;
        QVERIFY(gestito);
        QVERIFY2(annidata < 800, QByteArray::number(annidata));
        QVERIFY2(scoperta >= 140 && scoperta < 1000, QByteArray::number(scoperta));
        QVERIFY2(coperta < 100, QByteArray::number(coperta));
    }

    // The table keeps its drawing calls, not its pixels: any part of it,
    // painted alone, is what the whole table shows there, wherever the part
    // cuts through the felt, a card, a card half covered or the red frame.
    void una_parte_come_il_tutto_data()
    {
        QTest::addColumn<double>("scala");
        QTest::newRow("one pixel a unit") << 1.0;
        QTest::newRow("1366 x 768") << 1366 / 1024.0;
        QTest::newRow("1920 x 1080") << 1.875;
        QTest::newRow("3840 x 2160") << 3.75;
    }
    void una_parte_come_il_tutto()
    {
        QFETCH(double, scala);
        Canvas tela;
        tela.ridimensiona(qRound(1024 * scala), qRound(768 * scala));
        const QRectF tutto(0, 0, 1024, 768), cella(872, 320, 72, 96);
        tela.PaintPicture(immagine_sfondo, tutto, tutto);
        tela.PaintPicture(immagine_carte, cella, QRectF(71, 0, 71, 96));
        tela.PaintPicture(immagine_carte, cella.translated(0, 16), QRectF(142, 96, 71, 96));
        tela.PaintPicture(dorsi(1), cella.translated(72, 0), QRectF(0, 0, 72, 96));
        tela.PaintPicture(immagine_sfondo, cella.translated(72, 0), cella.translated(72, 0));
        tela.RettangoloVuoto(874, 338, 942, 430, qRgb(255, 0, 0), 2);
        const QImage intera = tela.Image();
        const QRect zona = tela.in_pixel(QRectF(820, 280, 204, 180));
        for (int y = zona.top(); y < zona.bottom(); y += 37)
            for (int x = zona.left(); x < zona.right(); x += 41) {
                const QRect parte = QRect(x, y, 41 + x % 7, 37 + y % 5).intersected(intera.rect());
                QCOMPARE(tela.Image(parte), intera.copy(parte));
            }
        const QPoint rosso = tela.in_pixel(QRectF(874, 380, 1, 1)).topLeft();
        QCOMPARE(tela.Point(874, 380), 255L);
        QCOMPARE(intera.pixel(rosso), qRgb(255, 0, 0));
    }

    // However long a hand, the table keeps no more calls than it has places:
    // a card drawn again drops the one it covers, and the mark with it; a
    // mark drawn again drops the one before.
    void la_lista_resta_corta()
    {
        Canvas tela;
        const QRectF tutto(0, 0, 1024, 768);
        tela.Cls(qRgb(0, 192, 0));
        tela.PaintPicture(immagine_sfondo, tutto, tutto);
        for (int giro = 0; giro < 300; ++giro)
            for (int k = 0; k < 14; ++k) {
                const QRectF cella(8 + 72 * k, 656, 72, 96);
                tela.PaintPicture(immagine_carte, cella, QRectF(71 * (giro % 9), 0, 71, 96));
                tela.RettangoloVuoto(10 + 72 * k, 658, 78 + 72 * k, 750, qRgb(255, 0, 0), 2);
                tela.RettangoloVuoto(10 + 72 * k, 658, 78 + 72 * k, 750, qRgb(255, 0, 0), 2);
            }
        QCOMPARE(tela.tratti(), std::size_t(2 + 14 * 2));
        QCOMPARE(tela.Point(10, 700), 255L);
        for (int k = 0; k < 14; ++k)
            tela.PaintPicture(immagine_carte, QRectF(8 + 72 * k, 656, 72, 96), QRectF(0, 0, 71, 96));
        QCOMPARE(tela.tratti(), std::size_t(2 + 14));
        QVERIFY(tela.Point(10, 700) != 255L);
    }

    void il_pannello_ombreggiato()
    {
        FrmTV& f = frmTV();
        prepara_pannello(f.tela, *f.picture_score);
        QCOMPARE(f.MousePointer(), 13);
        const QImage& img = f.picture_score->immagine;
        QCOMPARE(img.size(), f.tela.in_pixel(QRectF(256, 288, 512, 192)).size());
        // A checkerboard of teal dots, one in two, the rows shifted in turn.
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 6; ++x) QCOMPARE(img.pixel(x, y) == qRgb(0, 96, 96), (x + y) % 2 == 0);
        // Between the dots, the table one unit to the right.
        const QRgb sotto = f.tela.Image().pixel(f.tela.in_pixel(QRectF(257, 288, 1, 1)).topLeft() + QPoint(1, 0));
        QCOMPARE(img.pixel(1, 0), sotto);
    }
};

QTEST_MAIN(TestDisegno)
#include "tst_disegno.moc"
