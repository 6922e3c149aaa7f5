// Attaching the marked card to the computer's combinations, and winning back
// a jolly of the computer's with the real card.
#include "tst_umano_aiuto.h"

#include <QtTest>

using namespace umano_prova;

class TestUmanoAttaccare : public QObject {
    Q_OBJECT

    // An opened player (40 in spades) with the card to attach marked in slot 2.
    static void con_la_carta_segnata(const std::string& carta, const std::string& colonna, bool aperto = true)
    {
        partita("2C " + carta + " 4D", "010");
        if (aperto) sul_tavolo_umano(1, "KS QS JS 10S");
        sul_tavolo_computer(2, colonna);
        premi_mano(2);
        QVERIFY(segnata(2));
    }

private slots:
    void attaccare_data()
    {
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<QString>("carta");
        QTest::addColumn<QString>("dopo");  // empty: refused with the error sound
        QTest::newRow("straight, top") << "9H 8H 7H" << "10H" << "10H 9H 8H 7H";
        QTest::newRow("straight, bottom") << "9H 8H 7H" << "6H" << "9H 8H 7H 6H";
        QTest::newRow("straight, a gap") << "9H 8H 7H" << "5H" << "";
        QTest::newRow("straight, other suit") << "9H 8H 7H" << "10D" << "";
        QTest::newRow("ace above the king") << "KD QD JD" << "AD" << "AD KD QD JD";
        QTest::newRow("ace below the two") << "4D 3D 2D" << "AD'" << "4D 3D 2D AD'";
        QTest::newRow("set to quartet") << "5H 5S 5D" << "5C" << "5H 5S 5D 5C";
        QTest::newRow("set, suit it has") << "5H 5S 5D" << "5D'" << "";
        QTest::newRow("straight with a jolly at the bottom") << "9H 8H *7H" << "6H" << "9H 8H *7H 6H";
    }
    void attaccare()
    {
        QFETCH(QString, colonna);
        QFETCH(QString, carta);
        QFETCH(QString, dopo);
        con_la_carta_segnata(carta.toStdString(), colonna.toStdString());
        premi(2, 10);
        if (dopo.isEmpty()) {
            QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), colonna);
            QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), "2C " + carta + " 4D");
            QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
            QCOMPARE(prova::suoni(), std::vector<std::string>{"errore.wav"});
        } else {
            QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), dopo);
            QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C . 4D"));
            QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
            QVERIFY(combinazione_disegnata(2, false));
            QVERIFY(prova::cella_mostra(2, 41, 0));
            QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
        }
        // The human's own table is not touched.
        QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(1)), QStringLiteral("KS QS JS 10S"));
    }

    // Refusals without a sound: nothing changes at all.
    void rifiuti_silenziosi_data()
    {
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<QString>("mano");
        QTest::addColumn<bool>("aperto");
        QTest::newRow("not opened, even with a fitting card") << "9H 8H 7H" << "2C 10H 4D" << false;
        QTest::newRow("empty column of the computer") << "" << "2C 10H 4D" << true;
        QTest::newRow("the last card in hand") << "9H 8H 7H" << ". 10H" << true;
    }
    void rifiuti_silenziosi()
    {
        QFETCH(QString, colonna);
        QFETCH(QString, mano);
        QFETCH(bool, aperto);
        partita(mano.toStdString(), "010");
        if (aperto) sul_tavolo_umano(1, "KS QS JS 10S");
        sul_tavolo_computer(2, colonna.toStdString());
        premi_mano(2);
        premi(2, 10);
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), colonna);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), mano);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
        QVERIFY(segnata(2));
        QVERIFY(prova::suoni().empty());
    }

    // The eight of spades wins back the computer's jolly standing for it; the
    // jolly comes into the eight's slot and the mark flag stays up.
    void scambio_del_jolly_data()
    {
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<QString>("carta");
        QTest::addColumn<QString>("dopo");
        QTest::addColumn<QString>("jolly");
        QTest::newRow("first kind") << "9S *8S 7S" << "8S" << "9S 8S 7S" << "J1";
        QTest::newRow("second kind, second-pack card") << "9S **8S 7S" << "8S'" << "9S 8S' 7S" << "J2";
        QTest::newRow("set") << "QH *QS QD" << "QS" << "QH QS QD" << "J1";
    }
    void scambio_del_jolly()
    {
        QFETCH(QString, colonna);
        QFETCH(QString, carta);
        QFETCH(QString, dopo);
        QFETCH(QString, jolly);
        con_la_carta_segnata(carta.toStdString(), colonna.toStdString());
        premi(2, 10);
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), dopo);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), "2C " + jolly + " 4D");
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
        QCOMPARE(long(carta_selezionata), long(prova::carta(carta.toStdString())));
        QVERIFY(mano_disegnata());
        QVERIFY(combinazione_disegnata(2, false));
        // The jolly drawn into the slot has covered the mark.
        QCOMPARE(slot_segnati(), 0);
        QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
    }

    // After that swap the flag says "marked" with no mark on the table: a
    // press on the hand only lowers the flag, and a press on the pile
    // discards the card now on the table, emptying the jolly's slot.
    void dopo_lo_scambio_data()
    {
        QTest::addColumn<bool>("scarto");
        QTest::newRow("press on the hand") << false;
        QTest::newRow("press on the pile") << true;
    }
    void dopo_lo_scambio()
    {
        QFETCH(bool, scarto);
        con_la_carta_segnata("8S", "9S *8S 7S");
        premi(2, 10);
        if (scarto) {
            premi_pozzo();
            QCOMPARE(long(pozzo(2)), long(prova::carta("8S")));
            QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C . 4D"));
            QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("9S 8S 7S"));
            QCOMPARE(QString::fromStdString(fase), QStringLiteral("000"));
        } else {
            premi_mano(3);
            QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C J1 4D"));
            QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
            QCOMPARE(slot_segnati(), 0);
        }
    }

    // Attaching never starts a combination and never touches the human's own
    // table, whatever the check at the discard does later.
    void le_carte_attaccate_restano()
    {
        partita("2C 10H 4D 6H", "010");
        sul_tavolo_umano(1, "KS QS JS 10S");
        sul_tavolo_computer(2, "9H 8H 7H");
        premi_mano(2);
        premi(2, 10);
        premi_mano(4);
        premi(2, 10);
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("10H 9H 8H 7H 6H"));
        premi_mano(1);
        premi_pozzo();
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("10H 9H 8H 7H 6H"));
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral(". . 4D"));
    }
};

QTEST_MAIN(TestUmanoAttaccare)
#include "tst_umano_attaccare.moc"
