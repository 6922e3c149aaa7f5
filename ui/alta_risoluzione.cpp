#include "ui/alta_risoluzione.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace alta_risoluzione {

namespace {

// Companions up to this size stay in memory (the face sheet, the backs); the
// felt, several times bigger, is read again the few times it is needed.
constexpr qsizetype byte_da_tenere = 8 << 20;
const QString chiave_impronta = QStringLiteral("Classic-SHA1");
// Pieces up to this many pixels (a card, a splash) get the sharper filter.
constexpr qsizetype piccolo_massimo = 1 << 20;

struct Compagna {
    QString percorso;  // the classic file
    qint64 chiave = 0;  // the classic picture read from it
    QSize misura;
    bool cercata = false;
    QString file;  // the companion that belongs to it; empty when none
    QSize misura_fine;
    QImage tenuta;
};
std::vector<Compagna> compagne;

// The companion of the classic file `percorso`, of size `misura`: the finest
// of "<name>@4x", "@3x", "@2x" (PNG or JPEG) that is a whole multiple of the
// classic size and carries the fingerprint of the classic file's bytes.
QString compagna_di(const QString& percorso, QSize misura, QSize* misura_fine)
{
    const QFileInfo info(percorso);
    const QString base = info.path() + QLatin1Char('/') + info.completeBaseName();
    QByteArray impronta;
    for (int volte : {4, 3, 2})
        for (const char* estensione : {"png", "jpg"}) {
            const QString candidato = QStringLiteral("%1@%2x.%3").arg(base).arg(volte).arg(QLatin1String(estensione));
            if (!QFile::exists(candidato)) continue;
            QImageReader lettore(candidato);
            if (lettore.size() != misura * volte) continue;
            if (impronta.isEmpty()) {
                QFile classico(percorso);
                if (!classico.open(QIODevice::ReadOnly)) return {};
                impronta = QCryptographicHash::hash(classico.readAll(), QCryptographicHash::Sha1).toHex();
            }
            if (lettore.text(chiave_impronta).toLatin1() != impronta) continue;
            *misura_fine = misura * volte;
            return candidato;
        }
    return {};
}

// The weights that make each pixel of a line `a` long from a line `da` long:
// a Lanczos filter of three lobes, stretched over the pixels that shrink into
// one. It keeps the steps of an edge as steep as the screen allows, where
// plain averaging would spread them over two pixels.
struct Pesi {
    std::vector<int> primo, quanti;
    std::vector<float> pesi;  // `larghezza` for each pixel
    int larghezza = 0;
};

Pesi pesi_lungo(int da, int a)
{
    const double rapporto = double(da) / a, allargo = std::max(1.0, rapporto), raggio = 3 * allargo;
    Pesi p;
    p.larghezza = int(std::ceil(2 * raggio)) + 1;
    p.pesi.assign(std::size_t(a) * p.larghezza, 0.f);
    for (int i = 0; i < a; ++i) {
        const double centro = (i + 0.5) * rapporto - 0.5;
        const int primo = std::max(0, int(std::floor(centro - raggio)) + 1);
        const int ultimo = std::min(da - 1, int(std::floor(centro + raggio)));
        double somma = 0;
        float* w = &p.pesi[std::size_t(i) * p.larghezza];
        for (int j = primo; j <= ultimo && j - primo < p.larghezza; ++j) {
            const double x = (j - centro) / allargo;
            const double v = x == 0 ? 1 : std::abs(x) >= 3 ? 0 : 3 * std::sin(M_PI * x) * std::sin(M_PI * x / 3) / (M_PI * M_PI * x * x);
            w[j - primo] = float(v);
            somma += v;
        }
        for (int j = 0; j < p.larghezza; ++j) w[j] = float(w[j] / somma);
        p.primo.push_back(primo);
        p.quanti.push_back(std::min(ultimo - primo + 1, p.larghezza));
    }
    return p;
}

QImage lanczos(const QImage& da, QSize a)
{
    const Pesi ox = pesi_lungo(da.width(), a.width()), oy = pesi_lungo(da.height(), a.height());
    // Across first, into three floats a pixel; then down.
    std::vector<float> mezzo(std::size_t(a.width()) * da.height() * 3);
    for (int y = 0; y < da.height(); ++y) {
        const QRgb* riga = reinterpret_cast<const QRgb*>(da.constScanLine(y));
        float* out = &mezzo[std::size_t(y) * a.width() * 3];
        for (int x = 0; x < a.width(); ++x) {
            const float* w = &ox.pesi[std::size_t(x) * ox.larghezza];
            const QRgb* in = riga + ox.primo[x];
            float r = 0, g = 0, b = 0;
            for (int j = 0; j < ox.quanti[x]; ++j) r += w[j] * qRed(in[j]), g += w[j] * qGreen(in[j]), b += w[j] * qBlue(in[j]);
            out[3 * x] = r, out[3 * x + 1] = g, out[3 * x + 2] = b;
        }
    }
    QImage risultato(a, QImage::Format_RGB32);
    const std::size_t passo = std::size_t(a.width()) * 3;
    auto canale = [](float v) { return int(std::clamp(v + 0.5f, 0.f, 255.f)); };
    for (int y = 0; y < a.height(); ++y) {
        const float* w = &oy.pesi[std::size_t(y) * oy.larghezza];
        QRgb* out = reinterpret_cast<QRgb*>(risultato.scanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            const float* in = &mezzo[std::size_t(oy.primo[y]) * passo + 3 * x];
            float r = 0, g = 0, b = 0;
            for (int j = 0; j < oy.quanti[y]; ++j, in += passo) r += w[j] * in[0], g += w[j] * in[1], b += w[j] * in[2];
            QRgb c = qRgb(canale(r), canale(g), canale(b));
            // The selected card's frame is the only pure red on the table.
            if (c == qRgb(255, 0, 0)) c = qRgb(254, 0, 0);
            out[x] = c;
        }
    }
    return risultato;
}

// A companion as read, or null when its content turns out to be damaged.
QImage leggi(const QString& file, QSize attesa)
{
    QImageReader lettore(file);
    const QImage figura = lettore.read();
    return figura.size() == attesa ? figura : QImage();
}

}  // namespace

