// The main window: its menus and check marks, the text panels, resizing and
// the ways the program ends.
#include "aiuto/posizione.h"
#include "platform/mmc.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/testi.h"

#include <QMenu>
#include <QMenuBar>
#include <QtTest>

class TestFinestra : public QObject {
    Q_OBJECT

    static QStringList voci(const QList<QAction*>& azioni)
    {
        QStringList v;
        for (QAction* a : azioni)
            if (!a->isSeparator()) v << a->text();
        return v;
    }

private slots:
    void init() { prova::finestra(); }

    void titolo_e_menu()
    {
        FrmTV& f = frmTV();
        QCOMPARE(f.windowTitle(), QStringLiteral("Tavolata"));
        QCOMPARE(voci(f.menuBar()->actions()),
                 (QStringList{"&Game", "&Rules", "&Sounds", "&Music", "&Info"}));
        QCOMPARE(voci(f.menu_game->actions()), (QStringList{"New game", "Quit"}));
        QCOMPARE(voci(f.menu_rules->actions()), (QStringList{"English", "Italiano"}));
        QCOMPARE(voci(f.menu_sounds->actions()), (QStringList{"Card rustle"}));
        QCOMPARE(voci(f.menu_card_rustle->actions()), (QStringList{"Yes", "No"}));
        QCOMPARE(voci(f.menu_music->actions()),
                 (QStringList{"no music", "sequential mode", "Chill1", "Champion", "Champs", "Easycity", "inds_01",
                              "Humanoid", "Iepact", "Lastday", "Brezza", "Sevilana"}));
    }

    void segni_alla_partenza()
    {
        FrmTV& f = frmTV();
        f.Form_Load();
        QVERIFY(f.menu_card_rustle_yes->isChecked());
        QVERIFY(!f.menu_card_rustle_no->isChecked());
        for (int i = 1; i <= 10; ++i) QCOMPARE(f.canzoni(i)->isChecked(), i == 9);
        QVERIFY(!f.nomusic->isChecked());
        QVERIFY(!f.all->isChecked());
        QCOMPARE(long(f.canzone_corrente), 0L);
        QVERIFY(f.MMC1->registro.last().startsWith("play"));
        QVERIFY(f.MMC1->registro.filter("open").last().endsWith("/music/brezza.mid"));
    }

    void fruscio_delle_carte_data()
    {
        QTest::addColumn<QString>("clic");
        QTest::addColumn<bool>("si");
        QTest::newRow("Yes") << "Y" << true;
        QTest::newRow("No") << "N" << false;
        QTest::newRow("No, No") << "NN" << false;
        QTest::newRow("Yes, Yes") << "YY" << true;
        QTest::newRow("No, Yes") << "NY" << true;
        QTest::newRow("Yes, No") << "YN" << false;
    }
    void fruscio_delle_carte()
    {
        QFETCH(QString, clic);
        QFETCH(bool, si);
        FrmTV& f = frmTV();
        // Through the menu itself, as a player clicks it.
        for (QChar c : clic) (c == 'Y' ? f.menu_card_rustle_yes : f.menu_card_rustle_no)->trigger();
        QCOMPARE(f.menu_card_rustle_yes->isChecked(), si);
        QCOMPARE(f.menu_card_rustle_no->isChecked(), !si);
        f.menu_card_rustle_yes->trigger();
    }

    void pannelli_data()
    {
        QTest::addColumn<QString>("comandi");  // E English, I Italiano, N Info, T press on the table
        QTest::addColumn<QString>("visibili");  // which of E I N show afterwards
        QTest::newRow("English") << "E" << "E";
        QTest::newRow("English twice") << "EE" << "";
        QTest::newRow("Italiano replaces English") << "EI" << "I";
        QTest::newRow("Info replaces the rules") << "IN" << "N";
        QTest::newRow("English hides Info") << "NE" << "E";
        QTest::newRow("a press on the table hides all") << "ET" << "";
        QTest::newRow("Info, press") << "NT" << "";
    }
    void pannelli()
    {
        QFETCH(QString, comandi);
        QFETCH(QString, visibili);
        FrmTV& f = frmTV();
        for (QChar c : comandi) {
            if (c == 'E') f.menu_english_rules->trigger();
            if (c == 'I') f.menu_regole_italiano->trigger();
            if (c == 'N') f.menu_about->trigger();
            if (c == 'T') f.Form_MouseDown(1, 0, 500, 300);
        }
        QString v;
        if (f.Text2->isVisible()) v += 'E';
        if (f.text5->isVisible()) v += 'I';
        if (f.Text4->isVisible()) v += 'N';
        QCOMPARE(v, visibili);
        f.Text2->hide();
        f.text5->hide();
        f.Text4->hide();
    }

    void un_clic_sul_pannello_lo_chiude()
    {
        FrmTV& f = frmTV();
        f.menu_english_rules->trigger();
        QTest::mouseClick(f.Text2->viewport(), Qt::LeftButton, {}, QPoint(30, 30));
        QVERIFY(!f.Text2->isVisible());
        f.menu_about->trigger();
        QTest::mouseClick(f.Text4->viewport(), Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!f.Text4->isVisible());
    }

