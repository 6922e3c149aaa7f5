// The wave player and the game's two sounds: what is requested, what a
// missing or broken file plays instead, that nothing waits without a sound
// device, and, on a private sound server, that the sounds and the songs are
// really heard.
#include "platform/lettore_wave.h"
#include "platform/mmc.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <sndfile.h>

#include <csignal>
#include <cmath>

namespace {

const QString media = QStringLiteral(TAVOLATA_SORGENTE "/media");

// Writes a mono or stereo tone with libsndfile in the given format.
bool scrivi_tono(const QString& percorso, double secondi, int frequenza, int canali, int formato)
{
    SF_INFO info{};
    info.samplerate = frequenza;
    info.channels = canali;
    info.format = formato;
    SNDFILE* f = sf_open(QFile::encodeName(percorso).constData(), SFM_WRITE, &info);
    if (!f) return false;
    std::vector<float> v(std::size_t(secondi * frequenza) * std::size_t(canali));
    for (std::size_t i = 0; i < v.size(); ++i)
        v[i] = float(0.5 * std::sin(2 * M_PI * 440 * double(i / std::size_t(canali)) / frequenza));
    sf_writef_float(f, v.data(), sf_count_t(v.size() / std::size_t(canali)));
    sf_close(f);
    return true;
}

struct Misura {
    double picco = 0;
    double secondi_udibili = 0;  // time the recording is above a whisper
    double rms = 0;
};

Misura misura(const QByteArray& s16)
{
    const auto* s = reinterpret_cast<const qint16*>(s16.constData());
    const qsizetype n = s16.size() / 2;
    Misura m;
    double energia = 0;
    constexpr int finestra = 441;  // 10 ms
    for (qsizetype i = 0; i < n; i += finestra) {
        double e = 0;
        for (qsizetype k = i; k < std::min(n, i + finestra); ++k) {
            const double x = s[k] / 32768.0;
            e += x * x;
            m.picco = std::max(m.picco, std::abs(x));
        }
        energia += e;
        if (std::sqrt(e / finestra) > 0.003) m.secondi_udibili += 0.01;
    }
    m.rms = n ? std::sqrt(energia / double(n)) : 0;
    return m;
}

}  // namespace

