// SPDX-License-Identifier: GPL-3.0-or-later
// Paints every picture the game shows: the sheet of card faces, the backs of
// the two packs, the green table, the splash, the suit buttons of the jolly
// dialog and the application icon. Everything is drawn here with QPainter, so
// the pictures can be regenerated at will and always come out the same.
//
//   genart <media-dir> <resource-dir>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <vector>

namespace {

enum class Suit { Hearts, Diamonds, Clubs, Spades };
enum Rank { Ace = 1, Jack = 11, Queen = 12, King = 13 };

constexpr int CardWidth = 71, CardHeight = 96;  // one cell of the face sheet
constexpr int BackWidth = 72, BackHeight = 96;

const QColor Felt(18, 92, 48);
const QColor RedInk(200, 16, 32);
const QColor BlackInk(26, 26, 30);
const QColor Gold(228, 176, 44);
const QColor RoyalBlue(34, 70, 170);
const QColor Skin(248, 218, 184);
const QColor Outline(40, 34, 30);
const QColor CardEdge(150, 150, 150);
// The game marks a selected card with a frame of exactly this colour and finds
// it again by reading the screen back, so no picture may ever contain it.
const QRgb SelectionRed = qRgb(255, 0, 0);

bool isRed(Suit s) { return s == Suit::Hearts || s == Suit::Diamonds; }
QColor suitInk(Suit s) { return isRed(s) ? RedInk : BlackInk; }

QColor mix(const QColor& a, const QColor& b, qreal t)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * t, a.greenF() + (b.greenF() - a.greenF()) * t,
                            a.blueF() + (b.blueF() - a.blueF()) * t);
}

void beginPainting(QPainter& p, QImage& img)
{
    p.begin(&img);
    p.setRenderHint(QPainter::Antialiasing);
}

// Filled with an ink outline, as the figures are printed.
void outlined(QPainter& p, const QPainterPath& path, const QColor& fill, qreal width = 0.6)
{
    p.setPen(QPen(Outline, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(fill);
    p.drawPath(path);
}

QPainterPath ellipse(QPointF c, qreal rx, qreal ry)
{
    QPainterPath e;
    e.addEllipse(c, rx, ry);
    return e;
}

QPainterPath polygon(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
    path.closeSubpath();
    return path;
}

void stroke(QPainter& p, const QPainterPath& path, const QColor& colour, qreal width)
{
    p.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
}

QFont serifFont(bool bold = true, bool italic = false)
{
    QFont f;
    f.setFamilies({QStringLiteral("Liberation Serif"), QStringLiteral("DejaVu Serif")});
    f.setPixelSize(100);
    f.setBold(bold);
    f.setItalic(italic);
    return f;
}

// ---------------------------------------------------------------------------
// Suit symbols, each drawn in a unit box centred on the origin (x and y from
// -0.5 to 0.5), point downwards for the heart and upwards for the spade.

QPainterPath heartShape()
{
    // Two round lobes meeting in a dip, their outer sides sweeping to the point.
    const qreal r = 0.25;
    QPainterPath p;
    p.moveTo(0, 0.5);
    p.cubicTo(-0.12, 0.34, -0.42, 0.06, -0.485, -0.164);
    p.arcTo(QRectF(-0.5, -0.5, 2 * r, 2 * r), 200, -200);
    p.arcTo(QRectF(0, -0.5, 2 * r, 2 * r), 180, -200);
    p.cubicTo(0.42, 0.06, 0.12, 0.34, 0, 0.5);
    p.closeSubpath();
    return p;
}

QPainterPath diamondShape()
{
    // A rhombus with the sides drawn very slightly inwards, as printed pips are.
    QPainterPath p;
    p.moveTo(0, -0.5);
    p.quadTo(0.14, -0.22, 0.39, 0);
    p.quadTo(0.14, 0.22, 0, 0.5);
    p.quadTo(-0.14, 0.22, -0.39, 0);
    p.quadTo(-0.14, -0.22, 0, -0.5);
    p.closeSubpath();
    return p;
}

QPainterPath stemShape(qreal top, qreal halfBase)
{
    // The flared foot shared by clubs and spades.
    QPainterPath p;
    p.moveTo(-0.04, top);
    p.quadTo(-0.03, 0.38, -halfBase, 0.5);
    p.lineTo(halfBase, 0.5);
    p.quadTo(0.03, 0.38, 0.04, top);
    p.closeSubpath();
    return p;
}

QPainterPath clubShape()
{
    const qreal r = 0.215;
    QPainterPath leaves;
    leaves.addEllipse(QPointF(0, -0.5 + r), r, r);
    leaves.addEllipse(QPointF(-0.5 + r, 0.05), r, r);
    leaves.addEllipse(QPointF(0.5 - r, 0.05), r, r);
    QPainterPath heart;  // fills the gap where the three leaves meet
    heart.addEllipse(QPointF(0, 0.0), 0.12, 0.12);
    return leaves.united(heart).united(stemShape(0.0, 0.17)).simplified();
}

QPainterPath spadeShape()
{
    // An upturned heart, a little taller than wide, on a flared stem.
    QTransform t;
    t.translate(0, -0.1);
    t.scale(1.0, -0.8);
    return t.map(heartShape()).united(stemShape(0.1, 0.16)).simplified();
}

QPainterPath suitShape(Suit s)
{
    switch (s) {
    case Suit::Hearts: return heartShape();
    case Suit::Diamonds: return diamondShape();
    case Suit::Clubs: return clubShape();
    case Suit::Spades: return spadeShape();
    }
    return {};
}

QPainterPath placedSuit(Suit s, QPointF centre, qreal height, bool upsideDown = false)
{
    QTransform t;
    t.translate(centre.x(), centre.y());
    t.scale(height, upsideDown ? -height : height);
    return t.map(suitShape(s));
}

void fillSuit(QPainter& p, Suit s, QPointF centre, qreal height, bool upsideDown = false)
{
    p.fillPath(placedSuit(s, centre, height, upsideDown), suitInk(s));
}

// ---------------------------------------------------------------------------
// Lettering, converted to outlines so it can be fitted and squeezed exactly.

// Writes text with its capitals `capHeight` tall, the baseline at `baseline`,
// centred on `centreX`, squeezed sideways if it would be wider than `maxWidth`.
void letter(QPainter& p, const QString& text, const QFont& font, qreal centreX, qreal baseline, qreal capHeight,
            qreal maxWidth, const QColor& colour)
{
    QPainterPath capital, glyphs;
    capital.addText(0, 0, font, QStringLiteral("H"));
    glyphs.addText(0, 0, font, text);
    const qreal scale = capHeight / capital.boundingRect().height();
    const QRectF box = glyphs.boundingRect();
    const qreal sx = std::min(scale, maxWidth / box.width());
    QTransform t;
    t.translate(centreX, baseline);
    t.scale(sx, scale);
    t.translate(-box.center().x(), 0);
    p.fillPath(t.map(glyphs), colour);
}

QString rankName(int rank)
{
    switch (rank) {
    case Ace: return QStringLiteral("A");
    case Jack: return QStringLiteral("J");
    case Queen: return QStringLiteral("Q");
    case King: return QStringLiteral("K");
    default: return QString::number(rank);
    }
}

// Runs `paint` once as it is and once turned half a turn about the card's
// centre, as the two ends of a real card read the same from either side.
template <typename Paint>
void bothEnds(QPainter& p, QSizeF card, Paint paint)
{
    paint();
    p.save();
    p.translate(card.width() / 2, card.height() / 2);
    p.rotate(180);
    p.translate(-card.width() / 2, -card.height() / 2);
    paint();
    p.restore();
}

// ---------------------------------------------------------------------------
// Card faces

void paintCardBlank(QPainter& p, QSizeF size)
{
    p.setPen(QPen(CardEdge, 1.0));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(0.5, 0.5, size.width() - 1, size.height() - 1), 4.5, 4.5);
}

// The corner index: rank and suit side by side inside the top 16 units of the
// card, and again inside the bottom 16 units, the right way up for the player
// too. Laid on the table, a card overlapped by the next one shows only one of
// those strips (the top in the player's combinations, the bottom in the
// computer's), and either must say which card it is.
constexpr qreal IndexStrip = 16;
const QPointF BottomIndexShift(44.5, 80);

void paintIndex(QPainter& p, int rank, Suit s)
{
    for (const QPointF shift : {QPointF(0, 0), BottomIndexShift}) {
        letter(p, rankName(rank), serifFont(), 8 + shift.x(), 13 + shift.y(), 10, 12, suitInk(s));
        fillSuit(p, s, QPointF(20 + shift.x(), 8 + shift.y()), 9);
    }
}

// Pip places as printed on real cards: three columns, and the heights as a
// fraction of the distance between the top and the bottom row.
struct Pip {
    int column;  // 0 left, 1 middle, 2 right
    qreal row;  // 0 top .. 1 bottom
};

std::vector<Pip> pipLayout(int rank)
{
    const std::vector<Pip> sides4 = {{0, 0}, {2, 0}, {0, 1}, {2, 1}};
    const std::vector<Pip> sides6 = {{0, 0}, {2, 0}, {0, 0.5}, {2, 0.5}, {0, 1}, {2, 1}};
    const std::vector<Pip> sides8 = {{0, 0},       {2, 0},       {0, 1 / 3.0}, {2, 1 / 3.0},
                                     {0, 2 / 3.0}, {2, 2 / 3.0}, {0, 1},       {2, 1}};
    auto with = [](std::vector<Pip> base, std::initializer_list<Pip> extra) {
        base.insert(base.end(), extra);
        return base;
    };
    switch (rank) {
    case 2: return {{1, 0}, {1, 1}};
    case 3: return {{1, 0}, {1, 0.5}, {1, 1}};
    case 4: return sides4;
    case 5: return with(sides4, {{1, 0.5}});
    case 6: return sides6;
    case 7: return with(sides6, {{1, 0.25}});
    case 8: return with(sides6, {{1, 0.25}, {1, 0.75}});
    case 9: return with(sides8, {{1, 0.5}});
    case 10: return with(sides8, {{1, 1 / 6.0}, {1, 5 / 6.0}});
    default: return {};
    }
}

void paintPips(QPainter& p, int rank, Suit s)
{
    // The pips keep clear of the two index strips.
    const qreal columns[] = {22.5, 35.5, 48.5};
    const qreal size = 12.0, top = IndexStrip + 1 + size / 2, bottom = CardHeight - IndexStrip - 1 - size / 2;
    for (const Pip& pip : pipLayout(rank)) {
        const qreal y = top + (bottom - top) * pip.row;
        // Pips below the middle are printed the other way up.
        fillSuit(p, s, QPointF(columns[pip.column], y), size, pip.row > 0.5);
    }
}

void paintOrnateSpade(QPainter& p)
{
    const QPointF centre(35.5, 47);
    const QPainterPath spade = placedSuit(Suit::Spades, centre, 40);
    // An engraved look: a thin outline standing off the pip all round, a white
    // inlay line inside it and small curls either side of the foot.
    QPainterPathStroker halo;
    halo.setWidth(5.0);
    halo.setJoinStyle(Qt::RoundJoin);
    const QPainterPath outer = halo.createStroke(spade).united(spade).simplified();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(BlackInk, 0.8));
    p.drawPath(outer);
    p.fillPath(spade, BlackInk);
    p.setPen(QPen(Qt::white, 0.8));
    p.drawPath(placedSuit(Suit::Spades, centre + QPointF(0, -1.6), 30).intersected(spade));
    p.setPen(QPen(BlackInk, 0.9, Qt::SolidLine, Qt::RoundCap));
    for (int side : {-1, 1}) {
        QPainterPath curl;
        curl.moveTo(centre + QPointF(side * 4, 23));
        curl.cubicTo(centre + QPointF(side * 12, 24), centre + QPointF(side * 19, 22), centre + QPointF(side * 18, 17));
        curl.cubicTo(centre + QPointF(side * 17.5, 14), centre + QPointF(side * 14, 15),
                     centre + QPointF(side * 15, 17.5));
        p.drawPath(curl);
        p.setBrush(BlackInk);
        p.drawEllipse(centre + QPointF(side * 15, 17.5), 0.9, 0.9);
        p.setBrush(Qt::NoBrush);
    }
}

