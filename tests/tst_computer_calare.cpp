// The computer lays down: the two sorts of its hand, the straights (four
// cards of a suit at least, running on into the suit below), the sets (the
// last group of the hand never laid), and the opening kept or taken back.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

namespace {
QString mano() { return QString::fromStdString(prova::mano_computer_come_testo()); }
QString combinazione(int k) { return QString::fromStdString(prova::combinazione_computer_come_testo(k)); }
// The computer's combinations in use, "|" between them.
QString tavolo()
{
    QStringList v;
    for (int c = 1; c <= 13 && tavolo_computer(c, 1) != 0; ++c) v << combinazione(c);
    return v.join(" | ");
}
// Every card of the computer's hand shown by its back, every empty slot empty.
bool mano_mostrata_coperta()
{
    for (int i = 1; i <= 14; ++i) {
        const long c = mano_computer(i);
        if (!(c == 0 ? prova::cella_mostra(i, 1, 0) : prova::cella_mostra(i, 1, c, true))) return false;
    }
    return true;
}
// Fills every column of the computer's table.
void tavolo_pieno()
{
    for (int c = 1; c <= 13; ++c) prova::combinazione_computer(c, "KH' KD' KC'");
}
}  // namespace

class TestComputerCalare : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void ordina_per_seme_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("suit by suit, ace to king") << "KS 9C 2D AH QH" << "AH QH 2D 9C KS";
        QTest::newRow("twins end up reversed") << "9C 2H J1 . KS 2H' *5D AH" << "AH 2H' 2H *5D 9C KS J1";
        QTest::newRow("jollies and gaps keep their order at the end") << ". J2 5C J1' . 3C" << "3C 5C . J2 J1'";
        QTest::newRow("a standing jolly sorts as its card") << "6D **5D 4D" << "4D **5D 6D";
    }
    void ordina_per_seme()
    {
        QFETCH(QString, prima);
        QFETCH(QString, dopo);
        prova::mano_computer_da(prima.toStdString());
        ::ordina_per_seme();
        QCOMPARE(mano(), dopo);
        QVERIFY(mano_mostrata_coperta());
        QCOMPARE(prova::quanti_suoni("carta.wav"), 0);
    }

    void ordina_per_numero_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("aces first, kings last") << "KD 5C AS 9H" << "AS 5C 9H KD";
        QTest::newRow("equal numbers end up reversed") << "9C AS KD 9H J2 . AS' 5D" << "AS' AS 5D 9H 9C KD J2";
        QTest::newRow("a standing jolly sorts as its number") << "J1 9C *2S" << "*2S 9C J1";
    }
    void ordina_per_numero()
    {
        QFETCH(QString, prima);
        QFETCH(QString, dopo);
        prova::mano_computer_da(prima.toStdString());
        ::ordina_per_numero();
        QCOMPARE(mano(), dopo);
        QVERIFY(mano_mostrata_coperta());
    }

    void cerca_sequenze_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("calate");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("three of a suit alone are not laid") << "5H 6H 7H KS 2D" << "" << "5H 6H 7H 2D KS";
        QTest::newRow("four of a suit, three in sequence at the top")
            << "4H 8H 9H 10H KS 2D" << "10H 9H 8H" << "4H . . . 2D KS";
        QTest::newRow("three in sequence under a higher card are not")
            << "5H 6H 7H 10H KS 2D" << "" << "5H 6H 7H 10H 2D KS";
        QTest::newRow("the run goes on into the suit below") << "5H 6H 7D 8D 9D 10D" << "10D 9D 8D 7D 6H 5H" << "";
        QTest::newRow("the lowest three of a block are never a run's top")
            << "2S 3S 4S 7S 8S 9S 10S" << "10S 9S 8S 7S" << "2S 3S 4S";
        QTest::newRow("two straights in one suit") << "3C 4C 5C 6C 9C 10C JC QC" << "QC JC 10C 9C | 6C 5C 4C 3C" << "";
        QTest::newRow("the ace sorts low and stays under a king") << "JH QH KH AH" << "KH QH JH" << "AH";
        QTest::newRow("ace below the two") << "4H 2H 3H AH" << "4H 3H 2H AH" << "";
        QTest::newRow("a twin breaks the run") << "5H 6H 6H' 7H 8H" << "8H 7H 6H" << "5H 6H'";
        QTest::newRow("a suit up to slot 14 is passed over")
            << "3H 5H 7H 9H JH 2D 4D 6D 8D QD 10S JS QS KS" << "" << "3H 5H 7H 9H JH 2D 4D 6D 8D QD 10S JS QS KS";
        QTest::newRow("the same with a free slot 14")
            << "3H 5H 7H 9H JH 2D 4D 6D 8D 10S JS QS KS" << "KS QS JS 10S" << "3H 5H 7H 9H JH 2D 4D 6D 8D";
        QTest::newRow("a jolly ends the last suit") << "10S JS QS KS J2" << "KS QS JS 10S" << ". . . . J2";
    }
    void cerca_sequenze()
    {
        QFETCH(QString, prima);
        QFETCH(QString, calate);
        QFETCH(QString, dopo);
        prova::mano_computer_da(prima.toStdString());
        aperto_a_inizio = false;
        ::cerca_sequenze();
        QCOMPARE(tavolo(), calate);
        QCOMPARE(mano(), dopo);
    }

    void una_sequenza_sul_tavolo_e_nella_mano_data()
    {
        QTest::addColumn<bool>("aperto");
        QTest::newRow("opened at the start: shown at once") << true;
        QTest::newRow("not opened: kept hidden") << false;
    }
    void una_sequenza_sul_tavolo_e_nella_mano()
    {
        QFETCH(bool, aperto);
        prova::combinazione_computer(1, "KH' KD' KC' KS'");
        prova::mano_computer_da("2D 7C 8C 9C 10C");
        disegna_mano(frmTV().tela, mano_computer, true, 0);
        aperto_a_inizio = aperto;
        ::cerca_sequenze();
        QCOMPARE(combinazione(2), QStringLiteral("10C 9C 8C 7C"));
        // Column 2, the card k at row 19 - k: each covers all but the bottom strip of the one before.
        QCOMPARE(prova::cella_mostra(2, 18, prova::carta("10C"), false, 1, true), aperto);
        QCOMPARE(prova::cella_mostra(2, 15, prova::carta("7C")), aperto);
        if (!aperto) QVERIFY(prova::cella_mostra(2, 15, 0));
        QCOMPARE(prova::quanti_suoni("carta.wav"), aperto ? 4 : 0);
        // The laid cards' slots are shown empty.
        QVERIFY(mano_mostrata_coperta());
    }

    void cala_sequenza_in_prova_data()
    {
        QTest::addColumn<QString>("carte");
        QTest::addColumn<bool>("trovata");
        QTest::newRow("three positions are never looked at") << "5H 6H 7H" << false;
        QTest::newRow("a run at the top") << "5H 7H 8H 9H" << true;
        QTest::newRow("a run under a higher card") << "5H 6H 7H 9H" << false;
        QTest::newRow("a run of four") << "3H 4H 5H 6H" << true;
        QTest::newRow("suits are not looked at") << "3C 4H 5D 6S" << true;
        QTest::newRow("a jolly breaks it") << "3H 4H J1 6H" << false;
        QTest::newRow("a standing jolly fills it") << "3H 4H *5H 6H" << true;
    }
    void cala_sequenza_in_prova()
    {
        QFETCH(QString, carte);
        QFETCH(bool, trovata);
        const auto codici = prova::carte(carte.toStdString());
        Sequenza candidata(long(codici.size()));
        for (std::size_t i = 0; i < codici.size(); ++i) candidata(long(i + 1)) = codici[i];
        QCOMPARE(cala_sequenza(candidata, 1, Integer(candidata.alto()), true), trovata);
        // A test lays nothing and changes nothing.
        QCOMPARE(tavolo(), QString());
        for (std::size_t i = 0; i < codici.size(); ++i) QCOMPARE(long(candidata(long(i + 1))), long(codici[i]));
    }

    void cerca_tris_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("calate");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("three of a kind") << "7H 9S 7D 7C" << "7H 7D 7C" << ". . . 9S";
        QTest::newRow("a quartet, in suit order") << "7S 7H 9S 7D 7C" << "7H 7D 7C 7S" << ". . . . 9S";
        QTest::newRow("the last group is never laid") << "KH 2S KD KC" << "" << "2S KC KD KH";
        QTest::newRow("a jolly after them lets them go") << "KH 2S KD KC J1" << "KH KD KC" << "2S . . . J1";
        QTest::newRow("so does a free slot before a jolly") << "KH 2S . KD KC J1" << "KH KD KC" << "2S . . . . J1";
        QTest::newRow("a free slot alone does not") << "KH 2S KD . KC 3C" << "" << "2S 3C KC KD KH";
        QTest::newRow("twins count once") << "7H 7H' 7D 9S" << "" << "7D 7H' 7H 9S";
        QTest::newRow("of twins, the first after the sort is laid")
            << "7H 7H' 7D 7C 9S" << "7H' 7D 7C" << ". . . 7H 9S";
        QTest::newRow("two sets") << "5H 5D 5S 8H 8C 8D 10S" << "5H 5D 5S | 8H 8D 8C" << ". . . . . . 10S";
        QTest::newRow("two of a kind are not a set") << "7H 7D 9S" << "" << "7D 7H 9S";
    }
    void cerca_tris()
    {
        QFETCH(QString, prima);
        QFETCH(QString, calate);
        QFETCH(QString, dopo);
        prova::mano_computer_da(prima.toStdString());
        aperto_a_inizio = true;
        ::cerca_tris();
        QCOMPARE(tavolo(), calate);
        QCOMPARE(mano(), dopo);
    }

    void cala_tris_cancella_la_colonna_sbagliata()
    {
        // The group is slots 3 to 5; the cells erased are those of columns
        // a + k, 4 to 6, not the cards' own 3 to 5.
        prova::mano_computer_da("2H 2D 7H 7D 7C 9S");
        disegna_mano(frmTV().tela, mano_computer, true, 0);
        aperto_a_inizio = false;
        cala_tris(3, 6);
        QCOMPARE(combinazione(1), QStringLiteral("7H 7D 7C"));
        QCOMPARE(mano(), QStringLiteral("2H 2D . . . 9S"));
        QVERIFY(prova::cella_mostra(3, 1, prova::carta("7H"), true));
        QVERIFY(prova::cella_mostra(4, 1, 0));
        QVERIFY(prova::cella_mostra(5, 1, 0));
        QVERIFY(prova::cella_mostra(6, 1, 0));
        QCOMPARE(long(mano_computer(6)), long(prova::carta("9S")));
        // The next sort puts the row right.
        ::ordina_per_numero();
        QVERIFY(mano_mostrata_coperta());
    }

    void prima_combinazione_libera_data()
    {
        QTest::addColumn<QStringList>("occupate");
        QTest::addColumn<int>("libera");
        QTest::newRow("empty table") << QStringList{} << 1;
        QTest::newRow("after two") << QStringList{"1", "2"} << 3;
        QTest::newRow("a hole") << QStringList{"1", "3"} << 2;
        QTest::newRow("all taken")
            << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13"} << 0;
    }
    void prima_combinazione_libera()
    {
        QFETCH(QStringList, occupate);
        QFETCH(int, libera);
        for (const QString& c : occupate) prova::combinazione_computer(c.toInt(), "2H 3H 4H");
        prova::combinazione_umano(1, "2C 3C 4C");
        QCOMPARE(long(::prima_combinazione_libera(false)), long(libera));
    }

    void un_tavolo_pieno_non_prende_altro_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::newRow("a straight") << "9C 10C JC QC 2D";
        QTest::newRow("a set") << "7H 7D 7C 9S";
    }
    void un_tavolo_pieno_non_prende_altro()
    {
        // With all 13 columns taken the computer keeps its cards.
        QFETCH(QString, prima);
        tavolo_pieno();
        prova::mano_computer_da(prima.toStdString());
        aperto_a_inizio = true;
        ::cerca_sequenze();
        ::cerca_tris();
        QCOMPARE(long(conta_carte()), long(prova::carte(prima.toStdString()).size()));
        for (int c = 1; c <= 13; ++c) QCOMPARE(combinazione(c), QStringLiteral("KH' KD' KC'"));
    }

    void verifica_apertura_data()
    {
        QTest::addColumn<QStringList>("calate");
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("dopo");
        QTest::addColumn<bool>("tenute");
        QTest::newRow("39 points go back, into the first free slots")
            << QStringList{"KH KD KC", "3H 3D 3C"} << "2S . 9D . . . . 5C" << "2S KH 9D KD KC 3H 3D 5C 3C" << false;
        QTest::newRow("40 points stay") << QStringList{"KH KD KC", "4H 3H 2H AH"} << "2S . 9D" << "2S . 9D" << true;
        QTest::newRow("a full hand laid nothing")
            << QStringList{"KH KD KC", "3H 3D 3C"} << "AS 2S 3S 4S 5S 6S 7S 8S 9S 10S JS QS KS J1"
            << "AS 2S 3S 4S 5S 6S 7S 8S 9S 10S JS QS KS J1" << true;
        QTest::newRow("a standing jolly goes back as it stands")
            << QStringList{"KH KD *KC", "3H 3D 3C"} << "2S" << "2S KH KD *KC 3H 3D 3C" << false;
    }
    void verifica_apertura()
    {
        QFETCH(QStringList, calate);
        QFETCH(QString, prima);
        QFETCH(QString, dopo);
        QFETCH(bool, tenute);
        for (int c = 0; c < calate.size(); ++c) prova::combinazione_computer(c + 1, calate[c].toStdString());
        prova::mano_computer_da(prima.toStdString());
        aperto_a_inizio = false;
        ::verifica_apertura();
        QCOMPARE(mano(), dopo);
        QCOMPARE(tavolo(), tenute ? calate.join(" | ") : QString());
        const bool mostrate = tenute && prima.count(' ') < 13;
        // The kept combinations appear one card after the other, face up.
        QCOMPARE(prova::cella_mostra(1, 16, prova::carta(calate[0].split(' ').last().toStdString())), mostrate);
        QCOMPARE(prova::quanti_suoni("carta.wav"),
                 mostrate ? int(prova::carte(calate.join(' ').toStdString()).size()) : 0);
        if (!tenute) QVERIFY(mano_mostrata_coperta());
    }
};

QTEST_MAIN(TestComputerCalare)
#include "tst_computer_calare.moc"
