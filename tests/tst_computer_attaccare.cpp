// The computer attaches: at either end of a straight, as the fourth card of a
// set, on its own table and then on the human's, always keeping its last card.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

namespace {
using Combinazione = void (*)(int, const std::string&);
using ComeTesto = std::string (*)(int);

// Combinations 1, 2, ... separated by "|"; an empty one is free.
void metti(const QString& testo, Combinazione combinazione)
{
    const QStringList v = testo.split('|');
    for (int c = 0; c < v.size(); ++c) combinazione(c + 1, v[c].toStdString());
}

QString leggi(ComeTesto come_testo)
{
    QStringList v;
    for (int c = 1; c <= 13; ++c) v << QString::fromStdString(come_testo(c));
    while (!v.isEmpty() && v.last().isEmpty()) v.removeLast();
    return v.join('|');
}

QString mano() { return QString::fromStdString(prova::mano_computer_come_testo()); }
}  // namespace

class TestComputerAttaccare : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void attacca_data()
    {
        QTest::addColumn<bool>("proprie");
        QTest::addColumn<QString>("tavolo");
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("tavolo_dopo");
        QTest::addColumn<QString>("dopo");
        QTest::addColumn<bool>("risultato");
        for (const bool proprie : {true, false}) {
            const QByteArray lato = proprie ? "own: " : "human's: ";
            QTest::newRow(lato + "the 6 below, then the 10 above")
                << proprie << "9S 8S 7S" << "6S 10S 2H KD" << "10S 9S 8S 7S 6S" << "2H KD" << true;
            QTest::newRow(lato + "an ace above the king")
                << proprie << "KH QH JH" << "AH 5C 9D" << "AH KH QH JH" << "5C 9D" << true;
            QTest::newRow(lato + "an ace below the two")
                << proprie << "4D 3D 2D" << "AD 5C 9S" << "4D 3D 2D AD" << "5C 9S" << true;
            QTest::newRow(lato + "of two that fit, the last is kept")
                << proprie << "9S 8S 7S" << "6S 10S" << "9S 8S 7S 6S" << ". 10S" << false;
            QTest::newRow(lato + "a single card is kept")
                << proprie << "9S 8S 7S" << "6S" << "9S 8S 7S" << "6S" << false;
            QTest::newRow(lato + "another suit does not fit")
                << proprie << "9S 8S 7S" << "6H 2D 5C" << "9S 8S 7S" << "2D 5C 6H" << false;
            QTest::newRow(lato + "the fourth of a set does not count")
                << proprie << "7H 7D 7C" << "7S 2D 9C" << "7H 7D 7C 7S" << "2D . 9C" << false;
            QTest::newRow(lato + "a quartet takes nothing")
                << proprie << "7H 7D 7C 7S" << "7S' 2D 9C" << "7H 7D 7C 7S" << "2D 7S' 9C" << false;
            QTest::newRow(lato + "a set with the card's suit takes nothing")
                << proprie << "7H 7D 7C" << "7H' 2D 9C" << "7H 7D 7C" << "2D 7H' 9C" << false;
            QTest::newRow(lato + "a set opened by the card's suit spoils the next straight")
                << proprie << "7H 7D 7C|4H 3H 2H" << "5H 2D 9C" << "7H 7D 7C|4H 3H 2H" << "2D 5H 9C" << false;
            QTest::newRow(lato + "a set opened by another suit does not")
                << proprie << "7D 7H 7C|4H 3H 2H" << "5H 2D 9C" << "7D 7H 7C|5H 4H 3H 2H" << "2D 9C" << true;
            QTest::newRow(lato + "a standing jolly goes on a set, not on a straight")
                << proprie << "9S 8S 7S|5H 5D 5C" << "*10S *5S 2D" << "9S 8S 7S|5H 5D 5C *5S" << "2D . *10S" << false;
            QTest::newRow(lato + "a plain jolly goes nowhere")
                << proprie << "9S 8S 7S|5H 5D 5C" << "J1 2D 4H" << "9S 8S 7S|5H 5D 5C" << "2D 4H J1" << false;
            QTest::newRow(lato + "the scan stops at the first free combination")
                << proprie << "|9S 8S 7S|5H 5D 5C" << "6S 5S' 2D" << "|9S 8S 7S|5H 5D 5C" << "2D 5S' 6S" << false;
            QTest::newRow(lato + "a straight at both ends in one call")
                << proprie << "QC JC 10C|KH KD KS" << "9C KC 3D 2H" << "KC QC JC 10C 9C|KH KD KS" << "2H 3D" << true;
            QTest::newRow(lato + "a straight, then a set, in one call")
                << proprie << "QC JC 10C|5H 5D 5S" << "9C 5C 3D 2H" << "QC JC 10C 9C|5H 5D 5S 5C" << "2H 3D" << true;
        }
    }
    void attacca()
    {
        QFETCH(bool, proprie);
        QFETCH(QString, tavolo);
        QFETCH(QString, prima);
        QFETCH(QString, tavolo_dopo);
        QFETCH(QString, dopo);
        QFETCH(bool, risultato);
        metti(tavolo, proprie ? prova::combinazione_computer : prova::combinazione_umano);
        // Whatever lies on the other table is not touched.
        metti("AS 2S 3S", proprie ? prova::combinazione_umano : prova::combinazione_computer);
        prova::mano_computer_da(prima.toStdString());
        QCOMPARE(proprie ? attacca_proprie() : attacca_avversario(), risultato);
        QCOMPARE(leggi(proprie ? prova::combinazione_computer_come_testo : prova::combinazione_umano_come_testo),
                 tavolo_dopo);
        QCOMPARE(leggi(proprie ? prova::combinazione_umano_come_testo : prova::combinazione_computer_come_testo),
                 QStringLiteral("AS 2S 3S"));
        QCOMPARE(mano(), dopo);
    }

    void dove_si_vedono_data()
    {
        QTest::addColumn<bool>("proprie");
        QTest::addColumn<int>("prima_riga");
        QTest::addColumn<int>("passo");
        QTest::newRow("own table: upwards from row 18") << true << 18 << -1;
        QTest::newRow("the human's: downwards from row 24") << false << 24 << 1;
    }
    void dove_si_vedono()
    {
        QFETCH(bool, proprie);
        QFETCH(int, prima_riga);
        QFETCH(int, passo);
        FrmTV& f = frmTV();
        prova::mano_computer_da("6S 10S 5S 2D");
        disegna_mano(f.tela, mano_computer, true, 0);
        const auto riga = [&](int k) { return prima_riga + passo * (k - 1); };
        const bool scorre_giu = passo > 0;
        const auto coperta_dalla_seguente = [&](int colonna, int k, const char* carta) {
            return prova::cella_mostra(colonna, riga(k), prova::carta(carta), false, 1, !scorre_giu);
        };
        metti("9S 8S 7S|5H 5D 5C", proprie ? prova::combinazione_computer : prova::combinazione_umano);
        QCOMPARE((proprie ? attacca_proprie : attacca_avversario)(), false);
        // The 10 went on top: the whole straight drawn again, the 6 at the bottom, the 5 on the set.
        QCOMPARE(leggi(proprie ? prova::combinazione_computer_come_testo : prova::combinazione_umano_come_testo),
                 QStringLiteral("10S 9S 8S 7S 6S|5H 5D 5C 5S"));
        QVERIFY(coperta_dalla_seguente(1, 1, "10S"));
        QVERIFY(coperta_dalla_seguente(1, 4, "7S"));
        QVERIFY(prova::cella_mostra(1, riga(5), prova::carta("6S")));
        QVERIFY(prova::cella_mostra(2, riga(4), prova::carta("5S")));
        // Their slots in the hand are shown empty; the card kept by its back.
        for (int i = 1; i <= 14; ++i)
            QVERIFY(mano_computer(i) == 0 ? prova::cella_mostra(i, 1, 0)
                                          : prova::cella_mostra(i, 1, long(mano_computer(i)), true));
        QCOMPARE(mano(), QStringLiteral("2D"));
    }
};

QTEST_MAIN(TestComputerAttaccare)
#include "tst_computer_attaccare.moc"