void paintAce(QPainter& p, Suit s)
{
    if (s == Suit::Spades)
        paintOrnateSpade(p);
    else
        fillSuit(p, s, QPointF(35.5, 48), s == Suit::Diamonds ? 36 : 32);
}

// --- Court figures ---------------------------------------------------------

// The court frame, between the two index strips; one head of the figure stands
// in each half of it.
const QRectF CourtFrame(15.5, 17.5, 40, 61);
// A head is drawn in a box 42 wide and 41.5 high and shrunk to half the frame,
// a little less across than down so the figure keeps its breadth.
constexpr qreal BustWidth = 42, BustHeight = 41.5;

struct Costume {
    QColor robe, trim, collar, headgear, hair;
};

// Each rank keeps its own colouring in all four suits; the suit's own ink takes
// the place of red on the black suits, so those cards stay free of red.
Costume costumeFor(int rank, Suit s)
{
    const QColor accent = isRed(s) ? RedInk : QColor(44, 44, 56);
    switch (rank) {
    case King: return {accent, Gold, Qt::white, Gold, QColor(118, 78, 40)};
    case Queen: return {RoyalBlue, accent, Gold, Gold, QColor(214, 162, 66)};
    default: return {Gold, accent, RoyalBlue, accent, QColor(84, 52, 26)};
    }
}

// Where the parts of a court figure sit, in the top half of the frame
// (42 wide, 41.5 high, the middle of the card along the bottom edge).
const QPointF HeadCentre(19, 15.5);
constexpr qreal ItemX = 37;

