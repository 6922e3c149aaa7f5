// The computer's turn: the choice between stock and discard pile, the two
// draws, the discard, the counts, and whole turns from the draw to the hand-over.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

#include <algorithm>

namespace {
// The stock from its next card on: mazzo(28), mazzo(29), ...
void tallone_da(const std::string& elenco)
{
    const auto codici = prova::carte(elenco);
    for (std::size_t i = 0; i < codici.size(); ++i) mazzo(long(28 + i)) = codici[i];
    tallone = 27;
}

// The error number of a fatal run-time error raised by `azione`, 0 if none.
template <class F>
int errore_di(F azione)
{
    try {
        azione();
    } catch (const basic::ErroreRuntime& e) {
        return e.numero();
    }
    return 0;
}

constexpr int COLONNA_POZZO = 13, COLONNA_TALLONE = 14, RIGA_POZZO = 21;
}  // namespace

class TestComputerTurno : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        prova::finestra();
        nomi(1) = "Anna";
    }
    void cleanup() { frmTV().picture_score->hide(); }

    void conta_carte_e_jolly_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<int>("carte");
        QTest::addColumn<int>("jolly");
        QTest::newRow("empty hand") << "" << 0 << 0;
        QTest::newRow("gaps do not count") << "7H . . 9C" << 2 << 0;
        QTest::newRow("all four plain jollies") << "J1 J2 J1' J2'" << 4 << 4;
        QTest::newRow("a jolly standing for a card is no plain jolly") << "*8S **2C J2 7H" << 4 << 1;
        QTest::newRow("full hand") << "AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH J1" << 14 << 1;
    }
    void conta_carte_e_jolly()
    {
        QFETCH(QString, mano);
        QFETCH(int, carte);
        QFETCH(int, jolly);
        prova::mano_computer_da(mano.toStdString());
        QCOMPARE(long(conta_carte()), long(carte));
        QCOMPARE(long(conta_jolly()), long(jolly));
    }

    void ultima_carta_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<bool>("ultima");
        QTest::newRow("one card") << "9S" << true;
        QTest::newRow("one card after gaps") << ". . 9S" << true;
        QTest::newRow("one jolly") << "J2'" << true;
        QTest::newRow("two cards") << "9S . 2H" << false;
        QTest::newRow("no card") << "" << false;
    }
    void ultima_carta()
    {
        QFETCH(QString, mano);
        QFETCH(bool, ultima);
        prova::mano_computer_da(mano.toStdString());
        prova::mano_umano_da("2H 3H");
        QCOMPARE(::ultima_carta(true), ultima);
        QCOMPARE(::ultima_carta(false), false);
        prova::mano_computer_da("2H 3H");
        prova::mano_umano_da(mano.toStdString());
        QCOMPARE(::ultima_carta(false), ultima);
        QCOMPARE(::ultima_carta(true), false);
    }

    void cerca_doppione_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<int>("slot");
        QTest::newRow("the later twin") << "7H 8H 7H'" << 3;
        QTest::newRow("the later twin, first pack") << "7H' 8H 7H" << 3;
        QTest::newRow("of two pairs, the last slot") << "5C 9D 5C' 9D'" << 4;
        QTest::newRow("same number, other suit") << "7H 7D" << 0;
        QTest::newRow("two jollies are no twins") << "J1 J1' J2 J2'" << 0;
        QTest::newRow("twins across gaps") << "KS . . 2D . KS'" << 6;
    }
    void cerca_doppione()
    {
        QFETCH(QString, mano);
        QFETCH(int, slot);
        prova::mano_computer_da(mano.toStdString());
        QCOMPARE(long(::cerca_doppione()), long(slot));
    }

    void scarta_computer_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<QString>("dopo");
        QTest::addColumn<QString>("scartata");
        QTest::newRow("twins: the later one goes") << "KH 2S KH'" << "KH 2S" << "KH'";
        QTest::newRow("twins go before a lower card") << "2H 7D 9C 7D'" << "2H 7D 9C" << "7D'";
        QTest::newRow("the lowest card first") << "AH 9C 3D 2S' 4H" << "AH 9C 3D . 4H" << "2S'";
        QTest::newRow("the first of two equal numbers") << "9C 5D 5S" << "9C . 5S" << "5D";
        QTest::newRow("a king before an ace or a jolly") << "AH J1 KS" << "AH J1" << "KS";
        QTest::newRow("ace and jolly: the first slot") << "J1 AH" << ". AH" << "J1";
        QTest::newRow("the last card") << ". . 9S" << "" << "9S";
        QTest::newRow("a standing jolly goes back plain first") << "*8S 8S' 3H" << "J1 8S'" << "3H";
        QTest::newRow("the second kind comes back as 54") << "**8S' 3H" << "J2" << "3H";
        QTest::newRow("a second-pack standing jolly returns as the first pack's") << "**QD 10C" << "J2" << "10C";
    }
    void scarta_computer()
    {
        QFETCH(QString, mano);
        QFETCH(QString, dopo);
        QFETCH(QString, scartata);
        FrmTV& f = frmTV();
        prova::mano_computer_da(mano.toStdString());
        disegna_mano(f.tela, mano_computer, true, 0);
        prova::pozzo_da("4C");
        std::vector<int> prima;
        for (long i = 1; i <= 14; ++i) prima.push_back(long(mano_computer(i)));

        ::scarta_computer();

        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), dopo);
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), "4C " + scartata);
        QVERIFY(prova::cella_mostra(COLONNA_POZZO, RIGA_POZZO, prova::carta(scartata.toStdString())));
        // The slot it left is shown empty; the others keep their backs.
        for (long i = 1; i <= 14; ++i) {
            if (prima[i - 1] == 0) continue;
            if (mano_computer(i) == 0)
                QVERIFY(prova::cella_mostra(int(i), 1, 0));
            else
                QVERIFY(prova::cella_mostra(int(i), 1, prima[i - 1], true));
        }
    }

    void conviene_pozzo_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<QString>("cima");
        QTest::addColumn<bool>("conviene");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("its twin is in hand") << "9S' 9H 9C" << "9S" << false << "9S' 9H 9C";
        QTest::newRow("second-kind jolly, hand not full") << "9H 9C 2D" << "J2" << false << "9H 9C 2D";
        QTest::newRow("second-kind jolly of the second pack") << "9H 9C 2D" << "J2'" << false << "9H 9C 2D";
        QTest::newRow("first-kind jolly: the free slots count as its number") << "9H 2D" << "J1" << true << "2D 9H";
        QTest::newRow("first-kind jolly, only one free slot")
            << "AH 3H 5H 7H 9H JH 2D 4D 6D 8D 10C QC KS" << "J1'" << false << "AH 2D 3H 4D 5H 6D 7H 8D 9H 10C JH QC KS";
        QTest::newRow("completes a straight of its suit") << "KC 8D 6D 5D" << "7D" << true << "5D 6D 8D KC";
        QTest::newRow("two of the suit make no straight") << "KC 6D 5D" << "7D" << false << "5D 6D KC";
        QTest::newRow("a straight already in hand counts") << "2D 6S 5S 4S 3S" << "KS" << true << "2D 3S 4S 5S 6S";
        QTest::newRow("makes three of a number") << "9H 2D 9C" << "9S" << true << "2D 9C 9H";
        QTest::newRow("twins count as two of a number") << "9H 2D 9H'" << "9S" << true << "2D 9H 9H'";
        QTest::newRow("one of its number is not enough") << "9H 2D" << "9S" << false << "2D 9H";
    }
    void conviene_pozzo()
    {
        QFETCH(QString, mano);
        QFETCH(QString, cima);
        QFETCH(bool, conviene);
        QFETCH(QString, dopo);
        prova::mano_computer_da(mano.toStdString());
        prova::pozzo_da("3C " + cima.toStdString());
        QCOMPARE(::conviene_pozzo(), conviene);
        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), dopo);
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), "3C " + cima);
    }

    void pesca_dal_tallone()
    {
        prova::mano_computer_da("7H . 9H");
        tallone_da("QC 3D'");
        pesca_tallone_computer();
        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), QStringLiteral("7H QC 9H"));
        QCOMPARE(long(tallone), 28L);
        QVERIFY(prova::cella_mostra(2, 1, prova::carta("QC"), true));
        // The stock shows the back of the next card: a second-pack card here.
        QVERIFY(prova::cella_mostra(COLONNA_TALLONE, RIGA_POZZO, prova::carta("3D'"), true));
        QVERIFY(!prova::cella_mostra(COLONNA_TALLONE, RIGA_POZZO, prova::carta("3D"), true));
        QCOMPARE(prova::quanti_suoni("carta.wav"), 0);
    }

    void pesca_l_ultima_del_tallone()
    {
        FrmTV& f = frmTV();
        std::vector<int> pila;
        for (int c = 1; c <= 81; ++c) pila.push_back(c + 20);
        for (long i = 1; i <= 81; ++i) pozzo(i) = pila[i - 1];
        pozzo(82) = 0;
        n_pozzo = 81;
        mazzo(108) = prova::carta("5S");
        tallone = 107;
        prova::mano_computer_da("7H");
        disegna_carta(f.tela, COLONNA_POZZO, RIGA_POZZO, Byte(101), false, 0);

        pesca_tallone_computer();

        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), QStringLiteral("7H 5S"));
        QCOMPARE(long(tallone), 27L);
        QCOMPARE(long(n_pozzo), 0L);
        std::vector<int> nuovo;
        for (long i = 28; i <= 108; ++i) nuovo.push_back(long(mazzo(i)));
        std::sort(nuovo.begin(), nuovo.end());
        QCOMPARE(nuovo, pila);
        for (long i = 1; i <= 82; ++i) QCOMPARE(long(pozzo(i)), 0L);
        QVERIFY(prova::cella_mostra(COLONNA_TALLONE, RIGA_POZZO, long(mazzo(28)), true));
        QVERIFY(prova::cella_mostra(COLONNA_POZZO, RIGA_POZZO, 0));
    }

    void pesca_dal_pozzo()
    {
        prova::mano_computer_da("2C . 4C");
        prova::pozzo_da("3H 7D 9S");
        pesca_pozzo_computer();
        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), QStringLiteral("2C 9S 4C"));
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("3H 7D"));
        QCOMPARE(long(pozzo(3)), long(prova::carta("9S")));  // the slot is not cleared
        QVERIFY(prova::cella_mostra(2, 1, prova::carta("9S"), true));
        QVERIFY(prova::cella_mostra(COLONNA_POZZO, RIGA_POZZO, prova::carta("7D")));
    }

    // Whole turns in which nothing is laid: which pile the computer draws from.
    void da_dove_pesca_data()
    {
        QTest::addColumn<QString>("tavolo");
        QTest::addColumn<QString>("pila");
        QTest::addColumn<QString>("pila_dopo");
        QTest::addColumn<int>("tallone_dopo");
        QTest::addColumn<QString>("combinazione_2");
        QTest::newRow("not opened: always the stock") << "" << "4C 9S" << "4C 9S 2D" << 28 << "";
        QTest::newRow("opened: the pile for a set") << "KH' KD' KC' KS'" << "4C 9S" << "4C 2D" << 27 << "9H 9C 9S";
        QTest::newRow("opened, nothing to gain: the stock") << "KH' KD' KC' KS'" << "4C 3D" << "4C 3D 2D" << 28 << "";
    }
    void da_dove_pesca()
    {
        QFETCH(QString, tavolo);
        QFETCH(QString, pila);
        QFETCH(QString, pila_dopo);
        QFETCH(int, tallone_dopo);
        QFETCH(QString, combinazione_2);
        prova::combinazione_computer(1, tavolo.toStdString());
        prova::mano_computer_da("9H 9C 2D 4S 6H 8D 10C QS KH 3C 5D 7S JD");
        prova::pozzo_da(pila.toStdString());
        tallone_da("AS 6C");
        turno_umano = false;

        turno_computer();

        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), pila_dopo);
        QCOMPARE(long(tallone), long(tallone_dopo));
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), combinazione_2);
        QCOMPARE(long(conta_carte()), combinazione_2.isEmpty() ? 13L : 10L);
        QVERIFY(turno_umano);
        QVERIFY(!frmTV().picture_score->isVisible());
    }

    void chi_non_ha_aperto_cala_e_apre()
    {
        prova::mano_computer_da("5H 6H 7H 8H 9C 9D 9S 2C 4D JS KD 3S 6C");
        tallone_da("QC");
        turno_computer();
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(1)), QStringLiteral("8H 7H 6H 5H"));
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("9D 9C 9S"));
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(3)), QString());
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()).split(' ').last(), QStringLiteral("2C"));
        QCOMPARE(long(conta_carte()), 6L);
        // Both combinations shown face up, position 1 just above the middle.
        QVERIFY(prova::cella_mostra(1, 18, prova::carta("8H"), false, 1, true));
        QVERIFY(prova::cella_mostra(1, 15, prova::carta("5H")));
        QVERIFY(prova::cella_mostra(2, 16, prova::carta("9S")));
    }

    void chi_non_ha_aperto_riprende_meno_di_40()
    {
        // 5 6 7 8 of hearts (26) and three threes (9): 35 points go back into the hand.
        prova::mano_computer_da("5H 6H 7H 8H 3C 3D 3S 2C 4D JS KD 9S 6C");
        tallone_da("QC");
        turno_computer();
        for (int c = 1; c <= 13; ++c)
            QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(c)), QString());
        QCOMPARE(long(conta_carte()), 13L);
        QVERIFY(prova::cella_mostra(1, 18, 0));
        // Every card back in hand, shown by its back.
        for (int i = 1; i <= 14; ++i)
            QVERIFY(mano_computer(i) == 0 ? prova::cella_mostra(i, 1, 0)
                                          : prova::cella_mostra(i, 1, long(mano_computer(i)), true));
    }

    void con_tre_carte_scambia_e_attacca_ancora()
    {
        prova::combinazione_computer(1, "KH KD KC KS");
        prova::combinazione_computer(2, "9S *8S 7S");
        prova::mano_computer_da("8S 2D");
        prova::pozzo_da("4C");
        tallone_da("3C");
        turno_computer();
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("9S 8S 7S"));
        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), QStringLiteral(". 3C J1"));
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("4C 2D"));
    }

    void l_ultima_carta_chiude()
    {
        FrmTV& f = frmTV();
        prova::combinazione_computer(1, "KH KD KC KS");
        prova::combinazione_computer(2, "9S 8S 7S");
        prova::mano_computer_da("6S");
        prova::mano_umano_da("J1 AS KD 5H");
        prova::pozzo_da("4C");
        tallone_da("2D");
        turno_umano = false;
        turno_computer();
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("9S 8S 7S 6S"));
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("4C 2D"));
        QCOMPARE(long(conta_carte()), 0L);
        QCOMPARE(long(punti(1)), 51L);
        QVERIFY(f.picture_score->isVisible());
        QVERIFY(!turno_umano);
    }

    void chi_cala_ogni_carta_non_ha_da_scartare()
    {
        // Laying, unlike attaching, may take the last card: the discard then
        // finds no card in hand and reads slot 0, "Subscript out of range".
        prova::combinazione_computer(1, "KH' KD' KC' KS'");
        prova::mano_computer_da("5H 6H 7H");
        prova::pozzo_da("4C");
        tallone_da("8H");
        QCOMPARE(errore_di([] { turno_computer(); }), 9);
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(2)), QStringLiteral("8H 7H 6H 5H"));
        QCOMPARE(long(conta_carte()), 0L);
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("4C"));
    }

    void il_terzo_re_di_jolly_non_si_cala()
    {
        // The jolly becomes the king of hearts beside two kings, but the kings
        // are the last group of the scan; the discard turns it back plain, as
        // the first pack's jolly.
        prova::mano_computer_da("3H 7H JH 4D 9D KD 6S 10S KS 2C 5C 8C J1'");
        tallone_da("QC");
        turno_computer();
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(1)), QString());
        const QString mano = QString::fromStdString(prova::mano_computer_come_testo());
        QVERIFY2(mano.split(' ').contains("J1") && !mano.contains("J1'") && !mano.contains('*'), qPrintable(mano));
        QCOMPARE(QString::fromStdString(prova::pozzo_come_testo()), QStringLiteral("2C"));
    }

    void il_jolly_dell_umano_solo_dopo_l_apertura_data()
    {
        QTest::addColumn<bool>("aperto");
        QTest::addColumn<QString>("combinazione_umano");
        QTest::newRow("not opened") << false << "*5D 4D 3D";
        QTest::newRow("opened") << true << "5D' 4D 3D";
    }
    void il_jolly_dell_umano_solo_dopo_l_apertura()
    {
        QFETCH(bool, aperto);
        QFETCH(QString, combinazione_umano);
        // The computer's own kings come from the second pack: the hand holds the first's.
        if (aperto) prova::combinazione_computer(1, "KH' KD' KC' KS'");
        prova::combinazione_umano(1, "*5D 4D 3D");
        prova::mano_computer_da("3H 7H JH 5D' 9D KD 6S 10S 2C 5C 8C 4S 2S");
        prova::pozzo_da("AC");
        tallone_da("QC");
        turno_computer();
        QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(1)), combinazione_umano);
    }
};

QTEST_MAIN(TestComputerTurno)
#include "tst_computer_turno.moc"
