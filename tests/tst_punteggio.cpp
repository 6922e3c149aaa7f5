// SPDX-License-Identifier: GPL-3.0-or-later
// The end of a hand: the loser's cards counted, the score sheet, the end of
// the game at 101 and the next hand.
#include "aiuto/posizione.h"
#include "contrasto.h"
#include "platform/dialoghi.h"
#include "ui/foglio_punti.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QAbstractButton>
#include <QMenuBar>
#include <QMessageBox>
#include <QtTest>

class TestPunteggio : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        prova::finestra();
        nomi(1) = "Anna";
    }
    void cleanup()
    {
        basic::prova::azzera();
        piattaforma::prova::automatico(true);
        if (frmTV().picture_score->isVisible()) {
            inizia_computer = true;  // the click below turns it back
            frmTV().picture_score_Click();
        }
    }

    // The human closes: the computer's cards are turned up one by one, with
    // their sound, and charged to it on the sheet. The sheet lies over the
    // first cards of the computer's columns 4 to 11, and its captions read
    // over them at any size of the table, their letters growing with it.
    void il_foglio_dei_punti_data()
    {
        QTest::addColumn<QSize>("tavolo");
        QTest::addColumn<double>("lettere");  // the points of the labels' and the rules' letters
        QTest::newRow("1024 x 768") << QSize(1024, 768) << 12.0;
        QTest::newRow("2048 x 1536") << QSize(2048, 1536) << 24.0;
    }
    void il_foglio_dei_punti()
    {
        QFETCH(QSize, tavolo);
        QFETCH(double, lettere);
        FrmTV& f = frmTV();
        f.resize(tavolo.width(), tavolo.height() + f.menuBar()->height());
        QApplication::processEvents();
        prova::tavoli_da("c4:*8S | c5:J2 | c6:KH | c7:QS | c8:10D | c9:AC | c10:*3H | c11:JD");
        for (int k = 4; k <= 11; ++k) disegna_combinazione(f.tela, Byte(k), false);
        prova::azzera_suoni();
        prova::mano_computer_da("KS . 7D J2'");
        disegna_mano(f.tela, mano_computer, true, 0);
        punti(1) = 117;
        f.MostraPunteggio(Byte(2));
        for (int i = 1; i <= 4; ++i) QVERIFY(prova::cella_mostra(i, 1, long(mano_computer(i))));
        QCOMPARE(prova::quanti_suoni("carta.wav"), 3);
        QVERIFY(f.picture_score->isVisible() && f.Label5->isVisible());
        QCOMPARE(f.lblName(1)->text() + "/" + f.lblName(2)->text(), QStringLiteral("Anna/"));
        QCOMPARE(f.lblScore(1)->text() + "/" + f.lblScore(2)->text(), QStringLiteral("117/42"));
        for (Etichetta* e : {f.lblName(1), f.lblScore(1), f.lblScore(2), f.Label5})
            QVERIFY2(simulazione::contrasto_minimo(e) >= 4.5, qPrintable(e->text()));
        QCOMPARE(f.lblScore(1)->font().pointSizeF(), lettere);
        QCOMPARE(f.Text2->font().pointSizeF(), lettere);
        QVERIFY(piattaforma::prova::richieste().empty());
        f.resize(1024, 768 + f.menuBar()->height());
    }

    void un_clic_sul_foglio_data()
    {
        QTest::addColumn<int>("dove");
        QTest::newRow("the sheet") << 0;
        QTest::newRow("Click here to continue") << 1;
        QTest::newRow("a name") << 2;
    }
    void un_clic_sul_foglio()
    {
        QFETCH(int, dove);
        FrmTV& f = frmTV();
        prova::mano_umano_da("9H");
        f.MostraPunteggio(Byte(1));
        QWidget* bersagli[] = {f.picture_score, f.Label5, f.lblName(1)};
        QTest::mouseClick(bersagli[dove], Qt::LeftButton, {}, QPoint(2, 2));
        QVERIFY(!f.picture_score->isVisible() && f.lblName(1) == nullptr && f.lblScore(2) == nullptr);
        // The next hand is begun by the computer, which has played its turn:
        // a stock card drawn (it has not opened), one discarded.
        QVERIFY(inizia_computer && turno_umano);
        QCOMPARE(long(tallone), 28L);
        QCOMPARE(long(n_pozzo), 2L);
    }

    // The question at the end of the game is answered by its buttons only:
    // Escape and the close box would count as No and end the game. The rows
    // without a scripted answer show the real box, try to dismiss it, then
    // press Yes.
    void la_soglia_di_101_data()
    {
        QTest::addColumn<int>("chi");
        QTest::addColumn<int>("prima");
        QTest::addColumn<int>("risposta");  // scripted, or the key tried on the real box
        QTest::addColumn<QString>("domanda");  // the question asked, if any
        QTest::addColumn<QString>("esito");  // the totals, the stock, the sheet after it; or "end"
        const QString anna = QStringLiteral("MsgBox|Anna lost.\nDo you want to play again ?|4|32|");
        // The computer has no name: its defeat reads " lost.".
        // clang-format off
        QTest::newRow("100 is not the end") << 2 << 89 << int(piattaforma::vbNo) << "" << "0 100, stock 0, sheet";
        QTest::newRow("exactly 101 is, No ends the program")
            << 2 << 90 << int(piattaforma::vbNo) << "MsgBox| lost.\nDo you want to play again ?|4|32|" << "end";
        // clang-format on
        // After Yes, a new hand at once, begun by whoever began the one just
        // finished (were it the computer, it would have drawn: stock 28).
        QTest::newRow("Yes: a new game, same starter") << 1 << 90 << int(piattaforma::vbYes) << anna << "0 0, stock 27";
        QTest::newRow("Escape is no answer") << 1 << 90 << int(Qt::Key_Escape) << anna << "0 0, stock 27";
        QTest::newRow("the close box is no answer") << 1 << 90 << 0 << anna << "0 0, stock 27";
    }
    void la_soglia_di_101()
    {
        QFETCH(int, chi);
        QFETCH(int, prima);
        QFETCH(int, risposta);
        QFETCH(QString, domanda);
        QFETCH(QString, esito);
        (chi == 1 ? prova::mano_umano_da : prova::mano_computer_da)("AS");
        bool accanto = true;
        punti(chi) = prima;
        if (risposta == piattaforma::vbYes || risposta == piattaforma::vbNo) {
            piattaforma::prova::rispondi_messaggio(risposta);
        } else {
            piattaforma::prova::automatico(false);
            QTimer::singleShot(100, [risposta, &accanto] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (!box) return;
                // The box opens beside the sheet: both totals stay in view.
                accanto = !box->frameGeometry().intersects(foglio_punti::sul_schermo(frmTV()));
                if (risposta) QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key(risposta));
                if (!risposta) box->close();
                if (box->isVisible()) QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
            });
        }
        basic::protetto([chi] { frmTV().MostraPunteggio(Byte(chi)); });
        const auto& r = piattaforma::prova::richieste();
        QCOMPARE(r.empty() ? QString() : QString::fromStdString(r.back()), domanda);
        QString stato = QString("%1 %2, stock %3").arg(punti(1)).arg(punti(2)).arg(tallone);
        if (frmTV().picture_score->isVisible()) stato += ", sheet";
        QCOMPARE(basic::programma_terminato() ? "end" : stato, esito);
        QVERIFY(accanto);
        piattaforma::prova::azzera();
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
