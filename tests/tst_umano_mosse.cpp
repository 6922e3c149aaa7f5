// SPDX-License-Identifier: GPL-3.0-or-later
// The human's moves, one position and a few presses per row: drawing, marking
// and moving, laying, attaching, the jolly swap, the jolly named in its
// dialog, and the check of the table before the discard.
#include "human/frmJolly.h"
#include "tst_umano_aiuto.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QTimer>
#include <QtTest>

#include <deque>
#include <utility>

using namespace umano_prova;

namespace {
QString q(const std::string& s) { return QString::fromStdString(s); }

// A row: the hand, both tables (prova::tavoli_da; the pile 5C unless "p:" is
// given), the phase and the presses; then the hand, the tables and the phase
// after them with what else was observed. "=" is unchanged; the pile is
// unchanged unless "p:" is given, and a final " +" stands for the card the
// computer discards in its turn. Observed: E errors heard, D jolly dialogs
// shown, F the fatal run-time error, C the card in play (when the row names one).
// Presses: m3 hand slot 3, u3 own combination 3, c3 the computer's
// combination 3, p the pile, t the stock, P the pile twice, the second press
// in the first pause of the first; j4.7 answers the next jolly dialog with
// suit 4 and 7 steps down the number list.
void r(const char* nome, const QStringList& colonne) { QTest::newRow(nome) << colonne; }
const char* const APERTO = "u1:KS QS JS 10S | ";  // 40 in spades: the human has opened
}  // namespace

