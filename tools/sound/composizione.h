// SPDX-License-Identifier: GPL-3.0-or-later
// A small composition engine for the game's background songs. A song is
// written as a recipe: key, tempo, metre, a form of sections (each a chord
// progression in lead-sheet names with an intensity and a melodic motif) and
// the parts that play it (drums, bass, chords, arpeggio, melody, counter-line,
// doubling), each in a style. The engine voices the chords with smooth voice
// leading, builds melodies from two-bar motifs that repeat, answer and vary,
// humanises timing and velocity, and always gives the same song for the same
// recipe.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace composizione {

constexpr long tpq = 480;  // ticks per quarter note

struct Nota {
    long inizio = 0;
    long durata = 0;
    int altezza = 60;
    int velocita = 80;
};

struct Traccia {
    std::string nome;
    int canale = 0;  // 9 = drums
    int programma = 0;  // General MIDI, 0-based
    int volume = 100, pan = 64, riverbero = 40, coro = 0;
    std::vector<Nota> note;
};

struct CambioTempo {
    long tick = 0;
    double bpm = 120;
};

struct Brano {
    std::string titolo;
    int battiti = 4;  // beats (quarters) per bar
    long fine = 0;  // tick of the end
    std::vector<CambioTempo> tempi;
    std::vector<Traccia> tracce;
    double secondi() const;
};

// Deterministic random numbers: the same sequence on every machine.
class Caso {
public:
    explicit Caso(std::uint32_t seme);
    double reale();  // [0, 1)
    int intero(int da, int a);  // both included
    bool probabile(double p) { return reale() < p; }

private:
    std::uint64_t stato_;
};

enum class Modo { maggiore, minore, dorico, frigio, misolidio };

struct Tonalita {
    int tonica = 0;  // pitch class, 0 = C
    Modo modo = Modo::maggiore;
};

enum class Ruolo { batteria, basso, accordi, arpeggio, melodia, controcanto, raddoppio };

struct Parte {
    Ruolo ruolo = Ruolo::accordi;
    std::string stile;  // see composizione.cpp for each role's styles
    std::string nome;
    int programma = 0;
    int registro = 60;  // centre of the part's range (for a doubling: its shift in semitones)
    int velocita = 80;
    int volume = 100, pan = 64, riverbero = 40, coro = 0;
    int da_intensita = 1;  // plays in sections at least this intense
    double legato = 0.9;  // share of the time to the next note that sounds
};

struct Sezione {
    std::string giro;  // "Dm9 G13 | Cmaj9 | ..." bars split evenly, or "A:2 B:1"
    int ripetizioni = 1;
    int intensita = 2;  // 1 sparse, 2 full, 3 climax
    char motivo = 0;  // melody motif ('a', 'b'...); 0 = no melody
    int variazione = 0;  // 0 plain, 1 ornamented, 2 ornamented and lifted
};

struct Ricetta {
    std::string titolo;
    std::uint32_t seme = 1;
    double bpm = 100;
    int battiti = 4;
    bool swing = false;  // off-beat quavers lean late, as in jazz
    bool umano = true;  // small timing slips
    double rallentando = 0;  // tempo lost over the last two bars (0.2 = 20%)
    double livello = 1;  // scales every part's volume, to even out the songs' loudness
    Tonalita tonalita;
    std::string ritmo_melodia = "lirico";  // lirico, vivace, jazz, marcia, valzer, riff
    std::vector<Sezione> forma;
    std::vector<Parte> parti;
};

Brano componi(const Ricetta& ricetta);

}  // namespace composizione