void paintHead(QPainter& p, int rank, const Costume& k)
{
    const QPointF c = HeadCentre;
    if (rank == Queen)  // long hair over the shoulders
        outlined(p, polygon({c + QPointF(-6, -3), c + QPointF(6, -3), c + QPointF(8, 10), c + QPointF(-8, 10)}), k.hair,
                 0.5);
    else
        outlined(p, ellipse(c + QPointF(0, rank == King ? 1.5 : -0.8), 6.2, rank == King ? 7.2 : 6.0), k.hair, 0.5);
    outlined(p, ellipse(c, 4.9, 6.0), Skin, 0.5);
    if (rank == Jack) {  // a fringe of curls under the hat
        QPainterPath fringe;
        fringe.moveTo(c + QPointF(-5, -2.5));
        fringe.quadTo(c + QPointF(-1, -1.5), c + QPointF(1, -4));
        fringe.quadTo(c + QPointF(3, -2), c + QPointF(5, -2.5));
        fringe.lineTo(c + QPointF(4, -6));
        fringe.lineTo(c + QPointF(-4, -6));
        fringe.closeSubpath();
        outlined(p, fringe, k.hair, 0.4);
    }
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(238, 172, 152));
    for (int side : {-1, 1}) p.drawEllipse(c + QPointF(side * 2.9, 1.9), 1.1, 0.8);
    p.setBrush(QColor(28, 30, 60));
    for (int side : {-1, 1}) p.drawEllipse(c + QPointF(side * 1.9, -0.5), 0.7, 0.6);
    for (int side : {-1, 1}) {
        QPainterPath brow;
        brow.moveTo(c + QPointF(side * 3.0, -1.6));
        brow.quadTo(c + QPointF(side * 2.0, -2.6), c + QPointF(side * 0.8, -2.0));
        stroke(p, brow, mix(k.hair, Outline, 0.5), 0.5);
    }
    QPainterPath nose(c + QPointF(0.2, -0.9));
    nose.quadTo(c + QPointF(0.9, 1.4), c + QPointF(-0.3, 2.0));
    stroke(p, nose, QColor(160, 106, 84), 0.5);
    if (rank == King) {
        // A full beard below a drooping moustache.
        QPainterPath beard(c + QPointF(-4.8, 0.5));
        beard.quadTo(c + QPointF(-4.6, 9.5), c + QPointF(0, 11.5));
        beard.quadTo(c + QPointF(4.6, 9.5), c + QPointF(4.8, 0.5));
        beard.quadTo(c + QPointF(3.0, 5.0), c + QPointF(0, 4.6));
        beard.quadTo(c + QPointF(-3.0, 5.0), c + QPointF(-4.8, 0.5));
        outlined(p, beard, k.hair, 0.45);
        QPainterPath moustache(c + QPointF(-3.0, 4.2));
        moustache.quadTo(c + QPointF(0, 1.9), c + QPointF(3.0, 4.2));
        stroke(p, moustache, mix(k.hair, Outline, 0.3), 1.0);
        p.setPen(QPen(mix(k.hair, Outline, 0.35), 0.4));
        for (qreal dx : {-2.0, 0.0, 2.0}) p.drawLine(c + QPointF(dx, 6.5), c + QPointF(dx * 0.8, 9.5));
    } else {
        QPainterPath mouth(c + QPointF(-1.3, 3.5));
        mouth.quadTo(c + QPointF(0, 4.3), c + QPointF(1.3, 3.5));
        stroke(p, mouth, QColor(190, 84, 84), 0.8);
    }
}

void paintCrown(QPainter& p, bool small, const QColor& jewel)
{
    const qreal w = small ? 4.4 : 5.6, base = small ? 10.0 : 9.6, tall = small ? 4.2 : 6.0, x = HeadCentre.x();
    outlined(p,
             polygon({{x - w, base},
                      {x - w - 0.6, base - tall},
                      {x - w / 2, base - tall * 0.5},
                      {x, base - tall - 1},
                      {x + w / 2, base - tall * 0.5},
                      {x + w + 0.6, base - tall},
                      {x + w, base}}),
             Gold, 0.5);
    QPainterPath band;
    band.addRect(QRectF(x - w, base - 1.6, 2 * w, 2.6));
    outlined(p, band, Gold, 0.5);
    p.setPen(Qt::NoPen);
    p.setBrush(jewel);
    for (qreal dx : {-w * 0.55, 0.0, w * 0.55}) p.drawEllipse(QPointF(x + dx, base - 0.3), 0.8, 0.8);
    p.setPen(QPen(Outline, 0.35));
    p.setBrush(Gold.lighter(115));
    for (qreal dx : {-w - 0.6, 0.0, w + 0.6})
        p.drawEllipse(QPointF(x + dx, base - tall - (dx == 0 ? 1 : 0)), 0.85, 0.85);
}

void paintBeret(QPainter& p, const Costume& k)
{
    const QPointF c = HeadCentre;
    QPainterPath feather(c + QPointF(3, -7));
    feather.cubicTo(c + QPointF(8, -14), c + QPointF(14, -14), c + QPointF(16.5, -11));
    feather.cubicTo(c + QPointF(12, -11.5), c + QPointF(8, -9), c + QPointF(4.5, -5.5));
    outlined(p, feather, Qt::white, 0.45);
    QPainterPath beret(c + QPointF(-7, -4.5));
    beret.cubicTo(c + QPointF(-8, -11.5), c + QPointF(6, -13), c + QPointF(7.5, -5.5));
    beret.quadTo(c + QPointF(0, -4), c + QPointF(-7, -4.5));
    outlined(p, beret, k.headgear, 0.5);
    QPainterPath band(c + QPointF(-6.8, -4.6));
    band.quadTo(c + QPointF(0, -4.2), c + QPointF(7.3, -5.6));
    stroke(p, band, Gold, 1.3);
}

void paintCollar(QPainter& p, int rank, const Costume& k)
{
    if (rank == King) {
        // An ermine cape over the shoulders: white fur with black tails.
        QPainterPath fur(QPointF(4.2, 30.5));
        fur.cubicTo(5, 26.5, 9, 25, 14, 24.2);
        fur.lineTo(24, 24.2);
        fur.cubicTo(29, 25, 33, 26.5, 33.8, 30.5);
        fur.quadTo(19, 34.5, 4.2, 30.5);
        outlined(p, fur, k.collar, 0.5);
        p.setPen(QPen(Outline, 0.9, Qt::SolidLine, Qt::RoundCap));
        for (QPointF tail : {QPointF(8, 29), QPointF(13, 30.8), QPointF(25, 30.8), QPointF(30, 29), QPointF(10.5, 26.8),
                             QPointF(27.5, 26.8)})
            p.drawLine(tail, tail + QPointF(0, 1.2));
    } else if (rank == Queen) {
        // A gold lace collar and a pendant on a chain.
        QPainterPath chain(QPointF(12.5, 26));
        chain.quadTo(19, 35, 25.5, 26);
        stroke(p, chain, Gold, 0.7);
        outlined(p, polygon({{19, 29.5}, {20.6, 31.3}, {19, 33.1}, {17.4, 31.3}}), k.trim, 0.4);
        QPainterPath lace(QPointF(11.5, 24.5));
        for (int i = 0; i < 5; ++i) lace.quadTo(13.1 + i * 3.2, 28.5, 14.7 + i * 3.2, 24.5);
        lace.quadTo(19, 22, 11.5, 24.5);
        outlined(p, lace, k.collar, 0.45);
    } else {
        outlined(p, polygon({{12, 24.2}, {26, 24.2}, {21.8, 30}, {19, 27.4}, {16.2, 30}}), k.collar, 0.5);
    }
}

