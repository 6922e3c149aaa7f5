// SPDX-License-Identifier: GPL-3.0-or-later
// The finer pictures beside the classic ones. A picture the game reads
// ("totale.bmp") may have a companion two, three or four times its size
// ("totale@2x.png", "totale@4x.png", or .jpg) that the art generator marked with the
// fingerprint of the classic file it was drawn with. Where the screen shows a
// picture bigger than its own pixels, the companion is drawn instead, but only
// while it still belongs to the classic file beside it: a player who replaces
// "totale.bmp" sees his own cards, scaled as before. A companion that is
// missing, unreadable, of the wrong size or marked for another file is simply
// not used.
#pragma once

#include <QImage>
#include <QRectF>
#include <QString>

namespace alta_risoluzione {

// Remembers that `classica` was read from the file `percorso`, so that its
// companion can be looked for when it is first needed.
void registra(const QImage& classica, const QString& percorso);

// The companion of a picture given to `registra` just fine enough for
// `scala` screen pixels per pixel of it: the coarsest that is at least that
// fine, or else the finest. Read on first use; null when it has none that
// belongs to it. A companion is kept until a few seconds after it was last
// asked for, then read again the next time.
QImage fine(const QImage& classica, double scala);

// The rectangle `sorgente` of a classic picture (in its pixels) taken from its
// companion `fine` and resampled to `misura` pixels, smoothly: a card with a
// sharp filter, in the surface's format; a whole felt with a plain stretch, at
// three bytes a pixel.
QImage ricampiona(const QImage& fine, QSize classica, const QRectF& sorgente, QSize misura);

// The picture in the file (or resource) `percorso` for a screen of `rapporto`
// device pixels per pixel: above 1, its companion resampled to that many
// pixels with the ratio set, so it shows at the classic picture's size;
// otherwise, or without a companion, the classic picture as read. Null when
// the classic picture cannot be read.
QImage per_schermo(const QString& percorso, qreal rapporto);

}  // namespace alta_risoluzione
