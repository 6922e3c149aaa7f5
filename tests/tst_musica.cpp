// The background music: the "Music" menu's three modes driven through the
// menu and through the player's real completions, the player's notification
// codes, and the ten songs shipped with the game rendered offline.
#include "aiuto/posizione.h"
#include "platform/mmc.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <fluidsynth.h>

#include <cmath>
#include <map>
#include <set>

namespace {

const char* titoli[] = {"Chill1", "Champion", "Champs", "Easycity", "inds_01",
                        "Humanoid", "Iepact", "Lastday", "Brezza", "Sevilana"};

// The songs play on the player's own clock this many times faster than real
// time, so that the short songs below end within a fraction of a second.
constexpr double velocita = 20;

// A Standard MIDI File of one note lasting `ms` milliseconds at 120 bpm.
QByteArray canzone_breve(int ms, int nota)
{
    auto u32 = [](quint32 v) {
        const char b[] = {char(v >> 24), char(v >> 16), char(v >> 8), char(v)};
        return QByteArray(b, 4);
    };
    auto variabile = [](quint32 v) {
        QByteArray b(1, char(v & 0x7f));
        while (v >>= 7) b.prepend(char(0x80 | (v & 0x7f)));
        return b;
    };
    const quint32 tick = quint32(ms * 480 / 500);
    QByteArray traccia;
    traccia += QByteArray::fromHex("00ff510307a120");  // 120 bpm
    traccia += QByteArray::fromHex("00c000");
    traccia += QByteArray::fromHex("0090") + char(nota) + char(100);
    traccia += variabile(tick) + QByteArray::fromHex("80") + char(nota) + char(0);
    traccia += QByteArray::fromHex("00ff2f00");
    return QByteArray("MThd") + u32(6) + QByteArray::fromHex("0000" "0001" "01e0") + QByteArray("MTrk") +
           u32(quint32(traccia.size())) + traccia;
}

QStringList coda(const QStringList& l, int n) { return l.mid(std::max<qsizetype>(0, l.size() - n)); }

}  // namespace

class TestMusica : public QObject {
    Q_OBJECT

    QTemporaryDir cartella_;  // the program folder of the short songs
    QString musica_;

    FrmTV& f() { return frmTV(); }

    // The songs checked in the menu, as their indices.
    QList<int> spuntate()
    {
        QList<int> v;
        for (int i = 1; i <= FrmTV::numero_canzoni; ++i)
            if (f().canzoni(i) && f().canzoni(i)->isChecked()) v << i;
        return v;
    }

    QString file_canzone(int i, const char* estensione)
    {
        return cartella_programma() + QStringLiteral("/music/") + titoli[i - 1] + estensione;
    }

    // Waits for the playing song to end and for the menu's answer to it.
    bool attendi_fine(QSignalSpy& spia)
    {
        for (int attese = 0; attese < 100; ++attese) {
            for (const auto& segnale : spia)
                if (segnale.at(0).toInt() == MMControl::mciSuccessful) return true;
            spia.wait(100);
        }
        return false;
    }

