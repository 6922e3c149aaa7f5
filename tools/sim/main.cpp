// SPDX-License-Identifier: GPL-3.0-or-later
// tavolata-sim: plays many whole hands of Tavolata headless and checks the
// game after every move. The game itself keeps no command line; this tool is
// a separate program built on the same library.
//
//   tavolata-sim [--hands N] [--seed S] [--table WxH] [--shots DIR] [--no-noise] [--quiet] [--digest]
//   [--turn-lengths] [--no-checks]
//
// --table sets the size of the table in screen pixels (1024x768 by default);
// the game draws the same table at any size, and a small one plays faster.
// --shots saves the table as a PNG in DIR at each hand's end, the score sheet
// up, and reports how well the sheet's labels read.
// --digest adds one hash of every table after every move and of the report:
// a change that should leave the game alone must leave it the same. The songs
// then run a hundred times slower than real time, so that none ends during
// the run: a song's end comes by the clock, and the loop turns it would add
// to the game's waits would shift the noise from run to run.
// --turn-lengths adds how long the computer's turns last, in the pauses they
// ask for, with the longest of them.
// --no-checks plays without checking the game after each move, and without
// the pictures the checks keep to compare with: the game's own memory, as a
// long game holds it.
//
// Exit code 0 when nothing was met but the fatal ends and the quirks that the
// game keeps on purpose, 1 after any failure, 2 for a wrong command line or
// missing pictures.
#include "simulatore.h"

#include "platform/memoria.h"
#include "platform/mmc.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {
void uso()
{
    std::fprintf(stderr, "usage: tavolata-sim [--hands N] [--seed S] [--table WxH] [--shots DIR] [--no-noise] [--quiet]"
                         " [--digest] [--turn-lengths] [--no-checks]\n");
}
}  // namespace

int main(int argc, char** argv)
{
    simulazione::Opzioni opzioni;
    bool impronta = false;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "--hands" && i + 1 < argc) {
            opzioni.mani = std::strtol(argv[++i], nullptr, 10);
        } else if (a == "--seed" && i + 1 < argc) {
            opzioni.seme = unsigned(std::strtoul(argv[++i], nullptr, 10));
        } else if (a == "--table" && i + 1 < argc &&
                   std::sscanf(argv[i + 1], "%dx%d", &opzioni.larghezza, &opzioni.altezza) == 2) {
            ++i;
        } else if (a == "--shots" && i + 1 < argc) {
            opzioni.foto = argv[++i];
        } else if (a == "--no-noise") {
            opzioni.rumore = false;
        } else if (a == "--quiet") {
            opzioni.silenzioso = true;
        } else if (a == "--digest") {
            impronta = true;
        } else if (a == "--turn-lengths") {
            opzioni.lunghezze_turni = true;
        } else if (a == "--no-checks") {
            opzioni.controlli = false;
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
    piattaforma::memoria_parca();
    QApplication app(argc, argv);
    if (impronta) MMControl::prova_orologio(0.01);
    try {
        simulazione::prepara_finestra(opzioni.larghezza, opzioni.altezza);
    } catch (const std::runtime_error& e) {
        std::fprintf(stderr, "tavolata-sim: %s\n", e.what());
        return 2;
    }
    const simulazione::Rapporto r = simulazione::simula(opzioni);
    std::fputs(r.testo().c_str(), stdout);
    if (impronta) std::printf("digest: %016llx\n", static_cast<unsigned long long>(r.impronta));
    if (!r.guasti.empty() && opzioni.silenzioso)
        for (const std::string& g : r.guasti) std::fprintf(stderr, "FAILURE %s\n", g.c_str());
    return r.guasti.empty() ? 0 : 1;
}