    void i_testi_delle_regole()
    {
        FrmTV& f = frmTV();
        const QByteArray en = testi::file_regole_inglese();
        const QByteArray it = testi::file_regole_italiano();
        QVERIFY(en.startsWith("Tavolata uses two packs of 54 French cards. \r\n"));
        QVERIFY(en.endsWith("In this case the adversary score is double\r\n"));
        QCOMPARE(en.count("\r\n"), 27);
        QVERIFY(en.contains("immediately discarded. The hand then passes"));
        QVERIFY(en.contains("three of a kind of Height whose sum is 42"));
        QVERIFY(it.startsWith("La Tavolata si gioca con due mazzi di 54 carte francesi. \r\n"));
        QVERIFY(it.contains(QStringLiteral("l’Asso quando è alla fine di una scala formata \r\n").toUtf8()));
        QVERIFY(it.contains("Quando si supera questo punteggio la partita è finita..\r\n"));
        QVERIFY(it.endsWith(QStringLiteral("i punteggi dell' avversario raddoppiano.\r\n").toUtf8()));
        QCOMPARE(f.Text2->toPlainText(), QString::fromUtf8(en).replace("\r\n", "\n"));
        QCOMPARE(f.text5->toPlainText(), QString::fromUtf8(it).replace("\r\n", "\n"));
        const QStringList info = f.Text4->toPlainText().split('\n');
        QCOMPARE(info.value(1), QStringLiteral("Tavolata ver 2.1.2"));
        QCOMPARE(info.value(2), QStringLiteral("--------------------"));
    }

    void pannelli_al_loro_posto()
    {
        FrmTV& f = frmTV();
        QCOMPARE(f.posizione(f.Text2), QRectF(8, 144, 504, 240));
        QCOMPARE(f.posizione(f.text5), QRectF(8, 144, 504, 240));
        const QPalette p = f.Text2->palette();
        QCOMPARE(p.color(QPalette::Base), QColor(255, 255, 192));
        QCOMPARE(f.Text4->palette().color(QPalette::Base), QColor(224, 224, 224));
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
        QCOMPARE(f.tavolo->size(), cliente);
        // The table still spans the whole client area, at device resolution.
        QCOMPARE(f.tela.larghezza_px(), int(cliente.width() * f.tavolo->devicePixelRatioF()));
        QCOMPARE(f.tela.altezza_px(), int(cliente.height() * f.tavolo->devicePixelRatioF()));
        QCOMPARE(passo_x, float(1024.0 / f.tela.larghezza_px()));
        QCOMPARE(long(larghezza_tavolo), 1024L);
        QCOMPARE(long(altezza_tavolo), 768L);
        const QRect dopo = f.Text2->geometry();
        QCOMPARE(dopo.left() == prima.left() && dopo.width() == prima.width(), cliente.width() == vecchio.width());
        QCOMPARE(dopo.top() == prima.top() && dopo.height() == prima.height(), cliente.height() == vecchio.height());
        // The picture is kept, stretched: the first discard is still on its place.
        QVERIFY(f.tela.Point(prova::x_colonna(13), prova::y_riga(23)) != f.tela.Point(prova::x_colonna(12), prova::y_riga(23)) ||
                cliente == QSize(1024, 768));
    }

    void una_finestra_troppo_alta_trabocca()
    {
        FrmTV& f = frmTV();
        // 2200 pixels at 15 twips each is more than a 16-bit whole number holds.
        f.imposta_dpi_prova(15);
        f.resize(1024, 2200);
        QApplication::processEvents();
        f.imposta_dpi_prova(0);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), 6);
        QVERIFY(basic::programma_terminato());
        basic::prova::azzera();
        f.resize(1024, 768 + f.menuBar()->height());
        QApplication::processEvents();
    }

    void esci_e_chiudi_data()
    {
        QTest::addColumn<bool>("dal_menu");
        QTest::newRow("Quit") << true;
        QTest::newRow("the window's close box") << false;
    }
    void esci_e_chiudi()
    {
        QFETCH(bool, dal_menu);
        FrmTV& f = frmTV();
        if (dal_menu) {
            f.menu_quit->trigger();
        } else {
            QCloseEvent e;
            QApplication::sendEvent(&f, &e);
        }
        QVERIFY(basic::programma_terminato());
        QCOMPARE(basic::prova::codice_di_uscita(), 0);
        QCOMPARE(uscita, dal_menu);
    }

    void esci_durante_una_pausa()
    {
        FrmTV& f = frmTV();
        fattore_pause = 1;
        QTimer::singleShot(30, &f, [&] { f.menu_quit->trigger(); });
        QElapsedTimer t;
        t.start();
        // The wait is cut short: the program has ended in the middle of it.
        QVERIFY_THROWS_EXCEPTION(basic::ProgrammaTerminato, pausa(5));
        fattore_pause = 0;
        QVERIFY(t.elapsed() < 1500);
    }

    void puntatori()
    {
        FrmTV& f = frmTV();
        const std::pair<int, Qt::CursorShape> forme[] = {
            {1, Qt::ArrowCursor}, {10, Qt::UpArrowCursor}, {12, Qt::ForbiddenCursor}, {13, Qt::BusyCursor}};
        for (auto [numero, forma] : forme) {
            f.setMousePointer(numero);
            QCOMPARE(f.MousePointer(), numero);
            QCOMPARE(f.tavolo->cursor().shape(), forma);
        }
    }
};

QTEST_MAIN(TestFinestra)
#include "tst_finestra.moc"
