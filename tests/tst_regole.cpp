// Cards, straights and the value of a table for the opening.
#include "aiuto/posizione.h"
#include "rules/mdTavolata.h"

#include <QtTest>

class TestRegole : public QObject {
    Q_OBJECT
private slots:
    void init() { azzera_stato(); }

    void seme_e_numero_data()
    {
        QTest::addColumn<int>("codice");
        QTest::addColumn<int>("seme");
        QTest::addColumn<int>("numero");
        QTest::newRow("empty slot") << 0 << 0 << 0;
        QTest::newRow("ace of hearts") << 1 << 1 << 1;
        QTest::newRow("king of hearts") << 13 << 1 << 13;
        QTest::newRow("ace of diamonds") << 14 << 2 << 1;
        QTest::newRow("7 of clubs") << 33 << 3 << 7;
        QTest::newRow("king of spades") << 52 << 4 << 13;
        QTest::newRow("first jolly") << 53 << 5 << 0;
        QTest::newRow("second jolly") << 54 << 5 << 0;
        QTest::newRow("ace of hearts, second pack") << 55 << 1 << 1;
        QTest::newRow("first jolly, second pack") << 107 << 5 << 0;
        QTest::newRow("second jolly, second pack") << 108 << 5 << 0;
        QTest::newRow("jolly as the 7 of clubs") << 141 << 3 << 7;
        QTest::newRow("second jolly as the 7 of clubs") << 195 << 3 << 7;
        QTest::newRow("jolly as the king of spades") << 160 << 4 << 13;
        QTest::newRow("second jolly as the king of spades") << 214 << 4 << 13;
    }
    void seme_e_numero()
    {
        QFETCH(int, codice);
        QFETCH(int, seme);
        QFETCH(int, numero);
        QCOMPARE(long(seme_carta(Byte(codice))), long(seme));
        QCOMPARE(long(numero_carta(Byte(codice))), long(numero));
    }

