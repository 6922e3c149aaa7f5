// The computer's jollies: a jolly of the hand made into the card that
// completes a straight or a set, and jollies on either table won back with
// the real card.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

namespace {
QString mano() { return QString::fromStdString(prova::mano_computer_come_testo()); }
}  // namespace

class TestComputerJolly : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void usa_jolly_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::addColumn<bool>("usato");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("no plain jolly: standing codes untouched") << "*8S 5H 6H" << false << "*8S 5H 6H";
        QTest::newRow("the 8 above 5 6 7, tried at the top first") << "5H 6H 7H KS J1" << true << "5H 6H 7H *8H KS";
        QTest::newRow("a second-kind jolly stands as +162") << "5H 6H 7H KS J2'" << true << "5H 6H 7H **8H KS";
        QTest::newRow("5 and 6 and a jolly make no straight") << "5H 6H KS J1" << false << "5H 6H KS J1";
        QTest::newRow("the top of 5 6 8 9 before the gap") << "5H 6H 8H 9H J1" << true << "5H 6H 8H 9H *10H";
        QTest::newRow("past a king the gap moves down: the jolly doubles the jack")
            << "JC QC KC 2D J1" << true << "2D *JC JC QC KC";
        QTest::newRow("the highest pair of two suits") << "5H 5C KD KS J1" << true << "5C 5H KS KD *KH";
        QTest::newRow("twins are not two suits") << "9H 9H' 2C J1" << false << "2C 9H 9H' J1";
        QTest::newRow("all four suits: the next number down")
            << "QH QD QC QS 3C 3S J1" << true << "3S 3C QS QC QD QH *3H";
        QTest::newRow("a jolly given to a straight and then to a set stands twice")
            << "5H 6H 7H 9C 9D . J1" << true << "5H 6H 7H *8H 9C 9D *9H";
        QTest::newRow("a standing code goes back plain first, its slot written over a real card")
            << "5H *9D 6H 7H J1'" << true << "5H 7H *8H J1 J1'";
    }
    void usa_jolly()
    {
        QFETCH(QString, prima);
        QFETCH(bool, usato);
        QFETCH(QString, dopo);
        prova::mano_computer_da(prima.toStdString());
        QCOMPARE(::usa_jolly(), usato);
        QCOMPARE(mano(), dopo);
    }

    void il_jolly_calato_col_passo_seguente()
    {
        prova::mano_computer_da("5H 6H 7H KS J1");
        aperto_a_inizio = false;
        QVERIFY(::usa_jolly());
        cerca_sequenze();
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(1)), QStringLiteral("*8H 7H 6H 5H"));
        QCOMPARE(mano(), QStringLiteral(". . . . KS"));
        QCOMPARE(long(jolly_computer), 1L);
    }

    void scambia_jolly_data()
    {
        // Combinations 1, 2, ... separated by "|"; an empty one is free.
        QTest::addColumn<QString>("computer");
        QTest::addColumn<QString>("umano");
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("computer_dopo");
        QTest::addColumn<QString>("umano_dopo");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("its own jolly, the card of the other pack")
            << "9S *8S 7S" << "" << "3H 8S' KD" << "9S 8S' 7S" << "" << "3H J1 KD";
        QTest::newRow("a second-kind jolly comes back as 54")
            << "9S **8S 7S" << "" << "8S 3H" << "9S 8S 7S" << "" << "J2 3H";
        QTest::newRow("the human's jolly") << "" << "*5D 4D 3D" << "2C 5D'" << "" << "5D' 4D 3D" << "2C J1";
        QTest::newRow("a set's jolly") << "" << "QH QD **QC" << "QC'" << "" << "QH QD QC'" << "J2";
        QTest::newRow("one swap per combination")
            << "**9S *8S 7S" << "" << "9S 8S 2H" << "9S *8S 7S" << "" << "J2 8S 2H";
        QTest::newRow("no card for it: nothing")
            << "9S *8S 7S" << "*5D 4D 3D" << "8C 2H" << "9S *8S 7S" << "*5D 4D 3D" << "8C 2H";
        QTest::newRow("both tables in one call")
            << "9S *8S 7S|3C 3D 3H" << "|*5D 4D 3D" << "5D 8S" << "9S 8S 7S|3C 3D 3H" << "|5D 4D 3D" << "J1 J1";
        QTest::newRow("a jolly of its own it cannot take hides the human's at the same place")
            << "*9S 8S 7S" << "*QH JH 10H" << "QH 2C" << "*9S 8S 7S" << "*QH JH 10H" << "QH 2C";
        QTest::newRow("the human's at another place is taken")
            << "*9S 8S 7S" << "KH *QH JH" << "QH 2C" << "*9S 8S 7S" << "KH QH JH" << "J1 2C";
    }
    void scambia_jolly()
    {
        QFETCH(QString, computer);
        QFETCH(QString, umano);
        QFETCH(QString, prima);
        QFETCH(QString, computer_dopo);
        QFETCH(QString, umano_dopo);
        QFETCH(QString, dopo);
        const auto metti = [](const QString& testo, void (*combinazione)(int, const std::string&)) {
            const QStringList v = testo.split('|');
            for (int c = 0; c < v.size(); ++c) combinazione(c + 1, v[c].toStdString());
        };
        const auto leggi = [](std::string (*come_testo)(int)) {
            QStringList v;
            for (int c = 1; c <= 13; ++c) v << QString::fromStdString(come_testo(c));
            while (!v.isEmpty() && v.last().isEmpty()) v.removeLast();
            return v.join('|');
        };
        metti(computer, prova::combinazione_computer);
        metti(umano, prova::combinazione_umano);
        prova::mano_computer_da(prima.toStdString());
        ::scambia_jolly();
        QCOMPARE(leggi(prova::combinazione_computer_come_testo), computer_dopo);
        QCOMPARE(leggi(prova::combinazione_umano_come_testo), umano_dopo);
        QCOMPARE(mano(), dopo);
    }

    void lo_scambio_si_vede()
    {
        prova::combinazione_computer(2, "9S *8S 7S");
        prova::combinazione_umano(3, "*5D 4D 3D");
        prova::mano_computer_da("5D' 3H 8S");
        ::scambia_jolly();
        // The real card in the combination, the jolly's back in the slot.
        QVERIFY(prova::cella_mostra(2, 17, prova::carta("8S"), false, 1, true));
        QVERIFY(prova::cella_mostra(2, 16, prova::carta("7S")));
        QVERIFY(prova::cella_mostra(3, 24, prova::carta("5D'"), false, 1));
        QVERIFY(prova::cella_mostra(3, 26, prova::carta("3D")));
        QVERIFY(prova::cella_mostra(1, 1, 53, true));
        QVERIFY(prova::cella_mostra(3, 1, 53, true));
    }
};

QTEST_MAIN(TestComputerJolly)
#include "tst_computer_jolly.moc"
