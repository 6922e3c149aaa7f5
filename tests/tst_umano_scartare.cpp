// The human's discard: the check of his table, the card onto the pile, the
// computer's turn in between, and the closing of the hand.
#include "computer/mdCompTV.h"
#include "human/verifica_tavolo.h"
#include "tst_umano_aiuto.h"

#include <QtTest>

using namespace umano_prova;

class TestUmanoScartare : public QObject {
    Q_OBJECT

    static QString testo(const std::string& s) { return QString::fromStdString(s); }

private slots:

    void cleanup()
    {
        FrmTV& f = frmTV();
        f.picture_score->hide();
    }

    // A full hand has laid nothing: the card goes, no sound of error, and the
    // computer plays its turn before the human's next one.
    void scarto_con_la_mano_piena()
    {
        partita("AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH 2S", "010", "5C");
        premi_mano(3);
        premi_pozzo();
        QCOMPARE(long(pozzo(2)), long(prova::carta("3H")));
        QCOMPARE(long(mano_umano(3)), 0L);
        QCOMPARE(long(carta_selezionata), 0L);
        QVERIFY(prova::cella_mostra(3, 41, 0));
        QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
        // The computer drew from the stock and discarded on top.
        QCOMPARE(long(tallone), 28L);
        QCOMPARE(long(n_pozzo), 3L);
        QVERIFY(prova::cella_mostra(13, 21, long(pozzo(3))));
        QCOMPARE(testo(fase), QStringLiteral("000"));
        QVERIFY(turno_umano);
    }

    // While the computer plays, the phase says so, the pointer shows it, and
    // a press does nothing but put the panels away.
    void durante_il_turno_del_computer()
    {
        FrmTV& f = partita("AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH 2S", "010", "5C");
        premi_mano(3);
        QString fase_vista;
        bool turno_visto = true, pannello_visibile = true;
        long tallone_prima = -1, tallone_dopo = -2;
        int puntatore = 0;
        std::string mano_prima, mano_dopo;
        QTimer::singleShot(0, [&] {
            fase_vista = testo(fase);
            turno_visto = turno_umano;
            f.Form_MouseMove(0, 0, 500, 500);
            puntatore = f.MousePointer();
            f.Text4->show();
            tallone_prima = tallone;
            mano_prima = prova::mano_umano_come_testo();
            premi_tallone();
            premi_mano(1);
            tallone_dopo = tallone;
            mano_dopo = prova::mano_umano_come_testo();
            pannello_visibile = f.Text4->isVisible();
        });
        premi_pozzo();
        QCOMPARE(fase_vista, QStringLiteral("100"));
        QVERIFY(!turno_visto);
        QCOMPARE(puntatore, 13);
        QCOMPARE(tallone_dopo, tallone_prima);
        QCOMPARE(mano_dopo, mano_prima);
        QVERIFY(!pannello_visibile);
        QCOMPARE(testo(fase), QStringLiteral("000"));
    }

    void niente_da_scartare_data()
    {
        QTest::addColumn<QString>("codice_fase");
        QTest::newRow("nothing marked") << "010";
        QTest::newRow("not drawn") << "001";
    }
    void niente_da_scartare()
    {
        QFETCH(QString, codice_fase);
        FrmTV& f = partita("AH 2H 3H", codice_fase.toStdString(), "5C");
        carta_selezionata = prova::carta("2H");
        posizione_selezionata = 2;
        f.gioca_proposta_scartare();
        QCOMPARE(testo(prova::pozzo_come_testo()), QStringLiteral("5C"));
        QCOMPARE(testo(prova::mano_umano_come_testo()), QStringLiteral("AH 2H 3H"));
        QVERIFY(turno_umano);
        QVERIFY(prova::suoni().empty());
    }

