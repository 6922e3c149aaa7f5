// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/canvas.h"

#include "platform/basic.h"
#include "ui/alta_risoluzione.h"

#include <QPainter>
#include <QRegion>

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {
// The scaled pieces kept at once, at the size a card has on the surface: a
// hand, the pile and the backs, the cards a turn paints over and over (a
// piece of a card packs poorly, to two thirds at best); and the largest
// piece worth keeping (a whole table is drawn once a deal). A table that
// shows more cards than these cuts the rest afresh when it is painted whole.
constexpr int pezzi_massimi = 24;
constexpr qsizetype pezzo_massimo = 1 << 20;
// What a surface shows where nothing has been drawn yet.
constexpr QRgb verde_finestra = qRgb(0, 192, 0);
}  // namespace

std::size_t qHash(const Canvas::Chiave& c, std::size_t seme) noexcept
{
    return qHashMulti(seme, c.figura, c.x, c.y, c.w, c.h, c.larghezza, c.altezza, c.fine);
}

namespace {
// Rows stretched at a time over the whole surface: a quarter of a megabyte
// on a 4K screen.
constexpr int righe_per_striscia = 16;
}  // namespace

bool Canvas::dipingi_fine(const Tratto& t, const QRect& dove, QImage& dest, QPoint origine, const QRect& ritaglio) const
{
    if (scala_x() <= 1 && scala_y() <= 1) return false;
    const QSizeF tavolo(larghezza_logica, altezza_logica);
    if (QSizeF(t.figura.size()) == tavolo && t.sorgente == t.destinazione) {
        // The felt is a soft grain without edges: stretched less than twice,
        // the classic picture shows the same as its companion, which would
        // cost the first table a whole-screen decoding and resampling.
        if (std::max(scala_x(), scala_y()) < 2) return false;
        const QImage fine = alta_risoluzione::fine(t.figura, std::max(scala_x(), scala_y()));
        if (fine.isNull()) return false;
        a_strisce(dest, origine, ritaglio, QImage::Format_RGB888,
                  [&](QPainter& pittore) { pittore.drawImage(QRectF(QPointF(0, 0), QSizeF(misura_)), fine); });
        return true;
    }
    const Chiave k{t.figura.cacheKey(), t.sorgente.x(), t.sorgente.y(), t.sorgente.width(),
                   t.sorgente.height(), dove.width(),   dove.height(),  true};
    const QImage* pronto = pezzi_.object(k);
    if (!pronto) {
        const double scala = std::max(dove.width() / t.sorgente.width(), dove.height() / t.sorgente.height());
        const QImage fine = alta_risoluzione::fine(t.figura, scala);
        if (fine.isNull()) return false;
        pronto = metti(k, alta_risoluzione::ricampiona(fine, t.figura.size(), t.sorgente, dove.size()));
    }
    copia(dest, origine, ritaglio, *pronto, dove.topLeft());
    return true;
}

const QImage* Canvas::metti(const Chiave& k, const QImage& figura) const
{
    ultimo_ = figura;
    pezzi_.insert(k, new QImage(figura), figura.sizeInBytes());
    return &ultimo_;
}

const QImage* Canvas::pezzo(const QImage& figura, const QRectF& sorgente, QSize misura) const
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
    QImage p(misura, figura.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    p.fill(Qt::transparent);
    {
        QPainter pittore(&p);
        pittore.setRenderHint(QPainter::SmoothPixmapTransform, true);
        pittore.setCompositionMode(QPainter::CompositionMode_Source);
        pittore.drawImage(QRectF(QPointF(0, 0), QSizeF(misura)), figura, sorgente);
    }
    return metti(k, p);
}

void Canvas::a_strisce(QImage& dest, QPoint origine, const QRect& ritaglio, QImage::Format formato,
                       const std::function<void(QPainter&)>& disegna)
{
    // Whatever part of the surface is painted, every pixel is the one a
    // smooth stretch over the whole surface gives: a stretch steps along
    // each row from its left end, so the rows are painted from there, a band
    // at a time, and only the part asked for is kept.
    for (int y = ritaglio.top(); y <= ritaglio.bottom(); y += righe_per_striscia) {
        const int righe = std::min(righe_per_striscia, ritaglio.bottom() + 1 - y);
        // One band's pages serve every band and every paint.
        static QImage banda;
        if (banda.width() < ritaglio.right() + 1)
            banda = QImage(ritaglio.right() + 1, righe_per_striscia, QImage::Format_RGB32);
        QImage striscia(banda.bits(), ritaglio.right() + 1, righe, banda.bytesPerLine(), formato);
        {
            QPainter pittore(&striscia);
            pittore.setRenderHint(QPainter::SmoothPixmapTransform, true);
            pittore.translate(0, -y);
            disegna(pittore);
        }
        copia(dest, origine, ritaglio, striscia, QPoint(0, y));
    }
}

Canvas::Canvas() : misura_(1024, 768) { misura_pezzi(); }

