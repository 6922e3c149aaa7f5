// SPDX-License-Identifier: GPL-3.0-or-later
// tavolata-sim: plays many whole hands of Tavolata headless and checks the
// game after every move. The game itself keeps no command line; this tool is
// a separate program built on the same library.
//
//   tavolata-sim [--hands N] [--seed S] [--table WxH] [--no-noise] [--quiet] [--turn-lengths]
//
// --table sets the size of the table in screen pixels (1024x768 by default);
// the game draws the same table at any size, and a small one plays faster.
// --turn-lengths adds how long the computer's turns last, in the pauses they
// ask for, with the longest of them.
//
// Exit code 0 when nothing was met but the fatal ends and the quirks that the
// game keeps on purpose, 1 after any failure, 2 for a wrong command line or
// missing pictures.
#include "simulatore.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {
void uso()
{
    std::fprintf(stderr, "usage: tavolata-sim [--hands N] [--seed S] [--table WxH] [--no-noise] [--quiet] [--turn-lengths]\n");
}
}  // namespace

int main(int argc, char** argv)
{
    simulazione::Opzioni opzioni;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "--hands" && i + 1 < argc) {
            opzioni.mani = std::strtol(argv[++i], nullptr, 10);
        } else if (a == "--seed" && i + 1 < argc) {
            opzioni.seme = unsigned(std::strtoul(argv[++i], nullptr, 10));
        } else if (a == "--table" && i + 1 < argc &&
                   std::sscanf(argv[i + 1], "%dx%d", &opzioni.larghezza, &opzioni.altezza) == 2) {
            ++i;
        } else if (a == "--no-noise") {
            opzioni.rumore = false;
        } else if (a == "--quiet") {
            opzioni.silenzioso = true;
        } else if (a == "--turn-lengths") {
            opzioni.lunghezze_turni = true;
        } else {
            uso();
            return 2;
        }
    }
    if (opzioni.mani < 1 || opzioni.larghezza < 64 || opzioni.altezza < 48) {
        uso();
        return 2;
    }
    // Headless unless told otherwise.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    try {
        simulazione::prepara_finestra(opzioni.larghezza, opzioni.altezza);
    } catch (const std::runtime_error& e) {
        std::fprintf(stderr, "tavolata-sim: %s\n", e.what());
        return 2;
    }
    const simulazione::Rapporto r = simulazione::simula(opzioni);
    std::fputs(r.testo().c_str(), stdout);
    if (!r.guasti.empty() && opzioni.silenzioso)
        for (const std::string& g : r.guasti) std::fprintf(stderr, "FAILURE %s\n", g.c_str());
    return r.guasti.empty() ? 0 : 1;
}
