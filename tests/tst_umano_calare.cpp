// Marking a hand card, moving it, and laying it into the human's own
// combinations: where it goes, what is refused, and the jolly swap.
#include "tst_umano_aiuto.h"

#include <QtTest>

using namespace umano_prova;

class TestUmanoCalare : public QObject {
    Q_OBJECT

private slots:
    void segnare_data()
    {
        QTest::addColumn<QString>("codice_fase");
        QTest::addColumn<int>("slot");
        QTest::addColumn<QString>("fase_dopo");
        QTest::addColumn<int>("carta");
        QTest::newRow("first slot") << "010" << 1 << "011" << prova::carta("7H");
        QTest::newRow("slot 5") << "010" << 5 << "011" << prova::carta("9S");
        QTest::newRow("empty slot") << "010" << 4 << "010" << 0;
        QTest::newRow("slot 14, empty") << "010" << 14 << "010" << 0;
        QTest::newRow("before the draw") << "000" << 1 << "000" << -1;
    }
    void segnare()
    {
        QFETCH(QString, codice_fase);
        QFETCH(int, slot);
        QFETCH(QString, fase_dopo);
        QFETCH(int, carta);
        partita("7H 8H 2C . 9S", codice_fase.toStdString());
        carta_selezionata = -1;
        posizione_selezionata = -1;
        const double x0 = 10 + 72 * (slot - 1);
        const long dentro = frmTV().tela.Point(x0 + 34, 700), fuori = frmTV().tela.Point(x0 - 1, 657);
        premi_mano(slot);
        QCOMPARE(QString::fromStdString(fase), fase_dopo);
        QCOMPARE(long(carta_selezionata), long(carta));
        if (carta >= 0) QCOMPARE(long(posizione_selezionata), long(slot));
        const bool segno = fase_dopo == "011";
        QCOMPARE(slot_segnati(), segno ? 1 : 0);
        if (segno) {
            // A red frame two pixels wide just inside the card.
            Canvas& tela = frmTV().tela;
            const double x = 10 + 72 * (slot - 1);
            QCOMPARE(tela.Point(x, 658), 255L);
            QCOMPARE(tela.Point(x + 68, 750), 255L);
            QCOMPARE(tela.Point(x + 1, 659), 255L);
            QCOMPARE(tela.Point(x + 34, 658), 255L);
            // Inside the frame and outside it the table is untouched.
            QCOMPARE(tela.Point(x + 34, 700), dentro);
            QCOMPARE(tela.Point(x - 1, 657), fuori);
        }
        QVERIFY(prova::suoni().empty());
    }