void registra(const QImage& classica, const QString& percorso)
{
    std::erase_if(compagne, [&](const Compagna& c) { return c.percorso == percorso; });
    if (classica.isNull()) return;
    Compagna c;
    c.percorso = percorso;
    c.chiave = classica.cacheKey();
    c.misura = classica.size();
    compagne.push_back(c);
}

QImage fine(const QImage& classica)
{
    if (classica.isNull()) return {};
    for (Compagna& c : compagne) {
        if (c.chiave != classica.cacheKey()) continue;
        if (!c.cercata) {
            c.cercata = true;
            c.file = compagna_di(c.percorso, c.misura, &c.misura_fine);
        }
        if (c.file.isEmpty()) return {};
        if (!c.tenuta.isNull()) return c.tenuta;
        const QImage figura = leggi(c.file, c.misura_fine);
        if (figura.isNull())
            c.file.clear();  // damaged: the classic picture serves from now on
        else if (figura.sizeInBytes() <= byte_da_tenere)
            c.tenuta = figura;
        return figura;
    }
    return {};
}

QImage ricampiona(const QImage& fine, QSize classica, const QRectF& sorgente, QSize misura)
{
    const double vx = double(fine.width()) / classica.width(), vy = double(fine.height()) / classica.height();
    const QRect parte = QRectF(sorgente.x() * vx, sorgente.y() * vy, sorgente.width() * vx, sorgente.height() * vy)
                            .toAlignedRect()
                            .intersected(fine.rect());
    const QImage pezzo = (parte == fine.rect() ? fine : fine.copy(parte)).convertToFormat(QImage::Format_RGB32);
    if (qsizetype(misura.width()) * misura.height() <= piccolo_massimo) return lanczos(pezzo, misura);
    // The felt, the only picture this big, has no edges to keep: a plain
    // smooth stretch is enough and much quicker.
    QImage risultato(misura, QImage::Format_RGB32);
    QPainter pittore(&risultato);
    pittore.setRenderHint(QPainter::SmoothPixmapTransform, true);
    pittore.setCompositionMode(QPainter::CompositionMode_Source);
    pittore.drawImage(QRectF(QPointF(0, 0), QSizeF(misura)), pezzo);
    return risultato;
}

QImage per_schermo(const QString& percorso, qreal rapporto)
{
    QImageReader lettore(percorso);
    const QImage classica = lettore.read();
    if (classica.isNull() || rapporto <= 1) return classica;
    QSize misura_fine;
    const QString file = compagna_di(percorso, classica.size(), &misura_fine);
    const QImage figura = file.isEmpty() ? QImage() : leggi(file, misura_fine);
    if (figura.isNull()) return classica;
    const QSize misura(qRound(classica.width() * rapporto), qRound(classica.height() * rapporto));
    QImage pronta = ricampiona(figura, classica.size(), QRectF(QPointF(0, 0), QSizeF(classica.size())), misura);
    pronta.setDevicePixelRatio(rapporto);
    return pronta;
}

}  // namespace alta_risoluzione
