// SPDX-License-Identifier: GPL-3.0-or-later
// The media the game ships, as a player sees and hears them: a sheet of 54
// distinct faces in the right colours, two different backs, a green table the
// size of the play area, the jolly dialog's suit buttons, the two sounds and
// the ten songs of the "Music" menu.
#include "aiuto/posizione.h"
#include "human/frmJolly.h"
#include "platform/mmc.h"
#include "ui/frmTV.h"

#include <QAction>
#include <QtTest>

#include <sndfile.h>

namespace {

const QString media = QStringLiteral(TAVOLATA_SORGENTE "/media/");

int conta(const QImage& figura, bool (*quale)(QRgb), QRect dove = {})
{
    const QImage rgb = figura.convertToFormat(QImage::Format_RGB32);
    if (dove.isNull()) dove = rgb.rect();
    int n = 0;
    for (int y = dove.top(); y <= dove.bottom(); ++y)
        for (int x = dove.left(); x <= dove.right(); ++x) n += quale(rgb.pixel(x, y));
    return n;
}

// The game finds a selected card again by reading this red back from the
// screen, so no picture may hold it.
bool rosso_di_selezione(QRgb c) { return (c & 0xffffff) == 0xff0000; }
bool rosso_seme(QRgb c) { return qRed(c) >= 150 && qGreen(c) <= 80 && qBlue(c) <= 90; }
bool nero(QRgb c) { return qRed(c) < 60 && qGreen(c) < 60 && qBlue(c) < 60; }
bool bluastro(QRgb c) { return qBlue(c) > qRed(c) + 40; }
bool rossastro(QRgb c) { return qRed(c) > qBlue(c) + 40; }

}  // namespace

class TestMedia : public QObject {
    Q_OBJECT

private slots:
    void il_foglio_delle_facce()
    {
        const QImage foglio(media + "totale.bmp");
        QCOMPARE(foglio.size(), QSize(9 * 71, 6 * 96));
        QCOMPARE(conta(foglio, rosso_di_selezione), 0);
        QSet<QByteArray> impronte;
        for (int k = 0; k < CARTE_PER_MAZZO; ++k) {
            const QImage cella = foglio.copy(k % 9 * 71, k / 9 * 96, 71, 96).convertToFormat(QImage::Format_RGB32);
            impronte << QCryptographicHash::hash(QByteArrayView(cella.constBits(), cella.sizeInBytes()),
                                                 QCryptographicHash::Sha1);
            // Hearts and diamonds red, clubs and spades black.
            if (k < 52) QVERIFY2((conta(cella, rosso_seme) > 20) == (k < 26), qPrintable(QString::number(k)));
        }
        QCOMPARE(impronte.size(), CARTE_PER_MAZZO);
    }

    void i_dorsi_e_il_tavolo()
    {
        const QImage blu(media + "dorso.bmp"), rosso(media + "dorsorosso.bmp"), sfondo(media + "SfondoTV2.jpg");
        QVERIFY(blu.size() == QSize(72, 96) && rosso.size() == QSize(72, 96));
        QVERIFY(conta(blu, bluastro) > 72 * 96 / 3 && conta(blu, rossastro) == 0);
        QVERIFY(conta(rosso, rossastro) > 72 * 96 / 3 && conta(rosso, bluastro) == 0);
        QCOMPARE(conta(rosso, rosso_di_selezione) + conta(sfondo, rosso_di_selezione), 0);
        // Green felt over the whole play area.
        QCOMPARE(sfondo.size(), QSize(1024, 768));
        const QRgb centro = sfondo.pixel(512, 384);
        QVERIFY(qGreen(centro) > qRed(centro) + 30 && qGreen(centro) > qBlue(centro) + 20);
    }

    void i_bottoni_dei_semi()
    {
        for (int seme = 1; seme <= 4; ++seme) {
            const QImage bottone = PulsanteSeme::figura_seme(seme);
            QCOMPARE(bottone.size(), QSize(24, 22));
            QCOMPARE(conta(bottone, rosso_di_selezione), 0);
            QCOMPARE(conta(bottone, rosso_seme) > 10, seme <= 2);
            QCOMPARE(conta(bottone, nero, QRect(7, 6, 11, 11)) > 10, seme > 2);
        }
    }

    void i_due_suoni()
    {
        const struct {
            const char* file;
            int da_ms, a_ms;
        } suoni[] = {{"carta.wav", 80, 120}, {"errore.wav", 200, 300}};
        for (const auto& s : suoni) {
            SF_INFO info{};
            SNDFILE* f = sf_open(QFile::encodeName(media + s.file).constData(), SFM_READ, &info);
            QVERIFY(f);
            std::vector<float> v(std::size_t(info.frames));
            sf_readf_float(f, v.data(), info.frames);
            sf_close(f);
            QCOMPARE(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
            QCOMPARE(info.samplerate * 10 + info.channels, 441001);  // 44.1 kHz mono
            const long ms = long(info.frames * 1000 / info.samplerate);
            QVERIFY2(ms >= s.da_ms && ms <= s.a_ms, s.file);
            float picco = 0, inizio = 0;
            for (std::size_t i = 0; i < v.size(); ++i) {
                picco = std::max(picco, std::abs(v[i]));
                if (i < 441) inizio = picco;
            }
            // Loud, starting at once and ending in silence, without a click.
            QVERIFY2(picco > 0.2f && picco < 0.99f && inizio > 0.05f && std::abs(v.back()) < 0.01f, s.file);
        }
    }

    void le_canzoni_del_menu_data()
    {
        QTest::addColumn<QString>("titolo");
        FrmTV& f = prova::finestra();
        f.MMC1->Command("close");
        for (int i = 1; i <= FrmTV::numero_canzoni; ++i)
            QTest::newRow(qPrintable(f.canzoni(i)->text())) << f.canzoni(i)->text();
    }
    void le_canzoni_del_menu()
    {
        QFETCH(QString, titolo);
        // Found by the menu's caption as the game names it, and a song of one to three minutes.
        MMControl lettore;
        lettore.FileName = media + "music/" + titolo + ".MID";
        lettore.Command("open");
        const long ms = lettore.Length();
        QVERIFY2(ms >= 60000 && ms <= 180000, qPrintable(QString::number(ms)));
    }
};

QTEST_MAIN(TestMedia)
#include "tst_media.moc"
