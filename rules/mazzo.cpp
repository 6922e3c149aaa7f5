// SPDX-License-Identifier: GPL-3.0-or-later
// Shuffling, dealing a hand and turning the discard pile into a new stock.
#include "rules/mdTavolata.h"

#include "computer/mdCompTV.h"
#include "platform/dialoghi.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <chrono>
#include <random>

using basic::Int;

namespace {
std::mt19937 generatore;
bool seme_fissato = false;
}  // namespace

void randomize_timer()
{
    if (seme_fissato) return;
    generatore.seed(unsigned(std::chrono::steady_clock::now().time_since_epoch().count()));
}

float Rnd()
{
    // 24 random bits: every value is exact in single precision and below 1.
    return float(generatore() >> 8) * (1.0f / 16777216.0f);
}

void fissa_seme(unsigned seme)
{
    generatore.seed(seme);
    seme_fissato = true;
}

void FrmTV::mescola()
{
    tavolo_umano.azzera();
    tavolo_computer.azzera();
    mano_umano.azzera();
    mano_computer.azzera();
    for (long i = 1; i <= CARTE; ++i) disponibili(i) = i;
    randomize_timer();
    // Rejection sampling: a draw that hits a card already placed is repeated.
    for (long i = 1; i <= CARTE;) {
        const long r = Int(float(CARTE) * Rnd()) + 1;
        if (disponibili(r) != 0) {
            mazzo(i) = disponibili(r);
            disponibili(r) = 0;
            ++i;
        }
    }
}

void FrmTV::gioco_imposta()
{
    // First of all: the deal's own waits belong to the new hand, and a wait
    // of the old hand that this deal runs inside must find that hand gone.
    ++mani_distribuite;
    Text4->hide();
    tela.Cls(qRgb(0, 192, 0));
    tela.PaintPicture(immagine_sfondo, QRectF(0, 0, 1024, 768),
                      QRectF(0, 0, immagine_sfondo.width(), immagine_sfondo.height()));
    if (nomi(1).empty()) nomi(1) = piattaforma::InputBox("Type your name.", "Tavolata", "Player1");
    larghezza_cella = 72 * passo_x;
    altezza_riga = 16 * passo_y;
    mescola();

    for (long i = 1; i <= 13; ++i) mano_umano(i) = mazzo(i);
    disegna_mano(tela, mano_umano, false, 0.1);
    for (long i = 14; i <= 26; ++i) mano_computer(i - 13) = mazzo(i);
    disegna_mano(tela, mano_computer, true, 0);

    const Long riga = Int(righe_tavolo / 2.0 - 3);
    disegna_carta(tela, colonne_tavolo - 1, riga, mazzo(27), false, 0.1);
    n_pozzo = 1;
    pozzo(1) = mazzo(27);
    // The stock shows the back of the very card that will be drawn next.
    disegna_carta(tela, colonne_tavolo, riga, mazzo(28), true, 0.1);
    tallone = 27;
    fase = "000";

    turno_umano = !inizia_computer;
    if (!turno_umano) turno_computer();
    gioco_avviato = true;
}

void FrmTV::Rimescola()
{
    randomize_timer();
    // The pile holds exactly the 81 cards the stock gave out since the last
    // shuffle, so the loop takes every one of them, the top card included.
    long tentativi = 0;
    for (long i = 28; i <= CARTE;) {
        const long r = Int(82.0f * Rnd()) + 1;
        if (pozzo(r) == 0) {
            // Should the pile ever hold fewer cards, stop with an error rather
            // than search for ever.
            if (++tentativi > 100000000L) basic::errore(5);
            continue;
        }
        mazzo(i) = pozzo(r);
        pozzo(r) = 0;
        ++i;
    }
}
