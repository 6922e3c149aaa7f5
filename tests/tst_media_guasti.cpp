// SPDX-License-Identifier: GPL-3.0-or-later
// Damaged media: every picture, wave and song file of the game missing,
// empty, cut short, with bits flipped, replaced by garbage, or with the right
// magic followed by garbage, fed through the game's own loaders. Pictures
// fail with error 53 or 481, naming the file (and a later draw that needs one
// is error 91), or load as some picture; one cut short always fails; waves
// play the default sound or what could be read; a missing song is refused
// without a Done of code 1, any other plays, if only as a short silence.
// Never a crash or a hang.
// The variants are drawn from a fixed seed; TAVOLATA_FUZZ_VARIANTI sets how
// many per file (30 by default).
#include "aiuto/posizione.h"
#include "platform/lettore_wave.h"
#include "platform/mmc.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

#include <QtTest>

#include <functional>
#include <random>

namespace {

// What the loaders told on the standard error.
QStringList avvisi;
void raccogli(QtMsgType tipo, const QMessageLogContext&, const QString& testo)
{
    if (tipo == QtWarningMsg && testo.startsWith("tavolata: ")) avvisi << testo;
}

// The ways a file is damaged.
enum class Danno { manca, vuoto, troncato, bit_cambiati, spazzatura, magia_e_spazzatura };

QString sorgente(const QString& nome) { return QStringLiteral(TAVOLATA_SORGENTE "/media/") + nome; }

// Writes the damaged copies of the media file `nome` over `percorso` in turn
// (one missing, one empty, then cuts, flipped bits, garbage, and the file's
// first `magia` bytes with garbage after them), each followed by `controlla`,
// which must be quick. The file is put back whole at the end.
void per_ogni_variante(const QString& percorso, const QString& nome, qsizetype magia,
                       const std::function<void(Danno, const QString& caso)>& controlla)
{
    QFile originale(sorgente(nome));
    QVERIFY(originale.open(QIODevice::ReadOnly));
    const QByteArray buono = originale.readAll();
    std::mt19937 caso(unsigned(buono.size()));
    auto tra = [&caso](qsizetype da, qsizetype a) { return std::uniform_int_distribution<qsizetype>(da, a)(caso); };
    auto casuali = [&caso](qsizetype n) {
        QByteArray b(n, Qt::Uninitialized);
        for (char& c : b) c = char(caso());
        return b;
    };
    const char* nomi[] = {"missing", "empty", "cut short", "bits flipped", "garbage", "header and garbage"};
    bool dato = false;
    const int quante = qEnvironmentVariableIntValue("TAVOLATA_FUZZ_VARIANTI", &dato);
    for (int i = -2; i < (dato ? quante : 30) && !QTest::currentTestFailed(); ++i) {
        const Danno danno = i < 0 ? Danno(i + 2) : Danno(2 + i % 4);
        QByteArray dati;
        if (danno == Danno::troncato) dati = buono.left(tra(1, buono.size() - 1));
        if (danno == Danno::spazzatura) dati = casuali(tra(1, 4096));
        if (danno == Danno::magia_e_spazzatura) dati = buono.left(tra(2, magia)) + casuali(tra(0, 8192));
        if (danno == Danno::bit_cambiati)
            for (dati = buono; dati == buono || caso() % 64;) dati[tra(0, dati.size() - 1)] ^= char(1 << caso() % 8);
        QFile::remove(percorso);
        QFile f(percorso);
        if (danno != Danno::manca) QVERIFY(f.open(QIODevice::WriteOnly) && f.write(dati) == dati.size());
        f.close();
        const QString descrizione =
            QStringLiteral("%1, variant %2: %3, %4 bytes").arg(nome).arg(i).arg(nomi[int(danno)]).arg(dati.size());
        QElapsedTimer orologio;
        orologio.start();
        controlla(danno, descrizione);
        QVERIFY2(orologio.elapsed() < 5000, qPrintable(descrizione + ": it took too long"));
    }
    QFile::remove(percorso);
    QVERIFY(QFile::copy(sorgente(nome), percorso));
}

}  // namespace

class TestMediaGuasti : public QObject {
    Q_OBJECT
    QTemporaryDir cartella_;

private slots:
    void initTestCase()
    {
        prova::finestra();
        QDir(cartella_.path()).mkdir(QStringLiteral("music"));
        for (const char* nome : {"totale.bmp", "SfondoTV2.jpg", "dorso.bmp", "dorsorosso.bmp"})
            QVERIFY(QFile::copy(sorgente(QString::fromLatin1(nome)), cartella_.filePath(QString::fromLatin1(nome))));
        imposta_cartella_programma(cartella_.path());
        // Songs play on the player's own clock, fast, so that a song that
        // loads also ends within the wait.
        MMControl::prova_orologio(50);
        qInstallMessageHandler(raccogli);
    }

    void cleanupTestCase()
    {
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        QCOMPARE(carica_immagini(), 0L);
        MMControl::prova_orologio(0);
    }

