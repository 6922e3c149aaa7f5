// SPDX-License-Identifier: GPL-3.0-or-later
// One step of the computer at a time: its sorts, the scans that lay straights
// and sets, the opening kept or taken back, its jollies, its attaching, its
// discard and its choice of the discard pile. A row is the hand and the tables
// before, the step, what it answered (-1 for a step that answers nothing) and
// the hand and the tables after.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"

#include <QtTest>

#include <functional>
#include <map>

namespace {
QString posizione() { return QString::fromStdString(prova::posizione_computer_come_testo()); }

// The hand copied into a Sequenza and tried: a trial must lay nothing, and
// what it leaves in the Sequenza goes back into the hand to be compared.
int in_prova()
{
    Sequenza s(conta_carte());
    for (long i = 1; i <= s.alto(); ++i) s(i) = mano_computer(i);
    const bool trovata = cala_sequenza(s, 1, Integer(s.alto()), true);
    for (long i = 1; i <= s.alto(); ++i) mano_computer(i) = s(i);
    return trovata;
}

const std::map<QString, std::function<int()>> passi = {
    {"seme", [] { return ordina_per_seme(), -1; }},
    {"numero", [] { return ordina_per_numero(), -1; }},
    {"sequenze", [] { return cerca_sequenze(), -1; }},
    {"prova", in_prova},
    {"tris", [] { return cerca_tris(), -1; }},
    {"apertura", [] { return verifica_apertura(), -1; }},
    {"jolly", [] { return int(usa_jolly()); }},
    {"jolly+sequenze", [] { return usa_jolly(), cerca_sequenze(), int(long(jolly_computer)); }},
    {"scambia", [] { return scambia_jolly(), -1; }},
    {"proprie", [] { return int(attacca_proprie()); }},
    {"avversario", [] { return int(attacca_avversario()); }},
    {"scarta", [] { return scarta_computer(), -1; }},
    {"conviene", [] { return int(conviene_pozzo()); }},
};

// "hand / tables": the tables as prova::tavoli_da reads them, or "pieno" for
// every column of the computer's taken. After the step, "=" keeps the part as
// it was, and a missing tables part means the tables did not change.
void r(const char* nome, const char* passo, const char* prima, int risultato, const char* dopo)
{
    QTest::newRow(nome) << QString(passo) << QString(prima) << risultato << QString(dopo);
}
}  // namespace

