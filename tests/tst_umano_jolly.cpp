// The jolly dialog "Play a jolly" and the plain jolly laid or attached
// through it.
#include "tst_umano_aiuto.h"

#include <QLabel>
#include <QtTest>

#include <cmath>
#include <functional>

using namespace umano_prova;

class TestUmanoJolly : public QObject {
    Q_OBJECT

    // Opens the dialog modally and runs `giocatore` on it once it is up.
    static void con_il_dialogo(const std::function<void(FrmJolly&)>& giocatore)
    {
        FrmJolly dialogo(&frmTV());
        QTimer::singleShot(0, [&] {
            QVERIFY(QApplication::activeModalWidget() == &dialogo);
            giocatore(dialogo);
            if (dialogo.isVisible()) dialogo.done(QDialog::Rejected);
        });
        dialogo.exec();
    }

    static QAbstractButton* seme(FrmJolly& d, int s)
    {
        return d.findChild<QAbstractButton*>(QStringLiteral("Option%1").arg(s));
    }

    static QPoint punto(FrmJolly& d, double dx, double dy)
    {
        const QRectF a = d.posto_anteprima();
        return QPoint(int(a.left() + dx), int(a.top() + dy));
    }

    // The face (0-53) of the card sheet that the preview shows most alike.
    static int faccia_mostrata(FrmJolly& d)
    {
        const QImage vista = d.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRect a = d.posto_anteprima().toRect();
        int migliore = -1;
        double minimo = 1e30;
        for (int k = 0; k < 54; ++k) {
            const QImage faccia = immagine_carte.copy((k % 9) * 71, (k / 9) * 96, 71, 96)
                                      .scaled(a.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                      .convertToFormat(QImage::Format_RGB32);
            double somma = 0;
            for (int y = 0; y < a.height(); ++y)
                for (int x = 0; x < a.width(); ++x) {
                    const QRgb p = vista.pixel(a.left() + x, a.top() + y), q = faccia.pixel(x, y);
                    somma += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
                }
            if (somma < minimo) {
                minimo = somma;
                migliore = k;
            }
        }
        return migliore;
    }

private slots:
    void init() { prova::finestra(); }

    void aspetto()
    {
        con_il_dialogo([](FrmJolly& d) {
            QCOMPARE(d.windowTitle(), QStringLiteral("Play a jolly"));
            QCOMPARE(d.Label1->text(), QStringLiteral("Select suit and number for your jolly."));
            QStringList voci;
            for (int i = 0; i < d.Combo1->count(); ++i) voci << d.Combo1->itemText(i);
            QCOMPARE(voci, (QStringList{"Ace", "2", "3", "4", "5", "6", "7", "8", "9", "10", "J", "Q", "K"}));
            QCOMPARE(d.Combo1->currentIndex(), 0);
            QVERIFY(seme(d, 1)->isChecked());
            // The designed size is the outer one, frame included.
            QCOMPARE(d.frameGeometry().size(), QSize(186, 156));
            QCOMPARE(d.posto_anteprima(), QRectF(115, 40, 51, 70));
            // One suit at a time.
            QTest::mouseClick(seme(d, 3), Qt::LeftButton);
            QVERIFY(seme(d, 3)->isChecked());
            QVERIFY(!seme(d, 1)->isChecked());
            QCOMPARE(long(d.carta_jolly), 27L);
            QCOMPARE(faccia_mostrata(d), 26);
        });
    }

    void risposta_data()
    {
        QTest::addColumn<int>("s");
        QTest::addColumn<int>("voce");
        QTest::addColumn<QString>("tag");
        QTest::newRow("confirmed at once: ace of hearts") << 0 << 0 << " 1";
        QTest::newRow("king of spades") << 4 << 12 << " 52";
        QTest::newRow("ten of clubs") << 3 << 9 << " 36";
        QTest::newRow("ace of diamonds") << 2 << 0 << " 14";
        QTest::newRow("queen of hearts") << 1 << 11 << " 12";
    }
    void risposta()
    {
        QFETCH(int, s);
        QFETCH(int, voce);
        QFETCH(QString, tag);
        frmTV().Tag = "old";
        bool chiuso = false;
        con_il_dialogo([&](FrmJolly& d) {
            if (s) QTest::mouseClick(seme(d, s), Qt::LeftButton);
            for (int i = 0; i < voce; ++i) QTest::keyClick(d.Combo1, Qt::Key_Down);
            QCOMPARE(faccia_mostrata(d), tag.toInt() - 1);
            QCOMPARE(QString::fromStdString(frmTV().Tag), QStringLiteral("old"));
            QTest::mouseClick(&d, Qt::LeftButton, {}, punto(d, 25, 35));
            chiuso = !d.isVisible();
        });
        QVERIFY(chiuso);
        QCOMPARE(QString::fromStdString(frmTV().Tag), tag);
    }

    // Only a press on the preview, edges included, confirms.
    void bordi_dell_anteprima_data()
    {
        QTest::addColumn<double>("dx");
        QTest::addColumn<double>("dy");
        QTest::addColumn<int>("pulsante");
        QTest::addColumn<bool>("conferma");
        QTest::newRow("top-left corner") << 0.0 << 0.0 << 1 << true;
        QTest::newRow("bottom-right corner") << 51.0 << 70.0 << 1 << true;
        QTest::newRow("right button") << 25.0 << 35.0 << 2 << true;
        QTest::newRow("one to the left") << -1.0 << 10.0 << 1 << false;
        QTest::newRow("one below") << 10.0 << 71.0 << 1 << false;
        QTest::newRow("one to the right") << 52.0 << 10.0 << 1 << false;
        QTest::newRow("one above") << 10.0 << -1.0 << 1 << false;
        QTest::newRow("on the label") << -100.0 << -30.0 << 1 << false;
    }
    void bordi_dell_anteprima()
    {
        QFETCH(double, dx);
        QFETCH(double, dy);
        QFETCH(int, pulsante);
        QFETCH(bool, conferma);
        frmTV().Tag = "old";
        bool chiuso = false;
        con_il_dialogo([&](FrmJolly& d) {
            QTest::mouseClick(seme(d, 2), Qt::LeftButton);
            QTest::mouseClick(&d, pulsante == 2 ? Qt::RightButton : Qt::LeftButton, {}, punto(d, dx, dy));
            chiuso = !d.isVisible();
        });
        QCOMPARE(chiuso, conferma);
        QCOMPARE(QString::fromStdString(frmTV().Tag), conferma ? QStringLiteral(" 14") : QStringLiteral("old"));
    }

    // Closing the dialog otherwise takes the card the preview shows.
    void chiuso_in_altro_modo_data()
    {
        QTest::addColumn<bool>("esc");
        QTest::newRow("Escape") << true;
        QTest::newRow("close box") << false;
    }
    void chiuso_in_altro_modo()
    {
        QFETCH(bool, esc);
        frmTV().Tag.clear();
        con_il_dialogo([&](FrmJolly& d) {
            QTest::mouseClick(seme(d, 2), Qt::LeftButton);
            for (int i = 0; i < 4; ++i) QTest::keyClick(d.Combo1, Qt::Key_Down);
            if (esc)
                QTest::keyClick(&d, Qt::Key_Escape);
            else
                d.close();
            QVERIFY(!d.isVisible());
        });
        QCOMPARE(QString::fromStdString(frmTV().Tag), QStringLiteral(" 18"));
    }

    void figure_dei_semi_data()
    {
        QTest::addColumn<int>("s");
        QTest::addColumn<bool>("rosso");
        QTest::newRow("hearts") << 1 << true;
        QTest::newRow("diamonds") << 2 << true;
        QTest::newRow("clubs") << 3 << false;
        QTest::newRow("spades") << 4 << false;
    }
    void figure_dei_semi()
    {
        QFETCH(int, s);
        QFETCH(bool, rosso);
        const QImage f = PulsanteSeme::figura_seme(s).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(f.size(), QSize(24, 22));
        int rossi = 0, neri_al_centro = 0;
        for (int y = 0; y < 22; ++y)
            for (int x = 0; x < 24; ++x) {
                const QRgb p = f.pixel(x, y);
                rossi += qRed(p) > 200 && qGreen(p) < 60 && qBlue(p) < 60;
                neri_al_centro += x > 6 && x < 18 && y > 5 && y < 17 && qRed(p) < 60 && qGreen(p) < 60 && qBlue(p) < 60;
            }
        QCOMPARE(rossi > 10, rosso);
        QCOMPARE(neri_al_centro > 10, !rosso);
    }

    // ---------------------------------------------------- in play

    void calare_un_jolly_data()
    {
        QTest::addColumn<QString>("jolly");
        QTest::addColumn<QString>("colonna");
        QTest::addColumn<int>("s");
        QTest::addColumn<int>("voce");
        QTest::addColumn<QString>("dopo");
        QTest::newRow("new combination") << "J1" << "" << 4 << 7 << "*8S";
        QTest::newRow("second kind") << "J2" << "" << 4 << 7 << "**8S";
        QTest::newRow("first kind, second pack") << "J1'" << "" << 4 << 7 << "*8S";
        QTest::newRow("second kind, second pack") << "J2'" << "" << 4 << 7 << "**8S";
        QTest::newRow("bottom of a straight") << "J1" << "10S 9S" << 4 << 7 << "10S 9S *8S";
        QTest::newRow("top of a straight") << "J2" << "10S 9S" << 4 << 10 << "**JS 10S 9S";
        QTest::newRow("into a set") << "J1" << "QH QD" << 3 << 11 << "QH QD *QC";
    }
    void calare_un_jolly()
    {
        QFETCH(QString, jolly);
        QFETCH(QString, colonna);
        QFETCH(int, s);
        QFETCH(int, voce);
        QFETCH(QString, dopo);
        partita("2C " + jolly.toStdString() + " 4D", "010");
        sul_tavolo_umano(5, colonna.toStdString());
        premi_mano(2);
        RispostaJolly risposta;
        rispondi_jolly(s, voce, &risposta);
        premi(5, 30);
        QVERIFY(risposta.mostrato);
        QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(5)), dopo);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C . 4D"));
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
        QVERIFY(combinazione_disegnata(5, true));
        QVERIFY(prova::cella_mostra(2, 41, 0));
    }

    void attaccare_un_jolly()
    {
        partita("2C J2' 4D", "010");
        sul_tavolo_umano(1, "KS QS JS 10S");
        sul_tavolo_computer(3, "9H 8H 7H");
        premi_mano(2);
        RispostaJolly risposta;
        rispondi_jolly(1, 9, &risposta);
        premi(3, 10);
        QVERIFY(risposta.mostrato);
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(3)), QStringLiteral("**10H 9H 8H 7H"));
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C . 4D"));
        QVERIFY(combinazione_disegnata(3, false));
    }

    // A second jolly is never put into a combination: no dialog, no sound.
    void un_jolly_solo_per_combinazione_data()
    {
        QTest::addColumn<bool>("computer");
        QTest::newRow("own table") << false;
        QTest::newRow("computer's table") << true;
    }
    void un_jolly_solo_per_combinazione()
    {
        QFETCH(bool, computer);
        partita("2C J1 4D", "010");
        sul_tavolo_umano(1, "KS QS JS 10S");
        computer ? sul_tavolo_computer(3, "9H *8H 7H") : sul_tavolo_umano(3, "9H *8H 7H");
        premi_mano(2);
        RispostaJolly risposta;
        rispondi_jolly(1, 9, &risposta);
        premi(3, computer ? 10 : 30);
        QTest::qWait(0);
        QVERIFY(!risposta.mostrato);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("2C J1 4D"));
        QCOMPARE(long(carta_selezionata), 53L);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));
        QVERIFY(prova::suoni().empty());
    }

    // A valued jolly that does not fit keeps its table code: the next column
    // takes it without asking again, and a discard puts that code on the pile.
    void jolly_valutato_rifiutato_data()
    {
        QTest::addColumn<bool>("scarto");
        QTest::newRow("then laid elsewhere") << false;
        QTest::newRow("then discarded") << true;
    }
    void jolly_valutato_rifiutato()
    {
        QFETCH(bool, scarto);
        partita("2C J1 4D 5D 6D 7D 8D 9D 10D JD QD KD AD 3S", "010");
        sul_tavolo_umano(1, "9S 8S 7S");
        premi_mano(2);
        rispondi_jolly(1, 6);
        premi(1, 30);
        QCOMPARE(prova::quanti_suoni("errore.wav"), 1);
        QCOMPARE(long(carta_selezionata), 115L);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()).left(5), QStringLiteral("2C J1"));
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("011"));

        RispostaJolly ancora;
        rispondi_jolly(4, 0, &ancora);
        if (scarto) {
            premi_pozzo();
            QCOMPARE(long(pozzo(2)), 115L);
            QCOMPARE(long(mano_umano(2)), 0L);
        } else {
            premi(2, 30);
            QCOMPARE(QString::fromStdString(prova::combinazione_umano_come_testo(2)), QStringLiteral("*7H"));
            QCOMPARE(long(mano_umano(2)), 0L);
        }
        QTest::qWait(0);
        QVERIFY(!ancora.mostrato);
    }

    // The last card: laying tests it before the dialog, attaching after it.
    void l_ultimo_jolly_data()
    {
        QTest::addColumn<bool>("computer");
        QTest::addColumn<bool>("dialogo");
        QTest::addColumn<int>("codice");
        QTest::newRow("laying: no dialog") << false << false << 53;
        QTest::newRow("attaching: named, then kept") << true << true << 118;
    }
    void l_ultimo_jolly()
    {
        QFETCH(bool, computer);
        QFETCH(bool, dialogo);
        QFETCH(int, codice);
        partita(". J1", "010");
        sul_tavolo_umano(1, "KS QS JS 10S");
        sul_tavolo_computer(3, "9H 8H 7H");
        premi_mano(2);
        RispostaJolly risposta;
        rispondi_jolly(1, 9, &risposta);
        premi(computer ? 3 : 4, computer ? 10 : 30);
        QTest::qWait(0);
        QCOMPARE(risposta.mostrato, dialogo);
        QCOMPARE(long(carta_selezionata), long(codice));
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral(". J1"));
        QCOMPARE(QString::fromStdString(prova::combinazione_computer_come_testo(3)), QStringLiteral("9H 8H 7H"));
        QVERIFY(prova::combinazione_umano_come_testo(4).empty());
        QVERIFY(prova::suoni().empty());
    }
};

QTEST_MAIN(TestUmanoJolly)
#include "tst_umano_jolly.moc"
