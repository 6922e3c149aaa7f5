// SPDX-License-Identifier: GPL-3.0-or-later
// Whole games through the simulator's engine: the scripted player against the
// computer, with presses and menu commands thrown in while the computer
// plays, every move checked against the invariants. A bounded run for every
// build; TAVOLATA_MANI_SIMULATE sets a longer (or, under the sanitizers, a
// shorter) one.
#include "simulatore.h"

#include <QtTest>

namespace {
long mani_richieste(long predefinite)
{
    return qEnvironmentVariableIsSet("TAVOLATA_MANI_SIMULATE") ? qEnvironmentVariableIntValue("TAVOLATA_MANI_SIMULATE")
                                                               : predefinite;
}

std::string primo_guasto(const simulazione::Rapporto& r) { return r.guasti.empty() ? "" : r.guasti.front(); }
}  // namespace

class TestSimulazione : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { simulazione::prepara_finestra(); }

    void partite_data()
    {
        QTest::addColumn<unsigned>("seme");
        QTest::addColumn<bool>("rumore");
        QTest::addColumn<long>("mani");
        QTest::newRow("scripted player with noise") << 1u << true << mani_richieste(2400);
        QTest::newRow("scripted player alone") << 2u << false << mani_richieste(2400) / 4;
    }

    void partite()
    {
        QFETCH(unsigned, seme);
        QFETCH(bool, rumore);
        QFETCH(long, mani);
        simulazione::Opzioni o;
        o.mani = std::max(1L, mani);
        o.seme = seme;
        o.rumore = rumore;
        o.silenzioso = true;
        const simulazione::Rapporto r = simulazione::simula(o);
        qInfo("%s", r.testo().c_str());
        QVERIFY2(r.guasti.empty(), primo_guasto(r).c_str());
        QCOMPARE(r.mani(), o.mani);
        // Most hands are played out to a closing, and both sides win some.
        QVERIFY(r.mani_chiuse * 10 >= r.mani() * 8);
        if (o.mani >= 50) {
            QVERIFY(r.vinte_computer > 0);
            QVERIFY(r.vinte_umano > 0);
            QVERIFY(r.partite > 0);
            QVERIFY(r.mosse.count("attach to the computer's table"));
            QVERIFY(r.dialoghi.count("confirmed on the preview"));
        }
        if (rumore && o.mani >= 200) {
            QVERIFY(r.disturbi.count("press while the computer plays"));
            // A new hand dealt over every kind of wait, each followed by the checks of a fresh hand.
            for (const char* nuova :
                 {"New game (while the computer plays)", "New game (during the deal)",
                  "New game (during the player's move)", "click on the score sheet (while the computer plays)"})
                QVERIFY2(r.disturbi.count(nuova), nuova);
            QVERIFY(r.dialoghi.count("closed with Escape"));
            QVERIFY(r.dialoghi.count("closed by the close box"));
        }
    }

    // The same seed plays the very same games: a failure found once can be
    // played again.
    void stesso_seme_stesse_partite()
    {
        simulazione::Opzioni o;
        o.mani = 40;
        o.seme = 77;
        o.silenzioso = true;
        simulazione::Rapporto a = simulazione::simula(o);
        simulazione::Rapporto b = simulazione::simula(o);
        a.secondi = b.secondi = 0;
        QCOMPARE(QString::fromStdString(b.testo()), QString::fromStdString(a.testo()));
    }
};

QTEST_MAIN(TestSimulazione)
#include "tst_simulazione.moc"