void paintHeldItem(QPainter& p, int rank, const Costume& k)
{
    const qreal x = ItemX;
    if (rank == King) {
        // A sceptre topped with an orb and a cross.
        outlined(p, polygon({{x - 0.8, 8}, {x + 0.8, 8}, {x + 0.8, 42}, {x - 0.8, 42}}), Gold, 0.4);
        outlined(p, ellipse(QPointF(x, 6.5), 2.1, 2.1), Gold, 0.4);
        p.setPen(QPen(Outline, 0.8));
        p.drawLine(QPointF(x, 1.2), QPointF(x, 4.4));
        p.drawLine(QPointF(x - 1.3, 2.4), QPointF(x + 1.3, 2.4));
    } else if (rank == Queen) {
        // A rose on a long stem.
        QPainterPath stem(QPointF(x - 0.5, 34));
        stem.quadTo(x + 1.8, 25, x, 15);
        stroke(p, stem, QColor(40, 110, 50), 0.9);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(40, 130, 60));
        p.drawEllipse(QPointF(x + 2.0, 24), 1.7, 0.8);
        p.drawEllipse(QPointF(x - 1.4, 20), 1.5, 0.7);
        for (int i = 0; i < 5; ++i) {
            const qreal a = i * 2 * M_PI / 5 - M_PI / 2;
            outlined(p, ellipse(QPointF(x + 1.7 * std::cos(a), 12.5 + 1.7 * std::sin(a)), 1.6, 1.6), k.trim, 0.35);
        }
        p.setPen(Qt::NoPen);
        p.setBrush(Gold);
        p.drawEllipse(QPointF(x, 12.5), 1.0, 1.0);
    } else {
        // A halberd: a long shaft, a spike and an axe blade.
        outlined(p, polygon({{x - 0.7, 5}, {x + 0.7, 5}, {x + 0.7, 42}, {x - 0.7, 42}}), QColor(128, 84, 42), 0.4);
        const QColor steel(178, 184, 198);
        outlined(p, polygon({{x, 0.3}, {x + 1.3, 5.2}, {x - 1.3, 5.2}}), steel, 0.4);
        QPainterPath blade(QPointF(x - 0.7, 6.5));
        blade.lineTo(x - 4.5, 5);
        blade.quadTo(x - 6.2, 9, x - 4.5, 13);
        blade.lineTo(x - 0.7, 11.5);
        blade.closeSubpath();
        outlined(p, blade, steel, 0.4);
        outlined(p, polygon({{x + 0.7, 8}, {x + 3.5, 9.2}, {x + 0.7, 10.4}}), steel, 0.35);
    }
}

// One head of a court card in the top half of its frame.
void paintBust(QPainter& p, int rank, Suit s)
{
    const Costume k = costumeFor(rank, s);
    if (rank == Queen)  // a veil falling from the crown behind her shoulders
        outlined(p, polygon({{14, 6}, {24, 6}, {30, 27}, {8, 27}}), QColor(214, 228, 246), 0.5);

    // The robe: sloping shoulders and straight sides down to the middle of the
    // card, where it meets the robe of the other head, with a trimmed front.
    QPainterPath robe(QPointF(3, 42));
    robe.lineTo(3.6, 31);
    robe.cubicTo(4.2, 27.2, 8.5, 25.2, 14, 24.2);
    robe.lineTo(24, 24.2);
    robe.cubicTo(29.5, 25.2, 33.8, 27.2, 34.4, 31);
    robe.lineTo(35, 42);
    robe.closeSubpath();
    outlined(p, robe, k.robe, 0.6);
    p.save();
    p.setClipPath(robe);
    const QColor dots = k.robe == Gold ? RoyalBlue : Gold;
    if (rank == Jack) {  // a slashed doublet, striped in the suit's ink
        for (qreal x : {5.5, 10.5, 27.5, 32.0}) p.fillRect(QRectF(x - 0.9, 24, 1.8, 18), k.trim);
    } else {  // a row of embroidered dots
        p.setPen(Qt::NoPen);
        p.setBrush(dots);
        for (qreal x = 5; x < 34; x += 3.4)
            if (std::abs(x - 19) > 4) p.drawEllipse(QPointF(x, 39.5), 0.7, 0.7);
    }
    p.fillRect(QRectF(16.6, 24, 4.8, 18), k.trim);
    p.setPen(QPen(Outline, 0.4));
    p.drawLine(QPointF(16.6, 24), QPointF(16.6, 42));
    p.drawLine(QPointF(21.4, 24), QPointF(21.4, 42));
    p.setPen(Qt::NoPen);
    p.setBrush(dots);
    for (qreal y : {33.5, 37.0, 40.5}) p.drawEllipse(QPointF(19, y), 0.9, 0.9);
    p.restore();
    // Folds marking the arms.
    QPainterPath folds(QPointF(9, 29));
    folds.quadTo(10.5, 35, 10, 42);
    folds.moveTo(28.5, 28.5);
    folds.quadTo(31, 31, ItemX - 1.5, 33);
    stroke(p, folds, mix(k.robe, Outline, 0.55), 0.5);

    outlined(p, polygon({{16.8, 19}, {21.2, 19}, {21.2, 25}, {16.8, 25}}), Skin, 0.4);  // neck
    paintHead(p, rank, k);
    paintCollar(p, rank, k);
    if (rank == Jack)
        paintBeret(p, k);
    else
        paintCrown(p, rank == Queen, rank == King ? RoyalBlue : k.trim);
    paintHeldItem(p, rank, k);
    outlined(p, ellipse(QPointF(ItemX, 34), 2.1, 1.8), Skin, 0.45);  // the hand closing round it
    // The suit beside the head, as printed inside real court frames.
    fillSuit(p, s, QPointF(5.5, 6.5), 7);
}

void paintCourt(QPainter& p, int rank, Suit s)
{
    const QSizeF card(CardWidth, CardHeight);
    const QRectF half(CourtFrame.left(), CourtFrame.top(), CourtFrame.width(), CourtFrame.height() / 2);
    const qreal down = half.height() / BustHeight, across = down * 1.12;
    bothEnds(p, card, [&] {
        p.save();
        p.setClipRect(half);
        p.translate(half.left() + (half.width() - BustWidth * across) / 2, half.top());
        p.scale(across, down);
        paintBust(p, rank, s);
        p.restore();
    });
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(suitInk(s), 0.8));
    p.drawRect(CourtFrame);
    p.setPen(QPen(suitInk(s), 0.5));
    p.drawLine(QPointF(CourtFrame.left(), CourtFrame.center().y()),
               QPointF(CourtFrame.right(), CourtFrame.center().y()));
}

// --- The two jollies ---------------------------------------------------------

struct JollyColours {
    QColor main, second, bells;
};

