// SPDX-License-Identifier: GPL-3.0-or-later
#include "canzoni.h"

namespace canzoni {

using namespace composizione;

namespace {

// General MIDI programs (0-based) and drum kits used below.
enum Programma {
    // clang-format off
    pianoforte = 0, piano_elettrico = 4, clavinet = 7, glockenspiel = 9, vibrafono = 11, chitarra_nylon = 24,
    chitarra_jazz = 26, chitarra_distorta = 30, contrabbasso = 32, basso_dita = 33, basso_fretless = 35,
    basso_synth_1 = 38, basso_synth_2 = 39, violino = 40, violoncello = 42, arpa = 46, timpani = 47, archi = 48,
    archi_lenti = 49, coro = 52, tromba = 56, tuba = 58, corno = 60, ottoni = 61, ottoni_synth = 62, sax_alto = 65,
    clarinetto = 71, flauto = 73, onda_quadra = 80, dente_di_sega = 81, charang = 84, voce_synth = 85,
    tappeto_caldo = 89, tappeto_coro = 91,
};
// clang-format on
enum Kit { kit_standard = 0, kit_power = 16, kit_elettronico = 24, kit_808 = 25, kit_jazz = 32, kit_spazzole = 40 };

Parte parte(Ruolo ruolo, const char* stile, const char* nome, int programma, int registro, int velocita,
            int da_intensita = 1, double legato = 0.9, int volume = 100, int pan = 64, int riverbero = 40)
{
    Parte p;
    p.ruolo = ruolo;
    p.stile = stile;
    p.nome = nome;
    p.programma = programma;
    p.registro = registro;
    p.velocita = velocita;
    p.da_intensita = da_intensita;
    p.legato = legato;
    p.volume = volume;
    p.pan = pan;
    p.riverbero = riverbero;
    return p;
}

Ricetta chill1()
{
    Ricetta r;
    r.titolo = "Chill1";
    r.seme = 101;
    r.bpm = 76;
    r.swing = true;
    r.rallentando = 0.15;
    r.livello = 1.17;
    r.tonalita = {5, Modo::maggiore};  // F
    r.ritmo_melodia = "jazz";
    const char* a = "Fmaj9 | Em7b5 A7b9 | Dm9 | G13 | Gm9 | C13 | Fmaj9 D7b9 | Gm9 C13";
    const char* b = "Bbmaj9 | Bbm6 | Am7 | D7b9 | Gm9 | C13 | Am7 Dm9 | Gm9 C7sus4";
    r.forma = {{"Gm9 | C13 | Am7 D7b9 | Gm9 C13", 1, 1, 0, 0},
               {a, 1, 2, 'a', 0},
               {a, 1, 2, 'a', 1},
               {b, 1, 3, 'b', 0},
               {a, 1, 2, 'a', 1},
               {b, 1, 3, 'b', 2},
               {"Gm9 | C13 | Fmaj9 | Fmaj9", 1, 1, 0, 0}};
    r.parti = {parte(Ruolo::batteria, "swing", "Brushes", kit_spazzole, 0, 80, 1, 1, 90),
               parte(Ruolo::basso, "camminata", "Upright bass", contrabbasso, 40, 86),
               parte(Ruolo::accordi, "swing", "Electric piano", piano_elettrico, 62, 62, 1, 0.95, 96, 50, 50),
               parte(Ruolo::melodia, "jazz", "Vibraphone", vibrafono, 74, 88, 2, 0.85, 100, 80, 55),
               parte(Ruolo::controcanto, "", "Strings", archi_lenti, 60, 46, 3, 0.95, 70, 40, 70)};
    return r;
}

Ricetta champion()
{
    Ricetta r;
    r.titolo = "Champion";
    r.seme = 202;
    r.bpm = 116;
    r.rallentando = 0.15;
    r.tonalita = {10, Modo::maggiore};  // Bb
    r.ritmo_melodia = "marcia";
    const char* a = "Bb | F/A | Gm | Bb/F | Eb | Bb/D | Cm7 F7 | Bb";
    const char* b = "Eb | F | D7 | Gm | Cm7 | F | Eb F | Bb F7";
    // clang-format off
    r.forma = {{"Bb | F | Bb | F7", 1, 2, 0, 0}, {a, 1, 2, 'a', 0}, {a, 1, 3, 'a', 1}, {b, 1, 2, 'b', 0},
               {a, 1, 3, 'a', 2},                {b, 1, 3, 'b', 1}, {a, 1, 3, 'a', 2}, {"Eb | F7 | Bb | Bb", 1, 3, 0, 0}};
    // clang-format on
    r.parti = {parte(Ruolo::batteria, "marcia", "Snare and bass drum", kit_standard, 0, 88),
               parte(Ruolo::basso, "marcia", "Tuba", tuba, 41, 88, 1, 0.6),
               parte(Ruolo::accordi, "marcia", "Brass", ottoni, 60, 74, 1, 0.9, 90, 50),
               parte(Ruolo::basso, "timpani", "Timpani", timpani, 45, 78, 3),
               parte(Ruolo::melodia, "", "Trumpet", tromba, 70, 96, 2, 0.8, 100, 76, 45),
               parte(Ruolo::raddoppio, "", "Glockenspiel", glockenspiel, 12, 62, 3, 0.8, 80, 90),
               parte(Ruolo::controcanto, "", "Strings", archi, 64, 58, 3, 0.95, 80, 30)};
    return r;
}

Ricetta champs()
{
    Ricetta r;
    r.titolo = "Champs";
    r.seme = 303;
    r.bpm = 92;
    r.rallentando = 0.2;
    r.livello = 0.58;
    r.tonalita = {2, Modo::maggiore};  // D
    r.ritmo_melodia = "lirico";
    const char* a = "D | A/C# | Bm | G | D/F# | G | Em7 | A";
    const char* b = "G | A | F#m | Bm | Em | A | D | D";
    r.forma = {{"D | Bm | G | A", 1, 1, 0, 0},
               {a, 1, 2, 'a', 0},
               {b, 1, 3, 'b', 0},
               {a, 1, 2, 'a', 1},
               {b, 1, 3, 'b', 1},
               {"Bm | G | D | A | Bm | G | Em7 | A", 1, 2, 'c', 0},
               {b, 1, 3, 'b', 2},
               {"G | A | D | D", 1, 3, 0, 0}};
    r.parti = {parte(Ruolo::batteria, "inno", "Drums", kit_power, 0, 90),
               parte(Ruolo::basso, "pulsante", "Bass", basso_dita, 38, 84, 2),
               parte(Ruolo::basso, "timpani", "Timpani", timpani, 45, 80),
               parte(Ruolo::accordi, "inno", "Strings", archi, 62, 70, 1, 1, 96, 44, 60),
               parte(Ruolo::accordi, "inno", "Brass", ottoni, 60, 78, 3, 0.9, 90, 84),
               parte(Ruolo::accordi, "tappeto", "Choir", coro, 67, 50, 3, 1, 80, 64, 80),
               parte(Ruolo::melodia, "", "French horn", corno, 65, 96, 2, 0.95, 110, 60, 55),
               parte(Ruolo::raddoppio, "", "Trumpet", tromba, 12, 64, 3, 0.95, 85, 70, 55)};
    return r;
}

Ricetta easycity()
{
    Ricetta r;
    r.titolo = "Easycity";
    r.seme = 404;
    r.bpm = 100;
    r.rallentando = 0.12;
    r.livello = 1.1;
    r.tonalita = {3, Modo::maggiore};  // Eb
    r.ritmo_melodia = "jazz";
    const char* a = "Ebmaj9 | Cm9 | Fm9 | Bb13 | Gm7 C7b9 | Fm9 | Fm7 Bb7 | Ebmaj9";
    const char* b = "Abmaj7 | Db9 | Gm7 | C7b9 | Fm9 | Bb13 | Gm7 C7b9 | Fm7 Bb13";
    r.forma = {{"Abmaj7 | Gm7 | Fm7 | Bb13", 1, 1, 0, 0},
               {a, 1, 2, 'a', 0},
               {a, 1, 2, 'a', 1},
               {b, 1, 3, 'b', 0},
               {a, 1, 2, 'a', 1},
               {b, 1, 3, 'b', 1},
               {a, 1, 2, 'a', 2},
               {"Abmaj7 | Bb13 | Ebmaj9 | Ebmaj9", 1, 1, 0, 0}};
    r.parti = {parte(Ruolo::batteria, "bossa", "Drums", kit_jazz, 0, 80, 1, 1, 90),
               parte(Ruolo::basso, "bossa", "Fretless bass", basso_fretless, 40, 86),
               parte(Ruolo::accordi, "bossa", "Jazz guitar", chitarra_jazz, 60, 64, 1, 0.9, 90, 40),
               parte(Ruolo::accordi, "anima", "Electric piano", piano_elettrico, 64, 52, 2, 0.95, 80, 88, 55),
               parte(Ruolo::melodia, "jazz", "Alto sax", sax_alto, 68, 88, 2, 0.88, 100, 70, 50),
               parte(Ruolo::controcanto, "", "Strings", archi_lenti, 60, 46, 3, 0.95, 70, 30, 70)};
    return r;
}

Ricetta inds_01()
{
    Ricetta r;
    r.titolo = "inds_01";
    r.seme = 505;
    r.bpm = 126;
    r.umano = false;
    r.tonalita = {4, Modo::minore};  // E minor
    r.ritmo_melodia = "riff";
    const char* a = "Em | C | G | D";
    const char* b = "C | D | Bm | Em | C | D | B7 | B7";
    r.forma = {{"Em | Em | C | D", 2, 1, 0, 0}, {a, 2, 2, 'a', 0}, {a, 2, 3, 'a', 1}, {b, 1, 3, 'b', 0},
               {"C | D | Em | Em", 2, 1, 0, 0}, {a, 2, 3, 'a', 2}, {b, 1, 3, 'b', 1}, {"Em | C | D | Em", 1, 1, 0, 0}};
    r.parti = {parte(Ruolo::batteria, "house", "Drum machine", kit_elettronico, 0, 95),
               parte(Ruolo::basso, "galoppo", "Synth bass", basso_synth_1, 40, 90, 1, 0.9, 100, 64, 10),
               parte(Ruolo::accordi, "tappeto", "Pad", tappeto_caldo, 60, 58, 1, 1, 85, 64, 70),
               parte(Ruolo::arpeggio, "su", "Arpeggio", onda_quadra, 66, 60, 2, 0.5, 80, 40, 50),
               parte(Ruolo::melodia, "", "Saw lead", dente_di_sega, 72, 86, 2, 0.75, 90, 88, 50)};
    return r;
}

Ricetta humanoid()
{
    Ricetta r;
    r.titolo = "Humanoid";
    r.seme = 606;
    r.bpm = 118;
    r.umano = false;
    r.tonalita = {0, Modo::dorico};  // C dorian
    r.ritmo_melodia = "riff";
    const char* a = "Cm7 | F | Cm7 | F | Abmaj7 | Bb | Cm7 | Cm7";
    const char* b = "Abmaj7 | Bb | Gm7 | Cm7 | Abmaj7 | Bb | G7 | G7";
    // clang-format off
    r.forma = {{"Cm7 | Cm7 | F | F", 2, 1, 0, 0}, {a, 1, 2, 'a', 0}, {b, 1, 3, 'b', 0},
               {a, 1, 3, 'a', 1},                {"Abmaj7 | Bb | Cm7 | Cm7", 1, 1, 0, 0},
               {a, 1, 3, 'a', 2},                {b, 1, 3, 'b', 1}, {"Cm7 | F | Cm7 | Cm7", 1, 1, 0, 0}};
    // clang-format on
    r.parti = {parte(Ruolo::batteria, "robot", "Drum machine", kit_808, 0, 95),
               parte(Ruolo::basso, "ottavi", "Synth bass", basso_synth_2, 38, 90, 1, 0.8, 100, 64, 10),
               parte(Ruolo::accordi, "tappeto", "Choir pad", tappeto_coro, 60, 54, 1, 1, 80, 64, 80),
               parte(Ruolo::arpeggio, "sugiu", "Arpeggio", charang, 67, 56, 2, 0.45, 75, 36, 50),
               parte(Ruolo::melodia, "", "Voice lead", voce_synth, 70, 90, 2, 0.8, 100, 84, 60)};
    return r;
}

Ricetta iepact()
{
    Ricetta r;
    r.titolo = "Iepact";
    r.seme = 707;
    r.bpm = 138;
    r.tonalita = {4, Modo::misolidio};  // E mixolydian
    r.ritmo_melodia = "vivace";
    const char* a = "E7#9 | E7#9 | G A | E7#9 | E7#9 | E7#9 | G A | B7";
    const char* b = "A7 | A7 | E7#9 | E7#9 | B7 | A7 | G A | B7";
    r.forma = {{"E7#9 | E7#9 | E7#9 | E7#9", 1, 2, 0, 0},
               {a, 1, 2, 'a', 0},
               {a, 1, 3, 'a', 1},
               {b, 1, 3, 'b', 0},
               {a, 1, 3, 'a', 1},
               {b, 1, 3, 'b', 2},
               {a, 1, 3, 'a', 2},
               {"E7#9 | G A | E7#9 | E7#9", 1, 3, 0, 0}};
    r.parti = {parte(Ruolo::batteria, "funk", "Drums", kit_power, 0, 95),
               parte(Ruolo::basso, "funk", "Bass", basso_dita, 40, 92, 1, 0.9, 100, 64, 10),
               parte(Ruolo::accordi, "funk", "Clavinet", clavinet, 66, 70, 1, 0.9, 85, 40, 30),
               parte(Ruolo::accordi, "potenza", "Guitar", chitarra_distorta, 52, 70, 2, 0.85, 78, 90, 30),
               parte(Ruolo::melodia, "", "Synth brass", ottoni_synth, 72, 94, 2, 0.75, 100, 64, 40)};
    return r;
}

Ricetta lastday()
{
    Ricetta r;
    r.titolo = "Lastday";
    r.seme = 808;
    r.bpm = 72;
    r.rallentando = 0.25;
    r.livello = 1.27;
    r.tonalita = {9, Modo::minore};  // A minor
    r.ritmo_melodia = "lirico";
    const char* a = "Am | F | C | G | Am | F | Dm7 | E7";
    const char* b = "F | G | Em7 | Am | Dm7 | G | Cmaj7 | E7sus4 E7";
    // clang-format off
    r.forma = {{"Am | F | C | G", 1, 1, 0, 0}, {a, 1, 1, 'a', 0}, {a, 1, 2, 'a', 1},       {b, 1, 2, 'b', 0},
               {a, 1, 2, 'a', 1},             {b, 1, 3, 'b', 2}, {"F | G | Am | Am", 1, 1, 0, 0}};
    // clang-format on
    r.parti = {parte(Ruolo::batteria, "ballata", "Drums", kit_standard, 0, 66, 2, 1, 80),
               parte(Ruolo::basso, "ballata", "Bass", basso_dita, 38, 72, 2),
               parte(Ruolo::arpeggio, "spezzato", "Piano left hand", pianoforte, 52, 70, 1, 1.8, 100, 56, 60),
               parte(Ruolo::melodia, "", "Piano right hand", pianoforte, 72, 98, 1, 0.95, 100, 72, 60),
               parte(Ruolo::accordi, "tappeto", "Strings", archi_lenti, 60, 48, 2, 1, 78, 40, 80),
               parte(Ruolo::controcanto, "", "Cello", violoncello, 52, 60, 3, 0.95, 85, 88, 70)};
    return r;
}

Ricetta brezza()
{
    Ricetta r;
    r.titolo = "Brezza";
    r.seme = 909;
    r.bpm = 90;
    r.battiti = 3;
    r.rallentando = 0.2;
    r.livello = 1.13;
    r.tonalita = {7, Modo::maggiore};  // G
    r.ritmo_melodia = "valzer";
    const char* a = "G | Bm | C | D7 | G | Em | Am7 | D7";
    const char* b = "C | D | Bm | Em | Am7 | D7 | G | D7sus4";
    // clang-format off
    r.forma = {{"G | Cmaj7 | G | D7", 1, 1, 0, 0}, {a, 1, 2, 'a', 0}, {a, 1, 2, 'a', 1}, {b, 1, 3, 'b', 0},
               {a, 1, 2, 'a', 1},                  {b, 1, 3, 'b', 1}, {a, 1, 3, 'a', 2}, {"C | D7 | G | G", 1, 1, 0, 0}};
    // clang-format on
    r.parti = {parte(Ruolo::batteria, "valzer", "Brushes", kit_spazzole, 0, 70, 2, 1, 80),
               parte(Ruolo::basso, "valzer", "Bass", contrabbasso, 43, 80),
               parte(Ruolo::arpeggio, "arpa", "Harp", arpa, 62, 60, 1, 1.5, 90, 40, 60),
               parte(Ruolo::accordi, "tappeto", "Strings", archi_lenti, 60, 50, 2, 1, 82, 84, 75),
               parte(Ruolo::melodia, "", "Flute", flauto, 77, 86, 2, 0.92, 100, 70, 60),
               parte(Ruolo::controcanto, "", "Clarinet", clarinetto, 62, 60, 3, 0.95, 80, 50, 60)};
    return r;
}

Ricetta sevilana()
{
    Ricetta r;
    r.titolo = "Sevilana";
    r.seme = 1010;
    r.bpm = 160;
    r.battiti = 3;
    r.rallentando = 0.15;
    r.tonalita = {9, Modo::frigio};  // A phrygian, closing on E
    r.ritmo_melodia = "vivace";
    const char* a = "Am | G | F | E | Am | G | F | E";
    const char* b = "Dm | C | Bb | A | Dm | C | Bb | A";
    // clang-format off
    r.forma = {{"Am | G | F | E", 1, 1, 0, 0}, {a, 2, 2, 'a', 0}, {a, 2, 3, 'a', 1}, {b, 2, 2, 'b', 0},
               {a, 2, 3, 'a', 1},             {b, 2, 3, 'b', 1}, {a, 2, 3, 'a', 2}, {"F | E | F | E", 1, 3, 0, 0}};
    // clang-format on
    r.parti = {parte(Ruolo::batteria, "sevillana", "Castanets and palmas", kit_standard, 0, 90, 2),
               parte(Ruolo::basso, "valzer", "Bass", contrabbasso, 40, 84, 2),
               parte(Ruolo::accordi, "rasgueado", "Rhythm guitar", chitarra_nylon, 57, 78, 1, 0.9, 100, 44, 45),
               parte(Ruolo::melodia, "", "Lead guitar", chitarra_nylon, 69, 94, 2, 0.8, 100, 84, 50),
               parte(Ruolo::raddoppio, "", "Violin", violino, 0, 62, 3, 0.9, 80, 96, 60)};
    return r;
}

}  // namespace

std::vector<Ricetta> tutte()
{
    return {chill1(),   champion(), champs(),  easycity(), inds_01(),
            humanoid(), iepact(),   lastday(), brezza(),   sevilana()};
}

}  // namespace canzoni
