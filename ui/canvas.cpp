// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/canvas.h"

#include "platform/basic.h"
#include "ui/alta_risoluzione.h"

#include <QPainter>

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {
// A hand paints a few hundred cards; past this many calls since the last
// clear the surface stops keeping them and a resize stretches the picture.
constexpr std::size_t tratti_massimi = 200000;
// The scaled pieces kept at once: room for every card face and both backs,
// with a few to spare, at the size a card has on the surface; and the
// largest piece worth keeping (a whole table is drawn once a deal).
constexpr int pezzi_massimi = 64;
constexpr qsizetype pezzo_massimo = 1 << 20;
}  // namespace

std::size_t qHash(const Canvas::Chiave& c, std::size_t seme) noexcept
{
    return qHashMulti(seme, c.figura, c.x, c.y, c.w, c.h, c.larghezza, c.altezza, c.fine);
}

namespace {
// The felt's finer companion, read once and shared by every surface.
struct FeltroFine {
    qint64 figura = 0;
    QImage immagine;
};
FeltroFine feltro_fine;
// Rows of felt stretched at a time: a few hundred kilobytes on a 4K screen.
constexpr int righe_per_striscia = 64;
}  // namespace

bool Canvas::dipingi_fine(const Tratto& t, const QRect& dove)
{
    if (scala_x() <= 1 && scala_y() <= 1) return false;
    const QSizeF tavolo(larghezza_logica, altezza_logica);
    if (QSizeF(t.figura.size()) == tavolo && t.sorgente == t.destinazione) {
        // The felt is a soft grain without edges: stretched less than twice,
        // the classic picture shows the same as its companion, which would
        // cost the first table a whole-screen decoding and resampling.
        if (std::max(scala_x(), scala_y()) < 2) return false;
        if (feltro_fine.figura != t.figura.cacheKey()) {
            const QImage fine = alta_risoluzione::fine(t.figura, std::max(scala_x(), scala_y()));
            if (fine.isNull()) return false;
            feltro_fine = {t.figura.cacheKey(), fine.convertToFormat(QImage::Format_RGB888)};
        }
        // Whatever part of the table is drawn, every pixel is the one a
        // smooth stretch of the whole felt over the surface gives: a stretch
        // steps along each row from its left end, so the rows are stretched
        // from there, a band at a time, and only the part asked for is kept.
        for (int y = dove.top(); y <= dove.bottom(); y += righe_per_striscia) {
            const int righe = std::min(righe_per_striscia, dove.bottom() + 1 - y);
            // One band's pages serve every band and every cell.
            static QImage banda;
            if (banda.width() < dove.right() + 1 || banda.height() < righe)
                banda = QImage(std::max(banda.width(), dove.right() + 1), righe_per_striscia, QImage::Format_RGB888);
            QImage striscia(banda.bits(), dove.right() + 1, righe, banda.bytesPerLine(), QImage::Format_RGB888);
            {
                QPainter pittore(&striscia);
                pittore.setRenderHint(QPainter::SmoothPixmapTransform, true);
                pittore.translate(0, -y);
                pittore.drawImage(QRectF(QPointF(0, 0), QSizeF(img_.size())), feltro_fine.immagine);
            }
            copia(striscia, QRect(dove.left(), 0, dove.width(), righe), QPoint(dove.left(), y));
        }
        return true;
    }
    const Chiave k{t.figura.cacheKey(), t.sorgente.x(), t.sorgente.y(), t.sorgente.width(),
                   t.sorgente.height(), dove.width(),   dove.height(),  true};
    if (const QImage* pronto = pezzi_.object(k)) {
        copia(*pronto, QRect(QPoint(0, 0), dove.size()), dove.topLeft());
        return true;
    }
    const double scala = std::max(dove.width() / t.sorgente.width(), dove.height() / t.sorgente.height());
    const QImage fine = alta_risoluzione::fine(t.figura, scala);
    if (fine.isNull()) return false;
    auto* p = new QImage(alta_risoluzione::ricampiona(fine, t.figura.size(), t.sorgente, dove.size()));
    copia(*p, QRect(QPoint(0, 0), dove.size()), dove.topLeft());
    pezzi_.insert(k, p, p->sizeInBytes());
    return true;
}

