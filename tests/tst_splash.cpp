// SPDX-License-Identifier: GPL-3.0-or-later
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
        if (!figure) immagine_carte = immagine_sfondo = QImage();
        sostituisci_caratteri();
        auto* s = new FrmSplash();
        s->show();
        QTRY_VERIFY(esiste_frmTV() && frmTV().isVisible());
        QTRY_VERIFY(figure ? frmTV().gioco_avviato : basic::programma_terminato());
        // Gone for good, with its picture.
        QVERIFY(!s->isVisible() && s->Picture1->pixmap().isNull());
        const auto& r = piattaforma::prova::richieste();
        QCOMPARE(std::count(r.begin(), r.end(), "MsgBox|Unable to initialize graphics.|0|16|"), figure ? 0 : 1);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), figure ? 0 : 91);
        if (figure) QCOMPARE(long(tallone), 27L);
        delete &frmTV();
        delete s;
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
    }
};

QTEST_MAIN(TestSplash)
#include "tst_splash.moc"
