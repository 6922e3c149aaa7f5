// SPDX-License-Identifier: GPL-3.0-or-later
// The persistent drawing surface of the table: a raster at the window's
// device-pixel resolution addressed in 1024 x 768 logical units. What is drawn
// stays until something is drawn over it; the window simply shows it.
#pragma once

#include <QCache>
#include <QImage>
#include <QRectF>
#include <QRgb>

#include <cstdint>
#include <functional>
#include <vector>

class Canvas {
public:
    static constexpr double larghezza_logica = 1024.0;
    static constexpr double altezza_logica = 768.0;

    Canvas();

    // Gives the surface a new size in device pixels; what was drawn is kept,
    // shown at the new size (the game does not redraw on a resize): the
    // surface paints again at the new resolution what it was given since the
    // last Cls, so cards stay sharp and colours stay exact.
    void ridimensiona(int larghezza_px, int altezza_px);

    int larghezza_px() const { return img_.width(); }
    int altezza_px() const { return img_.height(); }
    double scala_x() const { return img_.width() / larghezza_logica; }
    double scala_y() const { return img_.height() / altezza_logica; }

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

    // The current image of the surface (for the score sheet's shaded copy).
    const QImage& Image() const { return img_; }
    QImage& Image() { return img_; }
    // Device-pixel rectangle covering a logical rectangle.
    QRect in_pixel(const QRectF& logico) const;

    // Called with the device rectangle that changed, so the window repaints it.
    std::function<void(const QRect&)> modificato;

private:
    // One drawing call, kept so that the picture can be painted again at
    // another resolution.
    struct Tratto {
        enum Tipo { Pulisci, Figura, Punto, Cornice } tipo;
        QImage figura;
        QRectF destinazione, sorgente;
        QRgb colore = 0;
        int spessore = 0;
    };
    void esegui(const Tratto& t);
    void ricorda(Tratto t);
    // Copies the rectangle `sorgente` of `figura`, unscaled, with its top
    // left corner at `dove` (device pixels); what falls outside is left out.
    void copia(const QImage& figura, QRect sorgente, QPoint dove);
    // The piece of a picture scaled to a device size, kept for the next
    // time: a hand paints the same few cards over and over at one scale, and
    // a ready piece is a plain copy of pixels. Null for a piece too big to
    // keep (the whole table), which is painted straight away.
    const QImage* pezzo(const QImage& figura, const QRectF& sorgente, QSize misura);
    // Above one device pixel per unit, a picture with a finer companion is
    // drawn from it, each piece resampled once per size; false when the
    // picture has none and is drawn as at one pixel per unit.
    bool dipingi_fine(const Tratto& t, const QRect& dove);

public:
    struct Chiave {
        qint64 figura;
        double x, y, w, h;
        int larghezza, altezza;
        bool fine = false;  // cut from the finer companion
        bool operator==(const Chiave&) const = default;
    };

private:
    // The pieces used last are kept, as many as one table shows at once.
    QCache<Chiave, QImage> pezzi_;
    void misura_pezzi();

    void segnala(const QRect& r)
    {
        if (modificato) modificato(r);
    }
    QImage img_;
    std::vector<Tratto> tratti_;
    bool storia_completa_ = true;
};
