// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the human's turn share: a hand in play on the real
// window, presses on grid cells made as the window makes them, and the red
// mark read back from the table.
#pragma once

#include "aiuto/posizione.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <string>

namespace umano_prova {

// The window with a hand in play: the deck in order (mazzo(i) = i) but for a
// second-pack card at 29, whose red back shows once card 28 (2C) is drawn, the
// stock at 27 showing the back of card 28, the pile 5C unless `tavoli` names
// another, both tables from `tavoli` (prova::tavoli_da) drawn, the human's
// hand drawn, the computer's holding nothing it could lay, and the human to
// play in phase `codice_fase`. The sounds of the set-up are not counted.
inline FrmTV& partita(const std::string& mano, const std::string& codice_fase = "000", const std::string& tavoli = "")
{
    FrmTV& f = prova::finestra();
    for (long i = 1; i <= CARTE; ++i) mazzo(i) = i == 29 ? 83 : i;
    tallone = 27;
    prova::tavoli_da("p:5C | " + tavoli);
    prova::mano_umano_da(mano);
    prova::mano_computer_da("2H 5H 9H KH 3D 7D JD 4C 8C QC 6S 10S AS");
    disegna_mano(f.tela, mano_umano, false, 0);
    disegna_mano(f.tela, mano_computer, true, 0);
    for (long k = 1; k <= 13; ++k) {
        disegna_combinazione(f.tela, Byte(k), true);
        disegna_combinazione(f.tela, Byte(k), false);
    }
    if (n_pozzo > 0) disegna_carta(f.tela, 13, 21, Byte(long(pozzo(n_pozzo))), false, 0);
    disegna_carta(f.tela, 14, 21, mazzo(28), true, 0);
    fase = codice_fase;
    turno_umano = true;
    f.gioco_avviato = true;
    prova::azzera_suoni();
    return f;
}

// A press with the left button at a point of the table (1024 x 768 units),
// handed over as the window hands it: a run-time error is recorded as the
// program's fatal error, not thrown.
inline void premi_xy(double x, double y, int pulsante = 1)
{
    basic::protetto([&] { frmTV().Form_MouseDown(pulsante, 0, float(x), float(y)); });
}
inline void premi(int colonna, int riga) { premi_xy(prova::x_colonna(colonna), prova::y_riga(riga)); }

// The red mark seen at the top-left corner of hand slot k.
inline bool segnata(int k) { return frmTV().tela.Point(10 + 72 * (k - 1), 658) == 255; }

}  // namespace umano_prova
