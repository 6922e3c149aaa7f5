// SPDX-License-Identifier: GPL-3.0-or-later
// The discard that ends the human's turn, after the check of his table, and
// the hand-over to the computer.
#include "human/verifica_tavolo.h"

#include "computer/mdCompTV.h"
#include "human/umano.h"
#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

using namespace umano;

namespace {

// Card j of combination k goes back into the first empty slot of its
// player's hand, a jolly as a plain jolly again, and its cell is cleared.
void riprendi_carta(bool del_umano, Long k, Long j, double attesa)
{
    Canvas& tela = frmTV().tela;
    Tavolo& tavolo = del_umano ? tavolo_umano : tavolo_computer;
    long carta = tavolo(k, j);
    if (jolly_sul_tavolo(carta)) carta = jolly_ritirato(carta);
    const Long s = prima_posizione_libera(del_umano);
    if (del_umano) {
        mano_umano(s) = carta;
        disegna_carta(tela, s, riga_mano(), Byte(carta), false, attesa);
    } else {
        mano_computer(s) = carta;
        disegna_carta(tela, s, 1, Byte(carta), true, attesa);
    }
    cancella_carta(tela, k, riga_combinazione(del_umano, j));
}

}  // namespace

bool verifica_tavolo(bool del_umano)
{
    // A full hand has laid nothing this turn.
    if (prima_posizione_libera(del_umano) == 15) return true;
    Tavolo& tavolo = del_umano ? tavolo_umano : tavolo_computer;

    if (!(del_umano ? aperto_umano() : aperto_computer())) {
        if (del_umano) suona_errore();
        for (long k = 1; k <= 13; ++k)
            for (long j = 1; j <= 13 && tavolo(k, j) != 0; ++j) riprendi_carta(del_umano, k, j, 0.1);
        tavolo.azzera();
        return false;
    }

    // Empty combinations count as short too: an opened player hears the
    // error at nearly every discard, even one that goes ahead.
    const long minimo = del_umano ? 3 : 2;
    bool esito = true;
    for (long k = 1; k <= 13; ++k) {
        long n = 0;
        while (n < 13 && tavolo(k, n + 1) != 0) ++n;
        if (n < minimo) {
            if (del_umano) suona_errore();
            // Only a card taken back refuses the discard; an empty one sounds the error alone.
            for (long j = 1; j <= n; ++j) {
                riprendi_carta(del_umano, k, j, del_umano ? 0 : 0.1);
                tavolo(k, j) = 0;
                esito = false;
            }
        }
    }
    return esito;
}

void FrmTV::gioca_proposta_scartare()
{
    if (carattere_fase(2) == '0' || carattere_fase(3) == '0') return;
    if (!verifica_tavolo(true)) return;
    cancella_carta(tela, posizione_selezionata, riga_mano());
    disegna_carta(tela, colonna_pozzo(), riga_pozzo(), carta_selezionata, false, 0);
    n_pozzo = n_pozzo + 1;
    pozzo(n_pozzo) = carta_selezionata;
    mano_umano(posizione_selezionata) = 0;
    carta_selezionata = 0;
    turno_umano = false;
    if (controlla_chiusura(false)) return;
    fase = "100";
    turno_computer();
    fase = "000";
}