class TestUmanoMosse : public QObject {
    Q_OBJECT

private slots:
    void mosse_data()
    {
        QTest::addColumn<QStringList>("c");
        const auto A = [](const char* resto) { return APERTO + QString(resto); };
        // Drawing.
        // clang-format off
        r("stock: the next card into the first gap", {"AH 2H . 4H", "", "000 t", "AH 2H 2C 4H", "=", "010"});
        r("pile: opened, the top card", {"AH 2H . 4H", A("p:4S 5S 6S"), "000 p", "AH 2H 6S 4H", A("p:4S 5S"), "010"});
        r("pile: 39 on the table is refused", {"AH 2H", "u1:KH QH JH | u2:3S 3D 3C", "000 p", "=", "=", "000 E1"});
        r("pile: 40 takes it", {"AH 2H", "u1:QH QS QD QC | p:4S 5S", "000 p", "AH 2H 5S", "u1:QH QS QD QC | p:4S", "010"});
        r("pile of one: the card in hand, then the game stops", {"AH 2H", A("p:9D"), "000 p", "AH 2H 9D", "=", "000 F9"});
        // clang-format on
        // Marking and moving.
        r("move to the left", {"AH 2H 3H 4H 5H", "", "010 m4 m2", "AH 4H 2H 3H 5H", "=", "010 C2H"});
        r("move to the right", {"AH 2H 3H 4H 5H", "", "010 m2 m5", "AH 3H 4H 5H 2H", "=", "010"});
        r("gaps move like cards", {"AH . 3H . 5H", "", "010 m5 m1", "5H AH . 3H", "=", "010"});
        r("move into an empty slot", {"AH 2H 3H . 5H", "", "010 m1 m4", ". 2H 3H AH 5H", "=", "010"});
        r("pressed twice: unmarked", {"AH 2H 3H", "", "010 m2 m2", "=", "=", "010"});
        r("an empty slot takes no mark", {"7H 8H 2C . 9S", "", "010 m4", "=", "=", "010 C."});
        r("no mark before the draw", {"7H 8H", "", "000 m1", "=", "=", "000 C."});
        // Laying the card of slot 3 into own combination 3 ("" after: refused).
        const auto lay = [](const char* nome, const char* prima, const char* carta, const char* dopo) {
            const QString mano = QStringLiteral("2C 3C %1 4D").arg(carta), t = *prima ? "u3:" + QString(prima) : "";
            if (*dopo)
                r(nome, {mano, t, "010 m3 u3", "2C 3C . 4D", "u3:" + QString(dopo), "010"});
            else
                r(nome, {mano, t, "010 m3 u3", "=", "=", "011 E1"});
        };
        lay("a new combination", "", "7H", "7H");
        lay("one higher goes in front", "7H", "8H", "8H 7H");
        lay("one lower goes at the end", "7H", "6H", "7H 6H");
        lay("the same number", "7H", "7S", "7H 7S");
        lay("a set grows to a quartet", "7H 7S 7D", "7C", "7H 7S 7D 7C");
        lay("a set refuses a suit it has", "7H 7S 7D", "7S'", "");
        lay("a set refuses another number", "7H 7S 7D", "8C", "");
        lay("straight, top", "9H 8H 7H", "10H", "10H 9H 8H 7H");
        lay("straight, bottom", "9H 8H 7H", "6H", "9H 8H 7H 6H");
        lay("straight, a gap", "9H 8H 7H", "5H", "");
        lay("straight, inside", "9H 8H 7H", "8H'", "");
        lay("straight, other suit", "9H 8H 7H", "10S", "");
        lay("the ace above the king", "KH QH JH", "AH", "AH KH QH JH");
        lay("the ace below the two", "3H 2H", "AH", "3H 2H AH");
        lay("a lone ace takes a two", "AH", "2H", "2H AH");
        lay("a jolly counts as the suit it stands for", "*8H 7H", "9S", "");
        lay("a card of the second pack", "9H 8H 7H", "10H'", "10H' 9H 8H 7H");
        // Attaching the card of slot 2 to the computer's combination 2.
        const auto att = [&](const char* nome, const char* prima, const char* carta, const char* dopo) {
            const QString mano = QStringLiteral("2C %1 4D").arg(carta), t = A("c2:") + prima;
            if (*dopo)
                r(nome, {mano, t, "010 m2 c2", "2C . 4D", A("c2:") + dopo, "010"});
            else
                r(nome, {mano, t, "010 m2 c2", "=", "=", "011 E1"});
        };
        att("attach: straight, top", "9H 8H 7H", "10H", "10H 9H 8H 7H");
        att("attach: set to quartet", "5H 5S 5D", "5C", "5H 5S 5D 5C");
        att("attach: a set refuses a suit it has", "5H 5S 5D", "5D'", "");
        att("attach: below a jolly at the bottom", "9H 8H *7H", "6H", "9H 8H *7H 6H");
        r("attach: not opened, silently refused", {"2C 10H 4D", "c2:9H 8H 7H", "010 m2 c2", "=", "=", "011"});
        r("attach: an empty column, silently refused", {"2C 10H 4D", A(""), "010 m2 c2", "=", "=", "011"});
        // The last card is kept for the discard.
        // clang-format off
        r("lay: the last card stays in hand", {". . 8H", "u1:7H 7S 7D | u2:9H 8H' 7H'", "010 m3 u4 u1", "=", "=", "011"});
        r("attach: the last card stays in hand", {". 10H", A("c2:9H 8H 7H"), "010 m2 c2", "=", "=", "011"});
        // clang-format on
        // The real card takes the place of a jolly standing for it.
        const auto swap = [](const char* nome, const char* prima, const char* carta, const char* dopo, const char* j) {
            r(nome, {QStringLiteral("2C %1 4D").arg(carta), "u2:" + QString(prima), "010 m2 u2",
                     QStringLiteral("2C %1 4D").arg(j), "u2:" + QString(dopo), "010"});
        };
        swap("swap: a jolly of the first kind comes back as J1", "9S *8S 7S", "8S", "9S 8S 7S", "J1");
        swap("swap: a jolly of the second kind comes back as J2", "9S **8S 7S", "8S", "9S 8S 7S", "J2");
        swap("swap: in a set", "7H *7S 7D", "7S", "7H 7S 7D", "J1");
        swap("swap: the first jolly that stands for it", "**7H 7S *7H", "7H'", "7H' 7S *7H", "J2");
        // On the computer's side the card stays in play with no mark shown.
        const QString sc = A("c2:9S *8S 7S"), fatto = A("c2:9S 8S 7S");
        // clang-format off
        r("swap on the computer's side", {"2C 8S 4D", sc, "010 m2 c2", "2C J1 4D", fatto, "011 C8S"});
        r("swap on the computer's side, second kind", {"2C 8S' 4D", A("c2:9S **8S 7S"), "010 m2 c2", "2C J2 4D",
                                                       // clang-format on
                                                       A("c2:9S 8S' 7S"), "011"});
        // clang-format off
        r("then a press on the hand only unmarks", {"2C 8S 4D", sc, "010 m2 c2 m3", "2C J1 4D", fatto, "010"});
        r("then the pile takes the card on the table", {"2C 8S 4D", sc, "010 m2 c2 p", "2C . 4D", fatto + " | p:5C 8S +",
           // clang-format on
           "000 E12"});
        r("attached cards stay after the discard", {"2C 8C' 4D 4C'", A("c2:7C 6C 5C"), "010 m2 c2 m4 c2 m3 p", "2C",
                                                    A("c2:8C' 7C 6C 5C 4C' | p:5C 4D +"), "000 E12"});
        // A plain jolly is named in its dialog, once per combination.
        const auto jolly = [](const char* nome, const char* j, const char* prima, const char* risposta, const char* d) {
            r(nome, {QStringLiteral("2C %1 4D").arg(j), *prima ? "u5:" + QString(prima) : "",
                     QStringLiteral("010 m2 %1 u5").arg(risposta), "2C . 4D", "u5:" + QString(d), "010 D1"});
        };
        jolly("jolly named 8 of spades", "J1", "", "j4.7", "*8S");
        jolly("second-kind jolly of the second pack", "J2'", "", "j4.7", "**8S");
        jolly("jolly on top of a straight", "J2", "10S 9S", "j4.10", "**JS 10S 9S");
        jolly("jolly into a set", "J1", "QH QD", "j3.11", "QH QD *QC");
        // clang-format off
        r("jolly attached", {"2C J2' 4D", A("c3:9H 8H 7H"), "010 m2 j1.9 c3", "2C . 4D", A("c3:**10H 9H 8H 7H"), "010 D1"});
        r("no second jolly in a combination", {"2C J1 4D", A("u3:9H *8H 7H"), "010 m2 j1.9 u3", "=", "=", "011 CJ1"});
        r("no second jolly in a computer's one", {"2C J1 4D", A("c3:9H *8H 7H"), "010 m2 j1.9 c3", "=", "=", "011 CJ1"});
        // clang-format on
        // A full hand: the discard needs no check of the table.
        const QString resto = " 4D 5D 6D 7D 8D 9D 10D JD QD KD AD 3S", piena = "2C J1" + resto, senza = "2C ." + resto;
        // clang-format off
        r("a refused jolly keeps its name", {piena, "u1:9S 8S 7S", "010 m2 j1.6 u1 j4.0 u2", senza,
                                             // clang-format on
                                             "u1:9S 8S 7S | u2:*7H", "010 E1 D1 C*7H"});
        // clang-format off
        r("a refused jolly is discarded named", {piena, "u1:9S 8S 7S", "010 m2 j1.6 u1 j4.0 p", senza,
                                                 // clang-format on
                                                 "u1:9S 8S 7S | p:5C *7H +", "000 E1 D1"});
        // clang-format off
        r("a last jolly is not laid, and not named", {". J1", A(""), "010 m2 j1.9 u4", "=", "=", "011 CJ1"});
        r("a last jolly is named, not attached", {". J1", A("c3:9H 8H 7H"), "010 m2 j1.9 c3", "=", "=", "011 D1 C*10H"});
        // clang-format on
        // Thirteen cards are a full combination.
        const QString tredici = "KH QH JH 10H 9H 8H 7H 6H 5H 4H 3H 2H";
        // clang-format off
        r("a second ace below it stops the game", {"2C AH' 4D", "u1:" + tredici + " AH", "010 m2 u1", "=", "=", "011 F9"});
        r("a second ace on top of it is refused", {"2C AH' 4D", "u1:AH " + tredici, "010 m2 u1", "=", "=", "011 E1"});
        // clang-format on
        // The check of the table before the discard: every short or empty
        // combination is heard.
        const QString ok = "u1:KH QH JH 10H";
        // clang-format off
        r("discard with a complete table", {". . 3D 4D", ok, "010 m3 p", ". . . 4D", ok + " | p:5C 3D +", "000 E12"});
        r("two cards come back", {". . 3D 4D", ok + " | u2:9C 8C", "010 m3 p", "9C 8C 3D 4D", ok, "011 E12"});
        r("one card comes back", {". . 3D 4D", ok + " | u2:9C", "010 m3 p", "9C . 3D 4D", ok, "011 E12"});
        r("three cards stay", {". . 3D 4D", ok + " | u2:9C 8C 7C", "010 m3 p", ". . . 4D", ok + " | u2:9C 8C 7C | p:5C 3D +",
           // clang-format on
           "000 E11"});
        // clang-format off
        r("not opened: all back into the first free slots", {"2D . 3D . 4D . 5D 6D KS QS . 2S",
           // clang-format on
           "u1:7H 7S 7D | u2:9C 8C | u3:10C", "010 m12 p", "2D 7H 3D 7S 4D 7D 5D 6D KS QS 9C 2S 8C 10C", "", "011 E1"});
        r("a jolly comes back as J1", {". . . 2D", "u1:9S *8S 7S", "010 m4 p", "9S J1 7S 2D", "", "011 E1"});
        r("a jolly comes back as J2", {". . . 2D", "u1:9S **8S 7S", "010 m4 p", "9S J2 7S 2D", "", "011 E1"});
        // A double click: the second press, routed in the pause of the first
        // card coming back, takes the same cards back again, one too many.
        const QString undici = " 2D 3C 4C 5C 6C 7C 8C 9C 10C JC QC";
        // clang-format off
        r("double click after laying 24: the game stops", {". . ." + undici, "u1:9S 8S 7S", "010 m4 P",
                                                           // clang-format on
                                                           "9S 9S 8S" + undici, "=", "011 E2 F9"});
    }

