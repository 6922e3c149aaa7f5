// SPDX-License-Identifier: GPL-3.0-or-later
// The computer's whole turn, from the draw to the hand-over, and what the
// player sees of it on the table.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QTimer>
#include <QtTest>

#include <algorithm>

namespace {
QString posizione() { return QString::fromStdString(prova::posizione_computer_come_testo()); }

// The stock from its next card on: mazzo(28), mazzo(29), ...
void tallone_da(const std::string& elenco)
{
    const auto codici = prova::carte(elenco);
    for (std::size_t i = 0; i < codici.size(); ++i) mazzo(long(28 + i)) = codici[i];
    tallone = 27;
}

// Every combination on both tables, the computer's hand and the top of the
// pile drawn as the tables hold them.
bool tavolo_mostrato()
{
    for (int k = 1; k <= 13; ++k)
        if ((tavolo_umano(k, 1) != 0 && !prova::combinazione_disegnata(k, true)) ||
            (tavolo_computer(k, 1) != 0 && !prova::combinazione_disegnata(k, false)))
            return false;
    const long cima = n_pozzo > 0 ? long(pozzo(n_pozzo)) : 0;
    return prova::mano_mostrata(true) && prova::cella_mostra(colonna_pozzo(), riga_pozzo(), cima);
}
void disegna_tavolo()
{
    Canvas& tela = frmTV().tela;
    for (int k = 1; k <= 13; ++k) {
        if (tavolo_umano(k, 1) != 0) disegna_combinazione(tela, Byte(k), true);
        if (tavolo_computer(k, 1) != 0) disegna_combinazione(tela, Byte(k), false);
    }
    disegna_mano(tela, mano_computer, true, 0);
    if (n_pozzo > 0) disegna_carta(tela, colonna_pozzo(), riga_pozzo(), pozzo(n_pozzo), false, 0);
    prova::azzera_suoni();
}

void t(const char* nome, const char* prima, const char* tallone, const char* esito, const char* dopo)
{
    QTest::newRow(nome) << QString(prima) << QString(tallone) << QString(esito) << QString(dopo);
}
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

    // The human holds J1 AS KD 5H, worth 51, in every row.
    void turno_data()
    {
        QTest::addColumn<QString>("prima");
        QTest::addColumn<QString>("tallone");
        QTest::addColumn<QString>("esito");
        QTest::addColumn<QString>("dopo");
        t("not opened: it draws from the stock", "9H 9C 2D 4S 6H 8D 10C QS KH 3C 5D 7S JD / p:4C 9S", "AS 6C",
          "handed back", "AS . 3C 4S 5D 6H 7S 8D 9C 9H 10C JD QS KH / p:4C 9S 2D");
        t("opened: it takes the pile for a set and attaches to the human's straight",
          "9H 9C 2D 4S 6H 8D 10C QS KH 3C 5D 7S JD / c1:KH' KD' KC' KS' | u1:JS 10S 9S 8S | p:4C 9S", "AS 6C",
          "handed back",
          ". 3C 4S 5D 6H 8D 10C JD KH / u1:QS JS 10S 9S 8S 7S | c1:KH' KD' KC' KS' | c2:9H 9C 9S | p:4C 2D");
        t("not opened: it lays 40 and opens", "5H 6H 7H 8H 9C 9D 9S 2C 4D JS KD 3S 6C", "QC", "handed back",
          ". 3S 4D 6C JS QC KD / c1:8H 7H 6H 5H | c2:9D 9C 9S | p:2C");
        t("with 3 cards it only swaps and attaches", "8S 2D / c1:KH KD KC KS | c2:9S *8S 7S | p:4C", "3C",
          "handed back", ". 3C J1 / c1:KH KD KC KS | c2:9S 8S 7S | p:4C 2D");
        t("with 3 cards it names no jolly for a set", "9S 9D / c1:KH KD KC KS | c2:9C 9D' 9S' | p:4C", "J1",
          "handed back", ". 9D J1 / c1:KH KD KC KS | c2:9C 9D' 9S' | p:4C 9S");
        t("the last card closes and the human pays 51", "6S / c1:KH KD KC KS | c2:9S 8S 7S | p:4C", "2D",
          "closed, 51 charged", " / c1:KH KD KC KS | c2:9S 8S 7S 6S | p:4C 2D");
        t("laying every card leaves none to discard", "5H 6H 7H / c1:KH' KD' KC' KS' | p:4C", "8H", "error 9",
          " / c1:KH' KD' KC' KS' | c2:8H 7H 6H 5H | p:4C");
        t("the third king from a jolly is not laid", "3H 7H JH 4D 9D KD 6S 10S KS 2C 5C 8C J1'", "QC", "handed back",
          ". 3H 4D 5C 6S 7H 8C 9D 10S JH QC KS KD J1 / p:2C");
        t("not opened: the human's jolly stays", "3H 7H JH 5D' 9D KD 6S 10S 2C 5C 8C 4S 2S / u1:*5D 4D 3D | p:AC", "QC",
          "handed back", ". 2C 3H 4S 5C 5D' 6S 7H 8C 9D 10S JH QC KD / u1:*5D 4D 3D | p:AC 2S");
        t("opened: the human's jolly is taken",
          "3H 7H JH 5D' 9D KD 6S 10S 2C 5C 8C 4S 2S / u1:*5D 4D 3D | c1:KH' KD' KC' KS' | p:AC", "QC", "handed back",
          ". 3H 4S 7H 8C 9D 10S JH QC KD . . . J1 / u1:5D' 4D 3D | c1:KH' KD' KC' KS' | c2:*5H 5C *5S | p:AC 2S");
        t("opened, a pile of one card: taken without an error", "9H 9C 2D 4S 6H 8D / c1:KH' KD' KC' KS' | p:9S",
          "AS 6C", "handed back", ". 4S 6H 8D 9S 9C 9H / c1:KH' KD' KC' KS' | p:2D");
        // The jolly made the king of hearts beside KD KS is swapped for the
        // human's *KH, the very same code, and comes back plain: a round with
        // nothing new must end the laying.
        t("a jolly named as the human's standing jolly comes and goes, and the turn ends",
          "2C 4H 5S 9D KD KS J1 / c1:QH' QD' QC' QS' | u1:*KH QH JH | p:3S 8C", "6D", "handed back",
          ". 4H 5S 6D 9D KS KD J1 / u1:*KH QH JH | c1:QH' QD' QC' QS' | p:3S 8C 2C");
    }
    void turno()
    {
        QFETCH(QString, prima);
        QFETCH(QString, tallone);
        QFETCH(QString, esito);
        QFETCH(QString, dopo);
        prova::posizione_computer_da(prima.toStdString());
        prova::mano_umano_da("J1 AS KD 5H");
        tallone_da(tallone.toStdString());
        disegna_tavolo();
        turno_umano = false;
        // A turn that goes round for ever is ended from the window's events,
        // which its pauses keep handling.
        QTimer guardia;
        connect(&guardia, &QTimer::timeout, [] { basic::protetto([] { basic::fine_programma(99); }); });
        guardia.start(2000);
        int errore = 0;
        try {
            errore = prova::errore_di(turno_computer);
        } catch (const basic::ProgrammaTerminato&) {}
        const QString visto = errore                               ? QString("error %1").arg(errore)
                              : basic::programma_terminato()       ? QString("never ends")
                              : frmTV().picture_score->isVisible() ? QString("closed, %1 charged").arg(long(punti(1)))
                              : turno_umano                        ? QString("handed back")
                                                                   : QString("kept");
        QCOMPARE(visto, esito);
        QCOMPARE(posizione(), dopo);
        if (!errore) QVERIFY(tavolo_mostrato());
    }