void paintJester(QPainter& p, const JollyColours& c)
{
    const QPointF head(37, 47);
    // Harlequin tunic below a pleated ruff.
    QPainterPath tunic;
    tunic.moveTo(20, 89);
    tunic.cubicTo(20, 72, 24, 63, 37, 62);
    tunic.cubicTo(50, 63, 54, 72, 54, 89);
    tunic.closeSubpath();
    outlined(p, tunic, c.main, 0.6);
    p.save();
    p.setClipPath(tunic);
    p.setPen(Qt::NoPen);
    p.setBrush(c.second);
    for (int row = 0; row < 4; ++row)
        for (int col = -1; col < 5; ++col) {
            const qreal x = 17 + col * 8 + (row % 2) * 4, y = 63 + row * 8;
            p.drawPath(polygon({{x, y - 4}, {x + 4, y}, {x, y + 4}, {x - 4, y}}));
        }
    p.restore();
    QPainterPath ruff;
    ruff.moveTo(23, 60);
    for (int i = 0; i < 7; ++i) ruff.quadTo(25 + i * 4, 68, 27 + i * 4, 60);
    ruff.quadTo(37, 55, 23, 60);
    outlined(p, ruff, Qt::white, 0.6);
    p.setPen(QPen(c.second, 0.5));
    for (int i = 0; i < 7; ++i) p.drawLine(QPointF(27 + i * 4, 60.5), QPointF(25 + i * 4, 64));

    // Face with a broad grin.
    outlined(p, ellipse(head, 8.5, 9.5), Skin, 0.6);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(240, 160, 150));
    p.drawEllipse(head + QPointF(-5, 3), 1.8, 1.3);
    p.drawEllipse(head + QPointF(5, 3), 1.8, 1.3);
    p.setPen(QPen(Outline, 0.8, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    for (int side : {-1, 1}) {  // eyes closed with laughter
        QPainterPath eye;
        eye.moveTo(head + QPointF(side * 4.5, 0));
        eye.quadTo(head + QPointF(side * 3, -2), head + QPointF(side * 1.5, 0));
        p.drawPath(eye);
    }
    QPainterPath grin;
    grin.moveTo(head + QPointF(-4.5, 4));
    grin.quadTo(head + QPointF(0, 9.5), head + QPointF(4.5, 4));
    grin.quadTo(head + QPointF(0, 6), head + QPointF(-4.5, 4));
    outlined(p, grin, QColor(150, 40, 50), 0.5);
    outlined(p, ellipse(head + QPointF(0, 1.8), 1.5, 1.4), c.main, 0.4);  // a round nose

    // The three-pointed cap: the middle point stands up, the two side points
    // flop outwards, and each ends in a bell.
    struct CapPoint {
        QPointF root1, c1, c2, tip, c3, c4, root2;
    };
    const CapPoint points[] = {
        {{29, 44}, {23, 45}, {18, 45}, {14.5, 42}, {17, 37}, {20, 20}, {33, 36}},
        {{45, 44}, {51, 45}, {56, 45}, {59.5, 42}, {57, 37}, {54, 20}, {41, 36}},
        {{31, 37}, {31, 26}, {35, 14}, {38, 7}, {41, 14}, {45, 26}, {43, 37}},
    };
    for (int i = 0; i < 3; ++i) {
        const CapPoint& cp = points[i];
        QPainterPath point(cp.root1);
        point.cubicTo(cp.c1, cp.c2, cp.tip);
        point.cubicTo(cp.c3, cp.c4, cp.root2);
        point.closeSubpath();
        outlined(p, point, i == 2 ? c.second : c.main, 0.6);
    }
    QPainterPath band;
    band.moveTo(28, 44);
    band.quadTo(37, 33, 46, 44);
    band.quadTo(37, 38, 28, 44);
    outlined(p, band, c.bells, 0.5);
    for (const CapPoint& cp : points) {
        const QPointF tip = cp.tip;
        outlined(p, ellipse(tip, 2.8, 2.8), c.bells, 0.5);
        p.setPen(QPen(Outline, 0.7));
        p.drawLine(tip + QPointF(-1.2, 1.0), tip + QPointF(1.2, 1.0));
    }
}

void paintJolly(QPainter& p, int which)
{
    const JollyColours c = which == 0 ? JollyColours{RedInk, Gold, Gold}
                                      : JollyColours{RoyalBlue, QColor(28, 28, 34), QColor(200, 204, 214)};
    // The word and a star in both index strips, the right way up, as the
    // other cards show rank and suit there.
    for (const QPointF shift : {QPointF(0, 0), QPointF(29.5, 80)}) {
        letter(p, QStringLiteral("JOLLY"), serifFont(), 17 + shift.x(), 12.5 + shift.y(), 8, 30, c.main);
        QPolygonF star;
        for (int i = 0; i < 10; ++i) {
            const qreal a = i * M_PI / 5 - M_PI / 2, r = i % 2 ? 1.5 : 3.6;
            star << QPointF(36 + shift.x() + r * std::cos(a), 8.6 + shift.y() + r * std::sin(a));
        }
        p.setPen(QPen(Outline, 0.3));
        p.setBrush(c.second);
        p.drawPolygon(star);
    }
    // The jester, shrunk to the space between the strips.
    p.save();
    p.translate(35.5, 48);
    p.scale(0.7, 0.7);
    p.translate(-37, -46.6);
    paintJester(p, c);
    p.restore();
}

// Face k of the sheet: 13 cards of each suit from ace to king in the order
// hearts, diamonds, clubs, spades, then the two jollies.
void paintFace(QPainter& p, int k)
{
    paintCardBlank(p, QSizeF(CardWidth, CardHeight));
    if (k >= 52) return paintJolly(p, k - 52);
    const Suit s = Suit(k / 13);
    const int rank = k % 13 + 1;
    paintIndex(p, rank, s);
    if (rank == Ace)
        paintAce(p, s);
    else if (rank >= Jack)
        paintCourt(p, rank, s);
    else
        paintPips(p, rank, s);
}

// `scale` picture pixels to one pixel of the classic picture: 1 for the
// classic files the game reads, more for their finer companions.
QImage cardSheet(int scale)
{
    QImage sheet(9 * CardWidth * scale, 6 * CardHeight * scale, QImage::Format_RGB32);
    sheet.fill(Felt);  // the corners outside each rounded card show the table
    QPainter p;
    beginPainting(p, sheet);
    p.scale(scale, scale);
    for (int k = 0; k < 54; ++k) {
        p.save();
        p.translate(k % 9 * CardWidth, k / 9 * CardHeight);
        paintFace(p, k);
        p.restore();
    }
    return sheet;
}

// ---------------------------------------------------------------------------
// Backs: a white margin round a fine lattice with a rosette in the middle.

// The lattice of a back: a tile six classic pixels wide of one-pixel
// diagonals with a dot in the middle of every diamond. In the classic picture
// it is laid on whole pixels so the diamonds stay crisp; a finer picture draws
// the same lines smoothly.
QImage latticeTile(const QColor& ink, const QColor& light, int scale)
{
    const QColor dot = mix(ink, Qt::white, 0.3);
    QImage tile(6 * scale, 6 * scale, QImage::Format_RGB32);
    if (scale == 1) {
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 6; ++x) {
                const int a = (x + y) % 6, b = (x - y + 6) % 6;
                tile.setPixelColor(x, y, a == 0 || b == 0 ? light : a == 3 && b == 3 ? dot : ink);
            }
        return tile;
    }
    tile.fill(ink);
    QPainter p;
    beginPainting(p, tile);
    p.scale(scale, scale);
    p.setPen(QPen(light, 1.0));
    for (int k = -6; k <= 12; k += 6) {  // the lines of this tile and its neighbours
        p.drawLine(QPointF(k + 0.5, 0.5 - 6), QPointF(k + 0.5 - 12, 0.5 + 6));  // x + y = k + 1
        p.drawLine(QPointF(k + 0.5 - 6, 0.5 - 6), QPointF(k + 0.5 + 6, 0.5 + 6));  // x - y = k
    }
    p.setPen(Qt::NoPen);
    p.setBrush(dot);
    for (QPointF c : {QPointF(3.5, 0.5), QPointF(0.5, 3.5), QPointF(3.5, 6.5), QPointF(6.5, 3.5)})
        p.drawEllipse(c, 0.6, 0.6);
    return tile;
}

