// SPDX-License-Identifier: GPL-3.0-or-later
// The background music: the "Music" menu's three modes driven through the
// menu and through the player's real completions, and the player's own
// notification codes and song lengths.
#include "aiuto/posizione.h"
#include "platform/mmc.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QAction>
#include <QtTest>

namespace {

// The songs play on the player's own clock this many times faster than real
// time: the short songs below, which end a moment of their own time after
// their last note, are over within a few tens of milliseconds.
constexpr double velocita = 100;

// A Standard MIDI File of one note lasting `ms` milliseconds at 120 bpm and,
// when `poi_ms` is given, a second note lasting that long at 60 bpm.
QByteArray canzone_breve(int ms, int nota, int poi_ms)
{
    auto suona = [nota](int tick) {
        return QByteArray::fromHex("0090") + char(nota) + char(100) + char(0x80 | tick >> 7) + char(tick & 0x7f) +
               char(0x80) + char(nota) + char(0);
    };
    // 120 bpm, a square lead (a piano's long release would hold the song's end back).
    QByteArray traccia = QByteArray::fromHex("00ff510307a12000c050") + suona(ms * 480 / 500);
    if (poi_ms > 0) traccia += QByteArray::fromHex("00ff51030f4240") + suona(poi_ms * 480 / 1000);
    traccia += QByteArray::fromHex("00ff2f00");
    // "MThd", one track, 480 ticks a quarter note; "MTrk" and the track's length.
    return QByteArray::fromHex("4d546864000000060000000101e04d54726b000000") + char(traccia.size()) + traccia;
}

// Waits up to `ms` for a Done with `codice`.
bool arrivato(QSignalSpy& spia, int codice, int ms = 0)
{
    QElapsedTimer orologio;
    orologio.start();
    for (;;) {
        for (const auto& segnale : spia)
            if (segnale.at(0).toInt() == codice) return true;
        if (orologio.elapsed() >= ms) return false;
        spia.wait(10);
    }
}

}  // namespace

class TestMusica : public QObject {
    Q_OBJECT

    QTemporaryDir cartella_;  // the program folder of the short songs
    int durata_[11] = {};  // the written length of each, by menu index

    FrmTV& f() { return frmTV(); }

    // The menu's marks as the steps below choose them: "S 2" (sequential
    // mode, song 2), "3", "N" (no music).
    QString menu()
    {
        QStringList v;
        if (f().all->isChecked()) v << "S";
        if (f().nomusic->isChecked()) v << "N";
        for (int i = 1; i <= FrmTV::numero_canzoni; ++i)
            if (f().canzoni(i) && f().canzoni(i)->isChecked()) v << QString::number(i);
        return v.join(' ');
    }

    // The player's last commands, each song named by its index in the menu:
    // "close | open 3.MID | play".
    QString comandi(qsizetype n)
    {
        const QStringList& registro = f().MMC1->registro;
        QString v = registro.mid(registro.size() - n).join(" | ").remove(cartella_.path() + "/music/");
        for (int i = 1; i <= 10; ++i)
            if (QAction* voce = f().canzoni(i))
                v.replace("open " + voce->text() + ".", QStringLiteral("open %1.").arg(i), Qt::CaseInsensitive);
        return v;
    }

private slots:
    void initTestCase()
    {
        MMControl::prova_orologio(velocita);
        prova::finestra();
        // Ten short songs with the menu's names; the last one changes tempo
        // halfway. The game names its files in three cases, so these answer
        // to any case.
        QVERIFY(QDir(cartella_.path()).mkpath(QStringLiteral("music")));
        for (int i = 1; i <= 10; ++i) {
            QFile file(cartella_.path() + "/music/" + f().canzoni(i)->text() + ".mid");
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(canzone_breve(100 + 10 * i, 59 + i, i == 10 ? 200 : 0));
            durata_[i] = 100 + 10 * i + (i == 10 ? 200 : 0);
        }
    }

    void init()
    {
        imposta_cartella_programma(cartella_.path());
        f().Form_Load();
    }