void Canvas::misura_pezzi()
{
    const QRect carta = in_pixel(QRectF(8, 16, 72, 96));
    const qsizetype byte_carta = qsizetype(carta.width()) * carta.height() * 4;
    pezzi_.setMaxCost(std::max<qsizetype>(pezzo_massimo, pezzi_massimi * byte_carta));
}

bool Canvas::copre(const Tratto& t) { return t.tipo != Tratto::Figura || !t.figura.hasAlphaChannel(); }

void Canvas::ricorda(Tratto t)
{
    const QRect r = impronta(t);
    if (t.tipo == Tratto::Pulisci) tratti_.clear();
    // A picture hides every earlier picture that lies wholly inside it, at
    // every size of the surface (edges are rounded alike), and the marks
    // and points drawn on it: a card drawn again wipes its red frame out.
    // Those calls can go, and a hand's list stays as long as the table has
    // places.
    if (t.tipo == Tratto::Figura && copre(t))
        std::erase_if(tratti_, [&](const Tratto& prima) {
            return prima.tipo != Tratto::Pulisci && t.destinazione.contains(prima.destinazione);
        });
    // A frame drawn again over itself hides the one before.
    if (t.tipo == Tratto::Cornice)
        std::erase_if(tratti_, [&](const Tratto& prima) {
            return prima.tipo == Tratto::Cornice && prima.destinazione == t.destinazione &&
                   std::max(1, prima.spessore) <= std::max(1, t.spessore);
        });
    tratti_.push_back(std::move(t));
    if (!r.isEmpty()) segnala(r);
}

