// The human's mouse: which press reaches which move, the presses that are
// ignored, and the pointer shown over the table.
#include "tst_umano_aiuto.h"

#include <QtTest>

using namespace umano_prova;

class TestUmanoMouse : public QObject {
    Q_OBJECT

    // The standard position: an opened player (40 in hearts) with seven cards,
    // a straight of clubs on the computer's side, two cards on the pile.
    static void posizione(const std::string& codice_fase)
    {
        partita("10C 5D 6D 7D 9S 2S 3H", codice_fase == "011" ? "010" : codice_fase, "4S 5S");
        sul_tavolo_umano(1, "KH QH JH 10H");
        sul_tavolo_computer(1, "9C 8C 7C");
        if (codice_fase == "011") frmTV().gioca_proposta_selezionare(1);
        QCOMPARE(QString::fromStdString(fase), QString::fromStdString(codice_fase));
        prova::azzera_suoni();
    }

    struct Istantanea {
        long tallone_, n_pozzo_;
        std::string fase_, umano_, computer_;
        Istantanea()
            : tallone_(tallone), n_pozzo_(n_pozzo), fase_(fase), umano_(tavoli(true)), computer_(tavoli(false))
        {
        }
        static std::string tavoli(bool del_umano)
        {
            std::string s;
            for (int k = 1; k <= 13; ++k)
                s += (del_umano ? prova::combinazione_umano_come_testo(k) : prova::combinazione_computer_come_testo(k)) + "|";
            return s;
        }
    };