    void mosse()
    {
        QFETCH(QStringList, c);
        partita(c[0].toStdString(), c[2].left(3).toStdString(), c[1].toStdString());
        const QString mano_prima = q(prova::mano_umano_come_testo()), tavoli_prima = q(prova::tavoli_come_testo());

        // Every jolly dialog that comes up is answered as a player answers it:
        // a suit, the number list, then a press on the preview.
        std::deque<std::pair<int, int>> risposte;
        int dialoghi = 0;
        bool occupato = false;
        QTimer guardia;
        connect(&guardia, &QTimer::timeout, [&] {
            QPointer<FrmJolly> d = qobject_cast<FrmJolly*>(QApplication::activeModalWidget());
            if (occupato || !d || !d->isVisible()) return;
            occupato = true;
            ++dialoghi;
            const auto [seme, giu] = risposte.empty() ? std::pair(0, 0) : risposte.front();
            if (!risposte.empty()) risposte.pop_front();
            if (seme)
                QTest::mouseClick(d->findChild<QAbstractButton*>(QStringLiteral("Option%1").arg(seme)), Qt::LeftButton);
            for (int i = 0; i < giu; ++i) QTest::keyClick(d->Combo1, Qt::Key_Down);
            QTest::mouseClick(d, Qt::LeftButton, {}, d->posto_anteprima().center().toPoint());
            if (d && d->isVisible()) d->done(QDialog::Rejected);
            occupato = false;
        });
        guardia.start(0);
        for (const QString& p : c[2].mid(4).split(' ', Qt::SkipEmptyParts)) {
            const int n = p.mid(1).section('.', 0, 0).toInt();
            const char t = p[0].toLatin1();
            if (t == 'm' || t == 'u' || t == 'c') premi(n, t == 'm' ? 43 : t == 'u' ? 30 : 10);
            if (t == 'P') QTimer::singleShot(0, [] { premi(13, 23); });
            if (t == 'p' || t == 't' || t == 'P') premi(t == 't' ? 14 : 13, 23);
            if (t == 'j') risposte.emplace_back(n, p.section('.', 1).toInt());
        }

        QString esito = q(fase), tavoli = q(prova::tavoli_come_testo()), attesi = c[4] == "=" ? tavoli_prima : c[4];
        const auto segno = [&](char t, long v) { esito += v ? QStringLiteral(" %1%2").arg(t).arg(v) : QString(); };
        segno('E', prova::quanti_suoni("errore.wav"));
        segno('D', dialoghi);
        segno('F', basic::prova::ultimo_errore_fatale());
        if (c[5].contains('C')) esito += " C" + q(prova::nome_carta(carta_selezionata));
        if (!attesi.contains("p:"))
            attesi += (attesi.isEmpty() ? "" : " | ") + tavoli_prima.mid(tavoli_prima.indexOf("p:"));
        if (attesi.endsWith(" +")) tavoli = tavoli.left(tavoli.lastIndexOf(' ')) + " +";
        QCOMPARE(q(prova::mano_umano_come_testo()), c[3] == "=" ? mano_prima : c[3]);
        QCOMPARE(tavoli, attesi);
        QCOMPARE(esito, c[5]);
        // Once the program has ended, what the table shows no longer counts.
        if (basic::prova::ultimo_errore_fatale()) return;

        // What the table shows: at most one mark, on the card in play (a
        // valued jolly carries its table code), every hand cell, every
        // combination, the emptied ones, the top of the pile and the stock.
        int segni = 0, salvo = 0;
        for (int k = 1; k <= 14; ++k)
            if (segnata(k)) ++segni, salvo = k;
        QVERIFY(segni <= 1);
        if (salvo)
            QVERIFY(fase == "011" && (mano_umano(salvo) == carta_selezionata || jolly_sul_tavolo(carta_selezionata)));
        // A combination of thirteen cards reaches down over the hand.
        QVERIFY(prova::mano_mostrata(false, salvo) || tavolo_umano(1, 13) != 0);
        for (int k = 1; k <= 13; ++k) {
            QVERIFY(prova::combinazione_disegnata(k, true) && prova::combinazione_disegnata(k, false));
            if (k <= 10 && tavolo_umano(k, 1) == 0) QVERIFY(prova::cella_mostra(k, 24, 0));
            if (k <= 10 && tavolo_computer(k, 1) == 0) QVERIFY(prova::cella_mostra(k, 18, 0));
        }
        QVERIFY(prova::cella_mostra(13, 21, n_pozzo ? long(pozzo(n_pozzo)) : 0));
        QVERIFY(prova::cella_mostra(14, 21, long(mazzo(tallone + 1)), true));
        // A refusal is heard as an error only.
        const bool fermo = fase == "011" && q(prova::mano_umano_come_testo()) == mano_prima && tavoli == tavoli_prima;
        if (fermo) QCOMPARE(prova::quanti_suoni("carta.wav"), 0);
    }
};

QTEST_MAIN(TestUmanoMosse)
#include "tst_umano_mosse.moc"
