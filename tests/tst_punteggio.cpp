// The end of a hand: the loser's cards counted, the score sheet, the end of
// the game at 101 and the next hand.
#include "aiuto/posizione.h"
#include "platform/dialoghi.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

class TestPunteggio : public QObject {
    Q_OBJECT

    static QString domande()
    {
        QStringList v;
        for (const auto& r : piattaforma::prova::richieste())
            if (r.rfind("MsgBox", 0) == 0) v << QString::fromStdString(r);
        return v.join('/');
    }

private slots:
    void init()
    {
        prova::finestra();
        // The deals the tests click through are always the same ones.
        fissa_seme(20261122);
        nomi(1) = "Anna";
    }
    void cleanup()
    {
        basic::prova::azzera();
        FrmTV& f = frmTV();
        if (f.picture_score->isVisible()) {
            inizia_computer = true;  // the click below turns it back
            f.picture_score_Click();
        }
    }

    void penalita_di_chi_perde_data()
    {
        QTest::addColumn<int>("chi");
        QTest::addColumn<QString>("mano");
        QTest::addColumn<int>("penalita");
        QTest::newRow("the computer closes: jolly, ace, king, 5") << 1 << "J1 . AS KD . 5H" << 51;
        QTest::newRow("the human closes: 13 cards")
            << 2 << "AH 2H 3H 4H 5H 6H 2D 3D 4D 5D 6D 2C 3C" << 11 + 2 * 20 + 5;
        QTest::newRow("second-pack jolly and queen") << 1 << "J2' QC'" << 35;
        QTest::newRow("empty hand") << 2 << "" << 0;
    }
    void penalita_di_chi_perde()
    {
        QFETCH(int, chi);
        QFETCH(QString, mano);
        QFETCH(int, penalita);
        FrmTV& f = frmTV();
        (chi == 1 ? prova::mano_umano_da : prova::mano_computer_da)(mano.toStdString());
        punti(1) = 10;
        punti(2) = 20;
        f.MostraPunteggio(Byte(chi));
        QCOMPARE(long(punti(chi)), long((chi == 1 ? 10 : 20) + penalita));
        QCOMPARE(long(punti(3 - chi)), long(chi == 1 ? 20 : 10));
        QCOMPARE(fase, std::string("000"));
        QVERIFY(f.picture_score->isVisible());
        QCOMPARE(domande(), QString());
    }

    void le_carte_del_computer_si_scoprono()
    {
        FrmTV& f = frmTV();
        prova::mano_computer_da("KS . 7D J2'");
        disegna_mano(f.tela, mano_computer, true, 0);
        f.MostraPunteggio(Byte(2));
        QVERIFY(prova::cella_mostra(1, 1, prova::carta("KS")));
        QVERIFY(prova::cella_mostra(3, 1, prova::carta("7D")));
        QVERIFY(prova::cella_mostra(4, 1, prova::carta("J2'")));
        QVERIFY(prova::cella_mostra(2, 1, 0));
        QCOMPARE(prova::quanti_suoni("carta.wav"), 3);
    }

    void il_foglio_dei_punti()
    {
        FrmTV& f = frmTV();
        prova::mano_umano_da("9H");
        punti(2) = 37;
        f.MostraPunteggio(Byte(1));
        QCOMPARE(f.posizione(f.picture_score), QRectF(256, 288, 512, 192));
        QCOMPARE(f.lblName(1)->text(), QStringLiteral("Anna"));
        QCOMPARE(f.lblName(2)->text(), QString());
        QCOMPARE(f.lblScore(1)->text(), QStringLiteral("9"));
        QCOMPARE(f.lblScore(2)->text(), QStringLiteral("37"));
        QCOMPARE(f.posizione(f.lblName(1)).topLeft(), QPointF(20, 20));
        QCOMPARE(f.posizione(f.lblName(2)).topLeft(), QPointF(276, 20));
        QCOMPARE(f.posizione(f.lblScore(1)).topLeft(), QPointF(20, 60));
        QCOMPARE(f.posizione(f.lblScore(2)).topLeft(), QPointF(276, 60));
        QCOMPARE(f.posizione(f.lblName(1)).width(), 216.0);
        QCOMPARE(f.Label5->text(), QStringLiteral("Click here to continue"));
        QVERIFY(f.Label5->isVisible());
        const QRectF r5 = f.posizione(f.Label5);
        QCOMPARE(r5.top(), 120.0);
        QVERIFY(qAbs(r5.center().x() - 256) < 1);
        QVERIFY(f.lblName(1)->isVisible() && f.lblScore(2)->isVisible());
    }

