// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/mdGraphics.h"

#include "rules/mdTavolata.h"
#include "ui/alta_risoluzione.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/suoni.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QWidget>

#include <cstdlib>

using basic::Int;
using basic::Mod;

QImage immagine_carte;
QImage immagine_sfondo;
basic::Tabella<QImage, 0, 2> dorsi;
Integer righe_tavolo;
Integer colonne_tavolo;
Long larghezza_tavolo = 1024;
Long altezza_tavolo = 768;
float passo_x = 1, passo_y = 1;
float larghezza_cella = 72, altezza_riga = 16;

namespace {
QString cartella_scelta;

// Whether `dati` holds the whole of its picture, as far as its format tells:
// a bitmap as long as its header says, a JPEG with its end marker after its
// last scan, a PNG with its closing chunk. A file cut short still decodes
// (striped noise, or a grey half of a table); it is damaged all the same.
bool figura_intera(const QByteArray& dati)
{
    auto u16 = [&](int i) { return quint32(quint8(dati[i])) | quint32(quint8(dati[i + 1])) << 8; };
    auto u32 = [&](int i) { return u16(i) | u16(i + 2) << 16; };
    if (dati.startsWith("BM")) {
        if (dati.size() < 34) return false;
        const qint64 inizio = u32(10), larghezza = qint32(u32(18)), altezza = std::abs(qint32(u32(22)));
        const qint64 bit = u16(28), compressione = u32(30);
        // Uncompressed rows are padded to four bytes; a compressed bitmap is
        // as long as the size its header gives, when it gives one.
        if (compressione == 0 || compressione == 3)
            return dati.size() >= inizio + (larghezza * bit + 31) / 32 * 4 * altezza;
        return dati.size() >= qint64(u32(2));
    }
    if (dati.startsWith("\xFF\xD8")) {
        const qsizetype scansione = dati.lastIndexOf("\xFF\xDA");
        return scansione > 0 && dati.indexOf("\xFF\xD9", scansione) > scansione;
    }
    if (dati.startsWith("\x89PNG")) return dati.right(12).contains("IEND");
    return true;
}

// The smallest picture each file may be: the face sheet holds 9 x 6 cells of
// 71 x 96, and the table is restored cell by cell from its own pixels, so it
// is exactly the size of the table. The backs are stretched whole over a card.
bool misura_giusta(const QString& nome, QSize misura)
{
    if (nome == QLatin1String("/totale.bmp")) return misura.width() >= 9 * 71 && misura.height() >= 6 * 96;
    if (nome == QLatin1String("/SfondoTV2.jpg")) return misura == QSize(1024, 768);
    return true;
}

// A picture from the program's folder, read whole: run-time error 53 when the
// file is not there, 481 when it is there but is not a whole picture of its
// size. Either way the file is named on the standard error.
QImage carica_figura(const QString& nome)
{
    const QString percorso = cartella_programma() + nome;
    QFile file(percorso);
    if (!QFileInfo(percorso).isFile()) {
        qWarning("tavolata: %s: picture missing", qPrintable(QDir::toNativeSeparators(percorso)));
        basic::errore(53);
    }
    QByteArray dati;
    if (file.open(QIODevice::ReadOnly)) dati = file.readAll();
    QBuffer contenuto(&dati);
    QImageReader lettore(&contenuto);
    QImage figura = figura_intera(dati) ? lettore.read() : QImage();
    if (figura.isNull() || !misura_giusta(nome, figura.size())) {
        qWarning("tavolata: %s: picture cannot be read", qPrintable(QDir::toNativeSeparators(percorso)));
        basic::errore(481);
    }
    // The face sheet is kept at three bytes a pixel: it is only ever cut
    // into pieces, once per size, and the stretch gives the same pixels from
    // either form. The felt, copied at every paint, stays at four.
    const bool fogli = nome == QLatin1String("/totale.bmp");
    figura = figura.convertToFormat(fogli ? QImage::Format_RGB888 : QImage::Format_RGB32);
    alta_risoluzione::registra(figura, percorso);
    return figura;
}

QRectF cella(Long colonna, Long riga) { return QRectF((colonna - 1) * 72 + 8, riga * 16, 72, 96); }

template <class Mano>
Long disegna_mano_di(Canvas& tela, Mano& mano, bool coperta, double attesa)
{
    try {
        const Long riga = coperta ? 1 : righe_tavolo - 7;
        for (long i = 1; i <= 14; ++i) {
            if (long(mano(i)) > 0)
                disegna_carta(tela, i, riga, Byte(long(mano(i))), coperta, attesa);
            else
                cancella_carta(tela, i, riga);
        }
        return 0;
    } catch (const basic::ErroreRuntime& e) {
        return e.numero();
    }
}
}  // namespace

QString cartella_programma()
{
    return cartella_scelta.isEmpty() ? QCoreApplication::applicationDirPath() : cartella_scelta;
}

