// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: its check marks, the text panels, resizing and the ways
// the program ends.
#include "aiuto/posizione.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/testi.h"

#include <QMenuBar>
#include <QtTest>

class TestFinestra : public QObject {
    Q_OBJECT
private slots:
    void init() { prova::finestra(); }

    // Menu commands and presses, and what they leave: the mark of the Card
    // rustle menu, and which text panel shows (E English rules, I the Italian
    // ones, N Info).
    void comandi_data()
    {
        QTest::addColumn<QString>("comandi");  // + - rustle Yes/No, E I N menus, T press on the table, P on the panel
        QTest::addColumn<QString>("visto");
        // clang-format off
        QTest::newRow("rustle No") << "-" << "No";
        QTest::newRow("rustle Yes twice stays Yes") << "-++" << "Yes";
        QTest::newRow("English") << "E" << "Yes E";
        QTest::newRow("English twice closes it") << "EE" << "Yes";
        QTest::newRow("Italiano replaces English") << "EI" << "Yes I";
        QTest::newRow("Info replaces the Italian rules") << "IN" << "Yes N";
        QTest::newRow("Info replaces the English rules") << "EN" << "Yes N";
        QTest::newRow("English hides Info") << "NE" << "Yes E";
        QTest::newRow("a press on the table hides all") << "ET" << "Yes";
        QTest::newRow("a click on the rules closes them") << "EP" << "Yes";
        // clang-format on
    }
    void comandi()
    {
        QFETCH(QString, comandi);
        QFETCH(QString, visto);
        FrmTV& f = frmTV();
        for (QChar c : comandi) {
            // Through the menus themselves, as a player clicks them.
            if (c == '+' || c == '-') (c == '+' ? f.menu_card_rustle_yes : f.menu_card_rustle_no)->trigger();
            if (c == 'E' || c == 'I' || c == 'N')
                (c == 'E' ? f.menu_english_rules : c == 'I' ? f.menu_regole_italiano : f.menu_about)->trigger();
            if (c == 'T') f.Form_MouseDown(1, 0, 500, 300);
            if (c == 'P') QTest::mouseClick(f.Text2->viewport(), Qt::LeftButton);
        }
        QString v = f.menu_card_rustle_yes->isChecked() ? "Yes" : "";
        if (f.menu_card_rustle_no->isChecked()) v += "No";
        for (auto [pannello, nome] : {std::pair{f.Text2, " E"}, {f.text5, " I"}, {f.Text4, " N"}})
            if (pannello->isVisible()) v += nome;
        QCOMPARE(v, visto);
        f.menu_card_rustle_yes->trigger();
        for (auto* pannello : {f.Text2, f.text5, f.Text4}) pannello->hide();
    }

    // The rules are shown as written, their line ends made plain.
    void i_testi_delle_regole()
    {
        QCOMPARE(frmTV().Text2->toPlainText(), QString::fromUtf8(testi::file_regole_inglese()).replace("\r\n", "\n"));
        QCOMPARE(frmTV().text5->toPlainText(), QString::fromUtf8(testi::file_regole_italiano()).replace("\r\n", "\n"));
    }

    void ridimensionare_data()
    {
        QTest::addColumn<QSize>("cliente");
        QTest::newRow("only wider") << QSize(1400, 768);
        QTest::newRow("only taller") << QSize(1024, 900);
        QTest::newRow("small") << QSize(640, 480);
        QTest::newRow("back") << QSize(1024, 768);
    }
    void ridimensionare()
    {
        QFETCH(QSize, cliente);
        FrmTV& f = frmTV();
        f.gioco_imposta();
        const QRect prima = f.Text2->geometry();
        const QSize vecchio = f.tavolo->size();
        f.resize(cliente.width(), cliente.height() + f.menuBar()->height());
        QApplication::processEvents();
        // The table still spans the whole client area, at device resolution.
        QCOMPARE(QSize(f.tela.larghezza_px(), f.tela.altezza_px()), cliente * f.tavolo->devicePixelRatioF());
        const QRect dopo = f.Text2->geometry();
        QCOMPARE(dopo.left() == prima.left() && dopo.width() == prima.width(), cliente.width() == vecchio.width());
        QCOMPARE(dopo.top() == prima.top() && dopo.height() == prima.height(), cliente.height() == vecchio.height());
        // The cards are painted again at the new size, as sharp as ever.
        QVERIFY(prova::cella_mostra(1, 41, long(mano_umano(1))));
        QVERIFY(prova::cella_mostra(13, 21, long(pozzo(1))));
        // The window shows what the table holds, pixel for pixel.
        QCOMPARE(f.tavolo->grab().toImage().convertToFormat(QImage::Format_RGB32), f.tela.Image());
        // A click lands on the card under the pointer at any size: the stock.
        const double sx = cliente.width() / 1024.0, sy = cliente.height() / 768.0;
        QTest::mouseClick(f.tavolo, Qt::LeftButton, {}, QPoint(prova::x_colonna(14) * sx, prova::y_riga(23) * sy));
        QVERIFY(prova::cella_mostra(14, 41, long(mazzo(28))));
    }

    // The ways the program ends, each in the middle of a pause, which is cut
    // short: Quit and the close box with 0, a window taller than 32767 twips
    // (2200 pixels at 15 twips each) with the overflow.
    void il_programma_finisce_data()
    {
        QTest::addColumn<int>("come");
        QTest::addColumn<int>("codice");
        QTest::newRow("Quit") << 0 << 0;
        QTest::newRow("the window's close box") << 1 << 0;
        QTest::newRow("a window too tall overflows") << 2 << 6;
    }
    void il_programma_finisce()
    {
        QFETCH(int, come);
        QFETCH(int, codice);
        FrmTV& f = frmTV();
        fattore_pause = 1;
        f.imposta_dpi_prova(come == 2 ? 15 : 0);
        QTimer::singleShot(30, &f, [&] {
            QCloseEvent e;
            if (come == 0) f.menu_quit->trigger();
            if (come == 1) QApplication::sendEvent(&f, &e);
            if (come == 2) f.resize(1024, 2200);
        });
        QElapsedTimer t;
        t.start();
        QVERIFY_THROWS_EXCEPTION(basic::ProgrammaTerminato, pausa(5));
        fattore_pause = 0;
        f.imposta_dpi_prova(0);
        QVERIFY(t.elapsed() < 1500);
        QCOMPARE(basic::prova::codice_di_uscita(), codice);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), codice);
        basic::prova::azzera();
        f.resize(1024, 768 + f.menuBar()->height());
        QApplication::processEvents();
    }
};

QTEST_MAIN(TestFinestra)
#include "tst_finestra.moc"
