// SPDX-License-Identifier: GPL-3.0-or-later
// The simulator's engine: whole hands and games of Tavolata played headless
// through the game's own entry points, the player's side by a scripted player
// pressing on the table, with random presses and menu commands thrown in while
// the computer plays, and "New game", a click on the score sheet or "Quit" in
// every other wait of the game. After every move the invariants are checked;
// the fatal run-time errors that the game keeps on purpose are recognised,
// counted, and the game goes on with a fresh deal. Anything else is a failure.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace simulazione {

struct Opzioni {
    long mani = 1000;  // hands to play (closed or cut short)
    unsigned seme = 1;  // fixes the shuffles, the player's choices and the noise
    bool rumore = true;  // random presses and menu commands, odd moves of the player
    bool silenzioso = false;  // no progress lines
    bool controlli = true;  // the invariants after every move (off only to time the game alone)
    long guasti_massimi = 20;  // stops after this many failures
    int larghezza = 1024, altezza = 768;  // of the table, in screen pixels
    std::string foto;  // a folder: the table saved at each hand's end with its score sheet, if given
    bool lunghezze_turni = false;  // measures the computer's turns in pause units
};

struct Rapporto {
    unsigned seme = 0;
    bool rumore = true;
    int larghezza = 0, altezza = 0;  // of the table's picture
    long mani_chiuse = 0;
    long mani_interrotte = 0;
    long partite = 0;
    long vinte_umano = 0, vinte_computer = 0;
    long penalita_umano = 0, penalita_computer = 0;  // charged to each over the closed hands
    long mani_senza_penalita = 0;  // closed hands whose charge could not be read
    long turni_umano = 0;
    long pressioni = 0;
    long rifiutate = 0;
    std::map<std::string, long> mosse;  // the player's presses by kind
    std::map<std::string, long> disturbi;  // presses and menu commands thrown in
    std::map<std::string, long> dialoghi;  // how the jolly dialog was answered
    std::map<std::string, long> esiti;  // fatal ends the game keeps, by kind
    std::map<std::string, long> prima_mano;  // the hand in which each was first met
    std::map<std::string, long> casi;  // the game's own quirks met, by kind
    std::vector<std::string> guasti;  // everything else
    long fogli = 0;  // score sheets saved
    // The lowest contrast between the letters of the sheets' labels and what
    // lies behind them, by label: names, totals, "Click here to continue".
    std::map<std::string, double> contrasto;
    long etichette = 0;  // labels measured
    // One hash of every table after every move, then of this report (its
    // time aside): two runs that give the same figure played the same games.
    std::uint64_t impronta = 0;
    std::string turni;  // the computer's turn lengths, when asked for
    double secondi = 0;

    long mani() const { return mani_chiuse + mani_interrotte; }
    std::string testo() const;
};

// Creates the main window with the test hooks on and the pictures loaded,
// its table `larghezza` x `altezza` screen pixels; once per process, after
// the QApplication (later calls only resize the table). Throws
// std::runtime_error when the pictures cannot be loaded.
void prepara_finestra(int larghezza = 1024, int altezza = 768);

// Plays the hands; prepara_finestra must have run.
Rapporto simula(const Opzioni& opzioni);

}  // namespace simulazione
