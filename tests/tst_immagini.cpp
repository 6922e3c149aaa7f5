// The pictures under media/ and ui/risorse/ as a player sees them: a sheet of
// 54 distinct faces in the right colours, two different backs, a table the
// size of the play area and the suit buttons of the jolly dialog.
#include <QCryptographicHash>
#include <QImage>
#include <QSet>
#include <QtTest>

namespace {

constexpr int CellWidth = 71, CellHeight = 96;

QImage picture(const char* relativePath)
{
    return QImage(QStringLiteral(TAVOLATA_SORGENTE "/") + QLatin1String(relativePath));
}

// The game finds a selected card again by reading this colour back from the
// screen, so it must never appear in a picture.
bool containsSelectionRed(const QImage& img)
{
    const QImage rgb = img.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < rgb.height(); ++y)
        for (int x = 0; x < rgb.width(); ++x)
            if (rgb.pixel(x, y) == qRgb(255, 0, 0)) return true;
    return false;
}

bool isReddish(QRgb c) { return qRed(c) >= 150 && qGreen(c) <= 80 && qBlue(c) <= 90; }

int countPixels(const QImage& img, bool (*test)(QRgb))
{
    int n = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) n += test(img.pixel(x, y));
    return n;
}

QImage cell(const QImage& sheet, int k)
{
    return sheet.copy(k % 9 * CellWidth, k / 9 * CellHeight, CellWidth, CellHeight).convertToFormat(QImage::Format_RGB32);
}

}  // namespace

class TestImmagini : public QObject {
    Q_OBJECT
    QImage foglio;

private slots:
    void initTestCase()
    {
        foglio = picture("media/totale.bmp");
        QVERIFY2(!foglio.isNull(), "media/totale.bmp is missing: run genart");
    }

    void il_foglio_ha_nove_colonne_e_sei_righe() { QCOMPARE(foglio.size(), QSize(9 * CellWidth, 6 * CellHeight)); }

    void ogni_faccia_e_diversa_dalle_altre()
    {
        QSet<QByteArray> impronte;
        for (int k = 0; k < 54; ++k) {
            const QImage c = cell(foglio, k);
            impronte.insert(QCryptographicHash::hash(
                QByteArrayView(reinterpret_cast<const char*>(c.constBits()), c.sizeInBytes()),
                QCryptographicHash::Sha1));
        }
        QCOMPARE(impronte.size(), 54);
    }

    void il_colore_del_seme_data()
    {
        QTest::addColumn<int>("prima");
        QTest::addColumn<bool>("rossa");
        QTest::newRow("cuori") << 0 << true;
        QTest::newRow("quadri") << 13 << true;
        QTest::newRow("fiori") << 26 << false;
        QTest::newRow("picche") << 39 << false;
    }

    void il_colore_del_seme()
    {
        QFETCH(int, prima);
        QFETCH(bool, rossa);
        for (int k = prima; k < prima + 13; ++k)
            QVERIFY2((countPixels(cell(foglio, k), isReddish) > 20) == rossa,
                     qPrintable(QStringLiteral("face %1").arg(k)));
    }

    void niente_rosso_di_selezione_data()
    {
        QTest::addColumn<QString>("percorso");
        for (const char* p : {"media/totale.bmp", "media/dorso.bmp", "media/dorsorosso.bmp", "media/SfondoTV2.jpg"})
            QTest::newRow(p) << QString::fromLatin1(p);
    }

    void niente_rosso_di_selezione()
    {
        QFETCH(QString, percorso);
        const QImage img = picture(qPrintable(percorso));
        QVERIFY(!img.isNull());
        QVERIFY(!containsSelectionRed(img));
    }

    void i_dorsi_dei_due_mazzi()
    {
        const QImage blu = picture("media/dorso.bmp"), rosso = picture("media/dorsorosso.bmp");
        QCOMPARE(blu.size(), QSize(72, 96));
        QCOMPARE(rosso.size(), QSize(72, 96));
        QVERIFY(blu.convertToFormat(QImage::Format_RGB32) != rosso.convertToFormat(QImage::Format_RGB32));
        auto bluastro = [](QRgb c) { return qBlue(c) > qRed(c) + 40; };
        auto rossastro = [](QRgb c) { return qRed(c) > qBlue(c) + 40; };
        const int area = 72 * 96;
        QVERIFY(countPixels(blu, bluastro) > area / 3);
        QCOMPARE(countPixels(blu, rossastro), 0);
        QVERIFY(countPixels(rosso, rossastro) > area / 3);
        QCOMPARE(countPixels(rosso, bluastro), 0);
    }

    void lo_sfondo_copre_il_tavolo()
    {
        const QImage sfondo = picture("media/SfondoTV2.jpg");
        QCOMPARE(sfondo.size(), QSize(1024, 768));
        // Green felt: the middle of the table is clearly green.
        const QRgb centro = sfondo.pixel(512, 384);
        QVERIFY(qGreen(centro) > qRed(centro) + 30 && qGreen(centro) > qBlue(centro) + 20);
    }

    void i_bottoni_dei_semi_data()
    {
        QTest::addColumn<QString>("percorso");
        QTest::addColumn<bool>("rosso");
        QTest::newRow("cuori") << QStringLiteral("ui/risorse/seme1.bmp") << true;
        QTest::newRow("quadri") << QStringLiteral("ui/risorse/seme2.bmp") << true;
        QTest::newRow("fiori") << QStringLiteral("ui/risorse/seme3.bmp") << false;
        QTest::newRow("picche") << QStringLiteral("ui/risorse/seme4.bmp") << false;
    }

    void i_bottoni_dei_semi()
    {
        QFETCH(QString, percorso);
        QFETCH(bool, rosso);
        const QImage bottone = picture(qPrintable(percorso));
        QCOMPARE(bottone.size(), QSize(24, 22));
        QVERIFY(!containsSelectionRed(bottone));
        QCOMPARE(countPixels(bottone, isReddish) > 10, rosso);
    }
};

QTEST_MAIN(TestImmagini)
#include "tst_immagini.moc"
