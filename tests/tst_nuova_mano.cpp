// SPDX-License-Identifier: GPL-3.0-or-later
// "New game" in the middle of the computer's turn or of a deal: the new hand
// is dealt whole and nothing of what was waiting goes on over it. Also the
// computer's take of a discard pile of one card, which leaves the pile empty.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QTimer>
#include <QtTest>

class TestNuovaMano : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    void nuova_partita_in_una_pausa_data()
    {
        QTest::addColumn<int>("momento");
        QTest::newRow("after the computer's draw") << 0;
        QTest::newRow("while the computer lays its opening") << 1;
        QTest::newRow("before the computer's discard, a card attached") << 2;
        QTest::newRow("while the cards of a deal are shown") << 3;
    }
    void nuova_partita_in_una_pausa()
    {
        QFETCH(int, momento);
        bool (*const giunto[])() = {[] { return conta_carte() == 14; }, [] { return tavolo_computer(1, 1) != 0; },
                                    [] { return tavolo_umano(1, 5) != 0; },
                                    [] { return mano_umano(1) != 0 && mano_computer(1) == 0; }};
        // The computer draws 9S, opens with its hearts and puts the 9S under
        // the player's spades before it discards.
        prova::tavoli_da("u1:KS QS JS 10S | p:5D");
        prova::mano_computer_da("10H JH QH KH 2C 3D 5S 7C 8D 4H 6D 2S 3C");
        tallone = 27, mazzo(28) = prova::carta("9S");
        QTimer spia;
        QObject::connect(&spia, &QTimer::timeout, [&] {
            if (!giunto[momento]()) return;
            spia.stop();
            prova::azzera_suoni();
            frmTV().menu_newgame->trigger();
        });
        spia.start(0);
        // "New game" at rest, its own deal then overtaken; or the computer's turn.
        momento == 3 ? frmTV().menu_newgame->trigger() : basic::protetto([] { turno_computer(); });
        QVERIFY(!spia.isActive() && !basic::programma_terminato());
        for (long i = 1; i <= 13; ++i) QVERIFY(mano_umano(i) == mazzo(i) && mano_computer(i) == mazzo(i + 13));
        QVERIFY(mano_umano(14) == 0 && mano_computer(14) == 0 && tallone == 27 && fase == "000" && turno_umano);
        QCOMPARE(QString::fromStdString(prova::tavoli_come_testo()),
                 QString::fromStdString("p:" + prova::nome_carta(mazzo(27))));
        // The canvas shows that hand, and nothing was drawn after its deal.
        QVERIFY(prova::mano_mostrata(false) && prova::mano_mostrata(true) && prova::cella_mostra(1, 18, 0));
        QVERIFY(prova::cella_mostra(13, 21, mazzo(27)) && prova::cella_mostra(14, 21, mazzo(28), true) &&
                prova::cella_mostra(1, 24, 0));
        QCOMPARE(prova::quanti_suoni("carta.wav"), 14);
    }

    void il_computer_prende_un_pozzo_di_una_carta()
    {
        prova::mano_computer_da("2C");
        prova::pozzo_da("9S");
        disegna_carta(frmTV().tela, 13, 21, prova::carta("9S"), false, 0);
        pesca_pozzo_computer();
        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo() + " |" + prova::pozzo_come_testo()),
                 "2C 9S |");
        QVERIFY(prova::cella_mostra(2, 1, prova::carta("9S"), true) && prova::cella_mostra(13, 21, 0));
    }
};

QTEST_MAIN(TestNuovaMano)
#include "tst_nuova_mano.moc"
