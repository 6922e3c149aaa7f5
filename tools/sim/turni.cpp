// SPDX-License-Identifier: GPL-3.0-or-later
#include "turni.h"

#include "rules/mdTavolata.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace simulazione {

namespace {
MisuraTurni* in_ascolto = nullptr;

std::string unita(long centesimi)
{
    char t[32];
    std::snprintf(t, sizeof t, "%.2f", centesimi / 100.0);
    return t;
}
}  // namespace

MisuraTurni::MisuraTurni(unsigned seme) : seme_(seme)
{
    in_ascolto = this;
    ascolta_pausa = &MisuraTurni::ascolta;
}

MisuraTurni::~MisuraTurni()
{
    ascolta_pausa = nullptr;
    in_ascolto = nullptr;
}

void MisuraTurni::ascolta(double t)
{
    if (in_ascolto) in_ascolto->pausa(t);
}

void MisuraTurni::pausa(double t)
{
    // The computer's turn opens with the only half-unit pauses of the game;
    // one begun in an older deal was cut short by this one.
    if (t == 0.5 && (!in_corso_ || turno_.deal != mani_distribuite)) {
        if (in_corso_) ++interrotti_;
        in_corso_ = true;
        turno_ = Turno{};
        turno_.deal = mani_distribuite;
    }
    if (!in_corso_) return;
    const long c = std::lround(t * 100);
    turno_.centesimi += c;
    ++turno_.pause;
    if (c == 100) ++turno_.giri;
    // A tenth of a unit is a card laid, attached or drawn face up.
    turno_.corsa = c >= 25 ? turno_.corsa + c : 0;
    turno_.fermo = std::max(turno_.fermo, turno_.corsa);
}

void MisuraTurni::fine_mossa(long mano, bool programma_terminato)
{
    if (in_corso_) {
        if (programma_terminato || turno_.deal != mani_distribuite)
            ++interrotti_;
        else {
            turno_.giri /= 2;
            turno_.mano = mano;
            turni_.push_back(turno_);
        }
    }
    in_corso_ = false;
}

std::string MisuraTurni::testo() const
{
    std::string t = "computer's turns measured: " + std::to_string(turni_.size()) +
                    " (cut short, left out: " + std::to_string(interrotti_) + "); length in pause units of 0.6 s:\n";
    if (turni_.empty()) return t;
    std::map<long, long> per_unita, per_giri, per_fermo;
    for (const Turno& x : turni_) {
        ++per_unita[x.centesimi / 100];
        ++per_giri[x.giri];
        ++per_fermo[x.fermo / 100];
    }
    const auto tabella = [&](const char* nome, const std::map<long, long>& m, const char* unita_di) {
        t += std::string("  ") + nome + ":";
        for (const auto& [k, n] : m) t += " " + std::to_string(k) + unita_di + " " + std::to_string(n) + ",";
        t.back() = '\n';
    };
    tabella("whole turn, by whole units", per_unita, "u");
    tabella("longest still stretch, by whole units", per_fermo, "u");
    tabella("rounds of the laying loop", per_giri, "r");
    std::vector<Turno> ordinati = turni_;
    std::sort(ordinati.begin(), ordinati.end(),
              [](const Turno& a, const Turno& b) { return a.centesimi > b.centesimi; });
    const auto percentile = [&](double p) {
        return unita(ordinati[std::size_t(std::floor((1 - p) * double(ordinati.size() - 1)))].centesimi);
    };
    t += "  median " + percentile(0.5) + ", 99th percentile " + percentile(0.99) + ", 99.99th " + percentile(0.9999) +
         ", longest " + unita(ordinati.front().centesimi) + " units\n";
    t += "  longest turns (seed, hand: units, pauses, rounds, longest still stretch):\n";
    for (std::size_t i = 0; i < std::min<std::size_t>(10, ordinati.size()); ++i) {
        const Turno& x = ordinati[i];
        t += "    seed " + std::to_string(seme_) + ", hand " + std::to_string(x.mano) + ": " + unita(x.centesimi) +
             ", " + std::to_string(x.pause) + ", " + std::to_string(x.giri) + ", " + unita(x.fermo) + "\n";
    }
    return t;
}

}  // namespace simulazione
