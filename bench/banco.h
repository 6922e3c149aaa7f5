// SPDX-License-Identifier: GPL-3.0-or-later
// What the benchmarks share: a main that runs Google Benchmark inside a
// QApplication (headless unless told otherwise), the game's window at a
// given size with the pauses shrunk to nothing, and a press on the table
// followed by the repaint it causes.
#pragma once

#include "simulatore.h"

#include "platform/basic.h"
#include "ui/frmTV.h"

#include <QApplication>
#include <QEvent>

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

namespace banco {

// Counts the repaints of the table, to show that a press is seen on screen.
class ContaRidipinture : public QObject {
public:
    long quante = 0;

protected:
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::Paint) ++quante;
        return false;
    }
};

inline ContaRidipinture& ridipinture()
{
    static ContaRidipinture* c = new ContaRidipinture;
    return *c;
}

// The game's window with the test hooks on, the whole window w x h pixels.
inline FrmTV& finestra(int w = 1920, int h = 1080)
{
    simulazione::prepara_finestra(w, h);
    FrmTV& f = frmTV();
    f.resize(w, h);
    f.tavolo->installEventFilter(&ridipinture());
    QCoreApplication::processEvents();
    return f;
}

// Repaints of the table per iteration, as a counter of the benchmark.
inline void conta_ridipinture(benchmark::State& st, long prima)
{
    st.counters["repaints"] =
        benchmark::Counter(double(ridipinture().quante - prima), benchmark::Counter::kAvgIterations);
}

// "Card rustle" Yes or No, as the menu sets it.
inline void suono_carte(FrmTV& f, bool acceso)
{
    if (acceso)
        f.menu_card_rustle_yes_Click();
    else
        f.menu_card_rustle_no_Click();
}

// Lets the window repaint what the game drew.
inline void ridipingi()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// A press on the table in its logical units, as the window hands it over.
inline void premi(FrmTV& f, float x, float y)
{
    basic::protetto([&] { f.Form_MouseDown(1, 0, x, y); });
}

// Centre of a grid cell in logical units.
inline float x_colonna(int c) { return float(8 + 72 * (c - 1) + 36); }
inline float y_riga(int r) { return float(16 * r + 8); }

// A line of /proc/self/status ("VmRSS", "VmHWM") in MiB.
inline double memoria_mib(const std::string& voce)
{
    std::ifstream stato("/proc/self/status");
    for (std::string riga; std::getline(stato, riga);)
        if (riga.rfind(voce + ":", 0) == 0) return std::stod(riga.substr(voce.size() + 1)) / 1024.0;
    return 0;
}

inline int esegui(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace banco
