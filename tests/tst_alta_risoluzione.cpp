// Cards on a screen of more than one pixel per table unit: drawn from the
// finer pictures beside the classic ones while these belong together, from
// the classic pictures otherwise, and the red mark still found by reading the
// table back.
#include "aiuto/posizione.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QFile>
#include <QMenuBar>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace {
const QString media = QStringLiteral(TAVOLATA_SORGENTE "/media");
const QRectF cella(8, 656, 72, 96), re_di_picche(8 * 71, 5 * 96, 71, 96);

// How far apart two pictures of one size are: the mean step of a channel.
double distanza(const QImage& a, const QImage& b)
{
    double somma = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            somma += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    return somma / (3.0 * a.width() * a.height());
}

// A part of a picture simply stretched to a size.
QImage come(const QImage& figura, const QRectF& parte, QSize misura)
{
    QImage r(misura, QImage::Format_RGB32);
    QPainter p(&r);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(QRectF(QPointF(0, 0), QSizeF(misura)), figura, parte);
    return r;
}
}  // namespace

class TestAltaRisoluzione : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { prova::finestra(); }
    void cleanup()
    {
        imposta_cartella_programma(media);
        QCOMPARE(carica_immagini(), 0L);
    }

    void la_carta_mostrata_data()
    {
        QTest::addColumn<double>("scala");
        QTest::addColumn<QString>("guasto");
        QTest::addColumn<bool>("dalla_fine");
        QTest::newRow("one pixel per unit: the classic sheet") << 1.0 << "" << false;
        QTest::newRow("two pixels per unit: the finer sheet") << 2.0 << "" << true;
        QTest::newRow("4K screen: the finer sheet") << 3.75 << "" << true;
        QTest::newRow("classic sheet replaced: the player's own") << 2.0 << "replaced" << false;
        QTest::newRow("finer sheet damaged: the classic one") << 2.0 << "damaged" << false;
        QTest::newRow("finer sheet missing: the classic one") << 2.0 << "missing" << false;
    }
    void la_carta_mostrata()
    {
        QFETCH(double, scala);
        QFETCH(QString, guasto);
        QFETCH(bool, dalla_fine);
        QTemporaryDir cartella;
        for (const char* f : {"totale.bmp", "totale@4x.png", "SfondoTV2.jpg", "dorso.bmp", "dorsorosso.bmp"})
            QVERIFY(QFile::copy(media + "/" + f, cartella.filePath(QString::fromLatin1(f))));
        const QImage fine(media + "/totale@4x.png");
        if (guasto == "replaced") {
            QImage propria(cartella.filePath("totale.bmp"));
            propria.invertPixels();
            QVERIFY(propria.save(cartella.filePath("totale.bmp")));
        }
        QFile foglio_fine(cartella.filePath("totale@4x.png"));
        if (guasto == "damaged") QVERIFY(foglio_fine.resize(foglio_fine.size() / 2));
        if (guasto == "missing") QVERIFY(foglio_fine.remove());
        imposta_cartella_programma(cartella.path());
        QCOMPARE(carica_immagini(), 0L);

        Canvas tela;
        tela.ridimensiona(qRound(1024 * scala), qRound(768 * scala));
        tela.PaintPicture(immagine_carte, cella, re_di_picche);
        const QRect dove = tela.in_pixel(cella);
        const QImage mostrata = tela.Image().copy(dove);
        const double da_classica = distanza(mostrata, come(immagine_carte, re_di_picche, dove.size()));
        const QRectF parte_fine(re_di_picche.topLeft() * 4, re_di_picche.size() * 4);
        const double da_fine = distanza(mostrata, come(fine, parte_fine, dove.size()));
        QVERIFY2((da_fine < da_classica) == dalla_fine, qPrintable(QStringLiteral("%1 from the finer, %2 from the classic").arg(da_fine).arg(da_classica)));
    }

    // The mark is drawn and read back in pure red at two pixels per unit.
    void il_segno_ritrovato_a_scala_due()
    {
        FrmTV& f = prova::finestra();
        const qreal rapporto = f.devicePixelRatioF();
        f.resize(qRound(1024 * 2 / rapporto), qRound(768 * 2 / rapporto) + f.menuBar()->height());
        QApplication::processEvents();
        QCOMPARE(f.tela.larghezza_px(), 2048);
        prova::mano_umano_da("AH 2H 3H 4H 5H");
        disegna_mano(f.tela, mano_umano, false, 0);
        fase = "010";
        turno_umano = f.gioco_avviato = true;
        f.Form_MouseDown(1, 0, float(prova::x_colonna(2)), float(prova::y_riga(43)));
        QCOMPARE(f.tela.Point(10 + 72, 658), 255L);
        f.Form_MouseDown(1, 0, float(prova::x_colonna(5)), float(prova::y_riga(43)));
        QCOMPARE(QString::fromStdString(prova::mano_umano_come_testo()), QStringLiteral("AH 3H 4H 5H 2H"));
        f.resize(qRound(1024 / rapporto), qRound(768 / rapporto) + f.menuBar()->height());
    }
};

QTEST_MAIN(TestAltaRisoluzione)
#include "tst_alta_risoluzione.moc"
