// SPDX-License-Identifier: GPL-3.0-or-later
// Marking a hand card with the red frame and moving it to another slot. The
// mark is kept nowhere but in the picture: the marked slot is found again by
// the colour of the table, and redrawing the card wipes the mark out.
#include "human/umano.h"
#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

using namespace umano;

namespace {
constexpr long ROSSO = 255;  // pure red as the table reads it back

// Top-left corner of the mark of slot k; it lies inside the card's picture.
double x_segno(Long k) { return 10 + 72 * (k - 1); }
double y_segno() { return 16 * riga_mano() + 2; }

void disegna_segno(Canvas& tela, Long k)
{
    tela.RettangoloVuoto(x_segno(k), y_segno(), 78 + 72 * (k - 1), 16 * (righe_tavolo - 1) - 2, qRgb(255, 0, 0), 2);
}

// The first slot that shows the mark, 0 when none does.
Long slot_segnato(const Canvas& tela)
{
    for (long k = 1; k <= 14; ++k)
        if (tela.Point(x_segno(k), y_segno()) == ROSSO) return k;
    return 0;
}
}  // namespace

void FrmTV::gioca_proposta_selezionare(Long x)
{
    if (carattere_fase(2) == '0') return;
    carta_selezionata = mano_umano(x);
    posizione_selezionata = x;
    if (carattere_fase(3) == '1') {
        imposta_fase(3, '0');
        // A card redrawn since it was marked has lost its mark: then nothing moves.
        const Long k = slot_segnato(tela);
        if (k != 0) sposta_carta(k, x);
    } else if (carta_selezionata != 0) {
        imposta_fase(3, '1');
        disegna_segno(tela, x);
    }
}

void FrmTV::sposta_carta(Long a, Long b)
{
    if (mano_umano(b) != 0) {
        // The cards between make room, empty slots moving like cards.
        const Integer c = mano_umano(a);
        if (a > b) {
            for (long i = a; i >= b + 1; --i) mano_umano(i) = mano_umano(i - 1);
            mano_umano(b) = c;
        } else if (a < b) {
            for (long i = a; i <= b - 1; ++i) mano_umano(i) = mano_umano(i + 1);
            mano_umano(b) = c;
        }
        disegna_mano(tela, mano_umano, false, 0);
    } else {
        mano_umano(b) = mano_umano(a);
        mano_umano(a) = 0;
        disegna_carta(tela, b, riga_mano(), mano_umano(b), false, 0);
        cancella_carta(tela, a, riga_mano());
    }
}
