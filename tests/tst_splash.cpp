// The start-up window and the start of the program.
#include "aiuto/posizione.h"
#include "platform/dialoghi.h"
#include "ui/frmSplash.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QtTest>

class TestSplash : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        basic::prova::attiva(true);
        piattaforma::prova::automatico(true);
        fattore_pause = 0;
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
    }

    void disposizione()
    {
        FrmSplash s;
        QCOMPARE(s.Label1(0)->text(), QStringLiteral("Version 2.1.2"));
        QCOMPARE(s.Label1(1)->text(), QStringLiteral("Classic Italian Game"));
        QVERIFY(!s.Picture1->pixmap().isNull());
        QCOMPARE(s.width(), s.Picture1->width());
        for (long i = 1; i <= 2; ++i) {
            QCOMPARE(s.Label1(i)->geometry().right() + 1, s.width() - 20);
            QCOMPARE(s.Label1(i)->y(), s.Picture1->height() + 50 * int(i));
        }
        QCOMPARE(s.height(), s.Label1(2)->geometry().bottom() + 1 + 50);
        QCOMPARE(s.Label1(1)->palette().color(QPalette::WindowText), QColor(0, 0, 192));
        QVERIFY(s.Label1(1)->font().bold());
        const QImage img = s.grab().toImage();
        QCOMPARE(QColor(img.pixel(img.width() - 3, img.height() - 3)), QColor(Qt::white));
        if (qEnvironmentVariableIsSet("TAVOLATA_FOTO")) img.save(qEnvironmentVariable("TAVOLATA_FOTO"));
    }

    void la_partenza_data()
    {
        QTest::addColumn<bool>("figure");
        QTest::newRow("pictures in place") << true;
        QTest::newRow("a picture missing") << false;
    }
    // Splash, main window, pictures, first hand: with a picture missing the
    // message comes, the window still opens, and the deal's first drawing
    // ends the program with a run-time error.
    void la_partenza()
    {
        QFETCH(bool, figure);
        basic::prova::azzera();
        piattaforma::prova::azzera();
        QTemporaryDir vuota;
        imposta_cartella_programma(figure ? QStringLiteral(TAVOLATA_SORGENTE "/media") : vuota.path());
        if (!figure) {
            immagine_carte = QImage();
            immagine_sfondo = QImage();
        }
        auto* s = new FrmSplash();
        s->show();
        QTRY_VERIFY(esiste_frmTV() && frmTV().isVisible());
        QTRY_VERIFY(figure ? frmTV().gioco_avviato : basic::programma_terminato());
        QVERIFY(!s->isVisible());
        const auto& r = piattaforma::prova::richieste();
        const bool messaggio =
            std::find(r.begin(), r.end(), std::string("MsgBox|Unable to initialize graphics.|0|16|")) != r.end();
        QCOMPARE(messaggio, !figure);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), figure ? 0 : 91);
        if (figure) {
            QCOMPARE(long(tallone), 27L);
            QVERIFY(frmTV().canzoni(9)->isChecked());
        }
        delete &frmTV();
        delete s;
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
    }
};

QTEST_MAIN(TestSplash)
#include "tst_splash.moc"
