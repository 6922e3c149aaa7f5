// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/alta_risoluzione.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace alta_risoluzione {

namespace {

// A companion read stays in memory while pictures are being drawn from it
// (a deal, a turn), and goes this long after it was last asked for: the
// pieces cut from it stay with the table, and the picture itself, up to
// 23 MB decoded, would otherwise sit idle for the rest of the game.
constexpr int tenuta_ms = 3000;
const QString chiave_impronta = QStringLiteral("Classic-SHA1");
// Pieces up to this many pixels (a card, a splash) get the sharper filter.
constexpr qsizetype piccolo_massimo = 1 << 20;

// A finer picture beside a classic one, `volte` times its size.
struct Fine {
    int volte = 0;
    QString file;
    QImage tenuta;  // kept once read, when small enough
};

struct Compagna {
    QString percorso;  // the classic file
    qint64 chiave = 0;  // the classic picture read from it
    QSize misura;
    bool cercate = false;
    std::vector<Fine> fini;  // those that belong to it, coarsest first
};
std::vector<Compagna> compagne;

// Lets every companion read go once none has been asked for a while.
void lascia_tra_poco()
{
    static QPointer<QTimer> orologio;
    if (!QCoreApplication::instance()) return;
    if (!orologio) {
        orologio = new QTimer(QCoreApplication::instance());
        orologio->setSingleShot(true);
        orologio->setInterval(tenuta_ms);
        QObject::connect(orologio, &QTimer::timeout, [] {
            for (Compagna& c : compagne)
                for (Fine& f : c.fini) f.tenuta = QImage();
        });
    }
    orologio->start();
}

// The companions of the classic file `percorso`, of size `misura`: the files
// "<name>@2x", "@3x", "@4x" (PNG or JPEG) that are that many times its size
// and carry the fingerprint of the classic file's bytes.
std::vector<Fine> compagne_di(const QString& percorso, QSize misura)
{
    const QFileInfo info(percorso);
    const QString base = info.path() + QLatin1Char('/') + info.completeBaseName();
    QByteArray impronta;
    std::vector<Fine> fini;
    for (int volte : {2, 3, 4})
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
            if (lettore.text(chiave_impronta).toLatin1() == impronta) fini.push_back(Fine{volte, candidato, {}});
        }
    return fini;
}

// The companion just fine enough for `scala` screen pixels per classic pixel
// (the coarsest at least that fine, a few percent of stretch allowed, or else
// the finest), read and checked;
// those found damaged on the way are dropped for good. Null when none is left.
QImage scegli(std::vector<Fine>& fini, QSize misura, double scala)
{
    while (!fini.empty()) {
        auto f = std::find_if(fini.begin(), fini.end(), [&](const Fine& c) { return c.volte * 1.05 >= scala; });
        if (f == fini.end()) --f;
        if (!f->tenuta.isNull()) return f->tenuta;
        QImageReader lettore(f->file);
        const QImage figura = lettore.read();
        if (figura.size() == misura * f->volte) {
            f->tenuta = figura;
            return figura;
        }
        fini.erase(f);
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

Pesi calcola_pesi(int da, int a)
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
            const double v = x == 0 ? 1
                             : std::abs(x) >= 3
                                 ? 0
                                 : 3 * std::sin(M_PI * x) * std::sin(M_PI * x / 3) / (M_PI * M_PI * x * x);
            w[j - primo] = float(v);
            somma += v;
        }
        for (int j = 0; j < p.larghezza; ++j) w[j] = float(w[j] / somma);
        p.primo.push_back(primo);
        p.quanti.push_back(std::min(ultimo - primo + 1, p.larghezza));
    }
    return p;
}

// A card is resampled between the same two sizes again and again.
const Pesi& pesi_lungo(int da, int a)
{
    static std::map<std::pair<int, int>, Pesi> fatti;
    auto trovati = fatti.find({da, a});
    if (trovati == fatti.end()) trovati = fatti.emplace(std::pair{da, a}, calcola_pesi(da, a)).first;
    return trovati->second;
}

