// SPDX-License-Identifier: GPL-3.0-or-later
// The computer's whole turn, from its draw to its discard, with the game's
// pauses shrunk to nothing (each pause still lets the window handle its
// events once): on a 1920 x 1080 window with the card sound on, as the game
// plays, then without the card sound, then on a window of 256 x 144 without
// it, to tell the drawing and the sound from the turn's own work.
#include "banco.h"

#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "rules/mdTavolata.h"

#include <vector>

namespace {

struct Posizione {
    const char* mano;
    std::vector<const char*> tavolo_computer;
    std::vector<const char*> tavolo_umano;
};

// 0: nothing to lay; 1: a straight and a set that open; 2: opened, cards to
// attach on both tables and a jolly to win back.
const Posizione posizioni[] = {
    {"2H 5D 9C KS 4H 7D JC 3S 8H QD 6C 10S AD", {}, {}},
    {"KH QH JH 10H 9H 5C 5D 5S 2C 3D 8S 8C JD", {}, {}},
    {"10H 6H KH 9C 2D 4S 8S", {"9H 8H 7H", "KS KD KC", "QC JC 10C"}, {"QD JD *10D", "5S 5H 5C"}},
};

void BM_turno_computer(benchmark::State& st)
{
    const int larghezza = int(st.range(1));
    FrmTV& f = banco::finestra(larghezza, larghezza * 9 / 16);
    banco::suono_carte(f, st.range(2) != 0);
    fissa_seme(1);
    inizia_computer = false;
    basic::protetto([&] { f.gioco_imposta(); });
    const Posizione& p = posizioni[st.range(0)];
    for (auto _ : st) {
        st.PauseTiming();
        tallone = 27;
        prova::pozzo_da("4C");
        prova::mano_computer_da(p.mano);
        tavolo_computer.azzera();
        tavolo_umano.azzera();
        for (std::size_t i = 0; i < p.tavolo_computer.size(); ++i)
            prova::combinazione_computer(int(i + 1), p.tavolo_computer[i]);
        for (std::size_t i = 0; i < p.tavolo_umano.size(); ++i)
            prova::combinazione_umano(int(i + 1), p.tavolo_umano[i]);
        turno_umano = false;
        fase = "100";
        st.ResumeTiming();
        basic::protetto([] { turno_computer(); });
        banco::ridipingi();
    }
    st.SetLabel(p.mano);
}

}  // namespace

BENCHMARK(BM_turno_computer)
    ->ArgNames({"position", "window_width", "card_sound"})
    ->ArgsProduct({{0, 1, 2}, {1920}, {1, 0}})
    ->ArgsProduct({{0, 1, 2}, {256}, {0}})
    ->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) { return banco::esegui(argc, argv); }
