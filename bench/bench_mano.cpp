// SPDX-License-Identifier: GPL-3.0-or-later
// Whole hands headless: the simulator's scripted player against the computer
// (no noise), every card drawn on the table and the pauses shrunk to nothing.
// The table is 1024 x 768 with the card sound on, as the game starts, or a
// small 256 x 192 without the card sound, to tell the drawing and the sound
// from the play; with the simulator's checks after every move, or without
// them, the game alone.
#include "banco.h"

namespace {

void BM_mani(benchmark::State& st)
{
    const int larghezza = int(st.range(0));
    FrmTV& f = banco::finestra(larghezza, larghezza * 3 / 4);
    banco::suono_carte(f, st.range(1) != 0);
    const bool controlli = st.range(2) != 0;
    constexpr long per_giro = 20;
    unsigned seme = 1;
    long guasti = 0;
    for (auto _ : st) {
        simulazione::Opzioni o;
        o.mani = per_giro;
        o.seme = seme++;
        o.rumore = false;
        o.silenzioso = true;
        o.controlli = controlli;
        guasti += long(simulazione::simula(o).guasti.size());
    }
    st.SetItemsProcessed(st.iterations() * per_giro);
    st.counters["hands_per_s"] = benchmark::Counter(double(st.iterations() * per_giro), benchmark::Counter::kIsRate);
    if (guasti) st.SkipWithError("the simulator met failures");
}

}  // namespace

BENCHMARK(BM_mani)
    ->ArgNames({"table_width", "card_sound", "checks"})
    ->Args({1024, 1, 1})
    ->Args({1024, 1, 0})
    ->Args({256, 0, 1})
    ->Args({256, 0, 0})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

int main(int argc, char** argv) { return banco::esegui(argc, argv); }
