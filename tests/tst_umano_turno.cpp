// SPDX-License-Identifier: GPL-3.0-or-later
// The human's turn as a whole: the draw that empties the stock, the discard
// that hands the turn to the computer and takes it back, and the discard of
// the last card that closes the hand.
#include "tst_umano_aiuto.h"

#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <vector>

using namespace umano_prova;

class TestUmanoTurno : public QObject {
    Q_OBJECT

private slots:
    // The draw of the last card of the stock turns the whole pile into a new
    // stock, and the next draw takes its first card.
    void l_ultima_carta_del_tallone_rimescola_il_pozzo()
    {
        partita("AH 2H");
        for (long i = 1; i <= 81; ++i) pozzo(i) = i + 2;  // codes 3 to 83
        n_pozzo = 81;
        mazzo(CARTE) = 90;
        tallone = CARTE - 1;
        premi(14, 23);
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo() + prova::tavoli_come_testo()), "AH 2H 10C'p:");
        QCOMPARE(long(tallone), 27L);
        std::vector<long> nuovo, atteso;
        for (long i = 28; i <= CARTE; ++i) nuovo.push_back(mazzo(i));
        for (long c = 3; c <= 83; ++c) atteso.push_back(c);
        std::sort(nuovo.begin(), nuovo.end());
        QCOMPARE(nuovo, atteso);
        QVERIFY(prova::cella_mostra(14, 21, long(mazzo(28)), true));
        QVERIFY(prova::cella_mostra(13, 21, 0));
        QVERIFY(prova::mano_mostrata(false));

        fase = "000";
        premi(14, 23);
        QCOMPARE(long(mano_umano(4)), long(mazzo(28)));
        QVERIFY(prova::cella_mostra(4, 41, long(mazzo(28))) && prova::cella_mostra(14, 21, long(mazzo(29)), true));
    }

    // A full hand lays nothing and discards: the computer plays in phase
    // "100", draws and discards, and the human's turn starts again.
    void lo_scarto_passa_il_turno_al_computer()
    {
        partita("AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH 2S", "010");
        premi(3, 43);
        std::string fase_vista;
        bool turno_visto = true;
        QTimer::singleShot(0, [&] {
            fase_vista = fase;
            turno_visto = turno_umano;
        });
        premi(13, 23);
        QCOMPARE(QString::fromStdString(fase_vista), QStringLiteral("100"));
        QVERIFY(!turno_visto);
        QCOMPARE(QString::fromStdString(fase), QStringLiteral("000"));
        QVERIFY(turno_umano);
        // The computer drew from the stock and discarded on top of the 3H.
        QCOMPARE(long(pozzo(2)), long(prova::carta("3H")));
        QCOMPARE(long(n_pozzo), 3L);
        QCOMPARE(long(tallone), 28L);
    }

    // The last card discarded after a passing check ends the hand: the
    // computer does not play, its cards are shown and charged.
    void l_ultima_carta_chiude_la_mano()
    {
        FrmTV& f = partita(". . 3D", "010", "u1:KH QH JH 10H");
        nomi(1) = "Anna";
        prova::mano_computer_da("5S 9S");
        premi(3, 43);
        premi(13, 23);
        QCOMPARE(QString::fromStdString(prova::tavoli_come_testo()), QStringLiteral("u1:KH QH JH 10H | p:5C 3D"));
        QCOMPARE(QString::fromStdString(prova::mano_computer_come_testo()), QStringLiteral("5S 9S"));
        QCOMPARE(long(punti(2)), 14L);
        QCOMPARE(long(tallone), 27L);
        QVERIFY(prova::cella_mostra(1, 1, prova::carta("5S")));
        QVERIFY(f.picture_score->isVisible());
        QVERIFY(!turno_umano);
        f.picture_score->hide();
    }
};

QTEST_MAIN(TestUmanoTurno)
#include "tst_umano_turno.moc"