const QImage* Canvas::pezzo(const QImage& figura, const QRectF& sorgente, QSize misura)
{
    // A bit of table restored under a card is a different piece for every
    // cell of the table: kept, they would fill the store with hundreds of
    // them over a game. It is drawn afresh each time, the same pixels.
    if (QSizeF(figura.size()) == QSizeF(larghezza_logica, altezza_logica) && sorgente.size() != QSizeF(figura.size()))
        return nullptr;
    const Chiave k{figura.cacheKey(), sorgente.x(),   sorgente.y(),   sorgente.width(),
                   sorgente.height(), misura.width(), misura.height()};
    if (const QImage* pronto = pezzi_.object(k)) return pronto;
    const qsizetype byte = qsizetype(misura.width()) * misura.height() * 4;
    if (byte > pezzo_massimo) return nullptr;
    // Scaled as a painter would draw it, so a piece from the store and one
    // drawn afresh are the same pixels.
    auto* p = new QImage(misura, figura.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    p->fill(Qt::transparent);
    {
        QPainter pittore(p);
        pittore.setRenderHint(QPainter::SmoothPixmapTransform, true);
        pittore.setCompositionMode(QPainter::CompositionMode_Source);
        pittore.drawImage(QRectF(QPointF(0, 0), QSizeF(misura)), figura, sorgente);
    }
    pezzi_.insert(k, p, byte);
    return pezzi_.object(k);
}

Canvas::Canvas() : img_(1024, 768, QImage::Format_RGB32)
{
    img_.fill(qRgb(0, 192, 0));
    misura_pezzi();
}

void Canvas::misura_pezzi()
{
    const QRect carta = in_pixel(QRectF(8, 16, 72, 96));
    pezzi_.setMaxCost(
        std::max<qsizetype>(pezzo_massimo, qsizetype(pezzi_massimi) * carta.width() * carta.height() * 4));
}

void Canvas::ricorda(Tratto t)
{
    if (t.tipo == Tratto::Pulisci) {
        tratti_.clear();
        storia_completa_ = true;
    }
    if (!storia_completa_) return;
    if (tratti_.size() >= tratti_massimi) {
        tratti_.clear();
        tratti_.shrink_to_fit();
        storia_completa_ = false;
        return;
    }
    tratti_.push_back(std::move(t));
}

void Canvas::ridimensiona(int larghezza_px, int altezza_px)
{
    larghezza_px = std::max(1, larghezza_px);
    altezza_px = std::max(1, altezza_px);
    if (larghezza_px == img_.width() && altezza_px == img_.height()) return;
    pezzi_.clear();
    if (storia_completa_) {
        img_ = QImage(larghezza_px, altezza_px, QImage::Format_RGB32);
        img_.fill(qRgb(0, 192, 0));
        misura_pezzi();
        for (const Tratto& t : tratti_) esegui(t);
    } else {
        img_ = img_.scaled(larghezza_px, altezza_px, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                   .convertToFormat(QImage::Format_RGB32);
        misura_pezzi();
    }
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

void Canvas::copia(const QImage& figura, QRect sorgente, QPoint dove)
{
    // The part of the source that exists and lands on the surface.
    QRect da = sorgente.intersected(figura.rect());
    dove += da.topLeft() - sorgente.topLeft();
    const QRect a = QRect(dove, da.size()).intersected(img_.rect());
    if (a.isEmpty()) return;
    da = QRect(da.topLeft() + (a.topLeft() - dove), a.size());
    if (figura.format() != img_.format()) {
        QPainter p(&img_);
        p.drawImage(a.topLeft(), figura, da);
        return;
    }
    // Opaque pixels of one format: a plain copy, row by row, is all a
    // painter would do, without the cost of starting one for every card.
    const std::size_t byte_riga = std::size_t(a.width()) * 4;
    for (int y = 0; y < a.height(); ++y)
        std::memcpy(img_.scanLine(a.y() + y) + std::size_t(a.x()) * 4,
                    figura.constScanLine(da.y() + y) + std::size_t(da.x()) * 4, byte_riga);
}

void Canvas::Cls(QRgb colore)
{
    Tratto t{Tratto::Pulisci, {}, {}, {}, colore, 0};
    esegui(t);
    ricorda(std::move(t));
    // A new hand: what the last one freed goes back to the system, rather
    // than stay with the allocator for good. (Giving every picture pages of
    // its own would do it too, but costs each start a few milliseconds of
    // fresh pages.)
    malloc_trim(0);
}

void Canvas::PaintPicture(const QImage& figura, const QRectF& destinazione, const QRectF& sorgente)
{
    if (figura.isNull()) basic::errore(91);
    Tratto t{Tratto::Figura, figura, destinazione, sorgente, 0, 0};
    esegui(t);
    ricorda(std::move(t));
}

void Canvas::PSet(double x, double y, QRgb colore)
{
    Tratto t{Tratto::Punto, {}, QRectF(x, y, 0, 0), {}, colore, 0};
    esegui(t);
    ricorda(std::move(t));
}

void Canvas::RettangoloVuoto(double x1, double y1, double x2, double y2, QRgb colore, int spessore_px)
{
    Tratto t{Tratto::Cornice, {}, QRectF(QPointF(x1, y1), QPointF(x2, y2)), {}, colore, spessore_px};
    esegui(t);
    ricorda(std::move(t));
}

void Canvas::esegui(const Tratto& t)
{
    switch (t.tipo) {
    case Tratto::Pulisci:
        img_.fill(t.colore);
        segnala(img_.rect());
        return;
    case Tratto::Figura: {
        const QRect dst = in_pixel(t.destinazione);
        if (dst.isEmpty()) return;
        if (dipingi_fine(t, dst)) {
            segnala(dst);
            return;
        }
        if (t.sorgente.size() == QSizeF(dst.size()) && t.sorgente.toRect() == t.sorgente)
            copia(t.figura, t.sorgente.toRect(), dst.topLeft());
        else if (const QImage* pronto = pezzo(t.figura, t.sorgente, dst.size()))
            copia(*pronto, QRect(QPoint(0, 0), dst.size()), dst.topLeft());
        else {
            QPainter p(&img_);
            p.setRenderHint(QPainter::SmoothPixmapTransform, true);
            p.drawImage(QRectF(dst), t.figura, t.sorgente);
        }
        segnala(dst);
        return;
    }
    case Tratto::Punto: {
        const int px = int(std::floor(t.destinazione.x() * scala_x()));
        const int py = int(std::floor(t.destinazione.y() * scala_y()));
        if (!img_.rect().contains(px, py)) return;
        img_.setPixel(px, py, t.colore);
        segnala(QRect(px, py, 1, 1));
        return;
    }
    case Tratto::Cornice: {
        const QRectF& r = t.destinazione;
        const int ax = int(std::floor(r.left() * scala_x())), ay = int(std::floor(r.top() * scala_y()));
        const int bx = int(std::floor(r.right() * scala_x())), by = int(std::floor(r.bottom() * scala_y()));
        const int w = bx - ax + 1, h = by - ay + 1;
        const int s = std::max(1, t.spessore);
        QPainter p(&img_);
        p.fillRect(ax, ay, w, s, QColor(t.colore));
        p.fillRect(ax, by - s + 1, w, s, QColor(t.colore));
        p.fillRect(ax, ay, s, h, QColor(t.colore));
        p.fillRect(bx - s + 1, ay, s, h, QColor(t.colore));
        p.end();
        segnala(QRect(ax, ay, w, h));
        return;
    }
    }
}

long Canvas::Point(double x, double y) const
{
    const int px = int(std::floor(x * scala_x()));
    const int py = int(std::floor(y * scala_y()));
    if (!img_.rect().contains(px, py)) return -1;
    const QRgb c = img_.pixel(px, py);
    return long(qRed(c)) | long(qGreen(c)) << 8 | long(qBlue(c)) << 16;
}
