// SPDX-License-Identifier: GPL-3.0-or-later
#include "contrasto.h"

#include <QImage>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace {
double luminanza(QRgb c)
{
    auto lineare = [](int v) {
        const double s = v / 255.0;
        return s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lineare(qRed(c)) + 0.7152 * lineare(qGreen(c)) + 0.0722 * lineare(qBlue(c));
}
}  // namespace

namespace simulazione {

double contrasto_minimo(QLabel* etichetta)
{
    QWidget* sotto = etichetta->parentWidget();
    const QRect r = etichetta->geometry();
    const QPalette prima = etichetta->palette();
    const double lettere = luminanza(prima.color(etichetta->foregroundRole()).rgb());
    const QImage con = sotto->grab(r).toImage().convertToFormat(QImage::Format_RGB32);
    QPalette trasparente = prima;
    trasparente.setColor(etichetta->foregroundRole(), Qt::transparent);
    etichetta->setPalette(trasparente);
    const QImage senza = sotto->grab(r).toImage().convertToFormat(QImage::Format_RGB32);
    etichetta->setPalette(prima);
    double minimo = 0;
    for (int y = 0; y < con.height(); ++y)
        for (int x = 0; x < con.width(); ++x) {
            if (con.pixel(x, y) == senza.pixel(x, y)) continue;
            const double dietro = luminanza(senza.pixel(x, y));
            const double c = (std::max(lettere, dietro) + 0.05) / (std::min(lettere, dietro) + 0.05);
            minimo = minimo == 0 ? c : std::min(minimo, c);
        }
    return minimo;
}

}  // namespace simulazione