    // The second press on the hand moves the marked card there.
    void spostare_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<int>("da");
        QTest::addColumn<int>("a");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("to the left") << "AH 2H 3H 4H 5H" << 4 << 2 << "AH 4H 2H 3H 5H";
        QTest::newRow("to the right") << "AH 2H 3H 4H 5H" << 2 << 5 << "AH 3H 4H 5H 2H";
        QTest::newRow("gaps move like cards") << "AH . 3H . 5H" << 5 << 1 << "5H AH . 3H";
        QTest::newRow("into an empty slot") << "AH 2H 3H . 5H" << 1 << 4 << ". 2H 3H AH 5H";
        QTest::newRow("into an empty slot beyond") << "AH 2H" << 2 << 9 << "AH . . . . . . . 2H";
        QTest::newRow("onto itself: unmarked") << "AH 2H 3H" << 2 << 2 << "AH 2H 3H";
    }
    void spostare()
    {
        QFETCH(QString, mano);
        QFETCH(int, da);
        QFETCH(int, a);
        QFETCH(QString, dopo);
        partita(mano.toStdString(), "010");
        premi_mano(da);
        QVERIFY(segnata(da));
        const long sotto = mano_umano(a);
        premi_mano(a);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), dopo);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
        QCOMPARE(slot_segnati(), 0);
        QVERIFY(mano_disegnata());
        // They describe the slot pressed as it was before the move.
        QCOMPARE(long(posizione_selezionata), long(a));
        QCOMPARE(long(carta_selezionata), sotto);
    }

    // The mark lives in the picture only: once the card is redrawn, the next
    // press on the hand finds no mark and moves nothing.
    void segno_perso_con_la_carta_ridisegnata()
    {
        FrmTV& f = partita("AH 2H 3H 4H", "010");
        premi_mano(2);
        disegna_carta(f.tela, 2, 41, Byte(long(mano_umano(2))), false, 0);
        QCOMPARE(slot_segnati(), 0);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
        premi_mano(4);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 3H 4H"));
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
        QCOMPARE(slot_segnati(), 0);
    }

    void calare_data()
    {
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<QString>("carta");
        QTest::addColumn<QString>("dopo");  // empty: refused with the error sound
        QTest::newRow("new combination") << "" << "7H" << "7H";
        QTest::newRow("second card, one higher, in front") << "7H" << "8H" << "8H 7H";
        QTest::newRow("second card, one lower, at the end") << "7H" << "6H" << "7H 6H";
        QTest::newRow("second card, same number") << "7H" << "7S" << "7H 7S";
        QTest::newRow("two higher") << "7H" << "9H" << "";
        QTest::newRow("adjacent, other suit") << "7H" << "8S" << "";
        QTest::newRow("twin from the other pack") << "7H" << "7H'" << "";
        QTest::newRow("set grows to a quartet") << "7H 7S 7D" << "7C" << "7H 7S 7D 7C";
        QTest::newRow("set refuses a suit it has") << "7H 7S 7D" << "7S'" << "";
        QTest::newRow("quartet refuses a fifth") << "7H 7S 7D 7C" << "7H'" << "";
        QTest::newRow("set refuses another number") << "7H 7S 7D" << "8C" << "";
        QTest::newRow("straight, top") << "9H 8H 7H" << "10H" << "10H 9H 8H 7H";
        QTest::newRow("straight, bottom") << "9H 8H 7H" << "6H" << "9H 8H 7H 6H";
        QTest::newRow("straight, a gap") << "9H 8H 7H" << "5H" << "";
        QTest::newRow("straight, inside") << "9H 8H 7H" << "8H'" << "";
        QTest::newRow("straight, other suit") << "9H 8H 7H" << "10S" << "";
        QTest::newRow("ace above the king") << "KH QH JH" << "AH" << "AH KH QH JH";
        QTest::newRow("ace below the two") << "3H 2H" << "AH" << "3H 2H AH";
        QTest::newRow("no wrap round the ace") << "2H AH" << "KH" << "";
        QTest::newRow("no wrap, other way") << "AH KH" << "2H" << "";
        QTest::newRow("lone ace takes a king") << "AH" << "KH" << "AH KH";
        QTest::newRow("lone ace takes a two") << "AH" << "2H" << "2H AH";
        QTest::newRow("straight with a jolly") << "*8H 7H 6H" << "9H" << "9H *8H 7H 6H";
        QTest::newRow("a jolly counts as the suit it stands for") << "*8H 7H" << "9S" << "";
        QTest::newRow("second pack card") << "9H 8H 7H" << "10H'" << "10H' 9H 8H 7H";
    }
    void calare()
    {
        QFETCH(QString, colonna);
        QFETCH(QString, carta);
        QFETCH(QString, dopo);
        FrmTV& f = partita("2C 3C " + carta.toStdString() + " 4D", "010");
        sul_tavolo_umano(3, colonna.toStdString());
        premi_mano(3);
        premi(3, 30);
        if (dopo.isEmpty()) {
            QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(3)), colonna);
            QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), "2C 3C " + carta + " 4D");
            QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
            QVERIFY(segnata(3));
            QCOMPARE(prova::suoni(), std::vector<std::string>{"errore.wav"});
        } else {
            QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(3)), dopo);
            QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C 3C . 4D"));
            QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
            QVERIFY(combinazione_disegnata(3, true));
            QVERIFY(prova::cella_mostra(3, 41, 0));
            QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
        }
        QVERIFY(prova::combinazione_umano_come_testo(1).empty());
        Q_UNUSED(f);
    }

    // The real card takes the place of a jolly standing for it; the jolly
    // comes back into the marked slot as a plain jolly of the first pack.
    void scambio_del_jolly_data()
    {
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<QString>("carta");
        QTest::addColumn<QString>("dopo");
        QTest::addColumn<QString>("jolly");
        QTest::newRow("straight, first kind") << "9S *8S 7S" << "8S" << "9S 8S 7S" << "J1";
        QTest::newRow("straight, second kind") << "9S **8S 7S" << "8S" << "9S 8S 7S" << "J2";
        QTest::newRow("card of the second pack") << "9S *8S 7S" << "8S'" << "9S 8S' 7S" << "J1";
        QTest::newRow("jolly on top") << "*10S 9S 8S" << "10S" << "10S 9S 8S" << "J1";
        QTest::newRow("set") << "7H *7S 7D" << "7S" << "7H 7S 7D" << "J1";
        QTest::newRow("the first jolly that stands for it") << "**7H 7S *7H" << "7H'" << "7H' 7S *7H" << "J2";
    }
    void scambio_del_jolly()
    {
        QFETCH(QString, colonna);
        QFETCH(QString, carta);
        QFETCH(QString, dopo);
        QFETCH(QString, jolly);
        partita("2C " + carta.toStdString() + " 4D", "010");
        sul_tavolo_umano(2, colonna.toStdString());
        premi_mano(2);
        premi(2, 26);
        QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(2)), dopo);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), "2C " + jolly + " 4D");
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
        QVERIFY(mano_disegnata());
        QVERIFY(combinazione_disegnata(2, true));
        QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
    }

    // The last card in hand is kept for the discard.
    void l_ultima_carta_resta()
    {
        partita(". . 8H", "010");
        sul_tavolo_umano(1, "7H 7S 7D");
        sul_tavolo_umano(2, "9H 8H' 7H'");
        premi_mano(3);
        premi(4, 30);
        premi(1, 30);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral(". . 8H"));
        QVERIFY(prova::combinazione_umano_come_testo(4).empty());
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
        QVERIFY(prova::suoni().empty());
    }

    // Nothing is laid before the draw or without a marked card.
    void senza_segno_data()
    {
        QTest::addColumn<QString>("codice_fase");
        QTest::newRow("must draw") << "000";
        QTest::newRow("nothing marked") << "010";
    }
    void senza_segno()
    {
        QFETCH(QString, codice_fase);
        FrmTV& f = partita("7H 8H", codice_fase.toStdString());
        carta_selezionata = prova::carta("7H");
        posizione_selezionata = 1;
        f.giocata(1);
        QVERIFY(prova::combinazione_umano_come_testo(1).empty());
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("7H 8H"));
        QVERIFY(prova::suoni().empty());
    }

    // A straight of thirteen cards has no room for the second ace: with the
    // ace below, the second goes on top and the game stops with "Subscript
    // out of range", the ace still in the hand. With the ace on top the
    // column is taken for a set of aces and the second ace is only refused.
    void quattordicesima_carta_data()
    {
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<int>("errore");
        QTest::newRow("ace below, the second on top") << "KH QH JH 10H 9H 8H 7H 6H 5H 4H 3H 2H AH" << 9;
        QTest::newRow("ace on top, taken for a set") << "AH KH QH JH 10H 9H 8H 7H 6H 5H 4H 3H 2H" << 0;
    }
    void quattordicesima_carta()
    {
        QFETCH(QString, colonna);
        QFETCH(int, errore);
        FrmTV& f = partita("2C AH' 4D", "010");
        sul_tavolo_umano(1, colonna.toStdString());
        premi_mano(2);
        int numero = 0;
        try {
            f.giocata(1);
        } catch (const basic::ErroreRuntime& e) {
            numero = e.numero();
        }
        QCOMPARE(numero, errore);
        QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(1)), colonna);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C AH' 4D"));
        QCOMPARE(prova::quanti_suoni("errore.wav"), errore ? 0 : 1);
    }

    void quattordicesima_carta_con_il_mouse()
    {
        partita("2C AH' 4D", "010");
        sul_tavolo_umano(1, "KH QH JH 10H 9H 8H 7H 6H 5H 4H 3H 2H AH");
        premi_mano(2);
        clic(1, 30);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), 9);
        QVERIFY(basic::programma_terminato());
    }
};

QTEST_MAIN(TestUmanoCalare)
#include "tst_umano_calare.moc"
