// The drawing module: which picture lands in which cell, the grid, the
// shaded score sheet, and what happens when the pictures are missing.
#include "aiuto/posizione.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QTemporaryDir>
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
        QTest::newRow("last column") << 1015.0 << 14;
        QTest::newRow("right margin") << 1016.0 << 15;
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

    void quale_faccia_data()
    {
        QTest::addColumn<int>("codice");
        QTest::addColumn<int>("colonna_foglio");
        QTest::addColumn<int>("riga_foglio");
        QTest::newRow("ace of hearts") << 1 << 0 << 0;
        QTest::newRow("10 of hearts") << 10 << 0 << 1;
        QTest::newRow("first jolly") << 53 << 7 << 5;
        QTest::newRow("second jolly") << 54 << 8 << 5;
        QTest::newRow("ace of hearts, second pack") << 55 << 0 << 0;
        QTest::newRow("table jolly, first kind") << 141 << 7 << 5;
        QTest::newRow("table jolly, first kind, top code") << 162 << 7 << 5;
        QTest::newRow("table jolly, second kind") << 163 << 8 << 5;
        QTest::newRow("table jolly, second kind, king of spades") << 214 << 8 << 5;
    }
    void quale_faccia()
    {
        QFETCH(int, codice);
        QFETCH(int, colonna_foglio);
        QFETCH(int, riga_foglio);
        const rettangolo r = rettangolo_carta(frmTV().tela, Byte(codice));
        QCOMPARE(r.left, float(colonna_foglio * 71));
        QCOMPARE(r.top, float(riga_foglio * 96));
        QCOMPARE(r.width, 71.f);
        QCOMPARE(r.height, 96.f);
    }

    void carte_coperte_e_scoperte_data()
    {
        QTest::addColumn<int>("codice");
        QTest::addColumn<bool>("coperta");
        QTest::addColumn<QString>("atteso");
        QTest::newRow("face of the 7 of clubs") << 33 << false << "face 7C";
        QTest::newRow("second pack face") << 87 << false << "face 7C";
        QTest::newRow("first pack back") << 33 << true << "back 0";
        QTest::newRow("second pack back") << 87 << true << "back 1";
        QTest::newRow("second-pack jolly back") << 108 << true << "back 1";
        QTest::newRow("table jolly shows the jolly face") << 141 << false << "face J1";
        QTest::newRow("second-kind table jolly face") << 195 << false << "face J2";
        QTest::newRow("table jolly back is the first pack's") << 195 << true << "back 0";
    }
    void carte_coperte_e_scoperte()
    {
        QFETCH(int, codice);
        QFETCH(bool, coperta);
        QFETCH(QString, atteso);
        QVERIFY(disegna_carta(frmTV().tela, 5, 24, Byte(codice), coperta, 0));
        QCOMPARE(QString::fromStdString(prova::cosa_mostra(5, 24)), atteso);
    }

    void il_codice_zero_non_disegna_nulla()
    {
        FrmTV& f = frmTV();
        disegna_carta(f.tela, 3, 10, Byte(5), false, 0);
        prova::azzera_suoni();
        QVERIFY(!disegna_carta(f.tela, 3, 10, Byte(0), false, 0.1));
        QVERIFY(prova::cella_mostra(3, 10, 5));
        QVERIFY(prova::suoni().empty());
        cancella_carta(f.tela, 3, 10);
        QVERIFY(prova::cella_mostra(3, 10, 0));
    }

    void suono_e_pausa_data()
    {
        QTest::addColumn<bool>("coperta");
        QTest::addColumn<bool>("fruscio");
        QTest::addColumn<int>("suoni");
        QTest::newRow("face up, rustle on") << false << true << 1;
        QTest::newRow("face up, rustle off") << false << false << 0;
        QTest::newRow("face down is silent") << true << true << 0;
    }
    void suono_e_pausa()
    {
        QFETCH(bool, coperta);
        QFETCH(bool, fruscio);
        QFETCH(int, suoni);
        FrmTV& f = frmTV();
        fruscio ? f.menu_card_rustle_yes_Click() : f.menu_card_rustle_no_Click();
        disegna_carta(f.tela, 2, 24, Byte(20), coperta, 0.1);
        QCOMPARE(prova::quanti_suoni("carta.wav"), suoni);
        f.menu_card_rustle_yes_Click();
    }

    // The one test of the pause at real speed: 0.1 unit is 60 ms, and a face-
    // down card never waits.
    void la_pausa_vera()
    {
        FrmTV& f = frmTV();
        fattore_pause = 1;
        QElapsedTimer t;
        t.start();
        disegna_carta(f.tela, 2, 24, Byte(20), false, 0.25);
        const qint64 scoperta = t.restart();
        disegna_carta(f.tela, 2, 24, Byte(20), true, 1);
        const qint64 coperta = t.elapsed();
        fattore_pause = 0;
        QVERIFY2(scoperta >= 140 && scoperta < 1000, QByteArray::number(scoperta));
        QVERIFY2(coperta < 100, QByteArray::number(coperta));
    }

    void la_pausa_lascia_passare_gli_eventi()
    {
        fattore_pause = 1;
        bool gestito = false;
        QTimer::singleShot(20, [&] { gestito = true; });
        pausa(0.25);
        fattore_pause = 0;
        QVERIFY(gestito);
    }

    void una_pausa_annidata_chiude_anche_quella_esterna()
    {
        fattore_pause = 1;
        QElapsedTimer t;
        t.start();
        // The inner wait shares the timer and the flag: its tick ends both.
        QTimer::singleShot(10, [] { pausa(0.1); });
        pausa(2);
        fattore_pause = 0;
        QVERIFY2(t.elapsed() < 800, QByteArray::number(t.elapsed()));
    }

    void mano_e_combinazioni()
    {
        FrmTV& f = frmTV();
        prova::mano_computer_da("7H . 9H'");
        disegna_carta(f.tela, 2, 1, Byte(30), false, 0);
        QCOMPARE(long(disegna_mano(f.tela, mano_computer, true, 0)), 0L);
        QVERIFY(prova::cella_mostra(1, 1, 7, true));
        QVERIFY(prova::cella_mostra(2, 1, 0));
        QVERIFY(prova::cella_mostra(3, 1, 63, true));

        prova::combinazione_umano(2, "9H 8H 7H");
        disegna_combinazione(f.tela, Byte(2), true);
        QVERIFY(prova::cella_mostra(2, 24, prova::carta("9H"), false, 1));
        QVERIFY(prova::cella_mostra(2, 25, prova::carta("8H"), false, 1));
        QVERIFY(prova::cella_mostra(2, 26, prova::carta("7H")));

        prova::combinazione_computer(4, "KS QS JS");
        disegna_combinazione(f.tela, Byte(4), false);
        QVERIFY(prova::cella_mostra(4, 18, prova::carta("KS"), false, 1, true));
        QVERIFY(prova::cella_mostra(4, 17, prova::carta("QS"), false, 1, true));
        QVERIFY(prova::cella_mostra(4, 16, prova::carta("JS")));
    }

    void il_pannello_ombreggiato()
    {
        FrmTV& f = frmTV();
        prepara_pannello(f.tela, *f.picture_score);
        QCOMPARE(f.posizione(f.picture_score), QRectF(256, 288, 512, 192));
        QCOMPARE(f.MousePointer(), 13);
        const QImage& img = f.picture_score->immagine;
        QCOMPARE(img.size(), f.tela.in_pixel(QRectF(256, 288, 512, 192)).size());
        const QRgb teal = qRgb(0, 96, 96);
        // A checkerboard: one dot in two, the rows shifted in turn.
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 6; ++x) QCOMPARE(img.pixel(x, y) == teal, (x + y) % 2 == 0);
        // Between the dots, the table one unit to the right.
        const QRgb sotto = f.tela.Image().pixel(f.tela.in_pixel(QRectF(257, 288, 1, 1)).topLeft() + QPoint(1, 0));
        QCOMPARE(img.pixel(1, 0), sotto);
    }

    void immagini_mancanti()
    {
        QTemporaryDir cartella;
        const QString sorgente = QStringLiteral(TAVOLATA_SORGENTE "/media");
        for (const char* nome : {"totale.bmp", "dorso.bmp", "dorsorosso.bmp"})
            QFile::copy(sorgente + "/" + nome, cartella.path() + "/" + nome);
        const QImage carte = immagine_carte, sfondo = immagine_sfondo;
        righe_tavolo = 0;
        colonne_tavolo = 0;
        immagine_sfondo = QImage();
        imposta_cartella_programma(cartella.path());
        const Long esito = carica_immagini();
        imposta_cartella_programma(sorgente);
        QCOMPARE(long(esito), 53L);
        QCOMPARE(long(righe_tavolo), 0L);
        QCOMPARE(long(colonne_tavolo), 0L);
        // The first picture loaded and stays; drawing with the missing one fails.
        QVERIFY(!immagine_carte.isNull());
        QVERIFY_THROWS_EXCEPTION(basic::ErroreRuntime, cancella_carta(frmTV().tela, 1, 1));
        immagine_carte = QImage();
        QCOMPARE(long(disegna_mano(frmTV().tela, mano_umano, false, 0)), 91L);
        immagine_carte = carte;
        immagine_sfondo = sfondo;
        QCOMPARE(long(carica_immagini()), 0L);
        QCOMPARE(long(righe_tavolo), 48L);
    }

    void un_file_che_non_e_una_figura()
    {
        QTemporaryDir cartella;
        QFile f(cartella.path() + "/totale.bmp");
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("BM this is not a picture");
        f.close();
        imposta_cartella_programma(cartella.path());
        const Long esito = carica_immagini();
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        QCOMPARE(long(esito), 481L);
        QCOMPARE(long(carica_immagini()), 0L);
    }
};

QTEST_MAIN(TestDisegno)
#include "tst_disegno.moc"
