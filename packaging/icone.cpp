// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the application icon in every size the desktop's icon theme asks for,
// scaled from the 256-pixel picture the art generator paints.
//
//   tavolata_icone <picture.png> <hicolor-dir> <icon-name> <size>...
//
// writes <hicolor-dir>/<size>x<size>/apps/<icon-name>.png for each size.
#include <QDir>
#include <QImage>
#include <QString>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 5) {
        std::fprintf(stderr, "usage: %s <picture.png> <hicolor-dir> <icon-name> <size>...\n", argv[0]);
        return 2;
    }
    const QImage originale(QString::fromLocal8Bit(argv[1]));
    if (originale.isNull()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    const QImage sorgente = originale.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QString cartella = QString::fromLocal8Bit(argv[2]);
    const QString nome = QString::fromLocal8Bit(argv[3]);
    for (int i = 4; i < argc; ++i) {
        const int lato = QString::fromLocal8Bit(argv[i]).toInt();
        if (lato <= 0) {
            std::fprintf(stderr, "not a size: %s\n", argv[i]);
            return 2;
        }
        // Halving first keeps every source pixel in the average, so the small
        // sizes stay clean instead of picking up stray pixels of the outline.
        QImage immagine = sorgente;
        while (immagine.width() >= 2 * lato && immagine.height() >= 2 * lato)
            immagine = immagine.scaled(immagine.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        immagine = immagine.scaled(lato, lato, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        const QString dimensione = QStringLiteral("%1x%1/apps").arg(lato);
        if (!QDir(cartella).mkpath(dimensione)) {
            std::fprintf(stderr, "cannot make %s/%s\n", qPrintable(cartella), qPrintable(dimensione));
            return 1;
        }
        const QString file =
            cartella + QLatin1Char('/') + dimensione + QLatin1Char('/') + nome + QStringLiteral(".png");
        if (!immagine.convertToFormat(QImage::Format_ARGB32).save(file, "PNG")) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