    void una_sequenza_si_vede_subito_solo_da_aperto_data()
    {
        QTest::addColumn<bool>("aperto");
        QTest::newRow("opened at the start: shown at once") << true;
        QTest::newRow("not opened: shown only if the opening stands") << false;
    }
    void una_sequenza_si_vede_subito_solo_da_aperto()
    {
        QFETCH(bool, aperto);
        prova::posizione_computer_da("2D 7C 8C 9C 10C / c1:KH' KD' KC' KS'");
        disegna_tavolo();
        aperto_a_inizio = aperto;
        cerca_sequenze();
        QCOMPARE(posizione(), QStringLiteral("2D / c1:KH' KD' KC' KS' | c2:10C 9C 8C 7C"));
        QCOMPARE(prova::combinazione_disegnata(2, false), aperto);
        QCOMPARE(prova::cella_mostra(2, 15, 0), !aperto);
        QCOMPARE(prova::quanti_suoni("carta.wav"), aperto ? 4 : 0);
        QVERIFY(prova::mano_mostrata(true));
    }

    // The real card in the combination, the jolly's back in the slot; then
    // the discard on the pile and its slot emptied.
    void scambio_e_scarto_si_vedono()
    {
        prova::posizione_computer_da("5D' 3H 8S / c2:9S *8S 7S | u3:*5D 4D 3D | p:4C");
        disegna_tavolo();
        scambia_jolly();
        QCOMPARE(posizione(), QStringLiteral("J1 3H J1 / u3:5D' 4D 3D | c2:9S 8S 7S | p:4C"));
        QVERIFY(tavolo_mostrato());
        scarta_computer();
        QCOMPARE(posizione(), QStringLiteral("J1 . J1 / u3:5D' 4D 3D | c2:9S 8S 7S | p:4C 3H"));
        QVERIFY(tavolo_mostrato());
    }

    // The last card of the stock: the pile, every card of it, becomes the
    // stock again, shown by the back of its next card, and the pile is empty.
    void pesca_l_ultima_del_tallone()
    {
        std::vector<int> pila, nuovo;
        for (int c = 1; c <= 81; ++c) pila.push_back(int(pozzo(c) = c + 20));
        n_pozzo = 81;
        mazzo(CARTE) = prova::carta("5S");
        tallone = CARTE - 1;
        prova::mano_computer_da("7H");
        disegna_tavolo();
        pesca_tallone_computer();
        QCOMPARE(posizione(), QStringLiteral("7H 5S / "));
        QCOMPARE(long(tallone), 27L);
        for (long i = 28; i <= CARTE; ++i) nuovo.push_back(long(mazzo(i)));
        std::sort(nuovo.begin(), nuovo.end());
        QCOMPARE(nuovo, pila);
        QVERIFY(prova::cella_mostra(colonna_tallone(), riga_pozzo(), long(mazzo(28)), true));
        QVERIFY(prova::cella_mostra(colonna_pozzo(), riga_pozzo(), 0));
    }
};

QTEST_MAIN(TestComputerTurno)
#include "tst_computer_turno.moc"
