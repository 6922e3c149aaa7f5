// SPDX-License-Identifier: GPL-3.0-or-later
// Memory: the resident size of a fresh game process once it has started and
// dealt the first hand, with the music on (as every run starts) or turned off
// from the menu, at 1920 x 1080 and 3840 x 2160 (at one and at two device
// pixels a point); and the peak over the first whole hand played after that.
// Each case is a process of its own (this program again, with --game), so
// that no case inherits the memory of another. Headless unless told
// otherwise: run it with QT_QPA_PLATFORM=xcb on an X server to count the
// window system's share as a player's desktop would.
#include "banco.h"

#include "platform/memoria.h"
#include "ui/mdGraphics.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <cstring>
#include <fstream>

namespace {

// Goals of the resident size after the deal, in MiB as ps and the kernel
// count it.
double obiettivo_mib(int larghezza, bool musica)
{
    if (larghezza > 1920) return 100;
    return musica ? 64 : 54;
}

void lascia_girare(int ms)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(10);
    }
}

// The game in this process: started, dealt, the music turned off if asked;
// prints the resident size, then the peak over one hand, in kB.
int partita(int larghezza, int altezza, bool musica)
{
    const double rapporto =
        qEnvironmentVariableIntValue("QT_SCALE_FACTOR") > 1 ? qEnvironmentVariableIntValue("QT_SCALE_FACTOR") : 1;
    simulazione::prepara_finestra(int(larghezza / rapporto), int(altezza / rapporto));
    FrmTV& f = frmTV();
    basic::protetto([&] { f.gioco_imposta(); });
    if (!musica) f.nomusic_Click();
    // As a player would find it six seconds on: a song turned off lets its
    // synthesiser go a few seconds later.
    lascia_girare(6000);
    const long dopo_mano = long(banco::memoria_mib("VmRSS") * 1024);
    // The peak from here on.
    std::ofstream("/proc/self/clear_refs") << "5";
    simulazione::Opzioni o;
    o.mani = 1;
    o.rumore = false;
    o.silenzioso = true;
    o.controlli = false;
    o.larghezza = int(larghezza / rapporto);
    o.altezza = int(altezza / rapporto);
    simulazione::simula(o);
    std::printf("%ld %ld\n", dopo_mano, long(banco::memoria_mib("VmHWM") * 1024));
    return 0;
}

void BM_memoria(benchmark::State& st)
{
    const int larghezza = int(st.range(0)), altezza = int(st.range(1));
    const bool musica = st.range(2) != 0;
    const int scala = int(st.range(3));
    long residente = 0, picco = 0;
    for (auto _ : st) {
        QProcess figlio;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        if (scala > 1) ambiente.insert("QT_SCALE_FACTOR", QString::number(scala));
        figlio.setProcessEnvironment(ambiente);
        figlio.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        figlio.start(QCoreApplication::applicationFilePath(),
                     {"--game", QString::number(larghezza), QString::number(altezza), QString::number(musica)});
        if (!figlio.waitForFinished(120000) || figlio.exitCode() != 0) {
            st.SkipWithError("the game did not finish its hand");
            return;
        }
        if (std::sscanf(figlio.readAllStandardOutput().constData(), "%ld %ld", &residente, &picco) != 2) {
            st.SkipWithError("the game did not tell its size");
            return;
        }
    }
    st.counters["RSS_MiB"] = residente / 1024.0;
    st.counters["hand_peak_MiB"] = picco / 1024.0;
    st.counters["goal_MiB"] = obiettivo_mib(larghezza, musica);
    if (residente / 1024.0 > obiettivo_mib(larghezza, musica)) st.counters["over_goal"] = 1;
}

}  // namespace

BENCHMARK(BM_memoria)
    ->ArgNames({"w", "h", "music", "scale"})
    ->Args({1920, 1080, 1, 1})
    ->Args({1920, 1080, 0, 1})
    ->Args({3840, 2160, 1, 1})
    ->Args({3840, 2160, 0, 1})
    ->Args({3840, 2160, 1, 2})
    ->Args({3840, 2160, 0, 2})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    if (argc == 5 && std::strcmp(argv[1], "--game") == 0) {
        // Started as the game starts.
        piattaforma::memoria_parca();
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication app(argc, argv);
        return partita(std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]) != 0);
    }
    return banco::esegui(argc, argv);
}
