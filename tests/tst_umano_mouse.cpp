// SPDX-License-Identifier: GPL-3.0-or-later
// The human's mouse: which press reaches which move at the edges of every
// area, the presses that are ignored, the red mark, and the pointer where it
// differs from the areas of the presses.
#include "tst_umano_aiuto.h"

#include <QtTest>

using namespace umano_prova;

class TestUmanoMouse : public QObject {
    Q_OBJECT

    // What a press did, judged from the tables and the phase.
    struct Prima {
        long tallone_ = tallone, n_pozzo_ = n_pozzo;
        std::string fase_ = fase, tavoli_ = prova::tavoli_come_testo();
        QString accaduto() const
        {
            const std::string ora = prova::tavoli_come_testo(), u = ora.substr(0, ora.find("c1:"));
            if (n_pozzo != n_pozzo_) return n_pozzo > n_pozzo_ ? "discard" : "take";
            if (tallone != tallone_) return "draw";
            // The human's combinations come first in the text, the computer's from "c1:".
            if (ora != tavoli_) return u != tavoli_.substr(0, tavoli_.find("c1:")) ? "lay" : "attach";
            return fase != fase_ ? "mark" : "nothing";
        }
    };

private slots:
    // A row: the phase, the point pressed (1024 x 768 units), what happened
    // and the button when not the left one.
    void instradamento_data()
    {
        QTest::addColumn<QString>("riga");
        const auto r = [](const char* nome, const char* riga) { QTest::newRow(nome) << QString(riga); };
        r("stock, top-left corner", "000 944 336 draw");
        r("stock, bottom-right corner", "000 1015 447.4 draw");
        r("stock, right button", "000 980 400 draw 2");
        r("below the stock", "000 980 448 nothing");
        r("above the stock", "000 980 335 nothing");
        r("right margin", "000 1016 400 nothing");
        r("pile before the draw", "000 900 400 take");
        r("pile after the draw, nothing marked", "010 900 400 nothing");
        r("pile, bottom-left corner, card marked", "011 872 447 discard");
        r("hand before the draw", "000 44 700 nothing");
        r("hand, top row", "010 44 656 mark");
        r("hand, bottom row", "010 44 751 mark");
        r("below the hand", "010 44 752 nothing");
        r("own table, row 24", "011 116 384 lay");
        r("own table, row 40", "011 116 655 lay");
        r("own table, column 10", "011 727 500 lay");
        r("own table, column 11", "011 738 500 nothing");
        r("computer's table, row 23", "011 44 383 attach");
        r("computer's table, row 2", "011 44 32 attach");
        r("row 1", "011 44 31 nothing");
        r("left margin", "011 7 500 nothing");
    }
    void instradamento()
    {
        QFETCH(QString, riga);
        const QStringList c = riga.split(' ');
        // An opened player (40 in hearts) with seven cards, a straight of
        // clubs on the computer's side, two cards on the pile.
        partita("10C 5D 6D 7D 9S 2S 3H", c[0] == "011" ? "010" : c[0].toStdString(),
                "u1:KH QH JH 10H | c1:9C 8C 7C | p:4S 5S");
        if (c[0] == "011") premi(1, 43);
        const Prima prima;
        premi_xy(c[1].toDouble(), c[2].toDouble(), c.size() > 4 ? c[4].toInt() : 1);
        QCOMPARE(prima.accaduto(), c[3]);
        QCOMPARE(basic::prova::ultimo_errore_fatale(), 0);
    }

    // The panels go away with any press, even one the game ignores: before
    // the first deal and during the computer's turn.
    void pressioni_ignorate()
    {
        for (const bool avviato : {false, true}) {
            FrmTV& f = partita("AH 2H");
            f.gioco_avviato = avviato;
            turno_umano = !avviato;
            for (PannelloTesto* t : {f.Text2, f.text5, f.Text4}) {
                t->show();
                const Prima prima;
                premi(14, 23);
                QVERIFY(!t->isVisible());
                QCOMPARE(prima.accaduto(), QStringLiteral("nothing"));
            }
        }
    }

    // The mark is a red frame two device pixels wide just inside the card,
    // found again by reading the table; the card itself is untouched.
    void il_segno_rosso()
    {
        FrmTV& f = partita("7H 8H 2C . 9S", "010");
        const QImage prima = f.tela.Image().copy();
        premi(5, 43);
        const QImage& img = f.tela.Image();
        const QRect carta = f.tela.in_pixel(QRectF(8 + 72 * 4, 656, 72, 96));
        const auto rossi = [&](QPoint p, QPoint passo) {
            int n = 0;
            for (int i = 0; i < 12; ++i, p += passo) n += img.pixel(p) == qRgb(255, 0, 0);
            return n;
        };
        QCOMPARE(rossi(QPoint(carta.left(), carta.center().y()), QPoint(1, 0)), 2);
        QCOMPARE(rossi(QPoint(carta.right(), carta.center().y()), QPoint(-1, 0)), 2);
        QCOMPARE(rossi(QPoint(carta.center().x(), carta.top()), QPoint(0, 1)), 2);
        QCOMPARE(rossi(QPoint(carta.center().x(), carta.bottom()), QPoint(0, -1)), 2);
        QCOMPARE(img.pixel(carta.center()), prima.pixel(carta.center()));
        QVERIFY(segnata(5));
    }

    // Once the marked card is redrawn, the next press on the hand finds no
    // mark and moves nothing.
    void il_segno_si_perde_con_la_carta_ridisegnata()
    {
        FrmTV& f = partita("AH 2H 3H 4H", "010");
        premi(2, 43);
        disegna_carta(f.tela, 2, 41, Byte(long(mano_umano(2))), false, 0);
        QVERIFY(!segnata(2));
        premi(4, 43);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 3H 4H"));
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("010"));
    }

    // A row: the phase, the point, the pointer shape, and "a" when opened.
    void puntatore_data()
    {
        QTest::addColumn<QString>("riga");
        const auto r = [](const char* nome, const char* riga) { QTest::newRow(nome) << QString(riga); };
        r("own table, row 38", "011 44 623 10");
        r("own table, row 39", "011 44 624 1");
        r("own table, column 11", "011 740 500 10");
        r("own table, column 12", "011 810 500 1");
        r("own table, left margin", "011 4 500 10");
        r("computer's table, opened", "011 44 383 10 a");
        r("computer's table, not opened", "011 44 383 12");
        r("top row, not opened", "011 44 0 12");
        r("pile, row 26", "011 900 431 10");
        r("pile, row 27", "011 900 432 1");
        r("computer plays", "100 44 500 13");
        r("must draw", "000 44 500 1 a");
    }
    void puntatore()
    {
        QFETCH(QString, riga);
        const QStringList c = riga.split(' ');
        FrmTV& f = prova::finestra();
        if (c.size() > 4) prova::combinazione_umano(1, "KH QH JH 10H");
        fase = c[0].toStdString();
        f.setMousePointer(0);
        f.Form_MouseMove(0, 0, c[1].toFloat(), c[2].toFloat());
        QCOMPARE(f.MousePointer(), c[3].toInt());
    }
};

QTEST_MAIN(TestUmanoMouse)
#include "tst_umano_mouse.moc"