    // Steps: a song's index, Sequential mode, No music, the song's End, Wait a while.
    void il_menu_musica_data()
    {
        QTest::addColumn<QString>("passi");
        QTest::addColumn<QString>("segni");
        QTest::addColumn<QString>("registro");
        // clang-format off
        QTest::newRow("at start-up Brezza plays alone") << "" << "9" << "close | open 9.mid | play";
        // clang-format on
        for (int i = 1; i <= 10; ++i)
            // clang-format off
            QTest::addRow("song %d chosen in sequential mode plays alone", i)
                << QStringLiteral("S %1").arg(i) << QString::number(i)
                << QStringLiteral("close | open %1.MID | play").arg(i);
        QTest::newRow("a song starts again from its beginning at each end")
            << "3 E E" << "3" << "close | open 3.MID | play | play from 0 | play from 0";
        QTest::newRow("sequential mode starts at song 1, not after the chosen one")
            << "5 S" << "S 1" << "close | open 1.mid | play";
        QTest::newRow("sequential mode right after start-up starts at song 1")
            << "S" << "S 1" << "close | open 1.mid | play";
        QTest::newRow("the end of a song starts the next") << "S E" << "S 2" << "close | open 2.mid | play";
        QTest::newRow("song 10 follows song 9") << "S E E E E E E E E E" << "S 10" << "close | open 10.mid | play";
        QTest::newRow("song 1 follows song 10") << "S E E E E E E E E E E" << "S 1" << "close | open 1.mid | play";
        QTest::newRow("with nine songs in the menu, song 1 follows song 9")
            << "-10 S E E E E E E E E E" << "S 1" << "close | open 1.mid | play";
        QTest::newRow("sequential mode chosen again moves on") << "S S" << "S 2" << "close | open 2.mid | play";
        QTest::newRow("a song that is no song is passed over in sequence")
            << "G2 S E E" << "S 3" << "close | open 3.mid | play";
        QTest::newRow("a song that is no song comes round once a second")
            << "G2 2 E" << "2" << "open 2.MID | play | play from 0";
        QTest::newRow("no music closes the player and nothing restarts")
            << "S N W" << "N" << "open 1.mid | play | close";
        // clang-format on
    }
    void il_menu_musica()
    {
        QFETCH(QString, passi);
        QFETCH(QString, segni);
        QFETCH(QString, registro);
        QAction* decima = f().canzoni(10);
        const QString seconda = cartella_.path() + "/music/" + f().canzoni(2)->text() + ".mid";
        auto rimetti = qScopeGuard([&] {
            f().canzoni(10) = decima;
            QFile file(seconda);
            if (file.open(QIODevice::WriteOnly)) file.write(canzone_breve(120, 61, 0));
        });
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        for (const QString& passo : passi.split(' ', Qt::SkipEmptyParts)) {
            spia.clear();
            if (passo == "-10")
                f().canzoni(10) = nullptr;
            else if (passo == "G2")
                QVERIFY(QFile(seconda).open(QIODevice::WriteOnly | QIODevice::Truncate));
            else if (passo == "S")
                f().all->trigger();
            else if (passo == "N")
                f().nomusic->trigger();
            else if (passo == "E")
                QVERIFY(arrivato(spia, MMControl::mciSuccessful, 5000));
            else if (passo == "W")
                QTest::qWait(200);
            else
                f().canzoni(passo.toInt())->trigger();
        }
        // Only a song played to its end moves the menu on.
        const qsizetype comandi_prima = f().MMC1->registro.size();
        for (int codice : {0, 2, 4, 8}) f().MMC1_Done(codice);
        QCOMPARE(f().MMC1->registro.size(), comandi_prima);

        QCOMPARE(menu(), segni);
        QCOMPARE(comandi(registro.count('|') + 1), registro);
        const bool suona = segni != "N";
        QCOMPARE(f().MMC1->Mode(), int(suona ? MMControl::mciModePlay : MMControl::mciModeNotOpen));
        // The song's length follows its tempo map, changes of tempo included.
        // A song that is no song lasts a second, so that played over and over it never spins.
        const int durata = passi.startsWith("G2 2") ? 1000 : durata_[segni.split(' ').last().toInt()];
        if (suona) QVERIFY(std::abs(f().MMC1->Length() - durata) <= 2);
        QCOMPARE(long(f().canzone_corrente), segni.startsWith('S') ? segni.mid(2).toLong() : 0L);
    }

    void la_stessa_canzone_di_nuovo_ricomincia()
    {
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        f().canzoni(4)->trigger();
        QTRY_VERIFY(f().MMC1->Position() > 2000);
        f().canzoni(4)->trigger();
        QVERIFY(f().MMC1->Position() < 1000);
        QCOMPARE(f().MMC1->Mode(), int(MMControl::mciModePlay));
        // The interrupted play reports itself aborted, never completed.
        QVERIFY(arrivato(spia, MMControl::mciAborted, 5000));
        QVERIFY(!arrivato(spia, MMControl::mciSuccessful));
        f().MMC1->Command("close");
    }

    // The player itself: Done 1 only for a song played to its end, 2 for a
    // play overtaken by another, 4 for a play stopped by close or open, and
    // nothing more from a closed player.
    void codici_del_lettore()
    {
        f().MMC1->Command("close");
        const std::pair<const char*, int> casi[] = {{"", 1}, {"play", 2}, {"close", 4}, {"open", 4}};
        for (const auto& [poi, codice] : casi) {
            MMControl lettore;
            QSignalSpy spia(&lettore, &MMControl::Done);
            lettore.FileName = cartella_.path() + "/music/chill1.MID";
            lettore.Command("Open");
            lettore.Command("Play");
            if (*poi) lettore.Command(poi);
            QTRY_VERIFY(!spia.isEmpty());
            QTest::qWait(50);
            QCOMPARE(spia.at(0).at(0).toInt(), codice);
            if (codice == 4) QCOMPARE(spia.size(), 1);
        }
    }
};

QTEST_MAIN(TestMusica)
#include "tst_musica.moc"
