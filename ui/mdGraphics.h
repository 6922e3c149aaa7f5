// SPDX-License-Identifier: GPL-3.0-or-later
// mdGraphics: the pictures, the grid of the table and the procedures that draw
// cards on it. Columns and rows are grid cells: column c, row r is the point
// x = 8 + 72 (c - 1), y = 16 r of the 1024 x 768 table; a card fills 72 x 96.
#pragma once

#include "platform/basic.h"

#include <QImage>

class Canvas;
class QWidget;

using basic::Byte;
using basic::Integer;
using basic::Long;

struct rettangolo {
    float left = 0, top = 0, width = 0, height = 0;
};

// The four pictures, loaded once at start-up and kept for the run.
extern QImage immagine_carte;  // 9 x 6 sheet of 71 x 96 faces
extern QImage immagine_sfondo;  // the 1024 x 768 table
extern basic::Tabella<QImage, 0, 2> dorsi;  // 0 blue back, 1 red back; 2 unused

// The grid and the canvas values.
extern Integer righe_tavolo;  // 48 once the pictures are loaded
extern Integer colonne_tavolo;  // 14 once the pictures are loaded
extern Long larghezza_tavolo;  // 1024
extern Long altezza_tavolo;  // 768
extern float passo_x, passo_y;  // logical size of one screen pixel
extern float larghezza_cella, altezza_riga;  // 72 and 16 picture pixels in logical units

// The folder that holds the program (pictures, sounds and the music folder).
QString cartella_programma();
// Tests and tools point the game at another folder.
void imposta_cartella_programma(const QString& cartella);

Long carica_immagini();
bool disegna_carta(Canvas& tela, Long colonna, Long riga, Byte carta, bool coperta, double pausa);
void cancella_carta(Canvas& tela, Long colonna, Long riga);
Long disegna_mano(Canvas& tela, basic::Tabella<Integer, 1, 14>& mano, bool coperta, double pausa);
Long disegna_mano(Canvas& tela, basic::Tabella<Byte, 1, 14>& mano, bool coperta, double pausa);
void disegna_combinazione(Canvas& tela, Byte k, bool umano);
rettangolo rettangolo_carta(Canvas& tela, Byte carta);
Long colonna_da_x(float x);
Long riga_da_y(Long y);
// Places `pannello` (a child of the table) over the centre of the table and
// paints it as a shaded copy of the table beneath.
void prepara_pannello(Canvas& tela, QWidget& pannello);

// The places the game parts share: the discard pile (column 13) and the stock
// (column 14) from row 21, and card k of a combination, the human's going
// down from the middle line and the computer's climbing from it.
inline Long colonna_pozzo() { return colonne_tavolo - 1; }
inline Long colonna_tallone() { return colonne_tavolo; }
inline Long riga_pozzo() { return righe_tavolo / 2 - 3; }
inline Long riga_combinazione(bool umano, long k)
{
    return umano ? righe_tavolo / 2 + k - 1 : righe_tavolo / 2 - (k + 5);
}