    void un_clic_sul_foglio_data()
    {
        QTest::addColumn<QString>("dove");
        QTest::newRow("the sheet") << "sheet";
        QTest::newRow("Click here to continue") << "Label5";
        QTest::newRow("a name") << "name";
        QTest::newRow("a score") << "score";
    }
    void un_clic_sul_foglio()
    {
        QFETCH(QString, dove);
        FrmTV& f = frmTV();
        prova::mano_umano_da("9H");
        f.MostraPunteggio(Byte(1));
        const bool prima = inizia_computer;
        QWidget* bersaglio = dove == "sheet"    ? static_cast<QWidget*>(f.picture_score)
                             : dove == "Label5" ? f.Label5
                             : dove == "name"   ? f.lblName(1)
                                                : f.lblScore(2);
        QTest::mouseClick(bersaglio, Qt::LeftButton, {}, QPoint(2, 2));
        QApplication::processEvents();
        QVERIFY(!f.picture_score->isVisible());
        QVERIFY(f.lblName(1) == nullptr && f.lblScore(2) == nullptr);
        QCOMPARE(inizia_computer, !prima);
        // The next hand is dealt and the computer, beginning it, has played
        // its turn: a stock card drawn (it has not opened), one discarded.
        QCOMPARE(long(tallone), 28L);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), 0);
        QCOMPARE(long(n_pozzo), 2L);
        QVERIFY(turno_umano);
        QCOMPARE(long(punti(1)), 9L);
        inizia_computer = prima;
    }

    void la_soglia_di_101_data()
    {
        QTest::addColumn<int>("prima");
        QTest::addColumn<bool>("finita");
        QTest::newRow("100 is not the end") << 89 << false;
        QTest::newRow("exactly 101 is") << 90 << true;
        QTest::newRow("over 101") << 100 << true;
    }
    void la_soglia_di_101()
    {
        QFETCH(int, prima);
        QFETCH(bool, finita);
        FrmTV& f = frmTV();
        prova::mano_computer_da("AS");
        punti(2) = prima;
        piattaforma::prova::rispondi_messaggio(piattaforma::vbNo);
        bool terminato = false;
        try {
            f.MostraPunteggio(Byte(2));
        } catch (const basic::ProgrammaTerminato&) {
            terminato = true;
        }
        QCOMPARE(terminato, finita);
        // The computer has no name: its defeat reads " lost.".
        QCOMPARE(domande(), finita ? QStringLiteral("MsgBox| lost.\nDo you want to play again ?|4|32|") : QString());
        QCOMPARE(basic::programma_terminato(), finita);
        piattaforma::prova::azzera();
    }

    void di_nuovo_dopo_la_fine_della_partita()
    {
        FrmTV& f = frmTV();
        prova::mano_umano_da("KH KD KC");
        punti(1) = 80;
        punti(2) = 55;
        inizia_computer = false;
        piattaforma::prova::rispondi_messaggio(piattaforma::vbYes);
        f.MostraPunteggio(Byte(1));
        QCOMPARE(domande(), QStringLiteral("MsgBox|Anna lost.\nDo you want to play again ?|4|32|"));
        QCOMPARE(long(punti(1)), 0L);
        QCOMPARE(long(punti(2)), 0L);
        QVERIFY(!f.picture_score->isVisible());
        QVERIFY(f.lblName(1) == nullptr);
        // A new hand, begun by whoever began the hand just finished.
        QVERIFY(!inizia_computer);
        QCOMPARE(long(tallone), 27L);
        QVERIFY(turno_umano);
        QVERIFY(!basic::programma_terminato());
    }

    void mani_alterne()
    {
        FrmTV& f = frmTV();
        std::vector<bool> chi_inizia;
        f.gioco_imposta();
        for (int mano = 0; mano < 3; ++mano) {
            chi_inizia.push_back(inizia_computer);
            prova::mano_umano_da("2H");
            f.MostraPunteggio(Byte(1));
            f.picture_score_Click();
        }
        QCOMPARE(chi_inizia, (std::vector<bool>{false, true, false}));
        inizia_computer = false;
    }

    void un_nuovo_foglio_senza_chiudere_il_primo()
    {
        // "New game" leaves the sheet up; the next end of hand shows it again.
        FrmTV& f = frmTV();
        prova::mano_umano_da("2H");
        f.MostraPunteggio(Byte(1));
        f.menu_newgame_Click();
        QVERIFY(f.picture_score->isVisible());
        prova::mano_umano_da("3H");
        f.MostraPunteggio(Byte(1));
        QCOMPARE(f.lblScore(1)->text(), QStringLiteral("5"));
        QVERIFY(!basic::programma_terminato());
    }
};

QTEST_MAIN(TestPunteggio)
#include "tst_punteggio.moc"
