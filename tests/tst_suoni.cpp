// SPDX-License-Identifier: GPL-3.0-or-later
// The wave player and the game's two sounds: what a file plays and what a
// broken one plays instead, a sound file replaced between two plays, that
// nothing waits and nothing works without a sound server, and, on a private
// server, that the sounds and a song are really heard, that they are heard
// again after the server dies and comes back, and that the game lets its
// stream and its sound thread go once it is quiet.
#include "platform/lettore_wave.h"
#include "platform/mmc.h"
#include "platform/uscita_audio.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include <sndfile.h>

namespace {

const QString media = QStringLiteral(TAVOLATA_SORGENTE "/media/");
constexpr int pcm16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;

// A 440 Hz tone written by libsndfile in the given format.
QByteArray tono(int frequenza, int canali, int formato, double secondi = 0.5)
{
    QTemporaryDir cartella;
    QFile file(cartella.filePath("tono.wav"));
    SF_INFO info{0, frequenza, canali, formato, 0, 0};
    SNDFILE* f = sf_open(QFile::encodeName(file.fileName()).constData(), SFM_WRITE, &info);
    std::vector<float> v(std::size_t(secondi * frequenza) * std::size_t(canali));
    for (std::size_t i = 0; i < v.size(); ++i)
        v[i] = float(0.5 * std::sin(2 * M_PI * 440 * double(i / canali) / frequenza));
    sf_writef_float(f, v.data(), sf_count_t(v.size()) / canali);
    sf_close(f);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void scrivi(const QString& percorso, const QByteArray& dati, const QDateTime& data = QDateTime::currentDateTime())
{
    QFile f(percorso);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(dati) == dati.size());
    QVERIFY(f.setFileTime(data, QFileDevice::FileModificationTime));
}

}  // namespace

class TestSuoni : public QObject {
    Q_OBJECT

    QTemporaryDir cartella_;
    QElapsedTimer dall_inizio_;
    QTemporaryDir casa_;  // of the private sound server
    QProcess server_, registratore_;
    const QString pulseaudio_ = QStandardPaths::findExecutable("pulseaudio");
    const QString parec_ = QStandardPaths::findExecutable("parec");
    int registrazioni_ = 0;

    QProcessEnvironment ambiente_server()
    {
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("XDG_RUNTIME_DIR", casa_.path());
        ambiente.insert("HOME", casa_.path());
        ambiente.remove("PULSE_SERVER");
        return ambiente;
    }

    // Starts the private server, unless it runs, with its only output
    // recorded into a file of its own (a pipe left unread would stall the
    // recording); `registrato` is opened at the recording's end.
    void avvia_server(QFile& registrato)
    {
        if (server_.state() == QProcess::NotRunning) {
            QFile::remove(casa_.path() + "/pulse/native");
            server_.setProcessEnvironment(ambiente_server());
            server_.start(pulseaudio_,
                          {"--daemonize=no", "-n", "--exit-idle-time=-1", "--disallow-exit",
                           "--load=module-null-sink sink_name=tavolata", "--load=module-native-protocol-unix"});
            QTRY_VERIFY_WITH_TIMEOUT(
                QFile::exists(casa_.path() + "/pulse/native") || server_.state() == QProcess::NotRunning, 10000);
            registratore_.setProcessEnvironment(ambiente_server());
            registratore_.start(parec_, {"-d", "tavolata.monitor", "--format=s16le", "--rate=44100", "--channels=1",
                                         "--latency-msec=20", casa_.filePath(QString::number(++registrazioni_))});
        }
        registrato.close();
        registrato.setFileName(casa_.filePath(QString::number(registrazioni_)));
        for (int attese = 0; registrato.size() < 44100 * 2 / 10; ++attese) {
            if (attese == 200 || server_.state() == QProcess::NotRunning)
                QSKIP("the private sound server does not record here");
            QTest::qWait(50);
        }
        QVERIFY(registrato.open(QIODevice::ReadOnly) && registrato.seek(registrato.size() & ~1));
    }

    // The streams the private server plays.
    int flussi()
    {
        QProcess pactl;
        pactl.setProcessEnvironment(ambiente_server());
        pactl.start("pactl", {"list", "short", "sink-inputs"});
        pactl.waitForFinished(5000);
        return int(pactl.readAllStandardOutput().count('\n'));
    }

private slots:
    void initTestCase()
    {
        // This process never reaches a sound server, whatever the machine has:
        // everything here must work without one. The sounds are heard by
        // children of this program on a private server.
        if (qEnvironmentVariableIsEmpty("TAVOLATA_SUONO_FIGLIO"))
            qputenv("PULSE_SERVER", "unix:/nonexistent/tavolata-no-server");
        // The game keeps what a sound file held while the file stays as it
        // was; it trusts only files left alone for a few seconds, so the one
        // replaced below is written now and replaced last of all.
        dall_inizio_.start();
        scrivi(cartella_.filePath("carta.wav"), tono(44100, 1, pcm16, 0.1), QDateTime::currentDateTime().addDays(-1));
    }

