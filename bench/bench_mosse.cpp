// SPDX-License-Identifier: GPL-3.0-or-later
// One press of the player on a 1920 x 1080 window, from the press to the
// table repainted, for each kind of move; the game's pauses are shrunk to
// nothing. The discard stops where the computer's turn would begin. Each
// move is timed with the card sound on (as the game starts) and off.
#include "banco.h"

#include "aiuto/posizione.h"
#include "rules/mdTavolata.h"
#include "ui/mdGraphics.h"
#include "ui/suoni.h"

#include <QTimer>

namespace {

// A fixed hand dealt on the table, the player to play.
void posizione(FrmTV& f, const std::string& mano)
{
    fissa_seme(1);
    inizia_computer = false;
    basic::protetto([&] { f.gioco_imposta(); });
    prova::mano_umano_da(mano);
    disegna_mano(f.tela, mano_umano, false, 0);
    fase = "010";
}

// Marks hand slot k as the player's press does.
void segna(FrmTV& f, int k)
{
    fase = "010";
    banco::premi(f, banco::x_colonna(k), banco::y_riga(43));
}

const std::string MANO = "7H 8H 9H 10H 2C 5D KS QS JS 4C 6D AH 3S";

// The window with the card sound as the benchmark's first argument says, and
// `mano` dealt to the player.
FrmTV& prepara(const benchmark::State& st, const std::string& mano)
{
    FrmTV& f = banco::finestra();
    banco::suono_carte(f, st.range(0) != 0);
    posizione(f, mano);
    return f;
}

void BM_pescare(benchmark::State& st)
{
    FrmTV& f = prepara(st, MANO);
    const long prima = banco::ridipinture().quante;
    for (auto _ : st) {
        st.PauseTiming();
        tallone = 27;
        mano_umano(14) = 0;
        fase = "000";
        st.ResumeTiming();
        banco::premi(f, banco::x_colonna(14), banco::y_riga(24));
        banco::ridipingi();
    }
    banco::conta_ridipinture(st, prima);
}

void BM_segnare(benchmark::State& st)
{
    FrmTV& f = prepara(st, MANO);
    const long prima = banco::ridipinture().quante;
    for (auto _ : st) {
        fase = "010";
        banco::premi(f, banco::x_colonna(3), banco::y_riga(43));
        banco::ridipingi();
    }
    banco::conta_ridipinture(st, prima);
}

// The marked card moved into the empty slot 14, or into the middle of the
// hand (every card redrawn).
void BM_spostare(benchmark::State& st)
{
    FrmTV& f = prepara(st, MANO);
    const long prima = banco::ridipinture().quante;
    const int verso = int(st.range(1));
    for (auto _ : st) {
        st.PauseTiming();
        prova::mano_umano_da(MANO);
        disegna_mano(f.tela, mano_umano, false, 0);
        segna(f, 3);
        st.ResumeTiming();
        banco::premi(f, banco::x_colonna(verso), banco::y_riga(43));
        banco::ridipingi();
    }
    banco::conta_ridipinture(st, prima);
}

// The marked 7 of hearts laid on an empty column of the player's table.
void BM_calare(benchmark::State& st)
{
    FrmTV& f = prepara(st, MANO);
    const long prima = banco::ridipinture().quante;
    for (auto _ : st) {
        st.PauseTiming();
        tavolo_umano.azzera();
        cancella_carta(f.tela, 1, 24);
        prova::mano_umano_da(MANO);
        disegna_mano(f.tela, mano_umano, false, 0);
        segna(f, 1);
        st.ResumeTiming();
        banco::premi(f, banco::x_colonna(1), banco::y_riga(30));
        banco::ridipingi();
    }
    banco::conta_ridipinture(st, prima);
}

// The marked 10 of hearts put on top of the computer's 9 8 7 of hearts (the
// combination redrawn card by card), the player having opened with 40.
void BM_attaccare(benchmark::State& st)
{
    FrmTV& f = prepara(st, MANO);
    const long prima = banco::ridipinture().quante;
    for (auto _ : st) {
        st.PauseTiming();
        tavolo_umano.azzera();
        prova::combinazione_umano(1, "KS QS JS 10S");
        prova::combinazione_computer(1, "9H 8H 7H");
        disegna_combinazione(f.tela, 1, false);
        prova::mano_umano_da("7H 8H 9H 10H 2C 5D 4C 6D AH 3S");
        disegna_mano(f.tela, mano_umano, false, 0);
        segna(f, 4);
        st.ResumeTiming();
        banco::premi(f, banco::x_colonna(1), banco::y_riga(12));
        banco::ridipingi();
    }
    banco::conta_ridipinture(st, prima);
}

// The card sound alone, as every card drawn face up plays it.
void BM_suono_carta(benchmark::State& st)
{
    banco::finestra();
    for (auto _ : st) suona_carta();
}

// The discard of a full hand: the check, the card on the pile and the hand
// over, up to the first pause of the computer's turn, where the turn is cut.
void BM_scartare(benchmark::State& st)
{
    FrmTV& f = prepara(st, MANO + " 5C");
    const long prima = banco::ridipinture().quante;
    QTimer taglio;
    taglio.setInterval(0);
    QObject::connect(&taglio, &QTimer::timeout, [] {
        if (!turno_umano && !basic::programma_terminato()) try {
                basic::fine_programma(0);
            } catch (const basic::ProgrammaTerminato&) {}
    });
    taglio.start();
    for (auto _ : st) {
        st.PauseTiming();
        basic::prova::azzera();
        prova::mano_umano_da(MANO + " 5C");
        disegna_mano(f.tela, mano_umano, false, 0);
        n_pozzo = 1;
        turno_umano = true;
        segna(f, 14);
        st.ResumeTiming();
        banco::premi(f, banco::x_colonna(13), banco::y_riga(24));
        banco::ridipingi();
    }
    banco::conta_ridipinture(st, prima);
    basic::prova::azzera();
    turno_umano = true;
}

}  // namespace

BENCHMARK(BM_pescare)->ArgName("card_sound")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_segnare)->ArgName("card_sound")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_spostare)
    ->ArgNames({"card_sound", "to_slot"})
    ->ArgsProduct({{1, 0}, {14, 9}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_calare)->ArgName("card_sound")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_attaccare)->ArgName("card_sound")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_scartare)->ArgName("card_sound")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_suono_carta)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) { return banco::esegui(argc, argv); }