class TestSuoni : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // This process never reaches a sound server, whatever the machine has:
        // everything below must work without one. The recorded checks at the
        // end run in child processes on a private server.
        if (qEnvironmentVariableIsEmpty("TAVOLATA_SUONO_FIGLIO"))
            qputenv("PULSE_SERVER", "unix:/nonexistent/tavolata-no-server");
        imposta_cartella_programma(media);
        piattaforma::prova::azzera_suoni();
    }

    void le_richieste_restano_nell_ordine()
    {
        piattaforma::prova::azzera_suoni();
        suona_carta();
        suona_errore();
        suona_carta();
        QCOMPARE(piattaforma::prova::suoni_richiesti(),
                 (QStringList{media + "/carta.wav", media + "/errore.wav", media + "/carta.wav"}));
    }

    void i_suoni_del_gioco_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("da_ms");
        QTest::addColumn<int>("a_ms");
        QTest::newRow("card") << "carta.wav" << 80 << 120;
        QTest::newRow("error") << "errore.wav" << 200 << 300;
    }
    void i_suoni_del_gioco()
    {
        QFETCH(QString, file);
        QFETCH(int, da_ms);
        QFETCH(int, a_ms);
        SF_INFO info{};
        SNDFILE* f = sf_open(QFile::encodeName(media + "/" + file).constData(), SFM_READ, &info);
        QVERIFY(f);
        std::vector<float> v(std::size_t(info.frames));
        sf_readf_float(f, v.data(), info.frames);
        sf_close(f);
        QCOMPARE(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        QCOMPARE(info.samplerate, 44100);
        QCOMPARE(info.channels, 1);
        const long ms = long(info.frames * 1000 / info.samplerate);
        QVERIFY2(ms >= da_ms && ms <= a_ms, qPrintable(QString::number(ms)));
        float picco = 0;
        for (float x : v) picco = std::max(picco, std::abs(x));
        QVERIFY(picco > 0.2f && picco < 0.99f);
        // It starts at once and ends in silence, without a click.
        QVERIFY(std::abs(v.back()) < 0.01f);
        float inizio = 0;
        for (std::size_t i = 0; i < 441; ++i) inizio = std::max(inizio, std::abs(v[i]));
        QVERIFY(inizio > 0.05f);

        piattaforma::PlaySound(media + "/" + file);
        const auto s = piattaforma::prova::ultimo_suono();
        QVERIFY(!s.predefinito);
        QCOMPARE(s.durata_ms, ms);
    }

    void file_che_non_si_possono_suonare_data()
    {
        QTest::addColumn<QByteArray>("contenuto");
        QTest::addColumn<bool>("predefinito");
        QTest::newRow("missing") << QByteArray() << true;
        QTest::newRow("empty") << QByteArray("") << true;
        QTest::newRow("text") << QByteArray("not a sound at all\n") << true;
        QByteArray vero;
        {
            QFile f(media + "/carta.wav");
            f.open(QIODevice::ReadOnly);
            vero = f.readAll();
        }
        QTest::newRow("header cut short") << vero.left(30) << true;
        QTest::newRow("header without samples") << vero.left(44) << true;
        QTest::newRow("whole") << vero << false;
    }
    void file_che_non_si_possono_suonare()
    {
        QFETCH(QByteArray, contenuto);
        QFETCH(bool, predefinito);
        QTemporaryDir cartella;
        const QString percorso = cartella.filePath("suono.wav");
        if (!contenuto.isNull()) {
            QFile f(percorso);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(contenuto);
        }
        piattaforma::prova::azzera_suoni();
        piattaforma::PlaySound(percorso);
        const auto s = piattaforma::prova::ultimo_suono();
        QCOMPARE(piattaforma::prova::suoni_richiesti(), QStringList{percorso});
        QCOMPARE(s.predefinito, predefinito);
        // The default sound is a real, short sound.
        QVERIFY(s.durata_ms > 50 && s.durata_ms < 500);
    }

    void altri_formati_di_wave_data()
    {
        QTest::addColumn<int>("frequenza");
        QTest::addColumn<int>("canali");
        QTest::addColumn<int>("formato");
        QTest::newRow("8-bit 22 kHz mono") << 22050 << 1 << int(SF_FORMAT_WAV | SF_FORMAT_PCM_U8);
        QTest::newRow("24-bit 48 kHz stereo") << 48000 << 2 << int(SF_FORMAT_WAV | SF_FORMAT_PCM_24);
        QTest::newRow("float 96 kHz stereo") << 96000 << 2 << int(SF_FORMAT_WAV | SF_FORMAT_FLOAT);
        QTest::newRow("IMA ADPCM 11 kHz mono") << 11025 << 1 << int(SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM);
    }
    void altri_formati_di_wave()
    {
        QFETCH(int, frequenza);
        QFETCH(int, canali);
        QFETCH(int, formato);
        QTemporaryDir cartella;
        const QString percorso = cartella.filePath("tono.wav");
        QVERIFY(scrivi_tono(percorso, 0.5, frequenza, canali, formato));
        piattaforma::PlaySound(percorso);
        const auto s = piattaforma::prova::ultimo_suono();
        QVERIFY(!s.predefinito);
        QVERIFY2(std::abs(s.durata_ms - 500) <= 10, qPrintable(QString::number(s.durata_ms)));
    }

    void senza_dispositivo_nulla_attende()
    {
        // Without a sound server nothing plays, and nothing waits either.
        QElapsedTimer orologio;
        orologio.start();
        for (int i = 0; i < 200; ++i) (i % 2 ? suona_carta : suona_errore)();
        QVERIFY(!piattaforma::prova::ultimo_suono().su_dispositivo);

        MMControl lettore;
        lettore.FileName = media + "/music/brezza.mid";
        lettore.Command("open");
        lettore.Command("play");
        QVERIFY2(orologio.elapsed() < 3000, qPrintable(QString::number(orologio.elapsed())));
        QVERIFY(!MMControl::suona_su_dispositivo());

        // The window's events keep flowing, and the song keeps its time.
        bool scattato = false;
        QTimer::singleShot(50, this, [&] { scattato = true; });
        QTRY_VERIFY_WITH_TIMEOUT(scattato, 1000);
        QTRY_VERIFY_WITH_TIMEOUT(lettore.Position() >= 500, 3000);
        QCOMPARE(lettore.Mode(), int(MMControl::mciModePlay));
        lettore.Command("close");
    }

    // ------------------------------------------------------------ heard

    void sul_server_si_sente_data()
    {
        QTest::addColumn<QString>("prova");
        QTest::addColumn<double>("da_secondi");
        QTest::addColumn<double>("a_secondi");
        QTest::addColumn<double>("picco");
        // The recording of a private server's output misses the first few
        // tens of milliseconds of each new stream: the short sounds are
        // measured by what is left of them.
        QTest::newRow("card sound") << "carta" << 0.02 << 0.4 << 0.005;
        QTest::newRow("a new sound cuts the old one") << "sostituzione" << 0.1 << 0.9 << 0.1;
        QTest::newRow("missing file: default sound") << "mancante" << 0.05 << 0.5 << 0.02;
        QTest::newRow("a song") << "canzone" << 2.0 << 10.0 << 0.05;
    }
    void sul_server_si_sente()
    {
        QFETCH(QString, prova);
        QFETCH(double, da_secondi);
        QFETCH(double, a_secondi);
        QFETCH(double, picco);
        const QString pulseaudio = QStandardPaths::findExecutable("pulseaudio");
        const QString parec = QStandardPaths::findExecutable("parec");
        if (pulseaudio.isEmpty() || parec.isEmpty()) QSKIP("no pulseaudio and parec on this machine");

        QTemporaryDir casa;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("XDG_RUNTIME_DIR", casa.path());
        ambiente.insert("HOME", casa.path());
        ambiente.remove("PULSE_SERVER");

        // A private server whose only output records into nothing.
        QProcess server;
        server.setProcessEnvironment(ambiente);
        server.setProcessChannelMode(QProcess::MergedChannels);
        server.start(pulseaudio, {"--daemonize=no", "-n", "--exit-idle-time=-1", "--disallow-exit",
                                  "--load=module-null-sink sink_name=tavolata", "--load=module-native-protocol-unix"});
        QVERIFY(server.waitForStarted(5000));
        auto ferma_server = qScopeGuard([&] {
            server.terminate();
            if (!server.waitForFinished(5000)) server.kill();
            server.waitForFinished(1000);
        });
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(casa.path() + "/pulse/native") ||
                                     server.state() == QProcess::NotRunning,
                                 10000);
        if (server.state() == QProcess::NotRunning)
            QSKIP(qPrintable("the sound server does not start here: " + server.readAll().left(300)));

        // Recorded into a file: a pipe left unread would stall the recording.
        const QString registrazione = casa.filePath("registrazione.raw");
        QProcess registratore;
        registratore.setProcessEnvironment(ambiente);
        registratore.start(parec, {"-d", "tavolata.monitor", "--format=s16le", "--rate=44100", "--channels=1",
                                   "--latency-msec=20", registrazione});
        QVERIFY(registratore.waitForStarted(5000));
        auto ferma_registratore = qScopeGuard([&] {
            if (registratore.state() == QProcess::NotRunning) return;
            registratore.kill();
            registratore.waitForFinished(1000);
        });
        // The recording is under way once a fifth of a second of it is there.
        for (int attese = 0; QFileInfo(registrazione).size() < 44100 * 2 / 5; ++attese) {
            if (attese == 100) QSKIP("the private sound server does not record here");
            QTest::qWait(100);
        }

        const QString lunga = casa.filePath("lunga.wav");
        QVERIFY(scrivi_tono(lunga, 1.5, 44100, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
        QProcess figlio;
        QProcessEnvironment ambiente_figlio = ambiente;
        ambiente_figlio.insert("TAVOLATA_SUONO_FIGLIO", prova);
        ambiente_figlio.insert("TAVOLATA_ONDA_LUNGA", lunga);
        ambiente_figlio.insert("QT_QPA_PLATFORM", "offscreen");
        figlio.setProcessEnvironment(ambiente_figlio);
        figlio.setProcessChannelMode(QProcess::MergedChannels);
        figlio.start(QCoreApplication::applicationFilePath(), {"suona_per_il_padre"});
        QVERIFY(figlio.waitForFinished(60000));
        const QByteArray detto = figlio.readAll();

        QTest::qWait(500);
        ::kill(pid_t(registratore.processId()), SIGINT);
        QVERIFY(registratore.waitForFinished(5000));
        QFile file(registrazione);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const Misura m = misura(file.readAll());
        qInfo("%s: peak %.3f, rms %.4f, heard for %.2f s", qPrintable(prova), m.picco, m.rms, m.secondi_udibili);

        QVERIFY2(figlio.exitStatus() == QProcess::NormalExit && figlio.exitCode() == 0, detto.constData());
        QVERIFY(m.picco > picco);
        QVERIFY2(m.secondi_udibili >= da_secondi && m.secondi_udibili <= a_secondi,
                 qPrintable(QString::number(m.secondi_udibili)));
    }

    // The child's side of the test above; skipped when run on its own.
    void suona_per_il_padre()
    {
        const QString prova = qEnvironmentVariable("TAVOLATA_SUONO_FIGLIO");
        if (prova.isEmpty()) QSKIP("runs only as the child of sul_server_si_sente");
        if (prova == "carta") {
            suona_carta();
            QVERIFY(piattaforma::prova::ultimo_suono().su_dispositivo);
            QTest::qWait(800);
        } else if (prova == "sostituzione") {
            piattaforma::PlaySound(qEnvironmentVariable("TAVOLATA_ONDA_LUNGA"));
            QTest::qWait(300);
            suona_carta();
            QTest::qWait(1800);
        } else if (prova == "mancante") {
            piattaforma::PlaySound(media + "/nessuno.wav");
            QVERIFY(piattaforma::prova::ultimo_suono().predefinito);
            QVERIFY(piattaforma::prova::ultimo_suono().su_dispositivo);
            QTest::qWait(800);
        } else if (prova == "canzone") {
            MMControl lettore;
            lettore.FileName = media + "/music/brezza.mid";
            lettore.Command("open");
            lettore.Command("play");
            QVERIFY(MMControl::suona_su_dispositivo());
            QCOMPARE(lettore.Mode(), int(MMControl::mciModePlay));
            QTest::qWait(4000);
            QVERIFY(lettore.Position() > 2500);
            lettore.Command("close");
        }
    }
};

QTEST_MAIN(TestSuoni)
#include "tst_suoni.moc"
