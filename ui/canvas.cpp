#include "ui/canvas.h"

#include "platform/basic.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

Canvas::Canvas() : img_(1024, 768, QImage::Format_RGB32) { img_.fill(qRgb(0, 192, 0)); }

void Canvas::ridimensiona(int larghezza_px, int altezza_px)
{
    larghezza_px = std::max(1, larghezza_px);
    altezza_px = std::max(1, altezza_px);
    if (larghezza_px == img_.width() && altezza_px == img_.height()) return;
    img_ = img_.scaled(larghezza_px, altezza_px, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
               .convertToFormat(QImage::Format_RGB32);
    segnala(img_.rect());
}

QRect Canvas::in_pixel(const QRectF& r) const
{
    // Edges are rounded the same way for every rectangle, so neighbouring
    // cards meet without a gap or an overlap at any scale.
    const int x1 = int(std::lround(r.left() * scala_x()));
    const int y1 = int(std::lround(r.top() * scala_y()));
    const int x2 = int(std::lround(r.right() * scala_x()));
    const int y2 = int(std::lround(r.bottom() * scala_y()));
    return QRect(x1, y1, std::max(0, x2 - x1), std::max(0, y2 - y1));
}

void Canvas::Cls(QRgb colore)
{
    img_.fill(colore);
    segnala(img_.rect());
}

void Canvas::PaintPicture(const QImage& figura, const QRectF& destinazione, const QRectF& sorgente)
{
    if (figura.isNull()) basic::errore(91);
    const QRect dst = in_pixel(destinazione);
    if (dst.isEmpty()) return;
    QPainter p(&img_);
    p.setRenderHint(QPainter::SmoothPixmapTransform, true);
    p.drawImage(QRectF(dst), figura, sorgente);
    p.end();
    segnala(dst);
}

void Canvas::PSet(double x, double y, QRgb colore)
{
    const int px = int(std::floor(x * scala_x()));
    const int py = int(std::floor(y * scala_y()));
    if (!img_.rect().contains(px, py)) return;
    img_.setPixel(px, py, colore);
    segnala(QRect(px, py, 1, 1));
}

long Canvas::Point(double x, double y) const
{
    const int px = int(std::floor(x * scala_x()));
    const int py = int(std::floor(y * scala_y()));
    if (!img_.rect().contains(px, py)) return -1;
    const QRgb c = img_.pixel(px, py);
    return long(qRed(c)) | long(qGreen(c)) << 8 | long(qBlue(c)) << 16;
}

void Canvas::RettangoloVuoto(double x1, double y1, double x2, double y2, QRgb colore, int spessore_px)
{
    const int ax = int(std::floor(x1 * scala_x())), ay = int(std::floor(y1 * scala_y()));
    const int bx = int(std::floor(x2 * scala_x())), by = int(std::floor(y2 * scala_y()));
    const int w = bx - ax + 1, h = by - ay + 1;
    const int s = std::max(1, spessore_px);
    QPainter p(&img_);
    p.fillRect(ax, ay, w, s, QColor(colore));
    p.fillRect(ax, by - s + 1, w, s, QColor(colore));
    p.fillRect(ax, ay, s, h, QColor(colore));
    p.fillRect(bx - s + 1, ay, s, h, QColor(colore));
    p.end();
    segnala(QRect(ax, ay, w, h));
}