void imposta_cartella_programma(const QString& cartella) { cartella_scelta = cartella; }

Long carica_immagini()
{
    try {
        immagine_carte = carica_figura(QStringLiteral("/totale.bmp"));
        immagine_sfondo = carica_figura(QStringLiteral("/SfondoTV2.jpg"));
        dorsi(0) = carica_figura(QStringLiteral("/dorso.bmp"));
        dorsi(1) = carica_figura(QStringLiteral("/dorsorosso.bmp"));
        righe_tavolo = 48;
        colonne_tavolo = 14;
        return 0;
    } catch (const basic::ErroreRuntime& e) {
        return e.numero();
    }
}

bool disegna_carta(Canvas& tela, Long colonna, Long riga, Byte carta, bool coperta, double attesa)
{
    if (carta == 0) return false;
    const QRectF destinazione = cella(colonna, riga);
    if (coperta) {
        long codice = carta;
        // A jolly standing on the table shows the back of the first pack.
        if (jolly_sul_tavolo(codice)) codice = jolly_ritirato(codice);
        const QImage& dorso = dorsi(Int((codice - 1) / double(CARTE_PER_MAZZO)));
        tela.PaintPicture(dorso, destinazione, QRectF(0, 0, dorso.width(), dorso.height()));
        return true;
    }
    const rettangolo r = rettangolo_carta(tela, carta);
    tela.PaintPicture(immagine_carte, destinazione, QRectF(r.left, r.top, r.width, r.height));
    if (frmTV().menu_card_rustle_yes->isChecked()) suona_carta();
    if (attesa > 0) pausa(attesa);
    return true;
}

void cancella_carta(Canvas& tela, Long colonna, Long riga)
{
    // The background is 1024 x 768 pixels, one per table unit, so the cell is
    // restored from the same 72 x 96 pixels it was painted with.
    const QRectF destinazione = cella(colonna, riga);
    tela.PaintPicture(immagine_sfondo, destinazione, destinazione);
}

Long disegna_mano(Canvas& tela, basic::Tabella<Integer, 1, 14>& mano, bool coperta, double attesa)
{
    return disegna_mano_di(tela, mano, coperta, attesa);
}

Long disegna_mano(Canvas& tela, basic::Tabella<Byte, 1, 14>& mano, bool coperta, double attesa)
{
    return disegna_mano_di(tela, mano, coperta, attesa);
}

void disegna_combinazione(Canvas& tela, Byte k, bool umano)
{
    const double attesa = umano ? 0 : 0.1;
    for (long j = 1; j <= 13; ++j) {
        const Byte carta = umano ? tavolo_umano(k, j) : tavolo_computer(k, j);
        if (carta == 0) break;
        const double riga = umano ? righe_tavolo / 2.0 + j - 1 : righe_tavolo / 2.0 - j - 5;
        disegna_carta(tela, k, basic::CLng(riga), carta, false, attesa);
    }
}

rettangolo rettangolo_carta(Canvas&, Byte carta)
{
    long codice = carta;
    // A jolly on the table shows the plain jolly face, whatever it stands for.
    if (codice > SUL_TAVOLO_PRIMO && codice <= SUL_TAVOLO_SECONDO) codice = JOLLY_PRIMO;
    if (codice > SUL_TAVOLO_SECONDO) codice = JOLLY_SECONDO;
    const long k = Mod(codice - 1, CARTE_PER_MAZZO);
    // The sheet is addressed in its own pixels.
    return rettangolo{float(Mod(k, 9) * 71), float(Int(k / 9.0) * 96), 71.f, 96.f};
}

Long colonna_da_x(float x) { return Int((x - 8) / 72.0) + 1; }

Long riga_da_y(Long y) { return Int(y / 16.0); }

void prepara_pannello(Canvas& tela, QWidget& pannello)
{
    FrmTV& finestra = frmTV();
    finestra.setMousePointer(13);
    const double W = larghezza_tavolo, H = altezza_tavolo;
    const QRectF posto(W / 4, 3 * H / 8, W / 2, H / 4);
    finestra.posiziona(&pannello, posto);

    // The copy is taken one unit to the right of the panel's own place.
    const QRect sorgente = tela.in_pixel(posto.translated(1, 0));
    const QRect bersaglio = tela.in_pixel(posto);
    QImage copia = tela.Image(sorgente).scaled(bersaglio.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    copia = copia.convertToFormat(QImage::Format_RGB32);

    // Half-tone screen: one dark teal dot every second screen pixel, the rows
    // shifted by one pixel in turn, both edges included.
    const QRgb teal = qRgb(0, 96, 96);
    for (int y = 0, x0 = 0; y < copia.height(); ++y, x0 = x0 == 1 ? 0 : 1)
        for (int x = x0; x < copia.width(); x += 2) copia.setPixel(x, y, teal);

    if (auto* box = qobject_cast<PictureBox*>(&pannello)) {
        box->immagine = copia;
        box->update();
    }
}
