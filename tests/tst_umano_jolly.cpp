// SPDX-License-Identifier: GPL-3.0-or-later
// The jolly dialog "Play a jolly": the card chosen with a suit and a number,
// its face in the preview, and how the dialog confirms it.
#include "human/frmJolly.h"
#include "tst_umano_aiuto.h"

#include <QApplication>
#include <QComboBox>
#include <QTimer>
#include <QtTest>

#include <cmath>

using namespace umano_prova;

class TestUmanoJolly : public QObject {
    Q_OBJECT

    // The face (0-53) of the card sheet that the preview shows most alike.
    static int faccia_mostrata(FrmJolly& d)
    {
        const QRect a = d.posto_anteprima().toRect();
        const QImage vista = d.grab().toImage().copy(a).convertToFormat(QImage::Format_RGB32);
        int migliore = -1;
        double minimo = 1e30;
        for (int k = 0; k < CARTE_PER_MAZZO; ++k) {
            const QImage faccia = immagine_carte.copy((k % 9) * 71, (k / 9) * 96, 71, 96)
                                      .scaled(a.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                      .convertToFormat(QImage::Format_RGB32);
            double somma = 0;
            for (int y = 0; y < a.height(); ++y)
                for (int x = 0; x < a.width(); ++x) {
                    const QRgb p = vista.pixel(x, y), q = faccia.pixel(x, y);
                    somma +=
                        std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
                }
            if (somma < minimo) minimo = somma, migliore = k;
        }
        return migliore;
    }

private slots:
    // A row: the suit button pressed (0 leaves hearts) and the steps down the
    // number list, then how the dialog is left (a press at a point of the
    // preview, Escape or the close box) and the card it confirms ("" none).
    // The preview always shows the card chosen.
    void risposta_data()
    {
        QTest::addColumn<int>("s");
        QTest::addColumn<int>("giu");
        QTest::addColumn<QString>("azione");
        QTest::addColumn<QString>("tag");
        // clang-format off
        QTest::newRow("confirmed at once: ace of hearts") << 0 << 0 << "25 35" << " 1";
        QTest::newRow("king of spades") << 4 << 12 << "25 35" << " 52";
        QTest::newRow("ten of clubs") << 3 << 9 << "25 35" << " 36";
        QTest::newRow("ace of diamonds") << 2 << 0 << "25 35" << " 14";
        QTest::newRow("preview, top-left corner") << 2 << 0 << "0 0" << " 14";
        QTest::newRow("preview, bottom-right corner") << 2 << 0 << "51 70" << " 14";
        QTest::newRow("one to the left") << 2 << 0 << "-1 10" << "";
        QTest::newRow("one below") << 2 << 0 << "10 71" << "";
        QTest::newRow("one to the right") << 2 << 0 << "52 10" << "";
        QTest::newRow("one above") << 2 << 0 << "10 -1" << "";
        QTest::newRow("Escape takes the card shown") << 2 << 4 << "esc" << " 18";
        QTest::newRow("the close box takes the card shown") << 2 << 4 << "close" << " 18";
        // clang-format on
    }
    void risposta()
    {
        QFETCH(int, s);
        QFETCH(int, giu);
        QFETCH(QString, azione);
        QFETCH(QString, tag);
        prova::finestra().Tag = "old";
        FrmJolly d(&frmTV());
        bool chiuso = false, angoli_grigi = true;
        QTimer::singleShot(0, [&] {
            QVERIFY(QApplication::activeModalWidget() == &d);
            if (s) QTest::mouseClick(d.findChild<QAbstractButton*>(QStringLiteral("Option%1").arg(s)), Qt::LeftButton);
            for (int i = 0; i < giu; ++i) QTest::keyClick(d.Combo1, Qt::Key_Down);
            QCOMPARE(faccia_mostrata(d), (s ? s - 1 : 0) * 13 + giu);
            // Its corners show the grey dialog, not the felt the faces carry.
            const QImage vista = d.grab().toImage();
            const QRect anteprima = d.posto_anteprima().toRect();
            for (QPoint p :
                 {anteprima.topLeft(), anteprima.topRight(), anteprima.bottomLeft(), anteprima.bottomRight()})
                angoli_grigi = angoli_grigi && qGreen(vista.pixel(p)) - qRed(vista.pixel(p)) < 16;
            QCOMPARE(QString::fromStdString(frmTV().Tag), QStringLiteral("old"));
            const QPointF a = d.posto_anteprima().topLeft();
            if (azione == "esc")
                QTest::keyClick(&d, Qt::Key_Escape);
            else if (azione == "close")
                d.close();
            else
                QTest::mouseClick(&d, Qt::LeftButton, {},
                                  QPoint(int(a.x() + azione.section(' ', 0, 0).toInt()),
                                         int(a.y() + azione.section(' ', 1).toInt())));
            chiuso = !d.isVisible();
            if (d.isVisible()) d.done(QDialog::Rejected);
        });
        d.exec();
        QCOMPARE(chiuso, !tag.isEmpty());
        QVERIFY(angoli_grigi);
        QCOMPARE(QString::fromStdString(frmTV().Tag), tag.isEmpty() ? QStringLiteral("old") : tag);
    }
};

QTEST_MAIN(TestUmanoJolly)
#include "tst_umano_jolly.moc"
