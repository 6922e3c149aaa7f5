// SPDX-License-Identifier: GPL-3.0-or-later
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
        QTest::addColumn<bool>("jolly");  // a plain jolly in hand
        QTest::newRow("empty slot: no jolly") << 0 << 0 << 0 << false;
        QTest::newRow("first jolly") << 53 << 5 << 0 << true;
        QTest::newRow("ace of hearts, second pack") << 55 << 1 << 1 << false;
        QTest::newRow("second jolly, second pack") << 108 << 5 << 0 << true;
        QTest::newRow("second jolly as the 7 of clubs") << 195 << 3 << 7 << false;
        QTest::newRow("second jolly as the king of spades") << 214 << 4 << 13 << false;
    }
    void seme_e_numero()
    {
        QFETCH(int, codice);
        QFETCH(int, seme);
        QFETCH(int, numero);
        QFETCH(bool, jolly);
        QCOMPARE(long(seme_carta(Byte(codice))), long(seme));
        QCOMPARE(long(numero_carta(Byte(codice))), long(numero));
        QCOMPARE(jolly_semplice(codice), jolly);
    }

    void unisci_sequenza_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<QString>("risultato");
        // clang-format off
        QTest::newRow("below the lowest") << " 7 6 5" << " 4" << " 7 6 5 4";
        QTest::newRow("above the highest") << " 7 6 5" << " 8" << " 8 7 6 5";
        QTest::newRow("a gap") << " 7 6 5" << " 9" << " 7 6 5";
        QTest::newRow("ace above the king") << " 13 12" << " 1" << " 1 13 12";
        QTest::newRow("ace below the two") << " 3 2" << " 1" << " 3 2 1";
        QTest::newRow("no king under a two") << " 2" << " 13" << " 2";
        QTest::newRow("12 then ace is no straight") << " 12" << " 1" << " 12";
        QTest::newRow("lone ace, then king") << " 1" << " 13" << " 1 13";
        QTest::newRow("lone ace, then two") << " 1" << " 2" << " 2 1";
        QTest::newRow("second ace under a full straight")
            << " 1 13 12 11 10 9 8 7 6 5 4 3 2" << " 1" << " 1 13 12 11 10 9 8 7 6 5 4 3 2 1";
        // clang-format on
    }
    void unisci_sequenza()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(QString, risultato);
        QCOMPARE(QString::fromStdString(::unisci_sequenza(a.toStdString(), b.toStdString())), risultato);
    }

    // The same combinations are laid on both tables ("u" is read as "c" for
    // the computer's copy): the two values differ only where the two scans do.
    void valore_dei_tavoli_data()
    {
        QTest::addColumn<QString>("tavolo");
        QTest::addColumn<int>("umano");
        QTest::addColumn<int>("computer");
        QTest::newRow("three aces") << "u1:AH AD AC" << 33 << 33;
        QTest::newRow("Q K A, ace on top") << "u1:AH KH QH" << 31 << 31;
        QTest::newRow("A 2 3, ace at the bottom") << "u1:3H 2H AH" << 6 << 6;
        QTest::newRow("7, jolly as 8, 9") << "u1:9C *8C 7C" << 24 << 24;
        QTest::newRow("three sevens") << "u1:7H 7D 7C" << 21 << 21;
        QTest::newRow("sevens and 10 J Q") << "u1:7H 7D 7C | u2:QS JS 10S" << 51 << 51;
        QTest::newRow("first combination free") << "u2:KH KD KC KS" << 40 << 0;
        QTest::newRow("two-card straight") << "u1:10H 9H" << 0 << 19;
        QTest::newRow("set valued by a jolly king in third place") << "u1:5H 5D *KC" << 30 << 30;
    }
    void valore_dei_tavoli()
    {
        QFETCH(QString, tavolo);
        QFETCH(int, umano);
        QFETCH(int, computer);
        prova::tavoli_da((tavolo + " | " + QString(tavolo).replace('u', 'c')).toStdString());
        QCOMPARE(long(valore_tavolo_umano()), long(umano));
        QCOMPARE(long(valore_tavolo_computer()), long(computer));
        QCOMPARE(aperto_umano(), umano >= 40);
        QCOMPARE(aperto_computer(), computer >= 40);
    }
};

QTEST_MAIN(TestRegole)
#include "tst_regole.moc"