    // Not opened: one error sound, every laid card back into the first empty
    // slots, no discard; the hand is full again and the next discard goes.
    void senza_apertura_torna_tutto()
    {
        partita("7H 7S 7D 8C 9C 10C 2D 3D 4D 5D 6D KS QS 2S", "010", "5C");
        // Three sevens, 9-8 of clubs and a lone 10 of clubs beside them:
        // 21 + 0 + 0, where 10-9-8 together would have made 48.
        premi_mano(1);
        premi(1, 30);
        premi_mano(2);
        premi(1, 30);
        premi_mano(3);
        premi(1, 30);
        premi_mano(4);
        premi(2, 30);
        premi_mano(5);
        premi(2, 30);
        premi_mano(6);
        premi(3, 30);
        QCOMPARE(testo(prova::combinazione_umano_come_testo(1)), QStringLiteral("7H 7S 7D"));
        QCOMPARE(testo(prova::combinazione_umano_come_testo(2)), QStringLiteral("9C 8C"));
        QCOMPARE(testo(prova::combinazione_umano_come_testo(3)), QStringLiteral("10C"));
        QCOMPARE(testo(prova::mano_umano_come_testo()), QStringLiteral(". . . . . . 2D 3D 4D 5D 6D KS QS 2S"));
        premi_mano(14);
        prova::azzera_suoni();
        premi_pozzo();

        QCOMPARE(prova::quanti_suoni("errore.wav"), 1);
        QCOMPARE(prova::quanti_suoni("carta.wav"), 6);
        QCOMPARE(testo(prova::mano_umano_come_testo()), QStringLiteral("7H 7S 7D 9C 8C 10C 2D 3D 4D 5D 6D KS QS 2S"));
        QVERIFY(mano_disegnata(14));
        for (int k = 1; k <= 3; ++k) {
            QVERIFY(prova::combinazione_umano_come_testo(k).empty());
            QVERIFY(prova::cella_mostra(k, 24, 0));
        }
        QCOMPARE(testo(prova::pozzo_come_testo()), QStringLiteral("5C"));
        QCOMPARE(testo(fase), QStringLiteral("011"));
        QVERIFY(turno_umano);
        QVERIFY(segnata(14));

        prova::azzera_suoni();
        premi_pozzo();
        QCOMPARE(long(pozzo(2)), long(prova::carta("2S")));
        QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
        QCOMPARE(testo(fase), QStringLiteral("000"));
    }

    // Opened: each combination shorter than three goes back with the error
    // sound, and so does every empty one (sound only); the rest stays.
    void aperto_data()
    {
        QTest::addColumn<QString>("corta");
        QTest::addColumn<QString>("mano_dopo");
        QTest::addColumn<bool>("scartato");
        QTest::addColumn<int>("errori");
        QTest::newRow("complete table") << "" << ". . . 4D" << true << 12;
        QTest::newRow("two cards") << "9C 8C" << "9C 8C 3D 4D" << false << 12;
        QTest::newRow("one card") << "9C" << "9C . 3D 4D" << false << 12;
        QTest::newRow("three cards stay") << "9C 8C 7C" << ". . . 4D" << true << 11;
    }
    void aperto()
    {
        QFETCH(QString, corta);
        QFETCH(QString, mano_dopo);
        QFETCH(bool, scartato);
        QFETCH(int, errori);
        partita(". . 3D 4D", "010", "5C");
        sul_tavolo_umano(1, "KH QH JH 10H");
        sul_tavolo_umano(2, corta.toStdString());
        premi_mano(3);
        premi_pozzo();
        QCOMPARE(prova::quanti_suoni("errore.wav"), errori);
        QCOMPARE(testo(prova::combinazione_umano_come_testo(1)), QStringLiteral("KH QH JH 10H"));
        QCOMPARE(testo(prova::mano_umano_come_testo()), mano_dopo);
        QVERIFY(mano_disegnata(scartato ? 0 : 3));
        QCOMPARE(segnata(3), !scartato);
        if (scartato) {
            QCOMPARE(long(pozzo(2)), long(prova::carta("3D")));
            QCOMPARE(testo(fase), QStringLiteral("000"));
            QCOMPARE(testo(prova::combinazione_umano_come_testo(2)), corta);
        } else {
            QCOMPARE(testo(prova::pozzo_come_testo()), QStringLiteral("5C"));
            QCOMPARE(testo(fase), QStringLiteral("011"));
            QVERIFY(prova::combinazione_umano_come_testo(2).empty());
            QVERIFY(prova::cella_mostra(2, 24, 0));
        }
    }

