// SPDX-License-Identifier: GPL-3.0-or-later
// How long the computer's turns last, counted in the pauses they ask for (in
// units of 0.6 s, whatever the simulator shrinks them to): the turns that end
// by themselves, not those a new deal or the end of the program cuts short.
#pragma once

#include <string>
#include <vector>

namespace simulazione {

class MisuraTurni {
public:
    // Listens to every pause of the game until destroyed.
    explicit MisuraTurni(unsigned seme);
    ~MisuraTurni();
    MisuraTurni(const MisuraTurni&) = delete;
    MisuraTurni& operator=(const MisuraTurni&) = delete;

    // After every call into the game, made in simulated hand `mano`: a turn
    // begun in it has ended, whole unless the program ended or another hand
    // was dealt meanwhile.
    void fine_mossa(long mano, bool programma_terminato);
    std::string testo() const;

private:
    struct Turno {
        long centesimi = 0;  // of a unit, all its pauses
        long pause = 0;
        long giri = 0;  // of the laying round: each asks for two pauses of a whole unit
        long fermo = 0;  // the longest run of step pauses with no card laid between them
        long corsa = 0;
        long deal = 0;  // the game's count of deals when it began
        long mano = 0;  // the simulated hand it was played in
    };
    static void ascolta(double t);
    void pausa(double t);

    unsigned seme_;
    bool in_corso_ = false;
    Turno turno_;
    long interrotti_ = 0;
    std::vector<Turno> turni_;
};

}  // namespace simulazione
