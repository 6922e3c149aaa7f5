// The shuffle, the deal of a hand as the player sees it, and the reshuffle
// of the discard pile into a new stock.
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
            QCOMPARE(int(visti.size()), 108);
            QCOMPARE(*visti.begin(), 1L);
            QCOMPARE(*visti.rbegin(), 108L);
        }
    }

    void la_mescolata_svuota_mani_e_tavoli_ma_non_il_pozzo()
    {
        prova::mano_umano_da("7H 8H");
        prova::mano_computer_da("7C");
        prova::combinazione_umano(3, "KH KD KC");
        prova::combinazione_computer(13, "9S 8S 7S");
        prova::pozzo_da("2H 3H");
        tallone = 50;
        frmTV().mescola();
        QCOMPARE(prova::mano_umano_come_testo(), std::string());
        QCOMPARE(prova::mano_computer_come_testo(), std::string());
        QCOMPARE(prova::combinazione_umano_come_testo(3), std::string());
        QCOMPARE(prova::combinazione_computer_come_testo(13), std::string());
        QCOMPARE(prova::pozzo_come_testo(), std::string("2H 3H"));
        QCOMPARE(long(tallone), 50L);
    }

    void la_distribuzione()
    {
        FrmTV& f = frmTV();
        punti(1) = 12;
        punti(2) = 30;
        f.gioco_imposta();
        for (long i = 1; i <= 13; ++i) {
            QCOMPARE(long(mano_umano(i)), long(mazzo(i)));
            QCOMPARE(long(mano_computer(i)), long(mazzo(i + 13)));
        }
        QCOMPARE(long(mano_umano(14)), 0L);
        QCOMPARE(long(mano_computer(14)), 0L);
        QCOMPARE(long(pozzo(1)), long(mazzo(27)));
        QCOMPARE(long(n_pozzo), 1L);
        QCOMPARE(long(tallone), 27L);
        QCOMPARE(fase, std::string("000"));
        QVERIFY(turno_umano);
        QVERIFY(f.gioco_avviato);
        QCOMPARE(long(punti(1)), 12L);
        QCOMPARE(long(punti(2)), 30L);
        QVERIFY(!inizia_computer);
    }

    void il_tavolo_dopo_la_distribuzione()
    {
        frmTV().gioco_imposta();
        for (int i = 1; i <= 13; ++i) {
            QVERIFY2(prova::cella_mostra(i, 41, long(mano_umano(i))), prova::cosa_mostra(i, 41).c_str());
            QVERIFY2(prova::cella_mostra(i, 1, long(mano_computer(i)), true), prova::cosa_mostra(i, 1).c_str());
        }
        QVERIFY(prova::cella_mostra(14, 41, 0));
        QVERIFY(prova::cella_mostra(14, 1, 0));
        QVERIFY(prova::cella_mostra(13, 21, long(mazzo(27))));
        // The stock shows the back of the pack of the next card to be drawn.
        QVERIFY(prova::cella_mostra(14, 21, long(mazzo(28)), true));
        QCOMPARE(prova::cella_mostra(14, 21, 1, true), long(mazzo(28)) <= 54);
    }

    void il_suono_delle_carte_nella_distribuzione_data()
    {
        QTest::addColumn<bool>("fruscio");
        QTest::addColumn<int>("suoni");
        // 13 cards of the human's hand and the first discard are face up.
        QTest::newRow("card rustle Yes") << true << 14;
        QTest::newRow("card rustle No") << false << 0;
    }
    void il_suono_delle_carte_nella_distribuzione()
    {
        QFETCH(bool, fruscio);
        QFETCH(int, suoni);
        FrmTV& f = frmTV();
        fruscio ? f.menu_card_rustle_yes_Click() : f.menu_card_rustle_no_Click();
        f.gioco_imposta();
        QCOMPARE(prova::quanti_suoni("carta.wav"), suoni);
        QCOMPARE(int(prova::suoni().size()), suoni);
        f.menu_card_rustle_yes_Click();
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
        piattaforma::prova::rispondi_input(risposta.toStdString());
        piattaforma::prova::rispondi_input(risposta.toStdString());
        f.gioco_imposta();
        QCOMPARE(QString::fromStdString(nomi(1)), risposta);
        f.gioco_imposta();
        const auto& r = piattaforma::prova::richieste();
        QCOMPARE(int(std::count(r.begin(), r.end(), std::string("InputBox|Type your name.|Tavolata|Player1"))),
                 domande_in_due_mani);
        QCOMPARE(QString::fromStdString(nomi(2)), QString());
        piattaforma::prova::azzera();
    }

    void la_nuova_partita_dal_menu_non_cambia_chi_inizia()
    {
        FrmTV& f = frmTV();
        f.gioco_imposta();
        punti(1) = 44;
        f.menu_newgame_Click();
        QVERIFY(!inizia_computer);
        QVERIFY(turno_umano);
        QCOMPARE(long(punti(1)), 44L);
    }

    void la_distribuzione_nasconde_le_informazioni()
    {
        FrmTV& f = frmTV();
        f.menu_about_Click();
        QVERIFY(f.Text4->isVisible());
        f.gioco_imposta();
        QVERIFY(!f.Text4->isVisible());
    }

    void rimescola_prende_tutto_il_pozzo()
    {
        FrmTV& f = frmTV();
        fissa_seme(7);
        f.mescola();
        // The pile of a cycle: the 81 cards the stock gave out, slot 82 unused.
        std::multiset<long> attesi;
        for (long i = 1; i <= 81; ++i) {
            pozzo(i) = mazzo(i + 27);
            attesi.insert(long(mazzo(i + 27)));
        }
        pozzo(82) = 0;
        f.Rimescola();
        std::multiset<long> nuovi;
        for (long i = 28; i <= 108; ++i) nuovi.insert(long(mazzo(i)));
        QVERIFY(nuovi == attesi);
        for (long i = 1; i <= 82; ++i) QCOMPARE(long(pozzo(i)), 0L);
    }
};

QTEST_MAIN(TestMazzo)
#include "tst_mazzo.moc"