    // A jolly taken back comes home plain, as the first-pack code of its kind.
    void il_jolly_torna_semplice_data()
    {
        QTest::addColumn<QString>("combinazione");
        QTest::addColumn<QString>("mano_dopo");
        QTest::newRow("first kind") << "9S *8S 7S" << "9S J1 7S 2D";
        QTest::newRow("second kind") << "9S **8S 7S" << "9S J2 7S 2D";
    }
    void il_jolly_torna_semplice()
    {
        QFETCH(QString, combinazione);
        QFETCH(QString, mano_dopo);
        partita(". . . 2D", "010", "5C");
        sul_tavolo_umano(1, combinazione.toStdString());
        premi_mano(4);
        premi_pozzo();
        QCOMPARE(testo(prova::mano_umano_come_testo()), mano_dopo);
        QVERIFY(mano_disegnata(4));
        QVERIFY(segnata(4));
    }

    // The last card discarded after a passing check ends the hand: the
    // computer does not play, its cards are shown and charged.
    void chiusura()
    {
        FrmTV& f = partita(". . 3D", "010", "5C");
        nomi(1) = "Anna";
        sul_tavolo_umano(1, "KH QH JH 10H");
        prova::mano_computer_da("5S 9S");
        premi_mano(3);
        premi_pozzo();
        QCOMPARE(long(pozzo(2)), long(prova::carta("3D")));
        QCOMPARE(long(punti(2)), 14L);
        QCOMPARE(long(punti(1)), 0L);
        QCOMPARE(long(tallone), 27L);
        QCOMPARE(testo(prova::mano_computer_come_testo()), QStringLiteral("5S 9S"));
        QVERIFY(prova::cella_mostra(1, 1, prova::carta("5S")));
        QVERIFY(f.picture_score->isVisible());
        QVERIFY(!turno_umano);
        QCOMPARE(testo(fase), QStringLiteral("000"));
    }

    // The computer's side of the check: nothing calls it in play, but it
    // takes back face down into the computer's hand and passes pairs.
    void verifica_del_computer_data()
    {
        QTest::addColumn<QString>("mano");
        QTest::addColumn<QString>("combinazione1");
        QTest::addColumn<QString>("combinazione2");
        QTest::addColumn<bool>("esito");
        QTest::addColumn<QString>("mano_dopo");
        QTest::addColumn<QString>("resta1");
        QTest::addColumn<QString>("resta2");
        QTest::newRow("full hand") << "AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH AS" << "KD KS KC" << "" << true
                                   << "AH 2H 3H 4H 5H 6H 7H 8H 9H 10H JH QH KH AS" << "KD KS KC" << "";
        QTest::newRow("not opened: all back") << "AH . 3H" << "KD KS KC" << "5H *4H" << false << "AH KD 3H KS KC 5H J1"
                                              << "" << "";
        QTest::newRow("opened: a pair stays") << "AH . 3H" << "KD KS KC KH" << "5H 4H" << true << "AH . 3H"
                                              << "KD KS KC KH" << "5H 4H";
        QTest::newRow("opened: a single goes") << "AH . 3H" << "KD KS KC KH" << "**5H" << false << "AH J2 3H"
                                               << "KD KS KC KH" << "";
    }
    void verifica_del_computer()
    {
        QFETCH(QString, mano);
        QFETCH(QString, combinazione1);
        QFETCH(QString, combinazione2);
        QFETCH(bool, esito);
        QFETCH(QString, mano_dopo);
        QFETCH(QString, resta1);
        QFETCH(QString, resta2);
        FrmTV& f = partita("AH");
        prova::mano_computer_da(mano.toStdString());
        disegna_mano(f.tela, mano_computer, true, 0);
        sul_tavolo_computer(1, combinazione1.toStdString());
        sul_tavolo_computer(2, combinazione2.toStdString());
        QCOMPARE(verifica_tavolo(false), esito);
        QCOMPARE(testo(prova::mano_computer_come_testo()), mano_dopo);
        QCOMPARE(testo(prova::combinazione_computer_come_testo(1)), resta1);
        QCOMPARE(testo(prova::combinazione_computer_come_testo(2)), resta2);
        for (int i = 1; i <= 14; ++i)
            if (mano_computer(i) != 0) QVERIFY(prova::cella_mostra(i, 1, long(mano_computer(i)), true));
        if (resta1.isEmpty()) {
            QVERIFY(prova::cella_mostra(1, 18, 0));
            QVERIFY(prova::cella_mostra(1, 16, 0));
        }
        QCOMPARE(prova::quanti_suoni("errore.wav"), 0);
        QCOMPARE(testo(prova::mano_umano_come_testo()), QStringLiteral("AH"));
    }
};

QTEST_MAIN(TestUmanoScartare)
#include "tst_umano_scartare.moc"