void Canvas::ridimensiona(int larghezza_px, int altezza_px)
{
    const QSize nuova(std::max(1, larghezza_px), std::max(1, altezza_px));
    if (nuova == misura_) return;
    pezzi_.clear();
    ultimo_ = QImage();
    misura_ = nuova;
    misura_pezzi();
    segnala(QRect(QPoint(0, 0), misura_));
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

void Canvas::copia(QImage& dest, QPoint origine, const QRect& ritaglio, const QImage& figura, QPoint dove)
{
    // The part of the picture that exists and lands inside the clip.
    const QRect a = QRect(dove, figura.size()).intersected(ritaglio);
    if (a.isEmpty()) return;
    const QPoint da = a.topLeft() - dove, in_dest = a.topLeft() - origine;
    if (figura.format() != dest.format()) {
        QPainter p(&dest);
        p.drawImage(in_dest, figura, QRect(da, a.size()));
        return;
    }
    // Opaque pixels of one format: a plain copy, row by row, is all a
    // painter would do, without the cost of starting one for every card.
    const std::size_t byte_riga = std::size_t(a.width()) * 4;
    for (int y = 0; y < a.height(); ++y)
        std::memcpy(dest.scanLine(in_dest.y() + y) + std::size_t(in_dest.x()) * 4,
                    figura.constScanLine(da.y() + y) + std::size_t(da.x()) * 4, byte_riga);
}

void Canvas::Cls(QRgb colore)
{
    ricorda(Tratto{Tratto::Pulisci, {}, {}, {}, colore, 0});
    // A new hand: what the last one freed goes back to the system, rather
    // than stay with the allocator for good. (Giving every picture pages of
    // its own would do it too, but costs each start a few milliseconds of
    // fresh pages.)
    malloc_trim(0);
}

void Canvas::PaintPicture(const QImage& figura, const QRectF& destinazione, const QRectF& sorgente)
{
    if (figura.isNull()) basic::errore(91);
    ricorda(Tratto{Tratto::Figura, figura, destinazione, sorgente, 0, 0});
}

void Canvas::PSet(double x, double y, QRgb colore)
{
    ricorda(Tratto{Tratto::Punto, {}, QRectF(x, y, 0, 0), {}, colore, 0});
}

void Canvas::RettangoloVuoto(double x1, double y1, double x2, double y2, QRgb colore, int spessore_px)
{
    ricorda(Tratto{Tratto::Cornice, {}, QRectF(QPointF(x1, y1), QPointF(x2, y2)), {}, colore, spessore_px});
}

QRect Canvas::impronta(const Tratto& t) const
{
    const QRect superficie(QPoint(0, 0), misura_);
    switch (t.tipo) {
    case Tratto::Pulisci: return superficie;
    case Tratto::Figura: return in_pixel(t.destinazione).intersected(superficie);
    case Tratto::Punto:
        return QRect(int(std::floor(t.destinazione.x() * scala_x())), int(std::floor(t.destinazione.y() * scala_y())),
                     1, 1)
            .intersected(superficie);
    case Tratto::Cornice: return cornice_px(t).intersected(superficie);
    }
    return {};
}

QRect Canvas::cornice_px(const Tratto& t) const
{
    const QRectF& r = t.destinazione;
    const int ax = int(std::floor(r.left() * scala_x())), ay = int(std::floor(r.top() * scala_y()));
    const int bx = int(std::floor(r.right() * scala_x())), by = int(std::floor(r.bottom() * scala_y()));
    return QRect(QPoint(ax, ay), QPoint(bx, by));
}

namespace {
// Fills the rectangle `r` of `dest` (its own pixels) with an opaque colour.
void riempi(QImage& dest, const QRect& r, QRgb colore)
{
    for (int y = r.top(); y <= r.bottom(); ++y)
        std::fill_n(reinterpret_cast<QRgb*>(dest.scanLine(y)) + r.left(), r.width(), colore | 0xff000000u);
}
}  // namespace

void Canvas::esegui(const Tratto& t, QImage& dest, QPoint origine, const QRect& ritaglio) const
{
    switch (t.tipo) {
    case Tratto::Pulisci: riempi(dest, ritaglio.translated(-origine), t.colore); return;
    case Tratto::Figura: {
        const QRect dst = in_pixel(t.destinazione);
        if (dipingi_fine(t, dst, dest, origine, ritaglio)) return;
        if (t.sorgente.size() == QSizeF(dst.size()) && t.sorgente.toRect() == t.sorgente)
            copia(dest, origine, ritaglio, t.figura, dst.topLeft() - t.sorgente.toRect().topLeft());
        else if (const QImage* pronto = pezzo(t.figura, t.sorgente, dst.size()))
            copia(dest, origine, ritaglio, *pronto, dst.topLeft());
        else
            a_strisce(dest, origine, ritaglio, QImage::Format_RGB32,
                      [&](QPainter& pittore) { pittore.drawImage(QRectF(dst), t.figura, t.sorgente); });
        return;
    }
    case Tratto::Punto: {
        const QPoint p = impronta(t).topLeft() - origine;
        if (ritaglio.contains(p + origine)) dest.setPixel(p, t.colore);
        return;
    }
    case Tratto::Cornice: {
        const QRect r = cornice_px(t);
        const int s = std::max(1, t.spessore);
        for (const QRect& lato :
             {QRect(r.left(), r.top(), r.width(), s), QRect(r.left(), r.bottom() - s + 1, r.width(), s),
              QRect(r.left(), r.top(), s, r.height()), QRect(r.right() - s + 1, r.top(), s, r.height())})
            riempi(dest, lato.intersected(ritaglio).translated(-origine), t.colore);
        return;
    }
    }
}

void Canvas::dipingi(QImage& dest, QPoint origine) const
{
    const QRect regione = QRect(origine, dest.size()).intersected(QRect(QPoint(0, 0), misura_));
    if (regione.isEmpty()) return;
    // From the last call back, each one that still shows somewhere in the
    // region is painted, clipped to where it shows; what a picture covers,
    // nothing before it can show through.
    QRegion scoperta(regione);
    std::vector<std::pair<const Tratto*, QRect>> da_fare;
    for (auto t = tratti_.rbegin(); t != tratti_.rend() && !scoperta.isEmpty(); ++t) {
        const QRect r = impronta(*t).intersected(regione);
        if (r.isEmpty()) continue;
        // Most often one picture covers all that is left to paint.
        const QRect resto = scoperta.boundingRect();
        if (t->tipo != Tratto::Cornice && copre(*t) && r.contains(resto)) {
            da_fare.emplace_back(&*t, resto);
            scoperta = QRegion();
            break;
        }
        const QRegion vista = scoperta.intersected(r);
        if (vista.isEmpty()) continue;
        da_fare.emplace_back(&*t, vista.boundingRect());
        if (t->tipo == Tratto::Cornice) {
            const int s = std::max(1, t->spessore);
            // A frame hides only its four sides.
            const QRect c = cornice_px(*t);
            scoperta -= QRegion(r).subtracted(QRegion(c.adjusted(s, s, -s, -s)));
        } else if (copre(*t)) {
            scoperta -= QRegion(r);
        }
    }
    const Tratto sotto{Tratto::Pulisci, {}, {}, {}, verde_finestra, 0};
    for (const QRect& r : scoperta) esegui(sotto, dest, origine, r);
    for (auto f = da_fare.rbegin(); f != da_fare.rend(); ++f) esegui(*f->first, dest, origine, f->second);
}

QImage Canvas::Image(const QRect& parte) const
{
    const QRect superficie(QPoint(0, 0), misura_);
    const QRect r = parte.isNull() ? superficie : parte.intersected(superficie);
    QImage img(r.size(), QImage::Format_RGB32);
    if (!img.isNull()) dipingi(img, r.topLeft());
    return img;
}

long Canvas::Point(double x, double y) const
{
    const QPoint p(int(std::floor(x * scala_x())), int(std::floor(y * scala_y())));
    if (!QRect(QPoint(0, 0), misura_).contains(p)) return -1;
    QImage pixel(1, 1, QImage::Format_RGB32);
    dipingi(pixel, p);
    const QRgb c = pixel.pixel(0, 0);
    return long(qRed(c)) | long(qGreen(c)) << 8 | long(qBlue(c)) << 16;
}