    // What a press did, judged from the tables.
    static QString accaduto(const Istantanea& prima)
    {
        if (n_pozzo > prima.n_pozzo_) return "discard";
        if (tallone != prima.tallone_) return "draw";
        if (n_pozzo < prima.n_pozzo_) return "take";
        if (Istantanea::tavoli(true) != prima.umano_) return "lay";
        if (Istantanea::tavoli(false) != prima.computer_) return "attach";
        if (fase != prima.fase_) return "mark";
        if (prova::quanti_suoni("errore.wav") > 0) return "error";
        return "nothing";
    }

private slots:
    void instradamento_data()
    {
        QTest::addColumn<QString>("codice_fase");
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<int>("pulsante");
        QTest::addColumn<QString>("atteso");
        QTest::newRow("stock, must draw") << "000" << 980.0 << 400.0 << 1 << "draw";
        QTest::newRow("stock, top-left corner") << "000" << 944.0 << 336.0 << 1 << "draw";
        QTest::newRow("stock, bottom-right corner") << "000" << 1015.0 << 447.4 << 1 << "draw";
        QTest::newRow("stock, right button") << "000" << 980.0 << 400.0 << 2 << "draw";
        QTest::newRow("stock, middle button") << "000" << 980.0 << 400.0 << 4 << "draw";
        QTest::newRow("below the stock") << "000" << 980.0 << 448.0 << 1 << "nothing";
        QTest::newRow("above the stock") << "000" << 980.0 << 335.0 << 1 << "nothing";
        QTest::newRow("right margin") << "000" << 1016.0 << 400.0 << 1 << "nothing";
        QTest::newRow("stock after the draw") << "010" << 980.0 << 400.0 << 1 << "nothing";
        QTest::newRow("pile before the draw") << "000" << 900.0 << 400.0 << 1 << "take";
        QTest::newRow("pile after the draw, nothing marked") << "010" << 900.0 << 400.0 << 1 << "nothing";
        QTest::newRow("pile with a card marked") << "011" << 900.0 << 400.0 << 1 << "discard";
        QTest::newRow("pile, bottom-left corner") << "011" << 872.0 << 447.0 << 1 << "discard";
        QTest::newRow("hand before the draw") << "000" << 44.0 << 700.0 << 1 << "nothing";
        QTest::newRow("hand after the draw") << "010" << 44.0 << 700.0 << 1 << "mark";
        QTest::newRow("hand, top row") << "010" << 44.0 << 656.0 << 1 << "mark";
        QTest::newRow("hand, bottom row") << "010" << 44.0 << 751.0 << 1 << "mark";
        QTest::newRow("hand, right button") << "010" << 44.0 << 700.0 << 2 << "mark";
        QTest::newRow("below the hand") << "010" << 44.0 << 752.0 << 1 << "nothing";
        QTest::newRow("own table, card marked") << "011" << 116.0 << 500.0 << 1 << "lay";
        QTest::newRow("own table, row 24") << "011" << 116.0 << 384.0 << 1 << "lay";
        QTest::newRow("own table, row 40") << "011" << 116.0 << 655.0 << 1 << "lay";
        QTest::newRow("own table, column 10") << "011" << 727.0 << 500.0 << 1 << "lay";
        QTest::newRow("own table, column 11") << "011" << 738.0 << 500.0 << 1 << "nothing";
        QTest::newRow("own table, nothing marked") << "010" << 116.0 << 500.0 << 1 << "nothing";
        QTest::newRow("computer's table, row 23") << "011" << 44.0 << 383.0 << 1 << "attach";
        QTest::newRow("computer's table, row 2") << "011" << 44.0 << 32.0 << 1 << "attach";
        QTest::newRow("row 1") << "011" << 44.0 << 31.0 << 1 << "nothing";
        QTest::newRow("computer's table, column 11") << "011" << 738.0 << 200.0 << 1 << "nothing";
        QTest::newRow("left margin") << "011" << 7.0 << 500.0 << 1 << "nothing";
        QTest::newRow("between the tables and the pile") << "011" << 800.0 << 400.0 << 1 << "nothing";
    }
    void instradamento()
    {
        QFETCH(QString, codice_fase);
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(int, pulsante);
        QFETCH(QString, atteso);
        posizione(codice_fase.toStdString());
        const Istantanea prima;
        frmTV().Form_MouseDown(pulsante, 0, float(x), float(y));
        QCOMPARE(accaduto(prima), atteso);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), 0);
    }

    // The panels go away with any press; the game itself only listens during
    // the human's turn and after the first deal.
    void pressioni_ignorate_data()
    {
        QTest::addColumn<bool>("avviato");
        QTest::addColumn<bool>("turno");
        QTest::addColumn<QString>("atteso");
        QTest::newRow("before the first deal") << false << true << "nothing";
        QTest::newRow("during the computer's turn") << true << false << "nothing";
        QTest::newRow("the human's turn") << true << true << "draw";
    }
    void pressioni_ignorate()
    {
        QFETCH(bool, avviato);
        QFETCH(bool, turno);
        QFETCH(QString, atteso);
        posizione("000");
        FrmTV& f = frmTV();
        f.gioco_avviato = avviato;
        turno_umano = turno;
        for (PannelloTesto* t : {f.Text2, f.text5, f.Text4}) {
            t->show();
            const Istantanea prima;
            premi_tallone();
            QVERIFY(!t->isVisible());
            QCOMPARE(accaduto(prima), atteso);
            fase = "000";
        }
    }

    void puntatore_data()
    {
        QTest::addColumn<QString>("codice_fase");
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<bool>("aperto");
        QTest::addColumn<int>("forma");
        QTest::newRow("own table, row 24") << "011" << 44.0 << 384.0 << false << 10;
        QTest::newRow("own table, row 38") << "011" << 44.0 << 623.0 << false << 10;
        QTest::newRow("own table, row 39") << "011" << 44.0 << 624.0 << false << 1;
        QTest::newRow("own table, column 11") << "011" << 740.0 << 500.0 << false << 10;
        QTest::newRow("own table, column 12") << "011" << 810.0 << 500.0 << false << 1;
        QTest::newRow("own table, left margin") << "011" << 4.0 << 500.0 << false << 10;
        QTest::newRow("computer's table, opened") << "011" << 44.0 << 383.0 << true << 10;
        QTest::newRow("computer's table, not opened") << "011" << 44.0 << 383.0 << false << 12;
        QTest::newRow("top row, not opened") << "011" << 44.0 << 0.0 << false << 12;
        QTest::newRow("computer's table, column 11") << "011" << 740.0 << 200.0 << false << 12;
        QTest::newRow("pile, row 21") << "011" << 900.0 << 336.0 << false << 10;
        QTest::newRow("pile, row 26") << "011" << 900.0 << 431.0 << false << 10;
        QTest::newRow("pile, row 27") << "011" << 900.0 << 432.0 << false << 1;
        QTest::newRow("stock") << "011" << 980.0 << 400.0 << false << 1;
        QTest::newRow("hand") << "011" << 44.0 << 700.0 << false << 1;
        QTest::newRow("computer plays") << "100" << 44.0 << 500.0 << false << 13;
        QTest::newRow("must draw") << "000" << 44.0 << 500.0 << true << 1;
        QTest::newRow("has drawn") << "010" << 44.0 << 500.0 << true << 1;
    }
    void puntatore()
    {
        QFETCH(QString, codice_fase);
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(bool, aperto);
        QFETCH(int, forma);
        FrmTV& f = prova::finestra();
        if (aperto) prova::combinazione_umano(1, "KH QH JH 10H");
        fase = codice_fase.toStdString();
        f.setMousePointer(0);
        f.Form_MouseMove(0, 0, float(x), float(y));
        QCOMPARE(f.MousePointer(), forma);
    }
};

QTEST_MAIN(TestUmanoMouse)
#include "tst_umano_mouse.moc"
