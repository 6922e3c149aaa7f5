// SPDX-License-Identifier: GPL-3.0-or-later
// The human plays with the mouse alone: a press is turned into a cell of the
// table and handed, by the area it falls in, to the procedure of that area,
// which checks for itself whether it may act. Moving the mouse only changes
// the pointer.
#include "human/umano.h"
#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

using namespace umano;

void FrmTV::Form_MouseDown(int, int, float X, float Y)
{
    // Any press puts the information panels away, even one that plays nothing.
    Text4->hide();
    Text2->hide();
    text5->hide();
    if (!gioco_avviato) return;
    // The computer's turn lets presses through while it pauses.
    if (!turno_umano) return;

    const Long c = colonna_da_x(X);
    const Long r = riga_da_y(basic::CLng(Y));
    const Long H = righe_tavolo, W = colonne_tavolo;

    if (c == W && r >= H / 2 - 3 && r <= H / 2 + 3) {
        gioca_proposta_pescare_tallone();
    } else if (c == W - 1 && r >= H / 2 - 3 && r <= H / 2 + 3) {
        // The same place takes the discard before the draw and receives the
        // discard after it.
        if (carattere_fase(2) == '0')
            gioca_proposta_pescare_pozzo();
        else
            gioca_proposta_scartare();
    } else if (c >= 1 && c <= W && r >= H - 7 && r <= H - 2) {
        gioca_proposta_selezionare(c);
    } else if (c >= 1 && c <= W - 4 && r >= H / 2 && r <= H - 8) {
        giocata(float(c));
    } else if (c >= 1 && c <= W - 4 && r >= 2 && r <= H / 2) {
        gioca_attacca(c);
    }
}

void FrmTV::Form_MouseMove(int, int, float X, float Y)
{
    if (fase == "011") {
        const Long c = colonna_da_x(X);
        const Long r = riga_da_y(basic::CLng(Y));
        const Long H = righe_tavolo, W = colonne_tavolo;
        // These areas are not quite those of the presses (column 11, the
        // margin, row 38, row 26); the pointer has always shown them so.
        if (r >= H / 2 && r <= H - 10 && c <= W - 3)
            setMousePointer(10);
        else if (r <= H / 2 - 1 && c <= W - 3)
            setMousePointer(aperto_umano() ? 10 : 12);
        else if (c == W - 1 && r >= H / 2 - 3 && r <= H / 2 + 2)
            setMousePointer(10);
        else
            setMousePointer(1);
    } else if (fase == "100") {
        setMousePointer(13);
    } else {
        setMousePointer(1);
    }
}
