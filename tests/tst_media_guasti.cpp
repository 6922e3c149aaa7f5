// Damaged media: every picture, wave and song file of the game missing,
// empty, cut short, with bytes flipped, replaced by garbage, or with the right
// magic followed by garbage, fed through the game's own loaders. Pictures
// fail with error 53 or 481 (and a later draw that needs one is error 91) or
// load as some picture; waves play the default sound or what could be read;
// songs are refused without a Done of code 1, or play. Never a crash or a hang.
// The variants are drawn from a fixed seed; TAVOLATA_FUZZ_VARIANTI sets how
// many per file (30 by default).
#include "aiuto/posizione.h"
#include "platform/lettore_wave.h"
#include "platform/mmc.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <random>

namespace {

// The ways a file is damaged.
enum class Danno { manca, vuoto, troncato, byte_cambiati, spazzatura, magia_e_spazzatura };

struct Variante {
    Danno danno;
    QByteArray dati;  // unused when the file is missing
    QString descrizione;
};

int varianti_per_file()
{
    return qEnvironmentVariableIsSet("TAVOLATA_FUZZ_VARIANTI") ? qEnvironmentVariableIntValue("TAVOLATA_FUZZ_VARIANTI") : 30;
}

QByteArray casuali(std::mt19937& caso, qsizetype n)
{
    QByteArray b(n, Qt::Uninitialized);
    for (qsizetype i = 0; i < n; ++i) b[i] = char(caso() & 0xff);
    return b;
}

// The damaged copies of `buono` (whose first `magia` bytes are its header): one
// missing and one empty file, then cuts, flips, garbage and headers with
// garbage after them in turn.
std::vector<Variante> varianti(const QByteArray& buono, qsizetype magia, unsigned seme)
{
    std::mt19937 caso(seme);
    std::vector<Variante> v{{Danno::manca, {}, QStringLiteral("missing")}, {Danno::vuoto, {}, QStringLiteral("empty")}};
    const int quante = varianti_per_file();
    for (int i = 0; int(v.size()) < quante + 2; ++i) {
        switch (i % 4) {
        case 0: {
            const qsizetype n = std::uniform_int_distribution<qsizetype>(1, buono.size() - 1)(caso);
            v.push_back({Danno::troncato, buono.left(n), QStringLiteral("cut at %1 bytes").arg(n)});
            break;
        }
        case 1: {
            QByteArray d = buono;
            const int quanti = std::uniform_int_distribution<int>(1, 64)(caso);
            for (int k = 0; k < quanti; ++k) {
                const qsizetype p = std::uniform_int_distribution<qsizetype>(0, d.size() - 1)(caso);
                d[p] = char(d[p] ^ char(1 << (caso() % 8)));
            }
            v.push_back({Danno::byte_cambiati, d, QStringLiteral("%1 bits flipped").arg(quanti)});
            break;
        }
        case 2: {
            const qsizetype n = std::uniform_int_distribution<qsizetype>(1, 4096)(caso);
            v.push_back({Danno::spazzatura, casuali(caso, n), QStringLiteral("%1 bytes of garbage").arg(n)});
            break;
        }
        default: {
            const qsizetype tenuti = std::uniform_int_distribution<qsizetype>(2, magia)(caso);
            const qsizetype n = std::uniform_int_distribution<qsizetype>(0, 8192)(caso);
            v.push_back({Danno::magia_e_spazzatura, buono.left(tenuti) + casuali(caso, n),
                         QStringLiteral("%1 header bytes and %2 of garbage").arg(tenuti).arg(n)});
            break;
        }
        }
    }
    return v;
}

void scrivi(const QString& percorso, const Variante& v)
{
    QFile::remove(percorso);
    if (v.danno == Danno::manca) return;
    QFile f(percorso);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(v.dati);
}

QByteArray leggi(const QString& percorso)
{
    QFile f(percorso);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A small good wave (a tenth of a second of a tone) for when the media folder
// has none.
QByteArray onda_buona()
{
    const int campioni = 4410;
    QByteArray d;
    auto u32 = [&d](quint32 x) { d.append(reinterpret_cast<const char*>(&x), 4); };
    auto u16 = [&d](quint16 x) { d.append(reinterpret_cast<const char*>(&x), 2); };
    d.append("RIFF");
    u32(36 + campioni * 2);
    d.append("WAVEfmt ");
    u32(16);
    u16(1);
    u16(1);
    u32(44100);
    u32(88200);
    u16(2);
    u16(16);
    d.append("data");
    u32(campioni * 2);
    for (int i = 0; i < campioni; ++i) u16(quint16(qint16(8000 * std::sin(i * 0.06))));
    return d;
}

// A small good song (one note) for when the media folder has none.
QByteArray canzone_buona()
{
    const unsigned char traccia[] = {0x00, 0x90, 0x3c, 0x60, 0x60, 0x80, 0x3c, 0x00, 0x00, 0xff, 0x2f, 0x00};
    QByteArray d("MThd\0\0\0\x06\0\0\0\x01\0\x60", 14);
    d.append("MTrk\0\0\0", 7);
    d.append(char(sizeof traccia));
    d.append(reinterpret_cast<const char*>(traccia), sizeof traccia);
    return d;
}

QString sorgente(const QString& nome) { return QStringLiteral(TAVOLATA_SORGENTE "/media/") + nome; }

}  // namespace

class TestMediaGuasti : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        prova::finestra();
        QVERIFY(cartella_.isValid());
        for (const char* nome : {"totale.bmp", "SfondoTV2.jpg", "dorso.bmp", "dorsorosso.bmp"})
            QVERIFY(QFile::copy(sorgente(QString::fromLatin1(nome)), cartella_.filePath(QString::fromLatin1(nome))));
        QDir(cartella_.path()).mkdir(QStringLiteral("music"));
        // Songs play on the control's own clock, fast, so that a song that
        // loads also ends within the wait.
        MMControl::prova_orologio(50);
    }

    void cleanupTestCase()
    {
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        QCOMPARE(carica_immagini(), 0L);
        MMControl::prova_orologio(0);
    }

    void figure_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("magia");
        QTest::addColumn<int>("seme");
        QTest::newRow("card faces") << QStringLiteral("totale.bmp") << 54 << 11;
        QTest::newRow("table") << QStringLiteral("SfondoTV2.jpg") << 20 << 12;
        QTest::newRow("blue back") << QStringLiteral("dorso.bmp") << 54 << 13;
        QTest::newRow("red back") << QStringLiteral("dorsorosso.bmp") << 54 << 14;
    }

    void figure()
    {
        QFETCH(QString, file);
        QFETCH(int, magia);
        QFETCH(int, seme);
        FrmTV& f = prova::finestra();
        const QString percorso = cartella_.filePath(file);
        const QByteArray buono = leggi(percorso);
        QVERIFY(!buono.isEmpty());
        imposta_cartella_programma(cartella_.path());
        // The draw that needs this very picture.
        const std::map<QString, std::function<void()>> disegno = {
            {QStringLiteral("totale.bmp"), [&f] { disegna_carta(f.tela, 3, 41, 12, false, 0); }},
            {QStringLiteral("SfondoTV2.jpg"), [&f] { cancella_carta(f.tela, 3, 41); }},
            {QStringLiteral("dorso.bmp"), [&f] { disegna_carta(f.tela, 3, 1, 12, true, 0); }},
            {QStringLiteral("dorsorosso.bmp"), [&f] { disegna_carta(f.tela, 3, 1, 66, true, 0); }},
        };

        for (const Variante& v : varianti(buono, magia, unsigned(seme))) {
            scrivi(percorso, v);
            immagine_carte = immagine_sfondo = dorsi(0) = dorsi(1) = QImage();
            righe_tavolo = 0;
            colonne_tavolo = 0;
            QElapsedTimer orologio;
            orologio.start();
            const long esito = carica_immagini();
            const QString caso = file + QStringLiteral(", ") + v.descrizione;
            QVERIFY2(orologio.elapsed() < 5000, qPrintable(caso + QStringLiteral(": loading took too long")));
            if (v.danno == Danno::manca) QVERIFY2(esito == 53, qPrintable(caso));
            if (v.danno == Danno::vuoto) QVERIFY2(esito == 481, qPrintable(caso));
            QVERIFY2(esito == 0 || esito == 53 || esito == 481, qPrintable(caso + QStringLiteral(": error %1").arg(esito)));
            if (esito != 0) {
                // The grid stays unset and the picture that failed is needed in vain.
                QVERIFY2(righe_tavolo == 0 && colonne_tavolo == 0, qPrintable(caso));
                try {
                    disegno.at(file)();
                    QFAIL(qPrintable(caso + QStringLiteral(": drawing without the picture went through")));
                } catch (const basic::ErroreRuntime& e) {
                    QVERIFY2(e.numero() == 91, qPrintable(caso + QStringLiteral(": error %1").arg(e.numero())));
                }
            } else {
                // Whatever came out of the file is a picture: every card, back
                // and cell can be drawn from it.
                QCOMPARE(long(righe_tavolo), 48L);
                for (long c = 1; c <= 108; c += 7) {
                    disegna_carta(f.tela, 1 + c % 14, 41, Byte(c), false, 0);
                    disegna_carta(f.tela, 1 + c % 14, 1, Byte(c), true, 0);
                    cancella_carta(f.tela, 1 + c % 14, 24);
                }
            }
        }
        QFile::remove(percorso);
        QVERIFY(QFile::copy(sorgente(file), percorso));
        QCOMPARE(carica_immagini(), 0L);
    }

    void suoni_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("seme");
        QTest::newRow("card sound") << QStringLiteral("carta.wav") << 21;
        QTest::newRow("error sound") << QStringLiteral("errore.wav") << 22;
    }

    void suoni()
    {
        QFETCH(QString, file);
        QFETCH(int, seme);
        prova::finestra();
        const QByteArray dai_media = leggi(sorgente(file));
        const QByteArray buono = dai_media.isEmpty() ? onda_buona() : dai_media;
        const QString percorso = cartella_.filePath(file);
        imposta_cartella_programma(cartella_.path());
        for (const Variante& v : varianti(buono, 44, unsigned(seme))) {
            scrivi(percorso, v);
            const QString caso = file + QStringLiteral(", ") + v.descrizione;
            QElapsedTimer orologio;
            orologio.start();
            // Through the game, as a card drawn or a move refused plays it.
            file == QLatin1String("carta.wav") ? suona_carta() : suona_errore();
            QVERIFY2(orologio.elapsed() < 5000, qPrintable(caso + QStringLiteral(": playing took too long")));
            const auto suonato = piattaforma::prova::ultimo_suono();
            QCOMPARE(suonato.percorso, percorso);
            if (v.danno == Danno::manca || v.danno == Danno::vuoto)
                QVERIFY2(suonato.predefinito, qPrintable(caso + QStringLiteral(": no default sound")));
            // A sound, never a song: what is read is cut to five minutes.
            QVERIFY2(suonato.durata_ms >= 0 && suonato.durata_ms <= 5 * 60 * 1000, qPrintable(caso));
            QCoreApplication::processEvents();
        }
        QFile::remove(percorso);
    }

    // The game keeps what a sound file held while the file is unchanged; a
    // file replaced between two plays, even by one of the very same length
    // and with an old date, is heard as it now is.
    void suono_sostituito()
    {
        prova::finestra();
        const QString percorso = cartella_.filePath(QStringLiteral("carta.wav"));
        imposta_cartella_programma(cartella_.path());
        const QByteArray buono = onda_buona();
        QByteArray guasto(buono.size(), 'x');
        const QDateTime ieri = QDateTime::currentDateTime().addDays(-1);
        auto metti = [&](const QByteArray& dati, int secondi) {
            scrivi(percorso, Variante{Danno::vuoto, dati, QString()});
            QFile f(percorso);
            QVERIFY(f.open(QIODevice::ReadWrite));
            QVERIFY(f.setFileTime(ieri.addSecs(secondi), QFileDevice::FileModificationTime));
        };
        for (int giro = 0; giro < 3; ++giro) {
            metti(buono, giro * 2);
            suona_carta();
            QVERIFY(!piattaforma::prova::ultimo_suono().predefinito);
            QCOMPARE(piattaforma::prova::ultimo_suono().durata_ms, 100L);
            suona_carta();
            QCOMPARE(piattaforma::prova::ultimo_suono().durata_ms, 100L);
            metti(guasto, giro * 2 + 1);
            suona_carta();
            QVERIFY2(piattaforma::prova::ultimo_suono().predefinito, "the replaced file was not read again");
        }
        QFile::remove(percorso);
        suona_carta();
        QVERIFY(piattaforma::prova::ultimo_suono().predefinito);
    }

    void canzoni_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("seme");
        QTest::addColumn<bool>("dal_menu");
        QTest::newRow("Brezza, started as at start-up") << QStringLiteral("Brezza.mid") << 31 << false;
        QTest::newRow("Lastday, chosen from the menu") << QStringLiteral("Lastday.mid") << 32 << true;
    }

    void canzoni()
    {
        QFETCH(QString, file);
        QFETCH(int, seme);
        QFETCH(bool, dal_menu);
        FrmTV& f = prova::finestra();
        const QByteArray dai_media = leggi(sorgente(QStringLiteral("music/") + file));
        const QByteArray buono = dai_media.isEmpty() ? canzone_buona() : dai_media;
        const QString percorso = cartella_.filePath(QStringLiteral("music/") + file);
        imposta_cartella_programma(cartella_.path());
        MMControl* mmc = f.MMC1;
        std::vector<int> fatti;
        const QMetaObject::Connection c = connect(mmc, &MMControl::Done, this, [&fatti](int codice) { fatti.push_back(codice); });

        for (const Variante& v : varianti(buono, 22, unsigned(seme))) {
            scrivi(percorso, v);
            const QString caso = file + QStringLiteral(", ") + v.descrizione;
            QElapsedTimer orologio;
            orologio.start();
            if (dal_menu) {
                f.canzoni_Click(8);
            } else {
                mmc->Command(QStringLiteral("close"));
                mmc->FileName = cartella_programma() + QStringLiteral("/music/brezza.mid");
                mmc->Command(QStringLiteral("Open"));
                mmc->Wait = false;
                mmc->Command(QStringLiteral("play"));
            }
            const bool aperta = mmc->Mode() != MMControl::mciModeNotOpen;
            fatti.clear();
            QTest::qWait(30);
            QVERIFY2(orologio.elapsed() < 5000, qPrintable(caso + QStringLiteral(": the song took too long to start")));
            if (v.danno == Danno::manca || v.danno == Danno::vuoto || v.danno == Danno::spazzatura)
                QVERIFY2(!aperta, qPrintable(caso + QStringLiteral(": the player took it")));
            // A song the player refused never reports that it played to its end.
            if (!aperta)
                QVERIFY2(std::find(fatti.begin(), fatti.end(), int(MMControl::mciSuccessful)) == fatti.end(),
                         qPrintable(caso + QStringLiteral(": Done 1 without a song")));
            mmc->Command(QStringLiteral("close"));
        }
        disconnect(c);
        QFile::remove(percorso);
        f.nomusic_Click();
    }

private:
    QTemporaryDir cartella_;
};

QTEST_MAIN(TestMediaGuasti)
#include "tst_media_guasti.moc"