    void che_cosa_suona_data()
    {
        QTest::addColumn<QByteArray>("contenuto");
        QTest::addColumn<bool>("predefinito");
        // clang-format off
        QTest::newRow("16-bit 44.1 kHz mono: half a second") << tono(44100, 1, pcm16) << false;
        QTest::newRow("24-bit 48 kHz stereo: half a second") << tono(48000, 2, SF_FORMAT_WAV | SF_FORMAT_PCM_24)
                                                             << false;
        QTest::newRow("a header without samples: the default sound") << tono(44100, 1, pcm16).left(44) << true;
        QTest::newRow("text: the default sound") << QByteArray("not a sound at all\n") << true;
        // clang-format on
    }
    void che_cosa_suona()
    {
        QFETCH(QByteArray, contenuto);
        QFETCH(bool, predefinito);
        const QString percorso = cartella_.filePath(QTest::currentDataTag() + QStringLiteral(".wav"));
        scrivi(percorso, contenuto);
        piattaforma::PlaySound(percorso);
        const auto s = piattaforma::prova::ultimo_suono();
        QCOMPARE(s.predefinito, predefinito);
        // The default sound is a real, short sound.
        QVERIFY2(predefinito ? s.durata_ms > 50 && s.durata_ms < 500 : std::abs(s.durata_ms - 500) <= 10,
                 qPrintable(QString::number(s.durata_ms)));
    }

    void senza_dispositivo_nulla_attende()
    {
        imposta_cartella_programma(media);
        const qsizetype fili = QDir("/proc/self/task").count();
        QElapsedTimer orologio;
        orologio.start();
        for (int i = 0; i < 200; ++i) (i % 2 ? suona_carta : suona_errore)();
        QVERIFY(!piattaforma::prova::ultimo_suono().su_dispositivo);
        MMControl lettore;
        lettore.FileName = media + "music/brezza.mid";
        lettore.Command("open");
        lettore.Command("play");
        QVERIFY2(orologio.elapsed() < 3000, qPrintable(QString::number(orologio.elapsed())));
        QVERIFY(!MMControl::suona_su_dispositivo());
        // The song keeps its time on its own clock, with no thread and next
        // to no work: looking for the server once a second is all.
        auto tick = [] {
            QFile stat("/proc/self/stat");
            const QList<QByteArray> campi =
                stat.open(QIODevice::ReadOnly) ? stat.readAll().split(' ') : QList<QByteArray>();
            return campi.size() > 15 ? campi[13].toLong() + campi[14].toLong() : 0L;
        };
        const long prima = tick();
        QEventLoop attesa;
        QTimer::singleShot(3000, Qt::PreciseTimer, &attesa, &QEventLoop::quit);
        attesa.exec();
        QVERIFY2(tick() - prima <= 2, qPrintable(QString::number(tick() - prima)));
        QVERIFY(lettore.Position() >= 2900);
        QCOMPARE(QDir("/proc/self/task").count(), fili);
    }