QImage cardBack(const QColor& ink, int scale)
{
    QImage img(BackWidth * scale, BackHeight * scale, QImage::Format_RGB32);
    img.fill(Felt);
    QPainter p;
    beginPainting(p, img);
    p.scale(scale, scale);
    paintCardBlank(p, QSizeF(BackWidth, BackHeight));
    const QRectF field(5, 5, BackWidth - 10, BackHeight - 10);
    const QColor light = mix(ink, Qt::white, 0.55);
    QBrush lattice(latticeTile(ink, light, scale));
    lattice.setTransform(QTransform::fromScale(1.0 / scale, 1.0 / scale));
    p.setPen(QPen(ink, 1.0));
    p.setBrush(lattice);
    p.drawRoundedRect(field, 2, 2);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Qt::white, 0.8));
    p.drawRoundedRect(field.adjusted(2, 2, -2, -2), 1.5, 1.5);

    // The medallion: an oval with a double rim and an eight-petalled rosette.
    const QPointF c = field.center();
    p.setPen(QPen(Qt::white, 1.0));
    p.setBrush(ink);
    p.drawEllipse(c, 15, 20);
    p.setPen(QPen(light, 0.6));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(c, 12.8, 17.8);
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 8; ++i) {
        p.save();
        p.translate(c);
        p.rotate(i * 45);
        p.setBrush(i % 2 ? light : Qt::white);
        p.drawEllipse(QPointF(0, -7), 2.4, 5.2);
        p.restore();
    }
    p.setBrush(Qt::white);
    p.drawEllipse(c, 2.6, 2.6);
    p.setBrush(ink);
    p.drawEllipse(c, 1.2, 1.2);
    // Small diamonds at the four corners of the field.
    p.setBrush(Qt::white);
    for (QPointF corner : {field.topLeft() + QPointF(7, 7), field.topRight() + QPointF(-7, 7),
                           field.bottomLeft() + QPointF(7, -7), field.bottomRight() + QPointF(-7, -7)})
        p.drawPath(placedSuit(Suit::Diamonds, corner, 9));
    return img;
}

// ---------------------------------------------------------------------------
// The table: green felt with a fine grain, soft mottling and a darker edge.

QImage tableFelt(int scale)
{
    const int w = 1024, h = 768;
    std::mt19937 rng(1984);
    auto unit = [&rng] { return (rng() >> 8) / double(1 << 24); };  // 0..1, the same on every system

    // Coarse random grid, smoothly interpolated, for the slow changes of tone.
    const int gw = w / 64 + 2, gh = h / 64 + 2;
    std::vector<double> grid(gw * gh);
    for (double& g : grid) g = unit() - 0.5;
    auto mottle = [&](double x, double y) {
        const double gx = x / 64, gy = y / 64;
        const int ix = int(gx), iy = int(gy);
        auto smooth = [](double t) { return t * t * (3 - 2 * t); };
        const double fx = smooth(gx - ix), fy = smooth(gy - iy);
        auto at = [&](int i, int j) { return grid[j * gw + i]; };
        return (at(ix, iy) * (1 - fx) + at(ix + 1, iy) * fx) * (1 - fy) +
               (at(ix, iy + 1) * (1 - fx) + at(ix + 1, iy + 1) * fx) * fy;
    };

    // The grain: one random step of tone per pixel of the classic picture. A
    // finer felt is the same cloth, its grain drawn smoothly between those
    // steps (which also keeps the finer file small and quick to read).
    std::vector<double> grain(std::size_t(w) * h);
    for (double& g : grain) g = unit() - 0.5;
    auto grainAt = [&](double x, double y) {
        x = std::clamp(x, 0.0, w - 1.0), y = std::clamp(y, 0.0, h - 1.0);
        const int ix = std::min(int(x), w - 2), iy = std::min(int(y), h - 2);
        const double fx = x - ix, fy = y - iy;
        auto at = [&](int i, int j) { return grain[std::size_t(j) * w + i]; };
        return (at(ix, iy) * (1 - fx) + at(ix + 1, iy) * fx) * (1 - fy) +
               (at(ix, iy + 1) * (1 - fx) + at(ix + 1, iy + 1) * fx) * fy;
    };

    QImage img(w * scale, h * scale, QImage::Format_RGB32);
    for (int py = 0; py < img.height(); ++py) {
        QRgb* line = reinterpret_cast<QRgb*>(img.scanLine(py));
        const double y = (py + 0.5) / scale - 0.5;
        for (int px = 0; px < img.width(); ++px) {
            const double x = (px + 0.5) / scale - 0.5;
            const double dx = (x - w / 2.0) / (w / 2.0), dy = (y - h / 2.0) / (h / 2.0);
            const double edge = std::clamp((dx * dx + dy * dy - 0.35) / 1.65, 0.0, 1.0);
            const double shade = (1.0 - 0.32 * edge * edge * (3 - 2 * edge)) *
                                 (1.0 + 0.07 * mottle(std::max(x, 0.0), std::max(y, 0.0))) *
                                 (1.0 + 0.10 * grainAt(x, y));
            line[px] = qRgb(std::clamp(int(Felt.red() * shade + 0.5), 0, 255),
                            std::clamp(int(Felt.green() * shade + 0.5), 0, 255),
                            std::clamp(int(Felt.blue() * shade + 0.5), 0, 255));
        }
    }
    // A faint line framing the play area.
    QPainter p;
    beginPainting(p, img);
    p.scale(scale, scale);
    p.setPen(QPen(QColor(255, 255, 255, 22), 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(QRectF(10.5, 10.5, w - 21, h - 21), 14, 14);
    return img;
}

// ---------------------------------------------------------------------------
// Splash: a fan of cards and the name of the game.

QImage splashPicture(int scale)
{
    QImage img(420 * scale, 240 * scale, QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter p;
    beginPainting(p, img);
    p.scale(scale, scale);
    const int fan[] = {39, 12, 24, 36, 52};  // ace of spades, king of hearts, queen of diamonds, jack of clubs, jolly
    const QPointF pivot(210, 262);
    const qreal cardScale = 1.12;
    for (int i = 0; i < 5; ++i) {
        p.save();
        p.translate(pivot);
        p.rotate((i - 2) * 14.0);
        p.translate(-CardWidth * cardScale / 2, -240);
        p.scale(cardScale, cardScale);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0, 0, 0, 36));
        p.drawRoundedRect(QRectF(1.5, 1.5, CardWidth, CardHeight), 5, 5);
        paintFace(p, fan[i]);
        p.restore();
    }
    // The name, between the four suits.
    const QColor title(16, 32, 112);
    letter(p, QStringLiteral("Tavolata"), serifFont(true, true), 210, 214, 33, 200, title);
    const Suit suits[] = {Suit::Hearts, Suit::Clubs, Suit::Diamonds, Suit::Spades};
    for (int i = 0; i < 4; ++i) fillSuit(p, suits[i], QPointF(i < 2 ? 72 + i * 22 : 326 + (i - 2) * 22, 201), 14);
    return img;
}

// ---------------------------------------------------------------------------
// Suit buttons of the jolly dialog, in the classic raised style with 16 colours.

QImage suitButton(Suit s, int scale)
{
    const int w = 24, h = 22;
    const QColor face(192, 192, 192), red(224, 0, 0);
    QImage img(w * scale, h * scale, QImage::Format_RGB32);
    img.fill(face);
    QPainter p;
    beginPainting(p, img);
    p.scale(scale, scale);
    p.setRenderHint(QPainter::Antialiasing, false);
    // The frame lines are one classic pixel wide, laid on whole pixels.
    auto edge = [&](const QColor& c, int x1, int y1, int x2, int y2) {
        p.fillRect(QRectF(x1, y1, x2 - x1 + 1, y2 - y1 + 1), c);
    };
    edge(Qt::white, 0, 0, w - 2, 0);
    edge(Qt::white, 0, 0, 0, h - 2);
    edge(QColor(224, 224, 224), 1, 1, w - 3, 1);
    edge(QColor(224, 224, 224), 1, 1, 1, h - 3);
    edge(Qt::black, 0, h - 1, w - 1, h - 1);
    edge(Qt::black, w - 1, 0, w - 1, h - 1);
    edge(QColor(128, 128, 128), 1, h - 2, w - 2, h - 2);
    edge(QColor(128, 128, 128), w - 2, 1, w - 2, h - 2);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillPath(placedSuit(s, QPointF(12, 11), 13), isRed(s) ? red : Qt::black);
    p.end();
    if (scale > 1) return img;

    // Sixteen colours: the greys of the frame and the suit's edge blends.
    QList<QRgb> table;
    for (int g : {255, 224, 192, 160, 128, 96, 64, 32, 0}) table << qRgb(g, g, g);
    for (qreal t : {0.25, 0.5, 0.75}) table << mix(face, red, t).rgb();
    table << red.rgb();
    return img.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither | Qt::AvoidDither);
}

