// SPDX-License-Identifier: GPL-3.0-or-later
// Start-up: the main window created and loaded (the default song started),
// the four pictures loaded, the window shown at 1920 x 1080 and the first
// hand dealt and painted, the deal's pauses shrunk to nothing. The
// synthesiser and its soundfont are loaded only once a sound server takes
// the song, on the way and not before the first table; the resident memory
// is read right after the first start.
#include "banco.h"

#include "platform/dialoghi.h"
#include "rules/mdTavolata.h"
#include "ui/mdGraphics.h"

namespace {

FrmTV* avvia()
{
    auto* f = new FrmTV();
    f->Form_Load();
    if (carica_immagini() != 0) return f;
    f->setWindowState(Qt::WindowNoState);
    f->resize(1920, 1080);
    f->show();
    basic::protetto([f] { f->gioco_imposta(); });
    banco::ridipingi();
    return f;
}

void prepara()
{
    basic::prova::attiva(true);
    piattaforma::prova::automatico(true);
    fattore_pause = 0;
    imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
    sostituisci_caratteri();
}

// The windows are hidden and kept, never deleted, as in the game: deleting
// one still touches its table of control places after that table is gone.
void ritira(FrmTV* f)
{
    f->hide();
    banco::ridipingi();
}

void BM_primo_avvio(benchmark::State& st)
{
    prepara();
    FrmTV* f = nullptr;
    for (auto _ : st) f = avvia();
    st.counters["VmRSS_MiB"] = banco::memoria_mib("VmRSS");
    st.counters["VmHWM_MiB"] = banco::memoria_mib("VmHWM");
    ritira(f);
}

void BM_avvio(benchmark::State& st)
{
    prepara();
    for (auto _ : st) {
        FrmTV* f = avvia();
        st.PauseTiming();
        ritira(f);
        st.ResumeTiming();
    }
}

}  // namespace

BENCHMARK(BM_primo_avvio)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_avvio)->Iterations(20)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) { return banco::esegui(argc, argv); }