    void sul_server_si_sente_data()
    {
        QTest::addColumn<QString>("passi");  // of the child: sounds, a song and pauses in milliseconds
        QTest::addColumn<int>("riavvio_ms");  // when the server is killed and started again; 0 never
        QTest::addColumn<double>("da_secondi");
        QTest::addColumn<double>("a_secondi");
        QTest::addColumn<double>("picco");
        // The recording of a private server's output misses the first few
        // tens of milliseconds of each new stream: the short sounds are
        // measured by what is left of them. After a restart, what is heard
        // is measured on the new server.
        QTest::newRow("card sound") << "carta.wav 300" << 0 << 0.02 << 0.4 << 0.005;
        QTest::newRow("a new sound cuts the old one") << "lunga.wav 300 carta.wav 1000" << 0 << 0.1 << 0.9 << 0.1;
        QTest::newRow("a song") << "canzone 2000" << 0 << 1.0 << 10.0 << 0.05;
        QTest::newRow("the song comes back with the server") << "canzone 6000" << 1000 << 2.0 << 10.0 << 0.05;
        QTest::newRow("the card sound comes back; quiet, no stream and no thread")
            << "carta.wav 6000 quieto carta.wav 300" << 1000 << 0.02 << 0.4 << 0.005;
    }
    void sul_server_si_sente()
    {
        QFETCH(QString, passi);
        QFETCH(int, riavvio_ms);
        QFETCH(double, da_secondi);
        QFETCH(double, a_secondi);
        QFETCH(double, picco);
        if (pulseaudio_.isEmpty() || parec_.isEmpty()) QSKIP("no pulseaudio and parec on this machine");
        QFile registrato;
        avvia_server(registrato);
        if (QTest::currentTestFailed() || !registrato.isOpen()) return;

        scrivi(casa_.filePath("lunga.wav"), tono(44100, 1, pcm16, 1.5));
        QProcessEnvironment ambiente = ambiente_server();
        ambiente.insert("TAVOLATA_SUONO_FIGLIO", passi.replace("lunga.wav", casa_.filePath("lunga.wav")));
        ambiente.insert("QT_QPA_PLATFORM", "offscreen");
        QProcess figlio;
        figlio.setProcessEnvironment(ambiente);
        figlio.setProcessChannelMode(QProcess::MergedChannels);
        figlio.start(QCoreApplication::applicationFilePath(), {"suona_per_il_padre"});
        if (riavvio_ms > 0) {
            // The server dies under the game and comes back: within 3 s the
            // game has its stream again when a song is on.
            QTest::qWait(riavvio_ms);
            for (QProcess* p : {&registratore_, &server_}) {
                p->kill();
                p->waitForFinished(5000);
            }
            QTest::qWait(300);
            QElapsedTimer dal_ritorno;
            avvia_server(registrato);
            dal_ritorno.start();
            if (passi.startsWith("canzone")) {
                QTRY_VERIFY_WITH_TIMEOUT(flussi() == 1, 3000);
                qInfo("the song's stream came back %lld ms after the server", dal_ritorno.elapsed());
            }
        }
        QVERIFY(figlio.waitForFinished(60000));
        QVERIFY2(figlio.exitStatus() == QProcess::NormalExit && figlio.exitCode() == 0, figlio.readAll().constData());
        QTest::qWait(200);

        // How long the recording stays above a whisper, in 10 ms steps, and how loud it gets.
        double secondi = 0, picco_sentito = 0;
        for (QByteArray blocco; !(blocco = registrato.read(882)).isEmpty();) {
            double e = 0;
            for (qsizetype k = 0; k + 1 < blocco.size(); k += 2) {
                const double x = qFromLittleEndian<qint16>(blocco.constData() + k) / 32768.0;
                e += x * x;
                picco_sentito = std::max(picco_sentito, std::abs(x));
            }
            if (std::sqrt(e / 441) > 0.003) secondi += 0.01;
        }
        qInfo("peak %.3f, heard for %.2f s", picco_sentito, secondi);
        QVERIFY(picco_sentito > picco);
        QVERIFY2(secondi >= da_secondi && secondi <= a_secondi, qPrintable(QString::number(secondi)));
    }

    // The child's side of the test above; skipped when run on its own.
    void suona_per_il_padre()
    {
        const QStringList passi = qEnvironmentVariable("TAVOLATA_SUONO_FIGLIO").split(' ', Qt::SkipEmptyParts);
        if (passi.isEmpty()) QSKIP("runs only as the child of sul_server_si_sente");
        MMControl lettore;
        lettore.FileName = media + "music/brezza.mid";
        const qsizetype fili = QDir("/proc/self/task").count();
        for (const QString& passo : passi) {
            if (passo == "quieto") {
                // Nothing has played for a while: no stream, no sound thread.
                QVERIFY(!piattaforma::UscitaAudio::una().collegata());
                QCOMPARE(QDir("/proc/self/task").count(), fili);
            } else if (passo.toInt() > 0) {
                QTest::qWait(passo.toInt());
            } else if (passo == "canzone") {
                lettore.Command("open");
                lettore.Command("play");
                QTRY_VERIFY(MMControl::suona_su_dispositivo() && lettore.Mode() == MMControl::mciModePlay);
            } else {
                piattaforma::PlaySound(passo.contains('/') ? passo : media + passo);
                QTRY_VERIFY(piattaforma::UscitaAudio::una().collegata());
            }
        }
    }

    // A sound file replaced between two plays, even by one of the very same
    // length and date, is heard as it now is.
    void il_file_sostituito_si_sente_com_e_ora()
    {
        QTest::qWait(int(std::max<qint64>(0, 3100 - dall_inizio_.elapsed())));
        imposta_cartella_programma(cartella_.path());
        const QString percorso = cartella_.filePath("carta.wav");
        const QByteArray buono = tono(44100, 1, pcm16, 0.1), guasto(buono.size(), 'x');
        const QDateTime data = QFileInfo(percorso).lastModified();
        for (int giro = 0; giro < 2; ++giro) {
            for (int volta = 0; volta < 2; ++volta) {
                suona_carta();
                QVERIFY(!piattaforma::prova::ultimo_suono().predefinito);
                QCOMPARE(piattaforma::prova::ultimo_suono().durata_ms, 100L);
            }
            scrivi(percorso, guasto, data);
            suona_carta();
            QVERIFY2(piattaforma::prova::ultimo_suono().predefinito, "the replaced file was not read again");
            scrivi(percorso, buono, data);
        }
        QFile::remove(percorso);
        suona_carta();
        QVERIFY(piattaforma::prova::ultimo_suono().predefinito);
    }

    void cleanupTestCase()
    {
        registratore_.kill();
        registratore_.waitForFinished(1000);
        server_.terminate();
        server_.waitForFinished(5000);
    }
};

QTEST_MAIN(TestSuoni)
#include "tst_suoni.moc"