// ---------------------------------------------------------------------------
// The application icon: two fanned aces on a rounded green square. It is built
// as a list of filled outlines so the PNG and the SVG show the same thing.

struct Shape {
    QPainterPath path;
    QColor fill;
    QColor stroke = Qt::transparent;
    qreal strokeWidth = 0;
};

std::vector<Shape> iconShapes()
{
    std::vector<Shape> shapes;
    QPainterPath square;
    square.addRoundedRect(QRectF(8, 8, 240, 240), 44, 44);
    shapes.push_back({square, Felt, QColor(10, 58, 30), 6});
    // Two aces, spread wide enough that both big pips show even at 16 pixels.
    auto card = [&](QPointF centre, qreal angle, Suit s) {
        QTransform t;
        t.translate(centre.x(), centre.y());
        t.rotate(angle);
        t.translate(-50, -70);
        QPainterPath body;
        body.addRoundedRect(QRectF(0, 0, 100, 140), 12, 12);
        shapes.push_back({t.map(body), Qt::white, QColor(80, 80, 80), 4});
        shapes.push_back({t.map(placedSuit(s, QPointF(50, 72), 70)), suitInk(s)});
    };
    card(QPointF(90, 120), -16, Suit::Spades);
    card(QPointF(166, 138), 14, Suit::Hearts);
    return shapes;
}

QImage renderShapes(const std::vector<Shape>& shapes, int size)
{
    QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p;
    beginPainting(p, img);
    p.scale(size / 256.0, size / 256.0);
    for (const Shape& s : shapes) {
        p.setPen(s.strokeWidth > 0 ? QPen(s.stroke, s.strokeWidth) : QPen(Qt::NoPen));
        p.setBrush(s.fill);
        p.drawPath(s.path);
    }
    return img;
}

QString svgPathData(const QPainterPath& path)
{
    QString d;
    auto num = [](qreal v) { return QString::number(v, 'f', 2); };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        if (e.isMoveTo()) {
            d += QStringLiteral("M%1 %2").arg(num(e.x), num(e.y));
        } else if (e.isLineTo()) {
            d += QStringLiteral("L%1 %2").arg(num(e.x), num(e.y));
        } else if (e.isCurveTo()) {
            const auto c2 = path.elementAt(i + 1), end = path.elementAt(i + 2);
            d += QStringLiteral("C%1 %2 %3 %4 %5 %6")
                     .arg(num(e.x), num(e.y), num(c2.x), num(c2.y), num(end.x), num(end.y));
            i += 2;
        }
    }
    return d + QStringLiteral("Z");
}

QString svgFromShapes(const std::vector<Shape>& shapes)
{
    QString svg;
    QTextStream out(&svg);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" viewBox=\"0 0 256 256\">\n"
        << "  <title>Tavolata</title>\n";
    for (const Shape& s : shapes) {
        out << "  <path fill=\"" << s.fill.name() << "\" fill-rule=\""
            << (s.path.fillRule() == Qt::OddEvenFill ? "evenodd" : "nonzero") << "\"";
        if (s.strokeWidth > 0)
            out << " stroke=\"" << s.stroke.name() << "\" stroke-width=\"" << s.strokeWidth << "\"";
        else
            out << " stroke=\"none\"";
        out << " d=\"" << svgPathData(s.path) << "\"/>\n";
    }
    out << "</svg>\n";
    return svg;
}

// ---------------------------------------------------------------------------

// Nudges any pixel of the selection colour off it, as a last safeguard.
QImage withoutSelectionRed(QImage img)
{
    if (img.format() == QImage::Format_Indexed8) return img;
    img = img.convertToFormat(img.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int y = 0; y < img.height(); ++y) {
        QRgb* line = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < img.width(); ++x)
            if ((line[x] & 0xffffff) == (SelectionRed & 0xffffff)) line[x] = (line[x] & 0xff000000) | 0xfe0000;
    }
    return img;
}

bool save(const QImage& img, const QString& dir, const QString& name, const char* format, int quality = -1)
{
    const QString path = QDir(dir).filePath(name);
    const bool ok = withoutSelectionRed(img).save(path, format, quality);
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "wrote" : "could not write", qPrintable(path));
    return ok;
}

