// SPDX-License-Identifier: GPL-3.0-or-later
// The shuffle, the deal of a hand as the player sees it, the player's name
// and the sounds of the deal.
#include "aiuto/posizione.h"
#include "platform/dialoghi.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

#include <algorithm>
#include <set>

class TestMazzo : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void la_mescolata_e_una_permutazione()
    {
        for (int volta = 0; volta < 50; ++volta) {
            frmTV().mescola();
            std::set<long> visti;
            for (long i = 1; i <= 108; ++i) visti.insert(long(mazzo(i)));
            QVERIFY(visti.size() == 108 && *visti.begin() == 1 && *visti.rbegin() == 108);
        }
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
