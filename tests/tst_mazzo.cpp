// SPDX-License-Identifier: GPL-3.0-or-later
// The shuffle, the deal of a hand as the player sees it, the player's name
// and the sounds of the deal.
#include "aiuto/posizione.h"
#include "platform/dialoghi.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

#include <algorithm>
#include <vector>

class TestMazzo : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    // Seed 1 deals this very order of the 108 cards, and the reshuffle that
    // follows refills the stock in this one. Should the generator or either
    // shuffle change, every seeded run would change with it, and every failure
    // seed written down would stop meaning anything.
    void la_mescolata_fissata()
    {
        const auto dal_mazzo = [](long da) {
            std::vector<int> v;
            for (long i = da; i <= CARTE; ++i) v.push_back(long(mazzo(i)));
            return prova::elenco(v);
        };
        fissa_seme(1);
        frmTV().mescola();
        QCOMPARE(
            dal_mazzo(1),
            std::string("7S J2' JD' 8S' AH AD 7C 3D KD 10H 4S 8D 3S QC 6D' 9S' 5H' QC' 8C 8D' 3H' 10D 9S 2S' QD "
                        "3H 4H' 6S' JS 7H' 8S 9D 5C' 7C' QS' JH 2H' AS' 4S' 10C' 5H 4C 6D 7H JH' JS' 6S 6C 9C JC' "
                        "2H 4H 2C' AD' J1' 5D' AC' 5C 10S 6C' JD QH 8H QS 5S' KH 2D 7D' 7S' 3C J2 10H' 6H 8H' 9H' "
                        "KH' 9D' 10S' 3C' 3S' 8C' 2S 5D 4D' AS 2D' QD' 3D' KC 4C' 4D 10C 10D' 6H' KS AH' AC KC' 2C "
                        "J1 QH' 9H KD' JC 7D 9C' 5S KS'"));
        // The 81 cards of the stock, gone through the pile, become the stock again.
        for (long i = 1; i <= 81; ++i) pozzo(i) = mazzo(i + 27);
        pozzo(82) = 0;
        frmTV().Rimescola();
        QCOMPARE(
            dal_mazzo(28),
            std::string("10C 5C 6C 5S 7C' 9D' 10C' KS JH' 9H' QH 3C' 5D' 2H AS KH' KC KC' 7H' QH' 6S' AD' 9C 5D KH "
                        "QS AC' 10S 6S JD JS 6C' J2 AS' 10S' 8H' 8H 5H 4D' 7H JC' JS' 10D' J1 JC 9H 2S 3C 4H 10H' "
                        "6D 3D' 8S 4D 5C' 6H' 3S' KS' 4C 2C AC AH' 2C' 4S' KD' 2H' 2D 7D' J1' QD' 7S' 9D JH 8C' "
                        "2D' 7D 4C' 6H 5S' QS' 9C'"));
    }

    // "New game": 13 cards each from the top of the shuffled pack, the 27th
    // face up on the pile, the stock showing the back of the next; the totals
    // and the starter stay, and the Info panel is put away.
    void la_distribuzione()
    {
        FrmTV& f = frmTV();
        const auto dal_mazzo = [](long da, long a) {
            std::vector<int> v;
            for (long i = da; i <= a; ++i) v.push_back(long(mazzo(i)));
            return prova::elenco(v);
        };
        punti(2) = 30;
        f.menu_about->trigger();
        f.menu_newgame->trigger();
        QCOMPARE(prova::mano_umano_come_testo(), dal_mazzo(1, 13));
        QCOMPARE(prova::mano_computer_come_testo(), dal_mazzo(14, 26));
        QCOMPARE(prova::tavoli_come_testo(), "p:" + dal_mazzo(27, 27));
        QCOMPARE(long(tallone), 27L);
        QCOMPARE(fase, std::string("000"));
        QVERIFY(turno_umano && f.gioco_avviato && !inizia_computer);
        QCOMPARE(long(punti(2)), 30L);
        QVERIFY(prova::mano_mostrata(false) && prova::mano_mostrata(true));
        QVERIFY(prova::cella_mostra(13, 21, long(mazzo(27))));
        QVERIFY(prova::cella_mostra(14, 21, long(mazzo(28)), true));
        QVERIFY(!f.Text4->isVisible());
    }

    // 13 cards of the human's hand and the first discard are heard face up;
    // the pile, pressed before opening, is refused with the error sound.
    void i_suoni_della_distribuzione_data()
    {
        QTest::addColumn<bool>("fruscio");
        QTest::addColumn<int>("carte");
        QTest::newRow("card rustle Yes") << true << 14;
        QTest::newRow("card rustle No: only the refusal is heard") << false << 0;
    }
    void i_suoni_della_distribuzione()
    {
        QFETCH(bool, fruscio);
        QFETCH(int, carte);
        FrmTV& f = frmTV();
        (fruscio ? f.menu_card_rustle_yes : f.menu_card_rustle_no)->trigger();
        f.gioco_imposta();
        f.Form_MouseDown(1, 0, float(prova::x_colonna(13)), float(prova::y_riga(23)));
        f.menu_card_rustle_yes->trigger();
        QCOMPARE(prova::quanti_suoni("carta.wav"), carte);
        QCOMPARE(prova::quanti_suoni("errore.wav"), 1);
        QCOMPARE(int(prova::suoni().size()), carte + 1);
    }

    void il_nome_del_giocatore_data()
    {
        QTest::addColumn<QString>("risposta");
        QTest::addColumn<int>("domande_in_due_mani");
        QTest::newRow("a name is asked once") << "Anna" << 1;
        QTest::newRow("an empty answer is asked again") << "" << 2;
    }
    void il_nome_del_giocatore()
    {
        QFETCH(QString, risposta);
        QFETCH(int, domande_in_due_mani);
        FrmTV& f = frmTV();
        for (int mano = 0; mano < 2; ++mano) piattaforma::prova::rispondi_input(risposta.toStdString());
        f.gioco_imposta();
        QCOMPARE(QString::fromStdString(nomi(1)), risposta);
        f.gioco_imposta();
        const auto& r = piattaforma::prova::richieste();
        QCOMPARE(int(std::count(r.begin(), r.end(), std::string("InputBox|Type your name.|Tavolata|Player1"))),
                 domande_in_due_mani);
    }
};

QTEST_MAIN(TestMazzo)
#include "tst_mazzo.moc"