    // Whole pictures of another size: the sheet and the table must hold the
    // cells the game cuts from them; a back is stretched whole over a card.
    void la_misura()
    {
        const std::tuple<const char*, QSize, long> casi[] = {
            {"totale.bmp", {638, 576}, 481}, {"SfondoTV2.jpg", {1024, 767}, 481}, {"dorso.bmp", {144, 192}, 0}};
        for (const auto& [nome, misura, esito] : casi) {
            const QString file = QString::fromLatin1(nome);
            QVERIFY(QImage(sorgente(file)).scaled(misura).save(cartella_.filePath(file)));
            QCOMPARE(carica_immagini(), esito);
            QFile::remove(cartella_.filePath(file));
            QVERIFY(QFile::copy(sorgente(file), cartella_.filePath(file)));
        }
    }

    void ogni_file_guasto_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("magia");  // header bytes
        const std::pair<const char*, int> file[] = {
            {"totale.bmp", 54}, {"SfondoTV2.jpg", 20}, {"dorso.bmp", 54},        {"dorsorosso.bmp", 54},
            {"carta.wav", 44},  {"errore.wav", 44},    {"music/Brezza.mid", 22}, {"music/Lastday.mid", 22}};
        for (const auto& [nome, magia] : file) QTest::newRow(nome) << QString::fromLatin1(nome) << magia;
    }
    void ogni_file_guasto()
    {
        QFETCH(QString, file);
        QFETCH(int, magia);
        FrmTV& f = prova::finestra();
        const QString percorso = cartella_.filePath(file);
        QSignalSpy fatti(f.MMC1, &MMControl::Done);
        per_ogni_variante(percorso, file, magia, [&](Danno danno, const QString& caso) {
            const bool manca_o_vuoto = danno == Danno::manca || danno == Danno::vuoto;
            if (file.endsWith(".wav")) {
                // Through the game, as a card drawn or a move refused plays it.
                file == QLatin1String("carta.wav") ? suona_carta() : suona_errore();
                const auto suonato = piattaforma::prova::ultimo_suono();
                QCOMPARE(suonato.percorso, percorso);
                QVERIFY2(suonato.predefinito || !manca_o_vuoto, qPrintable(caso + ": no default sound"));
                // A sound, never a song: what is read is cut to five minutes.
                QVERIFY2(suonato.durata_ms >= 0 && suonato.durata_ms <= 5 * 60 * 1000, qPrintable(caso));
            } else if (file.endsWith(".mid")) {
                // Brezza as at start-up, Lastday from the menu.
                if (file.contains("Lastday")) {
                    f.canzoni_Click(8);
                } else {
                    f.MMC1->FileName = cartella_programma() + "/music/brezza.mid";
                    f.MMC1->Command("Open");
                    f.MMC1->Command("play");
                }
                // Only a missing song is refused; one that is there plays,
                // as a short silence when it holds no song, and so it ends.
                const bool aperta = f.MMC1->Mode() == MMControl::mciModePlay;
                QVERIFY2(aperta == (danno != Danno::manca), qPrintable(caso + ": opened or refused wrongly"));
                fatti.clear();
                QTest::qWait(30);
                for (const auto& segnale : fatti)
                    QVERIFY2(aperta || segnale.at(0).toInt() != 1, qPrintable(caso + ": Done 1 without a song"));
                QVERIFY2(f.MMC1->Length() > 0 || !aperta, qPrintable(caso + ": a song of no length"));
                f.MMC1->Command("close");
            } else {
                immagine_carte = immagine_sfondo = dorsi(0) = dorsi(1) = QImage();
                righe_tavolo = colonne_tavolo = 0;
                avvisi.clear();
                const long esito = carica_immagini();
                const QString detto = caso + QString(": error %1, told \"%2\"").arg(esito).arg(avvisi.join('|'));
                // A file cut short is as unreadable as an empty one, and the
                // file that stopped the pictures is named.
                const bool illeggibile = danno == Danno::vuoto || danno == Danno::troncato;
                QVERIFY2(esito == 0 || esito == 53 || esito == 481, qPrintable(detto));
                QVERIFY2(!(illeggibile || danno == Danno::manca) || esito == (danno == Danno::manca ? 53 : 481),
                         qPrintable(detto));
                const QString atteso =
                    "tavolata: " + percorso + (esito == 53 ? ": picture missing" : ": picture cannot be read");
                QVERIFY2(esito == 0 ? avvisi.isEmpty() : avvisi == QStringList{atteso}, qPrintable(detto));
                // The grid stays unset, and the draw that needs the picture that failed fails with 91.
                const bool dorso = file.startsWith("dorso");
                const int errore = prova::errore_di([&] {
                    if (file.startsWith("Sfondo"))
                        cancella_carta(f.tela, 3, 41);
                    else
                        disegna_carta(f.tela, 3, dorso ? 1 : 41, file.startsWith("dorsor") ? 66 : 12, dorso, 0);
                });
                QVERIFY2((righe_tavolo == 0 && errore == 91) == (esito != 0),
                         qPrintable(caso + QString(": error %1 on drawing").arg(errore)));
                // Whatever came out of the file is a picture: every card, back
                // and cell can be drawn from it.
                for (long c = 1; c <= CARTE && esito == 0; c += 7) {
                    disegna_carta(f.tela, 1 + c % 14, 41, Byte(c), false, 0);
                    disegna_carta(f.tela, 1 + c % 14, 1, Byte(c), true, 0);
                    cancella_carta(f.tela, 1 + c % 14, 24);
                }
            }
        });
        f.nomusic_Click();
        QCOMPARE(carica_immagini(), 0L);
    }
};

QTEST_MAIN(TestMediaGuasti)
#include "tst_media_guasti.moc"