class TestComputerMosse : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void passo_data()
    {
        QTest::addColumn<QString>("passo");
        QTest::addColumn<QString>("prima");
        QTest::addColumn<int>("risultato");
        QTest::addColumn<QString>("dopo");
        r("by suit: twins end up reversed", "seme", "9C 2H J1 . KS 2H' *5D AH", -1, "AH 2H' 2H *5D 9C KS J1");
        r("by suit: jollies and gaps keep their order at the end", "seme", ". J2 5C J1' . 3C", -1, "3C 5C . J2 J1'");
        r("by suit: a standing jolly sorts as its card", "seme", "6D **5D 4D", -1, "4D **5D 6D");
        r("by number: equal numbers end up reversed", "numero", "9C AS KD 9H J2 . AS' 5D", -1, "AS' AS 5D 9H 9C KD J2");
        r("by number: a standing jolly sorts as its number", "numero", "J1 9C *2S", -1, "*2S 9C J1");

        r("three of a suit alone are not laid", "sequenze", "5H 6H 7H KS 2D", -1, "5H 6H 7H 2D KS");
        r("four of a suit, three in sequence at the top", "sequenze", "4H 8H 9H 10H KS 2D", -1,
          "4H . . . 2D KS / c1:10H 9H 8H");
        r("three in sequence under a higher card are not", "sequenze", "5H 6H 7H 10H KS 2D", -1, "5H 6H 7H 10H 2D KS");
        r("the run goes on into the suit below", "sequenze", "5H 6H 7D 8D 9D 10D", -1, " / c1:10D 9D 8D 7D 6H 5H");
        r("the lowest three of a block are never a run's top", "sequenze", "2S 3S 4S 7S 8S 9S 10S", -1,
          "2S 3S 4S / c1:10S 9S 8S 7S");
        r("two straights in one suit", "sequenze", "3C 4C 5C 6C 9C 10C JC QC", -1,
          " / c1:QC JC 10C 9C | c2:6C 5C 4C 3C");
        r("the ace sorts low and stays under a king", "sequenze", "JH QH KH AH", -1, "AH / c1:KH QH JH");
        r("a twin breaks the run", "sequenze", "5H 6H 6H' 7H 8H", -1, "5H 6H' / c1:8H 7H 6H");
        r("a suit up to slot 14 is passed over", "sequenze", "3H 5H 7H 9H JH 2D 4D 6D 8D QD 10S JS QS KS", -1, "=");
        r("the same with a free slot 14", "sequenze", "3H 5H 7H 9H JH 2D 4D 6D 8D 10S JS QS KS", -1,
          "3H 5H 7H 9H JH 2D 4D 6D 8D / c1:KS QS JS 10S");
        r("full table: a straight stays in hand", "sequenze", "9C 10C JC QC 2D / pieno", -1, "2D 9C 10C JC QC");

        r("trial: three positions are never looked at", "prova", "5H 6H 7H", 0, "=");
        r("trial: a run at the top", "prova", "5H 7H 8H 9H", 1, "=");
        r("trial: suits are not looked at", "prova", "3C 4H 5D 6S", 1, "=");
        r("trial: a jolly breaks it", "prova", "3H 4H J1 6H", 0, "=");
        r("trial: a standing jolly fills it", "prova", "3H 4H *5H 6H", 1, "=");

        r("three of a kind", "tris", "7H 9S 7D 7C", -1, ". . . 9S / c1:7H 7D 7C");
        r("a quartet, in suit order", "tris", "7S 7H 9S 7D 7C", -1, ". . . . 9S / c1:7H 7D 7C 7S");
        r("the last group is never laid", "tris", "KH 2S KD KC", -1, "2S KC KD KH");
        r("a jolly after them lets them go", "tris", "KH 2S KD KC J1", -1, "2S . . . J1 / c1:KH KD KC");
        r("a free slot alone does not", "tris", "KH 2S KD . KC 3C", -1, "2S 3C KC KD KH");
        r("twins count once", "tris", "7H 7H' 7D 9S", -1, "7D 7H' 7H 9S");
        r("of twins, the first after the sort is laid", "tris", "7H 7H' 7D 7C 9S", -1, ". . . 7H 9S / c1:7H' 7D 7C");
        r("two sets", "tris", "5H 5D 5S 8H 8C 8D 10S", -1, ". . . . . . 10S / c1:5H 5D 5S | c2:8H 8D 8C");
        r("full table: a set stays in hand", "tris", "7H 7D 7C 9S / pieno", -1, "7C 7D 7H 9S");

        r("opening: 39 points go back, into the first free slots", "apertura",
          "2S . 9D . . . . 5C / c1:KH KD KC | c2:3H 3D 3C", -1, "2S KH 9D KD KC 3H 3D 5C 3C / ");
        r("opening: 40 points stay", "apertura", "2S . 9D / c1:KH KD KC | c2:4H 3H 2H AH", -1, "=");
        r("opening: a full hand laid nothing", "apertura",
          "AS 2S 3S 4S 5S 6S 7S 8S 9S 10S JS QS KS J1 / c1:KH KD KC | c2:3H 3D 3C", -1, "=");
        r("opening: a standing jolly goes back as it stands", "apertura", "2S / c1:KH KD *KC | c2:3H 3D 3C", -1,
          "2S KH KD *KC 3H 3D 3C / ");

        r("jolly: none plain, standing codes untouched", "jolly", "*8S 5H 6H", 0, "=");
        r("jolly: the 8 above 5 6 7, tried at the top first", "jolly", "5H 6H 7H KS J1", 1, "5H 6H 7H *8H KS");
        r("jolly: a second-kind jolly stands as +162", "jolly", "5H 6H 7H KS J2'", 1, "5H 6H 7H **8H KS");
        r("jolly: 5 and 6 and a jolly make no straight", "jolly", "5H 6H KS J1", 0, "=");
        r("jolly: past a king the gap moves down, doubling the jack", "jolly", "JC QC KC 2D J1", 1, "2D *JC JC QC KC");
        r("jolly: the highest pair of two suits", "jolly", "5H 5C KD KS J1", 1, "5C 5H KS KD *KH");
        r("jolly: twins are not two suits", "jolly", "9H 9H' 2C J1", 0, "2C 9H 9H' J1");
        r("jolly: given to a straight, then to a set, it stands twice", "jolly", "5H 6H 7H 9C 9D . J1", 1,
          "5H 6H 7H *8H 9C 9D *9H");
        r("jolly: a standing code goes back plain, its slot written over a card", "jolly", "5H *9D 6H 7H J1'", 1,
          "5H 7H *8H J1 J1'");
        r("jolly: laid by the next scan", "jolly+sequenze", "5H 6H 7H KS J1", 1, ". . . . KS / c1:*8H 7H 6H 5H");

        r("swap: its own jolly, the card of the other pack", "scambia", "3H 8S' KD / c1:9S *8S 7S", -1,
          "3H J1 KD / c1:9S 8S' 7S");
        r("swap: a second-kind jolly comes back as 54", "scambia", "8S 3H / c1:9S **8S 7S", -1, "J2 3H / c1:9S 8S 7S");
        r("swap: the human's jolly", "scambia", "2C 5D' / u1:*5D 4D 3D", -1, "2C J1 / u1:5D' 4D 3D");
        r("swap: a set's jolly", "scambia", "QC' / u1:QH QD **QC", -1, "J2 / u1:QH QD QC'");
        r("swap: one per combination", "scambia", "9S 8S 2H / c1:**9S *8S 7S", -1, "J2 8S 2H / c1:9S *8S 7S");
        r("swap: both tables in one call", "scambia", "5D 8S / c1:9S *8S 7S | c2:3C 3D 3H | u2:*5D 4D 3D", -1,
          "J1 J1 / u2:5D 4D 3D | c1:9S 8S 7S | c2:3C 3D 3H");
        r("swap: its own jolly it cannot take hides the human's at that place", "scambia",
          "QH 2C / c1:*9S 8S 7S | u1:*QH JH 10H", -1, "=");
        r("swap: the human's at another place is taken", "scambia", "QH 2C / c1:*9S 8S 7S | u1:KH *QH JH", -1,
          "J1 2C / u1:KH QH JH | c1:*9S 8S 7S");

        r("attach: the 6 below, then the 10 above", "proprie", "6S 10S 2H KD / c1:9S 8S 7S", 1,
          "2H KD / c1:10S 9S 8S 7S 6S");
        r("attach: an ace above the king", "proprie", "AH 5C 9D / c1:KH QH JH", 1, "5C 9D / c1:AH KH QH JH");
        r("attach: of two that fit, the last is kept", "proprie", "6S 10S / c1:9S 8S 7S", 0, ". 10S / c1:9S 8S 7S 6S");
        r("attach: another suit does not fit", "proprie", "6H 2D 5C / c1:9S 8S 7S", 0, "2D 5C 6H");
        r("attach: the fourth of a set does not count", "proprie", "7S 2D 9C / c1:7H 7D 7C", 0,
          "2D . 9C / c1:7H 7D 7C 7S");
        r("attach: a quartet takes nothing", "proprie", "7S' 2D 9C / c1:7H 7D 7C 7S", 0, "2D 7S' 9C");
        r("attach: a set with the card's suit takes nothing", "proprie", "7H' 2D 9C / c1:7H 7D 7C", 0, "2D 7H' 9C");
        r("attach: a set opened by the card's suit spoils the next straight", "proprie",
          "5H 2D 9C / c1:7H 7D 7C | c2:4H 3H 2H", 0, "2D 5H 9C");
        r("attach: a set opened by another suit does not", "proprie", "5H 2D 9C / c1:7D 7H 7C | c2:4H 3H 2H", 1,
          "2D 9C / c1:7D 7H 7C | c2:5H 4H 3H 2H");
        r("attach: a standing jolly goes on a set, not on a straight", "proprie",
          "*10S *5S 2D / c1:9S 8S 7S | c2:5H 5D 5C", 0, "2D . *10S / c1:9S 8S 7S | c2:5H 5D 5C *5S");
        r("attach: a plain jolly goes nowhere", "proprie", "J1 2D 4H / c1:9S 8S 7S | c2:5H 5D 5C", 0, "2D 4H J1");
        r("attach: the scan stops at the first free combination", "proprie", "6S 5S' 2D / c2:9S 8S 7S | c3:5H 5D 5C", 0,
          "2D 5S' 6S");
        r("attach: a straight, then a set, in one call", "proprie", "9C 5C 3D 2H / c1:QC JC 10C | c2:5H 5D 5S", 1,
          "2H 3D / c1:QC JC 10C 9C | c2:5H 5D 5S 5C");
        r("attach to the human: the 6 below, then the 10 above", "avversario",
          "6S 10S 2H KD / u1:9S 8S 7S | c1:AS 2S 3S", 1, "2H KD / u1:10S 9S 8S 7S 6S | c1:AS 2S 3S");
        r("attach to the human: a set of the card's suit spoils the next straight", "avversario",
          "5H 2D 9C / u1:7H 7D 7C | u2:4H 3H 2H", 0, "2D 5H 9C");
        r("attach to the human: a straight, then a set", "avversario", "9C 5C 3D 2H / u1:QC JC 10C | u2:5H 5D 5S", 1,
          "2H 3D / u1:QC JC 10C 9C | u2:5H 5D 5S 5C");

        r("discard: of twins the later one", "scarta", "KH 2S KH' / p:4C", -1, "KH 2S / p:4C KH'");
        r("discard: twins before a lower card", "scarta", "2H 7D 9C 7D' / p:4C", -1, "2H 7D 9C / p:4C 7D'");
        r("discard: the lowest card first", "scarta", "AH 9C 3D 2S' 4H / p:4C", -1, "AH 9C 3D . 4H / p:4C 2S'");
        r("discard: the first of two equal numbers", "scarta", "9C 5D 5S / p:4C", -1, "9C . 5S / p:4C 5D");
        r("discard: a king before an ace or a jolly", "scarta", "AH J1 KS / p:4C", -1, "AH J1 / p:4C KS");
        r("discard: ace and jolly, the first slot", "scarta", "J1 AH / p:4C", -1, ". AH / p:4C J1");
        r("discard: two jollies are no twins", "scarta", "J1 J1' J2 J2' / p:4C", -1, ". J1' J2 J2' / p:4C J1");
        r("discard: the last card", "scarta", ". . 9S / p:4C", -1, " / p:4C 9S");
        r("discard: a standing jolly goes back plain first", "scarta", "*8S 8S' 3H / p:4C", -1, "J1 8S' / p:4C 3H");
        r("discard: the second kind comes back as 54", "scarta", "**8S 3H / p:4C", -1, "J2 / p:4C 3H");

        r("pile: not when its twin is in hand", "conviene", "9S' 9H 9C / p:3C 9S", 0, "=");
        r("pile: not a second-kind jolly while a slot is free", "conviene", "9H 9C 2D / p:3C J2", 0, "=");
        r("pile: a first-kind jolly, free slots counting as its number", "conviene", "9H 2D / p:3C J1", 1, "2D 9H");
        r("pile: not a first-kind jolly with only one free slot", "conviene",
          "AH 3H 5H 7H 9H JH 2D 4D 6D 8D 10C QC KS / p:3C J1'", 0, "AH 2D 3H 4D 5H 6D 7H 8D 9H 10C JH QC KS");
        r("pile: it completes a straight of its suit", "conviene", "KC 8D 6D 5D / p:3C 7D", 1, "5D 6D 8D KC");
        r("pile: two of the suit make no straight", "conviene", "KC 6D 5D / p:3C 7D", 0, "5D 6D KC");
        r("pile: a straight already in hand counts", "conviene", "2D 6S 5S 4S 3S / p:3C KS", 1, "2D 3S 4S 5S 6S");
        r("pile: it makes three of a number", "conviene", "9H 2D 9C / p:3C 9S", 1, "2D 9C 9H");
        r("pile: one of its number is not enough", "conviene", "9H 2D / p:3C 9S", 0, "2D 9H");
    }
    void passo()
    {
        QFETCH(QString, passo);
        QFETCH(QString, prima);
        QFETCH(int, risultato);
        QFETCH(QString, dopo);
        const bool pieno = prima.endsWith("pieno");
        prova::posizione_computer_da((pieno ? prima.chopped(5) : prima).toStdString());
        if (pieno)
            for (int c = 1; c <= 13; ++c) prova::combinazione_computer(c, "KH' KD' KC'");
        const QStringList prima_del_passo = posizione().split(" / ");
        aperto_a_inizio = false;
        QCOMPARE(passi.at(passo)(), risultato);
        QStringList atteso = dopo.split('/');
        if (atteso.size() == 1) atteso << "=";
        for (int i = 0; i < 2; ++i) atteso[i] = atteso[i].trimmed() == "=" ? prima_del_passo[i] : atteso[i].trimmed();
        QCOMPARE(posizione(), atteso.join(" / "));
    }
};

QTEST_MAIN(TestComputerMosse)
#include "tst_computer_mosse.moc"