    static bool arrivato(const QSignalSpy& spia, int codice)
    {
        for (const auto& segnale : spia)
            if (segnale.at(0).toInt() == codice) return true;
        return false;
    }

private slots:
    void initTestCase()
    {
        MMControl::prova_orologio(velocita);
        prova::finestra();
        QVERIFY(cartella_.isValid());
        // Ten short songs with the menu's names; the installed files answer
        // to any case, so these do too.
        QVERIFY(QDir(cartella_.path()).mkpath(QStringLiteral("music")));
        musica_ = cartella_.path() + QStringLiteral("/music/");
        for (int i = 1; i <= 10; ++i) {
            QFile file(musica_ + titoli[i - 1] + QStringLiteral(".mid"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(canzone_breve(400 + 20 * i, 59 + i));
        }
    }

    void init()
    {
        prova::finestra();
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        // As at start-up: Brezza alone, checked.
        f().Form_Load();
        imposta_cartella_programma(cartella_.path());
        f().MMC1->registro.clear();
    }

    // ------------------------------------------------------------ start-up

    void all_avvio_suona_brezza()
    {
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        f().Form_Load();
        // "brezza.mid" finds the installed Brezza.mid.
        QCOMPARE(f().MMC1->Mode(), int(MMControl::mciModePlay));
        QVERIFY(f().MMC1->Length() > 60000);
        QCOMPARE(spuntate(), QList<int>{9});
    }

    // ------------------------------------------------------------ one song

    void scelta_dal_menu_data()
    {
        QTest::addColumn<int>("indice");
        for (int i = 1; i <= 10; ++i) QTest::newRow(titoli[i - 1]) << i;
    }
    void scelta_dal_menu()
    {
        QFETCH(int, indice);
        f().all->trigger();
        f().canzoni(indice)->trigger();
        QCOMPARE(spuntate(), QList<int>{indice});
        QVERIFY(!f().nomusic->isChecked());
        QVERIFY(!f().all->isChecked());
        QCOMPARE(long(f().canzone_corrente), 0L);
        QCOMPARE(coda(f().MMC1->registro, 3),
                 (QStringList{"close", "open " + file_canzone(indice, ".MID"), "play"}));
        QCOMPARE(f().MMC1->Mode(), int(MMControl::mciModePlay));
    }

    void la_canzone_finita_riparte_da_capo()
    {
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().canzoni(3)->trigger();
        QVERIFY(attendi_fine(spia));
        QCOMPARE(coda(f().MMC1->registro, 4),
                 (QStringList{"close", "open " + file_canzone(3, ".MID"), "play", "play from 0"}));
        QCOMPARE(f().MMC1->Mode(), int(MMControl::mciModePlay));
        QCOMPARE(spuntate(), QList<int>{3});
        // And again at its next end: the same song for as long as it is chosen.
        spia.clear();
        QVERIFY(attendi_fine(spia));
        QCOMPARE(f().MMC1->registro.last(), QStringLiteral("play from 0"));
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
        QTRY_VERIFY(arrivato(spia, MMControl::mciAborted));
        QVERIFY(!arrivato(spia, MMControl::mciSuccessful));
    }

    // ------------------------------------------------------------ in turn

    void in_sequenza_si_parte_dalla_prima()
    {
        f().canzoni(5)->trigger();
        f().all->trigger();
        QVERIFY(f().all->isChecked());
        QVERIFY(!f().nomusic->isChecked());
        QCOMPARE(spuntate(), QList<int>{1});
        QCOMPARE(long(f().canzone_corrente), 1L);
        QCOMPARE(coda(f().MMC1->registro, 3), (QStringList{"close", "open " + file_canzone(1, ".mid"), "play"}));
    }

    void in_sequenza_subito_dopo_l_avvio()
    {
        // Brezza's mark goes with step 1; the last song's is removed again harmlessly.
        QCOMPARE(spuntate(), QList<int>{9});
        f().all->trigger();
        QCOMPARE(spuntate(), QList<int>{1});
        QCOMPARE(f().MMC1->Mode(), int(MMControl::mciModePlay));
    }

    void in_sequenza_la_fine_porta_alla_seguente()
    {
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().all->trigger();
        QVERIFY(attendi_fine(spia));
        QCOMPARE(spuntate(), QList<int>{2});
        QCOMPARE(long(f().canzone_corrente), 2L);
        QCOMPARE(coda(f().MMC1->registro, 3), (QStringList{"close", "open " + file_canzone(2, ".mid"), "play"}));
        QVERIFY(f().all->isChecked());
    }

    void dopo_la_decima_torna_la_prima()
    {
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().canzone_corrente = 9;
        f().all->trigger();
        QCOMPARE(spuntate(), QList<int>{10});
        QVERIFY(attendi_fine(spia));
        QCOMPARE(spuntate(), QList<int>{1});
        QCOMPARE(long(f().canzone_corrente), 1L);
        QCOMPARE(f().MMC1->registro.filter("open").last(), "open " + file_canzone(1, ".mid"));
    }

    void in_sequenza_due_volte_avanza()
    {
        f().all->trigger();
        f().all->trigger();
        QCOMPARE(spuntate(), QList<int>{2});
        QCOMPARE(long(f().canzone_corrente), 2L);
        QVERIFY(f().all->isChecked());
    }

    void le_canzoni_si_contano_dal_menu()
    {
        // With the menu one song shorter, the sequence turns after the ninth.
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        QAction* decima = f().canzoni(10);
        f().canzoni(10) = nullptr;
        f().canzone_corrente = 8;
        f().all->trigger();
        QCOMPARE(spuntate(), QList<int>{9});
        const bool finita = attendi_fine(spia);
        const QList<int> dopo = spuntate();
        f().canzoni(10) = decima;
        QVERIFY(finita);
        QCOMPARE(dopo, QList<int>{1});
    }

    void scelta_di_una_canzone_esce_dalla_sequenza()
    {
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().all->trigger();
        f().canzoni(7)->trigger();
        QVERIFY(!f().all->isChecked());
        QCOMPARE(long(f().canzone_corrente), 0L);
        QVERIFY(attendi_fine(spia));
        QCOMPARE(spuntate(), QList<int>{7});
        QCOMPARE(f().MMC1->registro.last(), QStringLiteral("play from 0"));
    }

    // ------------------------------------------------------------ silence

    void nessuna_musica()
    {
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().all->trigger();
        f().nomusic->trigger();
        QVERIFY(f().nomusic->isChecked());
        QVERIFY(!f().all->isChecked());
        QCOMPARE(spuntate(), QList<int>{});
        QCOMPARE(long(f().canzone_corrente), 0L);
        QCOMPARE(f().MMC1->registro.last(), QStringLiteral("close"));
        QCOMPARE(f().MMC1->Mode(), int(MMControl::mciModeNotOpen));
        // The player is closed: no completion comes and nothing restarts.
        const int comandi = int(f().MMC1->registro.size());
        QTest::qWait(1000);
        QVERIFY(!arrivato(spia, MMControl::mciSuccessful));
        QCOMPARE(int(f().MMC1->registro.size()), comandi);
    }

    void canzone_che_manca()
    {
        QFile::rename(musica_ + "Champs.mid", musica_ + "Champs.assente");
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().canzoni(3)->trigger();
        const int modo = f().MMC1->Mode();
        QTest::qWait(1000);
        const int comandi = int(f().MMC1->registro.size());
        QFile::rename(musica_ + "Champs.assente", musica_ + "Champs.mid");
        // The music simply stops; the mark shows the song chosen.
        QCOMPARE(modo, int(MMControl::mciModeNotOpen));
        QVERIFY(!arrivato(spia, MMControl::mciSuccessful));
        QCOMPARE(comandi, 3);
        QCOMPARE(spuntate(), QList<int>{3});
    }

    void un_file_che_non_e_una_canzone()
    {
        QFile file(musica_ + "Iepact.mid");
        QVERIFY(file.rename(musica_ + "Iepact.buono"));
        QFile falso(musica_ + "Iepact.mid");
        QVERIFY(falso.open(QIODevice::WriteOnly));
        falso.write("MThd but not a song");
        falso.close();
        QSignalSpy spia(f().MMC1, &MMControl::Done);
        f().canzoni(7)->trigger();
        QTest::qWait(500);
        const int modo = f().MMC1->Mode();
        QFile::remove(musica_ + "Iepact.mid");
        QFile::rename(musica_ + "Iepact.buono", musica_ + "Iepact.mid");
        QCOMPARE(modo, int(MMControl::mciModeNotOpen));
        QVERIFY(!arrivato(spia, MMControl::mciSuccessful));
    }

    // ------------------------------------------------------------ codes

    void codici_diversi_da_uno_non_cambiano_nulla_data()
    {
        QTest::addColumn<QString>("modo");
        QTest::addColumn<int>("codice");
        for (const char* modo : {"single", "sequential", "none"})
            for (int codice : {0, 2, 4, 8}) QTest::addRow("%s, code %d", modo, codice) << QString(modo) << codice;
    }
    void codici_diversi_da_uno_non_cambiano_nulla()
    {
        QFETCH(QString, modo);
        QFETCH(int, codice);
        if (modo == "sequential") f().all->trigger();
        if (modo == "none") f().nomusic->trigger();
        const QList<int> segni = spuntate();
        const bool tutte = f().all->isChecked(), nessuna = f().nomusic->isChecked();
        const long corrente = f().canzone_corrente;
        const QStringList registro = f().MMC1->registro;
        f().MMC1_Done(codice);
        QCOMPARE(spuntate(), segni);
        QCOMPARE(f().all->isChecked(), tutte);
        QCOMPARE(f().nomusic->isChecked(), nessuna);
        QCOMPARE(long(f().canzone_corrente), corrente);
        QCOMPARE(f().MMC1->registro, registro);
    }

    // The player itself: which code each way a play can finish gives.
    void codici_del_lettore_data()
    {
        QTest::addColumn<QString>("poi");
        QTest::addColumn<int>("codice");
        QTest::newRow("played to its end") << "" << int(MMControl::mciSuccessful);
        QTest::newRow("play over a play") << "play" << int(MMControl::mciSuperseded);
        QTest::newRow("closed while playing") << "close" << int(MMControl::mciAborted);
        QTest::newRow("opened again while playing") << "open" << int(MMControl::mciAborted);
    }
    void codici_del_lettore()
    {
        QFETCH(QString, poi);
        QFETCH(int, codice);
        // Alone on the synthesizer: a song ends once nothing of it sounds.
        f().MMC1->Command("close");
        MMControl lettore;
        QSignalSpy spia(&lettore, &MMControl::Done);
        lettore.FileName = musica_ + "chill1.MID";
        lettore.Command("Open");
        lettore.Command("Play");
        QCOMPARE(lettore.Mode(), int(MMControl::mciModePlay));
        if (!poi.isEmpty()) lettore.Command(poi);
        QTRY_VERIFY_WITH_TIMEOUT(spia.size() >= 1, 5000);
        QCOMPARE(spia.at(0).at(0).toInt(), codice);
        // A closed player says nothing more.
        QTest::qWait(300);
        if (poi == "close" || poi == "open") QCOMPARE(spia.size(), 1);
    }

    void inizio_dato_con_from()
    {
        MMControl lettore;
        lettore.FileName = QStringLiteral(TAVOLATA_SORGENTE "/media/music/Lastday.mid");
        lettore.Command("open");
        lettore.From = 30000;
        lettore.Command("play");
        QCOMPARE(lettore.registro.last(), QStringLiteral("play from 30000"));
        // The start position is for that one play only.
        QCOMPARE(lettore.From, -1L);
        // It goes on from there: a tenth of a second later the song, at
        // twenty times its speed, is two seconds further on.
        QVERIFY(lettore.Position() >= 30000);
        QTest::qWait(100);
        QVERIFY2(lettore.Position() > 31000 && lettore.Position() < 40000, qPrintable(QString::number(lettore.Position())));
        lettore.Command("close");
        QCOMPARE(lettore.Position(), 0L);
    }

    // ------------------------------------------------------------ the songs

    void le_canzoni_della_raccolta_data()
    {
        QTest::addColumn<QString>("titolo");
        for (const char* t : titoli) QTest::newRow(t) << QString(t);
    }
    void le_canzoni_della_raccolta()
    {
        QFETCH(QString, titolo);
        const QByteArray file = QByteArray(TAVOLATA_SORGENTE "/media/music/") + titolo.toLatin1() + ".mid";
        QVERIFY2(fluid_is_midifile(file.constData()), file.constData());
        f().MMC1->Command("close");

        // Rendered as fast as the machine goes, not in real time, and at a low
        // rate: loudness and length are all that is measured.
        constexpr long frequenza = 11025;
        fluid_settings_t* impostazioni = new_fluid_settings();
        fluid_settings_setnum(impostazioni, "synth.sample-rate", frequenza);
        fluid_settings_setint(impostazioni, "synth.reverb.active", 0);
        fluid_settings_setint(impostazioni, "synth.chorus.active", 0);
        fluid_synth_t* synth = new_fluid_synth(impostazioni);
        QVERIFY(fluid_synth_sfload(synth, "/usr/share/sounds/sf2/default-GM.sf2", 1) != FLUID_FAILED);
        fluid_player_t* lettore = new_fluid_player(synth);

        // What the song asks of the synthesizer: programs and notes by channel.
        struct Ascolto {
            fluid_synth_t* synth;
            std::map<int, int> programmi;
            std::map<int, int> note;
        } ascolto{synth, {}, {}};
        fluid_player_set_playback_callback(
            lettore,
            [](void* dati, fluid_midi_event_t* e) {
                auto* a = static_cast<Ascolto*>(dati);
                const int canale = fluid_midi_event_get_channel(e);
                if (fluid_midi_event_get_type(e) == 0xc0) a->programmi[canale] = fluid_midi_event_get_program(e);
                if (fluid_midi_event_get_type(e) == 0x90 && fluid_midi_event_get_velocity(e) > 0) ++a->note[canale];
                return fluid_synth_handle_midi_event(a->synth, e);
            },
            &ascolto);
        fluid_player_add(lettore, file.constData());
        fluid_player_play(lettore);

        constexpr int blocco = 1024;
        std::vector<float> sinistra(blocco), destra(blocco);
        double energia = 0;
        long fotogrammi = 0, silenzio = 0, silenzio_massimo = 0, ultimo_suono = 0;
        while (fluid_player_get_status(lettore) == FLUID_PLAYER_PLAYING && fotogrammi < frequenza * 240) {
            fluid_synth_write_float(synth, blocco, sinistra.data(), 0, 1, destra.data(), 0, 1);
            double e = 0;
            for (int i = 0; i < blocco; ++i) e += double(sinistra[i]) * sinistra[i] + double(destra[i]) * destra[i];
            energia += e;
            fotogrammi += blocco;
            if (std::sqrt(e / (2 * blocco)) < 0.002) {
                silenzio += blocco;
            } else {
                // Only silence between sounds counts, not the end.
                if (ultimo_suono > 0) silenzio_massimo = std::max(silenzio_massimo, silenzio);
                silenzio = 0;
                ultimo_suono = fotogrammi;
            }
        }
        delete_fluid_player(lettore);
        delete_fluid_synth(synth);
        delete_fluid_settings(impostazioni);

        const double secondi = double(ultimo_suono) / frequenza;
        const double rms = std::sqrt(energia / (2.0 * std::max(1L, fotogrammi)));
        std::set<int> melodici;
        QStringList strumenti;
        for (auto [canale, n] : ascolto.note) {
            if (canale != 9 && n > 0) melodici.insert(canale);
            strumenti << QStringLiteral("ch%1:p%2 (%3 notes)")
                             .arg(canale + 1)
                             .arg(ascolto.programmi.count(canale) ? ascolto.programmi[canale] : -1)
                             .arg(n);
        }
        qInfo("%s: %.0f s, rms %.3f, longest silence %.1f s, %s", qPrintable(titolo), secondi, rms,
              double(silenzio_massimo) / frequenza, qPrintable(strumenti.join(", ")));

        QVERIFY2(secondi >= 60 && secondi <= 180, qPrintable(QString::number(secondi)));
        QVERIFY(rms > 0.01);
        // Music all the way through: the only silence is the end of the last chord.
        QVERIFY(double(silenzio_massimo) / frequenza < 2.0);
        QVERIFY2(ascolto.note[9] > 50, "drums on channel 10");
        QVERIFY2(melodici.size() >= 3, "bass, harmony and melody");
    }
};

QTEST_MAIN(TestMusica)
#include "tst_musica.moc"