// One pass of the filter along the rows of `da` (three floats a pixel, `righe`
// rows of `larghezza`, `passo` floats apart between neighbours along the row
// and `salto` between rows) into `a`, laid out the same way with the rows
// `a_passo`/`a_salto` apart.
void passa(const float* __restrict da, int righe, std::size_t passo, std::size_t salto, const Pesi& p, int quanti_a,
           float* __restrict a, std::size_t a_passo, std::size_t a_salto)
{
    for (int r = 0; r < righe; ++r)
        for (int i = 0; i < quanti_a; ++i) {
            const float* w = &p.pesi[std::size_t(i) * p.larghezza];
            const float* in = da + r * salto + std::size_t(p.primo[i]) * passo;
            float rosso = 0, verde = 0, blu = 0;
            for (int j = 0; j < p.quanti[i]; ++j, in += passo) {
                rosso += w[j] * in[0];
                verde += w[j] * in[1];
                blu += w[j] * in[2];
            }
            float* out = a + r * a_salto + std::size_t(i) * a_passo;
            out[0] = rosso, out[1] = verde, out[2] = blu;
        }
}

QImage lanczos(const QImage& da, QSize a)
{
    const int w = da.width(), h = da.height();
    std::vector<float> sorgente(std::size_t(w) * h * 3), mezzo(std::size_t(a.width()) * h * 3),
        fine(std::size_t(a.width()) * a.height() * 3);
    for (int y = 0; y < h; ++y) {
        const QRgb* riga = reinterpret_cast<const QRgb*>(da.constScanLine(y));
        float* f = &sorgente[std::size_t(y) * w * 3];
        for (int x = 0; x < w; ++x, f += 3) f[0] = qRed(riga[x]), f[1] = qGreen(riga[x]), f[2] = qBlue(riga[x]);
    }
    // Across each row first.
    passa(sorgente.data(), h, 3, std::size_t(w) * 3, pesi_lungo(w, a.width()), a.width(), mezzo.data(), 3,
          std::size_t(a.width()) * 3);
    // Down the columns a whole row at a time: each row out is a weighted sum
    // of whole rows in, a loop the compiler turns into vector operations.
    const Pesi& giu = pesi_lungo(h, a.height());
    const std::size_t riga = std::size_t(a.width()) * 3;
    for (int y = 0; y < a.height(); ++y) {
        float* __restrict out = &fine[y * riga];
        const float* w = &giu.pesi[std::size_t(y) * giu.larghezza];
        for (int j = 0; j < giu.quanti[y]; ++j) {
            const float* __restrict in = &mezzo[(giu.primo[y] + j) * riga];
            const float peso = w[j];
            for (std::size_t x = 0; x < riga; ++x) out[x] += peso * in[x];
        }
    }
    QImage risultato(a, QImage::Format_RGB32);
    auto canale = [](float v) { return int(std::clamp(v + 0.5f, 0.f, 255.f)); };
    for (int y = 0; y < a.height(); ++y) {
        QRgb* out = reinterpret_cast<QRgb*>(risultato.scanLine(y));
        const float* f = &fine[std::size_t(y) * a.width() * 3];
        for (int x = 0; x < a.width(); ++x, f += 3) {
            QRgb c = qRgb(canale(f[0]), canale(f[1]), canale(f[2]));
            // The selected card's frame is the only pure red on the table.
            if (c == qRgb(255, 0, 0)) c = qRgb(254, 0, 0);
            out[x] = c;
        }
    }
    return risultato;
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

QImage fine(const QImage& classica, double scala)
{
    if (classica.isNull()) return {};
    for (Compagna& c : compagne) {
        if (c.chiave != classica.cacheKey()) continue;
        if (!c.cercate) {
            c.cercate = true;
            c.fini = compagne_di(c.percorso, c.misura);
        }
        lascia_tra_poco();
        return scegli(c.fini, c.misura, scala);
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
    // smooth stretch is enough and much quicker. It is kept for the whole
    // run, at three bytes a pixel.
    QImage risultato(misura, QImage::Format_RGB888);
    QPainter pittore(&risultato);
    pittore.setRenderHint(QPainter::SmoothPixmapTransform, true);
    pittore.drawImage(QRectF(QPointF(0, 0), QSizeF(misura)), pezzo);
    return risultato;
}

QImage per_schermo(const QString& percorso, qreal rapporto)
{
    QImageReader lettore(percorso);
    const QImage classica = lettore.read();
    if (classica.isNull() || rapporto <= 1) return classica;
    std::vector<Fine> fini = compagne_di(percorso, classica.size());
    const QImage figura = scegli(fini, classica.size(), rapporto);
    if (figura.isNull()) return classica;
    const QSize misura(qRound(classica.width() * rapporto), qRound(classica.height() * rapporto));
    QImage pronta = ricampiona(figura, classica.size(), QRectF(QPointF(0, 0), QSizeF(classica.size())), misura);
    pronta.setDevicePixelRatio(rapporto);
    return pronta;
}

}  // namespace alta_risoluzione