    void unisci_sequenza_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<QString>("risultato");
        QTest::newRow("below the lowest") << " 7 6 5" << " 4" << " 7 6 5 4";
        QTest::newRow("above the highest") << " 7 6 5" << " 8" << " 8 7 6 5";
        QTest::newRow("a gap") << " 7 6 5" << " 9" << " 7 6 5";
        QTest::newRow("ace above the king") << " 13 12" << " 1" << " 1 13 12";
        QTest::newRow("ace below the two") << " 3 2" << " 1" << " 3 2 1";
        QTest::newRow("no king under a two") << " 2" << " 13" << " 2";
        QTest::newRow("12 then ace is no straight") << " 12" << " 1" << " 12";
        QTest::newRow("lone ace, then king") << " 1" << " 13" << " 1 13";
        QTest::newRow("lone ace, then two") << " 1" << " 2" << " 2 1";
        QTest::newRow("a whole number must match") << " 12" << " 1" << " 12";
        QTest::newRow("second ace under a full straight")
            << " 1 13 12 11 10 9 8 7 6 5 4 3 2" << " 1" << " 1 13 12 11 10 9 8 7 6 5 4 3 2 1";
        QTest::newRow("empty run takes any card") << "" << " 7" << " 7";
    }
    void unisci_sequenza()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(QString, risultato);
        QCOMPARE(QString::fromStdString(::unisci_sequenza(a.toStdString(), b.toStdString())), risultato);
    }

    void valore_dei_tavoli_data()
    {
        QTest::addColumn<QStringList>("combinazioni");  // "k:cards"
        QTest::addColumn<int>("umano");
        QTest::addColumn<int>("computer");
        QTest::newRow("three kings") << QStringList{"1:KH KD KC"} << 30 << 30;
        QTest::newRow("four queens") << QStringList{"1:QH QD QC QS"} << 40 << 40;
        QTest::newRow("three aces") << QStringList{"1:AH AD AC"} << 33 << 33;
        QTest::newRow("10 J Q K") << QStringList{"1:KS QS JS 10S"} << 40 << 40;
        QTest::newRow("Q K A, ace on top") << QStringList{"1:AH KH QH"} << 31 << 31;
        QTest::newRow("A 2 3, ace at the bottom") << QStringList{"1:3H 2H AH"} << 6 << 6;
        QTest::newRow("7, jolly as 8, 9") << QStringList{"1:9C *8C 7C"} << 24 << 24;
        QTest::newRow("three sevens") << QStringList{"1:7H 7D 7C"} << 21 << 21;
        QTest::newRow("sevens and 10 J Q") << QStringList{"1:7H 7D 7C", "2:QS JS 10S"} << 51 << 51;
        QTest::newRow("first combination free") << QStringList{"2:KH KD KC KS"} << 40 << 0;
        QTest::newRow("two-card straight") << QStringList{"1:10H 9H"} << 0 << 19;
        QTest::newRow("two-card set") << QStringList{"1:9H 9D"} << 0 << 0;
        QTest::newRow("set valued by a jolly king in third place") << QStringList{"1:5H 5D *KC"} << 30 << 30;
        QTest::newRow("one card is valued as a set: 0") << QStringList{"1:KH"} << 0 << 0;
    }
    void valore_dei_tavoli()
    {
        QFETCH(QStringList, combinazioni);
        QFETCH(int, umano);
        QFETCH(int, computer);
        for (const QString& c : combinazioni) {
            const int k = c.section(':', 0, 0).toInt();
            const std::string carte = c.section(':', 1).toStdString();
            prova::combinazione_umano(k, carte);
            prova::combinazione_computer(k, carte);
        }
        QCOMPARE(long(valore_tavolo_umano()), long(umano));
        QCOMPARE(long(valore_tavolo_computer()), long(computer));
        QCOMPARE(aperto_umano(), umano >= 40);
        QCOMPARE(aperto_computer(), computer >= 40);
    }

    void prima_posizione_libera_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<int>("slot");
        QTest::newRow("empty hand") << "" << 1;
        QTest::newRow("gap in the middle") << "7H 8H . 9H" << 3;
        QTest::newRow("13 cards") << "AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH" << 14;
        QTest::newRow("full hand") << "AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH J1" << 15;
    }
    void prima_posizione_libera()
    {
        QFETCH(QString, mano);
        QFETCH(int, slot);
        prova::mano_umano_da(mano.toStdString());
        prova::mano_computer_da(mano.toStdString());
        QCOMPARE(long(::prima_posizione_libera(true)), long(slot));
        QCOMPARE(long(::prima_posizione_libera(false)), long(slot));
    }

    void valore_in_mano_data()
    {
        QTest::addColumn<QString>("carta");
        QTest::addColumn<int>("punti");
        QTest::newRow("jolly") << "J1" << 25;
        QTest::newRow("second-pack jolly") << "J2'" << 25;
        QTest::newRow("ace") << "AS" << 11;
        QTest::newRow("king") << "KD" << 10;
        QTest::newRow("jack") << "JC" << 10;
        QTest::newRow("ten") << "10H" << 10;
        QTest::newRow("five") << "5H" << 5;
        QTest::newRow("two, second pack") << "2C'" << 2;
    }
    void valore_in_mano()
    {
        QFETCH(QString, carta);
        QFETCH(int, punti);
        QCOMPARE(long(::valore_in_mano(Byte(prova::carta(carta.toStdString())))), long(punti));
    }

    void nomi_delle_carte_nelle_prove()
    {
        // The helpers every other test relies on read and write the same code.
        for (int c = 1; c <= 108; ++c) QCOMPARE(prova::carta(prova::nome_carta(c)), c);
        for (int c = 109; c <= 160; ++c) QCOMPARE(prova::carta(prova::nome_carta(c)), c);
        for (int c = 163; c <= 214; ++c) QCOMPARE(prova::carta(prova::nome_carta(c)), c);
    }
};

QTEST_MAIN(TestRegole)
#include "tst_regole.moc"
