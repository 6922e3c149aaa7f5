// The human's draw: the next card of the stock, with the reshuffle when the
// stock runs out, or the top of the discard pile for a player who has opened.
#include "tst_umano_aiuto.h"

#include <QtTest>

#include <algorithm>
#include <vector>

using namespace umano_prova;

class TestUmanoPescare : public QObject {
    Q_OBJECT

private slots:
    void dal_tallone_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<int>("seguente");  // the card under the one drawn
        QTest::addColumn<QString>("dopo");
        QTest::addColumn<bool>("dorso_rosso");
        QTest::newRow("into the first gap") << "AH 2H . 4H" << 29 << "AH 2H 2C 4H" << false;
        QTest::newRow("after the last card") << "AH 2H 3H" << 29 << "AH 2H 3H 2C" << false;
        QTest::newRow("into slot 1") << ". 2H 3H" << 29 << "2C 2H 3H" << false;
        QTest::newRow("next card from the second pack") << "AH 2H . 4H" << 83 << "AH 2H 2C 4H" << true;
    }
    void dal_tallone()
    {
        QFETCH(QString, mano);
        QFETCH(int, seguente);
        QFETCH(QString, dopo);
        QFETCH(bool, dorso_rosso);
        partita(mano.toStdString());
        mazzo(29) = seguente;
        premi_tallone();
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), dopo);
        QCOMPARE(long(tallone), 28L);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
        QVERIFY(mano_disegnata());
        // The stock shows the back of the very card that comes next.
        QVERIFY(prova::cella_mostra(14, 21, seguente, true));
        QCOMPARE(QString::fromStdString(prova::cosa_mostra(14, 21)), dorso_rosso ? "back 1" : "back 0");
        QCOMPARE(prova::suoni(), std::vector<std::string>{"carta.wav"});
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("5C"));
    }

    void una_sola_pescata_per_turno_data()
    {
        QTest::addColumn<bool>("dal_pozzo");
        QTest::newRow("stock") << false;
        QTest::newRow("discard pile") << true;
    }
    void una_sola_pescata_per_turno()
    {
        QFETCH(bool, dal_pozzo);
        FrmTV& f = partita("AH 2H 3H", "010", "4S 5S");
        prova::combinazione_umano(1, "KS QS JS 10S");
        dal_pozzo ? f.gioca_proposta_pescare_pozzo() : f.gioca_proposta_pescare_tallone();
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 3H"));
        QCOMPARE(long(tallone), 27L);
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("4S 5S"));
        QVERIFY(prova::suoni().empty());
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
    }

    // The draw that empties the stock turns the whole pile into a new one.
    void l_ultima_carta_del_tallone()
    {
        FrmTV& f = partita("AH 2H");
        for (long i = 1; i <= 81; ++i) pozzo(i) = i + 2;  // codes 3 to 83
        n_pozzo = 81;
        mazzo(108) = 90;
        tallone = 107;
        premi_tallone();
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 10C'"));
        QCOMPARE(long(n_pozzo), 0L);
        QCOMPARE(long(tallone), 27L);
        std::vector<long> nuovo;
        for (long i = 28; i <= 108; ++i) nuovo.push_back(mazzo(i));
        std::sort(nuovo.begin(), nuovo.end());
        std::vector<long> atteso;
        for (long c = 3; c <= 83; ++c) atteso.push_back(c);
        QCOMPARE(nuovo, atteso);
        QVERIFY(prova::cella_mostra(14, 21, mazzo(28), true));
        QVERIFY(prova::cella_mostra(13, 21, 0));
        QVERIFY(mano_disegnata());

        // The next turn draws the first card of the new stock.
        const long prima = mazzo(28);
        fase = "000";
        f.gioca_proposta_pescare_tallone();
        QCOMPARE(long(mano_umano(4)), prima);
        QCOMPARE(long(tallone), 28L);
    }

    void dal_pozzo()
    {
        partita("AH 2H . 4H", "000", "4S 5S 6S");
        prova::combinazione_umano(1, "KS QS JS 10S");
        premi_pozzo();
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 6S 4H"));
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("4S 5S"));
        // The slot of the card taken is not cleared.
        QCOMPARE(long(pozzo(3)), long(prova::carta("6S")));
        QVERIFY(prova::cella_mostra(13, 21, prova::carta("5S")));
        QVERIFY(mano_disegnata());
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
        QCOMPARE(long(tallone), 27L);
        QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
    }

    // Only a table worth 40 at the moment of the press may take the pile.
    void pozzo_senza_apertura_data()
    {
        QTest::addColumn<QString>("combinazione1");
        QTest::addColumn<QString>("combinazione2");
        QTest::addColumn<bool>("preso");
        QTest::newRow("nothing laid") << "" << "" << false;
        QTest::newRow("three sevens, 21") << "7H 7S 7D" << "" << false;
        QTest::newRow("three sevens and 10-J-Q, 51") << "7H 7S 7D" << "QC JC 10C" << true;
        QTest::newRow("39 points") << "KH QH JH" << "3S 3D 3C" << false;
        QTest::newRow("four queens, 40") << "QH QS QD QC" << "" << true;
        QTest::newRow("two-card straight adds nothing") << "KH KS KD" << "QC JC" << false;
    }
    void pozzo_senza_apertura()
    {
        QFETCH(QString, combinazione1);
        QFETCH(QString, combinazione2);
        QFETCH(bool, preso);
        partita("AH 2H", "000", "4S 5S");
        prova::combinazione_umano(1, combinazione1.toStdString());
        prova::combinazione_umano(2, combinazione2.toStdString());
        premi_pozzo();
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), preso ? "AH 2H 5S" : "AH 2H");
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), preso ? "4S" : "4S 5S");
        QCOMPARE(QString::fromStdString(fase), preso ? "010" : "000");
        QCOMPARE(prova::quanti_suoni("errore.wav"), preso ? 0 : 1);
        QVERIFY(prova::cella_mostra(13, 21, prova::carta(preso ? "4S" : "5S")));
    }

    // A pile of one card: the card is in the hand already when the look at the
    // card beneath it stops the game with "Subscript out of range".
    void pozzo_di_una_carta()
    {
        FrmTV& f = partita("AH 2H", "000", "9D");
        prova::combinazione_umano(1, "KS QS JS 10S");
        int numero = 0;
        try {
            f.gioca_proposta_pescare_pozzo();
        } catch (const basic::ErroreRuntime& e) {
            numero = e.numero();
        }
        QCOMPARE(numero, 9);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 9D"));
        QVERIFY(prova::cella_mostra(3, 41, prova::carta("9D")));
        QCOMPARE(long(n_pozzo), 1L);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("000"));
    }

    void pozzo_di_una_carta_con_il_mouse()
    {
        partita("AH 2H", "000", "9D");
        prova::combinazione_umano(1, "KS QS JS 10S");
        clic(13, 23);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), 9);
        QVERIFY(basic::programma_terminato());
    }
};

QTEST_MAIN(TestUmanoPescare)
#include "tst_umano_pescare.moc"