// At most 256 colours, chosen from the picture's own by median cut: a finer
// picture then reads back several times faster and takes a quarter of the
// memory, and the inks of the faces come through unchanged.
QImage withPalette(const QImage& source)
{
    const QImage img = withoutSelectionRed(source).convertToFormat(QImage::Format_RGB32);
    std::map<QRgb, qint64> counted;
    for (int y = 0; y < img.height(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        for (int x = 0; x < img.width(); ++x) ++counted[line[x] | 0xff000000];
    }
    using Colour = std::pair<QRgb, qint64>;
    std::vector<std::vector<Colour>> boxes(1, std::vector<Colour>(counted.begin(), counted.end()));
    auto channel = [](QRgb c, int k) { return k == 0 ? qRed(c) : k == 1 ? qGreen(c) : qBlue(c); };
    auto widest = [&](const std::vector<Colour>& box, int& range) {
        int best = 0;
        range = -1;
        for (int k = 0; k < 3; ++k) {
            int lo = 255, hi = 0;
            for (const Colour& c : box) lo = std::min(lo, channel(c.first, k)), hi = std::max(hi, channel(c.first, k));
            if (hi - lo > range) range = hi - lo, best = k;
        }
        return best;
    };
    while (boxes.size() < 256) {
        int chosen = -1, chosenRange = 0, chosenChannel = 0;
        for (int i = 0; i < int(boxes.size()); ++i) {
            int range;
            const int k = widest(boxes[i], range);
            if (boxes[i].size() > 1 && range > chosenRange) chosen = i, chosenRange = range, chosenChannel = k;
        }
        if (chosen < 0) break;
        std::vector<Colour>& box = boxes[chosen];
        std::sort(box.begin(), box.end(), [&](const Colour& a, const Colour& b) {
            const int ca = channel(a.first, chosenChannel), cb = channel(b.first, chosenChannel);
            return ca != cb ? ca < cb : a.first < b.first;
        });
        qint64 total = 0, half = 0;
        for (const Colour& c : box) total += c.second;
        std::size_t cut = 1;
        for (; cut < box.size() - 1; ++cut)
            if ((half += box[cut - 1].second) * 2 >= total) break;
        boxes.emplace_back(box.begin() + cut, box.end());
        boxes[chosen].resize(cut);
    }
    QList<QRgb> palette;
    for (const auto& box : boxes) {
        double r = 0, g = 0, b = 0, n = 0;
        for (const Colour& c : box)
            r += qRed(c.first) * double(c.second), g += qGreen(c.first) * double(c.second),
                b += qBlue(c.first) * double(c.second), n += double(c.second);
        palette << qRgb(int(r / n + 0.5), int(g / n + 0.5), int(b / n + 0.5));
    }
    std::map<QRgb, uchar> nearest;
    for (const auto& [c, n] : counted) {
        int best = 0, bestDistance = INT_MAX;
        for (int i = 0; i < palette.size(); ++i) {
            const int dr = qRed(c) - qRed(palette[i]), dg = qGreen(c) - qGreen(palette[i]),
                      db = qBlue(c) - qBlue(palette[i]);
            const int d = dr * dr + dg * dg + db * db;
            if (d < bestDistance) bestDistance = d, best = i;
        }
        nearest[c] = uchar(best);
    }
    QImage out(img.size(), QImage::Format_Indexed8);
    out.setColorTable(palette);
    for (int y = 0; y < img.height(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        uchar* to = out.scanLine(y);
        for (int x = 0; x < img.width(); ++x) to[x] = nearest[line[x] | 0xff000000];
    }
    return out;
}

// The fingerprint of a file as written, which the game compares with the
// classic picture it finds beside a finer one.
QByteArray fingerprint(const QString& dir, const QString& name)
{
    QFile f(QDir(dir).filePath(name));
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha1).toHex();
}

// A finer companion of a classic picture: `scale` times its size, named
// "<name>@<scale>x.<format>", carrying the fingerprint of the classic file it
// belongs to. A player who replaces the classic file thus sees his own picture.
bool saveFiner(QImage img, const QString& dir, const QString& classic, int scale, const char* format, int quality = -1)
{
    const QString base = classic.left(classic.lastIndexOf(QLatin1Char('.')));
    const QString name = QStringLiteral("%1@%2x.%3").arg(base).arg(scale).arg(QString::fromLatin1(format).toLower());
    if (qstrcmp(format, "PNG") == 0) img = withPalette(img);
    img.setText(QStringLiteral("Classic-SHA1"), QString::fromLatin1(fingerprint(dir, classic)));
    return save(img, dir, name, format, quality);
}

bool saveText(const QString& text, const QString& dir, const QString& name)
{
    QFile f(QDir(dir).filePath(name));
    const bool ok = f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(text.toUtf8()) >= 0;
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "wrote" : "could not write", qPrintable(f.fileName()));
    return ok;
}

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: genart <media-dir> <resource-dir>\n");
        return 2;
    }
    const QString media = QString::fromLocal8Bit(argv[1]), resources = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(media);
    QDir().mkpath(resources);

    // The faces and the backs twice and four times finer: the game takes the
    // one just fine enough for the screen, so a 1080p table reads a quarter
    // of the pixels a 4K one needs. The felt, which has no edges to keep
    // sharp, only twice.
    const QColor blue(30, 64, 156), red(168, 26, 38);
    bool ok = save(cardSheet(1), media, QStringLiteral("totale.bmp"), "BMP");
    for (int scale : {2, 4}) ok &= saveFiner(cardSheet(scale), media, QStringLiteral("totale.bmp"), scale, "PNG");
    ok &= save(cardBack(blue, 1), media, QStringLiteral("dorso.bmp"), "BMP");
    for (int scale : {2, 4}) ok &= saveFiner(cardBack(blue, scale), media, QStringLiteral("dorso.bmp"), scale, "PNG");
    ok &= save(cardBack(red, 1), media, QStringLiteral("dorsorosso.bmp"), "BMP");
    for (int scale : {2, 4})
        ok &= saveFiner(cardBack(red, scale), media, QStringLiteral("dorsorosso.bmp"), scale, "PNG");
    ok &= save(tableFelt(1), media, QStringLiteral("SfondoTV2.jpg"), "JPG", 92);
    ok &= saveFiner(tableFelt(2), media, QStringLiteral("SfondoTV2.jpg"), 2, "JPG", 85);
    ok &= save(splashPicture(1), resources, QStringLiteral("splash.png"), "PNG");
    ok &= saveFiner(splashPicture(4), resources, QStringLiteral("splash.png"), 4, "PNG");
    const Suit suits[] = {Suit::Hearts, Suit::Diamonds, Suit::Clubs, Suit::Spades};
    for (int i = 0; i < 4; ++i) {
        const QString name = QStringLiteral("seme%1.bmp").arg(i + 1);
        ok &= save(suitButton(suits[i], 1), resources, name, "BMP");
        ok &= saveFiner(suitButton(suits[i], 4), resources, name, 4, "PNG");
    }
    const std::vector<Shape> icon = iconShapes();
    ok &= save(renderShapes(icon, 256), resources, QStringLiteral("tavolata.png"), "PNG");
    ok &= saveText(svgFromShapes(icon), resources, QStringLiteral("tavolata.svg"));
    return ok ? 0 : 1;
}
