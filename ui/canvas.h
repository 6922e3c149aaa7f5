// SPDX-License-Identifier: GPL-3.0-or-later
// The persistent drawing surface of the table, addressed in 1024 x 768
// logical units and shown at the window's device-pixel resolution. What is
// drawn stays until something is drawn over it. The surface keeps the drawing
// calls since the last Cls, not their pixels: the window paints from them
// straight into its own buffer, so the table is held once, not twice.
#pragma once

#include <QCache>
#include <QImage>
#include <QRectF>
#include <QRgb>

#include <cstdint>
#include <functional>
#include <vector>

class QPainter;

class Canvas {
public:
    static constexpr double larghezza_logica = 1024.0;
    static constexpr double altezza_logica = 768.0;

    Canvas();

    // Gives the surface a new size in device pixels; what was drawn is kept,
    // painted again at the new resolution (the game does not redraw on a
    // resize), so cards stay sharp and colours stay exact.
    void ridimensiona(int larghezza_px, int altezza_px);

    int larghezza_px() const { return misura_.width(); }
    int altezza_px() const { return misura_.height(); }
    double scala_x() const { return misura_.width() / larghezza_logica; }
    double scala_y() const { return misura_.height() / altezza_logica; }

    // Cls: the whole surface in the window's background colour.
    void Cls(QRgb colore);
    // PaintPicture: copies the rectangle `sorgente` (the picture's own pixels)
    // of `figura` into `destinazione` (logical units), scaling it to fit. A
    // picture that never loaded is run-time error 91.
    void PaintPicture(const QImage& figura, const QRectF& destinazione, const QRectF& sorgente);
    // PSet: one point in the given colour; it covers one device pixel.
    void PSet(double x, double y, QRgb colore);
    // Point: the colour of the device pixel under a logical point (RGB in the
    // classic order: red in the low byte, so pure red reads 255).
    long Point(double x, double y) const;
    // Line ... , B: a rectangle outline from (x1, y1) to (x2, y2) whose lines
    // are `spessore_px` device pixels wide, growing inwards from the corners.
    void RettangoloVuoto(double x1, double y1, double x2, double y2, QRgb colore, int spessore_px);

    // What the surface shows in the device rectangle `parte` (the whole
    // surface when none is given), as a picture of its own.
    QImage Image(const QRect& parte = QRect()) const;
    // Paints the device rectangle of the surface that starts at `origine`
    // and is as big as `destinazione` into it (32-bit RGB).
    void dipingi(QImage& destinazione, QPoint origine) const;
    // Device-pixel rectangle covering a logical rectangle.
    QRect in_pixel(const QRectF& logico) const;

    // Called with the device rectangle that changed, so the window repaints it.
    std::function<void(const QRect&)> modificato;

    // The drawing calls kept now (they are pruned as later ones cover them).
    std::size_t tratti() const { return tratti_.size(); }

private:
    // One drawing call, kept so that the picture can be painted again, in
    // part or at another resolution.
    struct Tratto {
        enum Tipo { Pulisci, Figura, Punto, Cornice } tipo;
        QImage figura;
        QRectF destinazione, sorgente;
        QRgb colore = 0;
        int spessore = 0;
    };
    // Keeps a call, drops those it makes useless, and tells the window
    // which pixels changed.
    void ricorda(Tratto t);
    // Whether a call hides what lies under it wherever it paints.
    static bool copre(const Tratto& t);
    // The device pixels a call paints (its bounding rectangle), and whether
    // it paints every one of them.
    QRect impronta(const Tratto& t) const;
    // The whole rectangle of a frame in device pixels, its sides included.
    QRect cornice_px(const Tratto& t) const;
    // Paints the part `ritaglio` (device pixels) of one call into `dest`,
    // whose top left corner is the device pixel `origine`.
    void esegui(const Tratto& t, QImage& dest, QPoint origine, const QRect& ritaglio) const;
    // Copies the rectangle `sorgente` of `figura`, unscaled, with its top
    // left corner at the device pixel `dove`; only what falls inside
    // `ritaglio` lands.
    // Paints the part `ritaglio` of what `disegna` paints over the whole
    // surface, through bands of `formato` (32 or 24 bits a pixel).
    static void a_strisce(QImage& dest, QPoint origine, const QRect& ritaglio, QImage::Format formato,
                          const std::function<void(QPainter&)>& disegna);
    static void copia(QImage& dest, QPoint origine, const QRect& ritaglio, const QImage& figura, QPoint dove);
    // The piece of a picture scaled to a device size, kept for the next
    // time: a hand paints the same few cards over and over at one scale, and
    // a ready piece is a plain copy of pixels. Null for a piece too big to
    // keep (the whole table) or a bit of table, which are painted afresh.
    const QImage* pezzo(const QImage& figura, const QRectF& sorgente, QSize misura) const;
    // Above one device pixel per unit, a picture with a finer companion is
    // drawn from it, each piece resampled once per size; false when the
    // picture has none and is drawn as at one pixel per unit.
    bool dipingi_fine(const Tratto& t, const QRect& dove, QImage& dest, QPoint origine, const QRect& ritaglio) const;

public:
    struct Chiave {
        qint64 figura;
        double x, y, w, h;
        int larghezza, altezza;
        bool fine = false;  // cut from the finer companion
        bool operator==(const Chiave&) const = default;
    };

private:
    // The pieces used last are kept, a hand's worth.
    mutable QCache<Chiave, QImage> pezzi_;
    mutable QImage ultimo_;
    // Puts a new piece in the store and returns it ready to copy, valid
    // until the next piece is made.
    const QImage* metti(const Chiave& k, const QImage& figura) const;
    void misura_pezzi();

    void segnala(const QRect& r)
    {
        if (modificato) modificato(r);
    }
    QSize misura_;
    std::vector<Tratto> tratti_;
};
