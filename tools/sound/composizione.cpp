// SPDX-License-Identifier: GPL-3.0-or-later
#include "composizione.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <stdexcept>

namespace composizione {

// ================================================================ basics

double Brano::secondi() const
{
    double s = 0;
    for (std::size_t i = 0; i < tempi.size(); ++i) {
        const long fino = i + 1 < tempi.size() ? tempi[i + 1].tick : fine;
        s += double(fino - tempi[i].tick) / tpq * 60.0 / tempi[i].bpm;
    }
    return s;
}

Caso::Caso(std::uint32_t seme) : stato_(0x853c49e6748fea9bULL ^ (std::uint64_t(seme) * 0x9E3779B97F4A7C15ULL)) {}

double Caso::reale()
{
    // splitmix64
    std::uint64_t z = (stato_ += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    z ^= z >> 31;
    return double(z >> 11) * (1.0 / 9007199254740992.0);
}

int Caso::intero(int da, int a) { return da + std::min(a - da, int(reale() * (a - da + 1))); }

namespace {

int classe(int altezza) { return ((altezza % 12) + 12) % 12; }

long battito(double b) { return std::lround(b * tpq); }

// ================================================================ harmony

struct Accordo {
    int radice = 0;
    int basso = 0;  // pitch class of the bass (the root, or the note after '/')
    std::vector<int> intervalli;  // from the root, in semitones
    long inizio = 0, durata = 0;

    // Pitch classes of the chord tones a melody may rest on.
    std::vector<int> appoggi(bool estese) const
    {
        std::vector<int> v;
        for (int i : intervalli)
            if (i < 12 || (estese && i == 14)) v.push_back(classe(radice + i));
        return v;
    }
    std::vector<int> classi() const
    {
        std::vector<int> v;
        for (int i : intervalli) v.push_back(classe(radice + i));
        return v;
    }
    bool contiene(int pc) const
    {
        for (int c : classi())
            if (c == pc) return true;
        return false;
    }
    int terza() const
    {
        for (int i : intervalli)
            if (i == 3 || i == 4 || i == 5 || i == 2) return classe(radice + i);
        return classe(radice + 7);
    }
};

int nota_da_nome(const std::string& s, std::size_t& i)
{
    static const std::map<char, int> lettere = {{'C', 0}, {'D', 2}, {'E', 4}, {'F', 5}, {'G', 7}, {'A', 9}, {'B', 11}};
    const auto it = lettere.find(i < s.size() ? s[i] : '?');
    if (it == lettere.end()) throw std::invalid_argument("not a chord: " + s);
    int n = it->second;
    ++i;
    while (i < s.size() && (s[i] == '#' || s[i] == 'b')) n += s[i++] == '#' ? 1 : -1;
    return classe(n);
}

Accordo leggi_accordo(const std::string& nome)
{
    // clang-format off
    static const std::map<std::string, std::vector<int>> qualita = {
        {"", {0, 4, 7}},          {"m", {0, 3, 7}},           {"7", {0, 4, 7, 10}},        {"maj7", {0, 4, 7, 11}},
        {"m7", {0, 3, 7, 10}},    {"m7b5", {0, 3, 6, 10}},    {"dim", {0, 3, 6}},          {"dim7", {0, 3, 6, 9}},
        {"sus4", {0, 5, 7}},      {"sus2", {0, 2, 7}},        {"6", {0, 4, 7, 9}},         {"m6", {0, 3, 7, 9}},
        {"9", {0, 4, 7, 10, 14}}, {"maj9", {0, 4, 7, 11, 14}}, {"m9", {0, 3, 7, 10, 14}},  {"add9", {0, 4, 7, 14}},
        {"madd9", {0, 3, 7, 14}}, {"7b9", {0, 4, 7, 10, 13}}, {"13", {0, 4, 7, 10, 14, 21}}, {"7sus4", {0, 5, 7, 10}},
        {"5", {0, 7}},            {"aug", {0, 4, 8}},          {"7#9", {0, 4, 7, 10, 15}},  {"69", {0, 4, 7, 9, 14}},
        {"m11", {0, 3, 7, 10, 14, 17}},
    };
    // clang-format on
    std::size_t i = 0;
    Accordo a;
    a.radice = nota_da_nome(nome, i);
    const std::size_t barra = nome.find('/', i);
    const auto q = qualita.find(nome.substr(i, barra == std::string::npos ? std::string::npos : barra - i));
    if (q == qualita.end()) throw std::invalid_argument("unknown chord: " + nome);
    a.intervalli = q->second;
    a.basso = a.radice;
    if (barra != std::string::npos) {
        std::size_t j = barra + 1;
        a.basso = nota_da_nome(nome, j);
    }
    return a;
}

std::vector<int> scala_tonalita(const Tonalita& t)
{
    static const std::map<Modo, std::vector<int>> modi = {
        {Modo::maggiore, {0, 2, 4, 5, 7, 9, 11}},  {Modo::minore, {0, 2, 3, 5, 7, 8, 10}},
        {Modo::dorico, {0, 2, 3, 5, 7, 9, 10}},    {Modo::frigio, {0, 1, 3, 5, 7, 8, 10}},
        {Modo::misolidio, {0, 2, 4, 5, 7, 9, 10}},
    };
    std::vector<int> v;
    for (int g : modi.at(t.modo)) v.push_back(classe(t.tonica + g));
    std::sort(v.begin(), v.end());
    return v;
}

// The key's scale bent to the chord: a chord tone foreign to the key pushes
// out its neighbours a semitone away (A7 in C major turns C into C#).
std::vector<int> scala_accordo(const Tonalita& t, const Accordo& a)
{
    std::vector<int> s = scala_tonalita(t);
    for (int c : a.classi()) {
        if (std::find(s.begin(), s.end(), c) != s.end()) continue;
        s.erase(std::remove_if(s.begin(), s.end(),
                               [&](int n) { return (classe(n - c) == 1 || classe(c - n) == 1) && !a.contiene(n); }),
                s.end());
        s.push_back(c);
    }
    std::sort(s.begin(), s.end());
    return s;
}

// Moves `passi` notes of the scale from `altezza` (which need not be in it).
int passo_scala(int altezza, int passi, const std::vector<int>& scala)
{
    auto in_scala = [&](int n) { return std::find(scala.begin(), scala.end(), classe(n)) != scala.end(); };
    int n = altezza;
    while (!in_scala(n)) --n;
    for (int k = 0; k < std::abs(passi); ++k) {
        n += passi > 0 ? 1 : -1;
        while (!in_scala(n)) n += passi > 0 ? 1 : -1;
    }
    return n;
}

// The note of one of `classi` nearest to `altezza`; a tie goes the way of `verso`.
int piu_vicina(int altezza, const std::vector<int>& classi, int verso = 1)
{
    int migliore = altezza, distanza = 99;
    for (int d = 0; d <= 6; ++d)
        for (int s : {verso >= 0 ? 1 : -1, verso >= 0 ? -1 : 1}) {
            const int n = altezza + s * d;
            if (d < distanza && std::find(classi.begin(), classi.end(), classe(n)) != classi.end()) {
                migliore = n;
                distanza = d;
            }
        }
    return migliore;
}

int nel_registro(int pc, int centro)
{
    int n = centro - 6 + classe(pc - (centro - 6));
    return n;
}

// Chord voicing with the smallest movement from the previous one.
std::vector<int> disponi(const Accordo& a, int voci, int centro, const std::vector<int>& prima, bool senza_radice)
{
    std::vector<int> ordine;
    auto aggiungi = [&](int intervallo) {
        const int pc = classe(a.radice + intervallo);
        if (std::find(ordine.begin(), ordine.end(), pc) == ordine.end()) ordine.push_back(pc);
    };
    if (!senza_radice) aggiungi(0);
    for (int i : a.intervalli)
        if (i == 2 || i == 3 || i == 4 || i == 5) aggiungi(i);
    for (int i : a.intervalli)
        if (i == 9 || i == 10 || i == 11) aggiungi(i);
    for (int i : a.intervalli)
        if (i >= 12) aggiungi(i);
    for (int i : a.intervalli)
        if (i == 6 || i == 7 || i == 8) aggiungi(i);
    aggiungi(0);
    std::vector<int> classi(ordine.begin(), ordine.begin() + std::min<std::size_t>(voci, ordine.size()));
    for (std::size_t k = 0; classi.size() < std::size_t(voci); ++k) classi.push_back(ordine[k % ordine.size()]);

    std::vector<int> migliore;
    double costo_migliore = 1e9;
    std::vector<int> scelta(classi.size());
    const int n = int(classi.size());
    int combinazioni = 1;
    for (int i = 0; i < n; ++i) combinazioni *= 3;
    for (int c = 0; c < combinazioni; ++c) {
        int resto = c;
        for (int i = 0; i < n; ++i) {
            scelta[i] = nel_registro(classi[i], centro) + 12 * (resto % 3 - 1);
            resto /= 3;
        }
        std::vector<int> v = scelta;
        std::sort(v.begin(), v.end());
        if (std::adjacent_find(v.begin(), v.end()) != v.end() && n <= 4) continue;
        const int ampiezza = v.back() - v.front();
        if (ampiezza > 16 || v.front() < centro - 12 || v.back() > centro + 14) continue;
        double costo = 0;
        double media = 0;
        for (int x : v) media += x;
        media /= n;
        costo += 0.6 * std::abs(media - centro);
        if (prima.size() == v.size()) {
            for (int i = 0; i < n; ++i) costo += std::abs(v[i] - prima[i]);
        }
        for (int i = 1; i < n; ++i)
            if (v[i] - v[i - 1] == 1 && v[i] < 60) costo += 6;
        if (costo < costo_migliore) {
            costo_migliore = costo;
            migliore = v;
        }
    }
    return migliore;
}

// ================================================================ the form

struct Misura {
    long inizio = 0, durata = 0;
    std::vector<Accordo> accordi;
    int sezione = 0;  // index in the recipe's form
    int occorrenza = 0;  // running number of the section played
    int indice = 0;  // bar within this playing of the section
    int misure = 0;  // bars of this playing of the section
    int globale = 0;  // bar of the song
    bool finale = false;  // the last bar: everything holds the last chord
    const Sezione* sez = nullptr;
    bool ultima_della_sezione() const { return indice == misure - 1; }
};

struct Contesto {
    const Ricetta& r;
    Caso& caso;
    std::vector<Misura> misure;
    long fine = 0;

    const Misura& misura_a(long t) const
    {
        for (auto it = misure.rbegin(); it != misure.rend(); ++it)
            if (it->inizio <= t) return *it;
        return misure.front();
    }
    const Accordo& accordo_a(long t) const
    {
        const Misura& m = misura_a(t);
        for (auto it = m.accordi.rbegin(); it != m.accordi.rend(); ++it)
            if (it->inizio <= t) return *it;
        return m.accordi.front();
    }
    long misura_lunga() const { return r.battiti * tpq; }
};

std::vector<Misura> costruisci_forma(const Ricetta& r)
{
    std::vector<Misura> misure;
    long t = 0;
    int occorrenza = 0;
    for (std::size_t s = 0; s < r.forma.size(); ++s) {
        const Sezione& sez = r.forma[s];
        std::vector<std::string> battute;
        std::stringstream in(sez.giro);
        for (std::string b; std::getline(in, b, '|');) battute.push_back(b);
        const int misure_sezione = int(battute.size()) * sez.ripetizioni;
        int indice = 0;
        for (int rip = 0; rip < sez.ripetizioni; ++rip)
            for (const std::string& b : battute) {
                Misura m;
                m.inizio = t;
                m.durata = r.battiti * tpq;
                m.sezione = int(s);
                m.occorrenza = occorrenza;
                m.indice = indice++;
                m.misure = misure_sezione;
                m.globale = int(misure.size());
                m.sez = &sez;
                std::stringstream nomi(b);
                std::vector<std::pair<std::string, double>> accordi;
                double battiti_dati = 0;
                int senza_durata = 0;
                for (std::string nome; nomi >> nome;) {
                    const std::size_t due_punti = nome.find(':');
                    double d = 0;
                    if (due_punti != std::string::npos) {
                        d = std::stod(nome.substr(due_punti + 1));
                        nome = nome.substr(0, due_punti);
                        battiti_dati += d;
                    } else {
                        ++senza_durata;
                    }
                    accordi.emplace_back(nome, d);
                }
                if (accordi.empty()) throw std::invalid_argument("empty bar in " + sez.giro);
                long a_t = t;
                for (auto& [nome, d] : accordi) {
                    if (d == 0) d = (r.battiti - battiti_dati) / senza_durata;
                    Accordo a = leggi_accordo(nome);
                    a.inizio = a_t;
                    a.durata = battito(d);
                    a_t += a.durata;
                    m.accordi.push_back(a);
                }
                misure.push_back(m);
                t += m.durata;
            }
        ++occorrenza;
    }
    misure.back().finale = true;
    return misure;
}

// ================================================================ drums

struct LineaBatteria {
    int nota;
    std::string schema;  // one character a step; 'X' accent, 'x' normal, 'o' soft, 'g' ghost
};

struct StileBatteria {
    int passi_per_battito = 4;
    std::vector<std::vector<LineaBatteria>> livelli;  // intensity 1, 2, 3
    std::vector<int> riempimento = {38, 38, 45, 41};  // the fill at the end of a section
    bool piatto = true;  // crash at the start of a section
};

// clang-format off
// General MIDI drum notes.
enum {
    cassa = 36, rullante = 38, bordo = 37, battimani = 39, rullante_el = 40, hh_chiuso = 42, hh_pedale = 44,
    hh_aperto = 46, piatto_crash = 49, ride = 51, campanaccio = 56, tamburello = 54, conga_bassa = 64,
    conga_alta = 63, maracas = 70, nacchere = 85, triangolo = 81, tom_basso = 45, tom_alto = 48, tom_pavimento = 41,
};
// clang-format on

const StileBatteria& stile_batteria(const std::string& nome)
{
    // clang-format off
    static const std::map<std::string, StileBatteria> stili = {
        {"house",
         {4,
          {{{cassa, "X...x...X...x..."}, {hh_chiuso, "..o...o...o...o."}},
           {{cassa, "X...x...X...x..."}, {battimani, "....x.......x..."}, {hh_aperto, "..o...o...o...o."},
            {hh_chiuso, "g.g.g.g.g.g.g.g."}},
           {{cassa, "X...x...X...x..."}, {battimani, "....x.......x..."}, {rullante_el, "....o.......o..o"},
            {hh_aperto, "..x...x...x...x."}, {hh_chiuso, "gggggggggggggggg"}, {tamburello, "....o.......o..."}}},
          {rullante_el, rullante_el, rullante_el, rullante_el}}},
        {"robot",
         {4,
          {{{cassa, "X...x...X...x..."}, {hh_chiuso, "x.g.o.g.x.g.o.g."}},
           {{cassa, "X...x...X...x..."}, {rullante, "....x.......x..."}, {hh_chiuso, "x.g.o.g.x.g.o.g."},
            {campanaccio, "..g....g..g....."}},
           {{cassa, "X...x...X..ox..."}, {rullante, "....X.......X..."}, {battimani, "....o.......o..."},
            {hh_chiuso, "xgogxgogxgogxgog"}, {campanaccio, "..g....g..g....."}}},
          {tom_alto, tom_alto, tom_basso, tom_basso}}},
        {"rock",
         {4,
          {{{cassa, "X.....x.x......."}, {rullante, "....x.......x..."}, {hh_chiuso, "x.o.x.o.x.o.x.o."}},
           {{cassa, "X.....x.x.x....."}, {rullante, "....X.......X..g"}, {hh_chiuso, "x.x.x.x.x.x.x.x."}},
           {{cassa, "X.....x.x.x...o."}, {rullante, "....X..g....X..g"}, {ride, "x.x.x.x.x.x.x.x."},
            {hh_pedale, "..o...o...o...o."}}},
          {rullante, tom_alto, tom_basso, tom_pavimento}}},
        {"funk",
         {4,
          {{{cassa, "X..x..x...x....."}, {rullante, "....x.......x..."}, {hh_chiuso, "xgxgxgxgxgxgxgxg"}},
           {{cassa, "X..x..x...x..o.."}, {rullante, "....X..g.g..X..g"}, {hh_chiuso, "xgxgxgxgxgxgxgxg"},
            {hh_aperto, "..............o."}},
           {{cassa, "X..x..x...x..o.."}, {rullante, "....X..g.g..X.gg"}, {hh_chiuso, "xgxgxgxgxgxgxgxg"},
            {hh_aperto, "......o.......o."}, {campanaccio, "x...x...x...x..."}}},
          {rullante, rullante, tom_alto, tom_basso}}},
        {"swing",
         {3,
          {{{ride, "x..x.xx..x.x"}, {hh_pedale, "...x.....x.."}},
           {{ride, "x..x.xx..x.x"}, {hh_pedale, "...x.....x.."}, {cassa, "g..g..g..g.."}, {bordo, ".........o.."}},
           {{ride, "X..x.xX..x.x"}, {hh_pedale, "...x.....x.."}, {cassa, "g..g..g..g.."}, {rullante, "..g....g...g"},
            {bordo, ".........o.."}}},
          {rullante, rullante, rullante, tom_basso},
          false}},
        {"bossa",
         {4,
          {{{bordo, "x..x..x...x..x....x..x...x..x..."}, {hh_chiuso, "o.g.o.g.o.g.o.g."}},
           {{bordo, "x..x..x...x..x....x..x...x..x..."}, {cassa, "o..oo..oo..oo..o"}, {hh_chiuso, "o.g.o.g.o.g.o.g."}},
           {{bordo, "x..x..x...x..x....x..x...x..x..."}, {cassa, "o..oo..oo..oo..o"}, {ride, "o.g.o.g.o.g.o.g."},
            {maracas, "gggggggggggggggg"}}},
          {bordo, bordo, tom_alto, tom_basso},
          false}},
        {"marcia",
         {4,
          {{{cassa, "X.......x......."}, {rullante, "x..gx.g.x..gx.g."}},
           {{cassa, "X.......x......."}, {rullante, "X.gxx.g.x.gxxgxg"}, {piatto_crash, "o.......o......."}},
           {{cassa, "X...x...X...x..."}, {rullante, "X.gxx.gxx.gxxgxg"}, {piatto_crash, "x.......x......."},
            {triangolo, "..o...o...o...o."}}},
          {rullante, rullante, rullante, rullante}}},
        {"inno",
         {4,
          {{{cassa, "X.......x......."}, {ride, "o...o...o...o..."}},
           {{cassa, "X.......x.x....."}, {rullante, "........X......."}, {hh_chiuso, "x.o.x.o.x.o.x.o."}},
           {{cassa, "X.......x.x....."}, {rullante, "........X......."}, {ride, "x.o.x.o.x.o.x.o."},
            {tom_pavimento, "X..............."}}},
          {tom_alto, tom_alto, tom_basso, tom_pavimento}}},
        {"ballata",
         {4,
          {{{bordo, "........o......."}, {hh_chiuso, "g.g.g.g.g.g.g.g."}},
           {{cassa, "x.......o.o....."}, {bordo, "........x......."}, {hh_chiuso, "o.g.o.g.o.g.o.g."}},
           {{cassa, "x.......o.o....."}, {rullante, "........x......."}, {ride, "o.g.o.g.o.g.o.g."}}},
          {rullante, tom_alto, tom_basso, tom_pavimento}}},
        {"valzer",
         {4,
          {{{maracas, "o.g.o.g.o.g."}},
           {{cassa, "o..........."}, {hh_chiuso, "....g...g..."}, {maracas, "o.g.o.g.o.g."}},
           {{cassa, "x..........."}, {ride, "o...g...g..."}, {hh_pedale, "....g...g..."}, {triangolo, "o..........."}}},
          {bordo, bordo, bordo, bordo},
          false}},
        {"sevillana",
         {4,
          {{{battimani, "o...g...g..."}},
           {{battimani, "X...x...x..."}, {nacchere, "x.x.x.xxx.x."}},
           {{battimani, "X...x...x..."}, {nacchere, "x.xxx.xxx.x."}, {conga_bassa, "x.......o..."},
            {conga_alta, "....o...o..."}, {tamburello, "o.g.o.g.o.g."}}},
          {nacchere, nacchere, nacchere, nacchere},
          false}},
    };
    // clang-format on
    const auto it = stili.find(nome);
    if (it == stili.end()) throw std::invalid_argument("unknown drum style: " + nome);
    return it->second;
}

int velocita_segno(char c)
{
    switch (c) {
    case 'X': return 118;
    case 'x': return 96;
    case 'o': return 72;
    case 'g': return 46;
    default: return 0;
    }
}

void suona_batteria(const Contesto& c, const Parte& p, Traccia& t)
{
    const StileBatteria& s = stile_batteria(p.stile);
    const int passi = s.passi_per_battito * c.r.battiti;
    const long passo = tpq / s.passi_per_battito;
    for (std::size_t i = 0; i < c.misure.size(); ++i) {
        const Misura& m = c.misure[i];
        const int livello = std::min(m.sez->intensita, 3);
        if (m.finale) {
            t.note.push_back({m.inizio, tpq, cassa, 100});
            t.note.push_back({m.inizio, tpq * 2, s.piatto ? int(piatto_crash) : s.riempimento.front(), 96});
            continue;
        }
        if (livello < p.da_intensita) continue;
        const bool prossima_finale = i + 1 < c.misure.size() && c.misure[i + 1].finale;
        const bool riempi = m.ultima_della_sezione() && livello >= 2 && !prossima_finale;
        const int dal_passo = riempi ? passi - s.passi_per_battito : passi;
        for (const LineaBatteria& l : s.livelli[std::size_t(livello - 1)]) {
            const int giri = int(l.schema.size()) / passi;
            const std::size_t base = std::size_t((m.globale % std::max(1, giri)) * passi);
            for (int k = 0; k < passi; ++k) {
                const int v = velocita_segno(l.schema[base + std::size_t(k)]);
                if (!v || (k >= dal_passo && l.nota != cassa)) continue;
                t.note.push_back({m.inizio + k * passo, passo, l.nota, v * p.velocita / 100});
            }
        }
        if (riempi) {
            const int colpi = int(s.riempimento.size());
            for (int k = 0; k < colpi; ++k)
                t.note.push_back({m.inizio + (c.r.battiti - 1) * tpq + k * tpq / colpi, tpq / colpi, s.riempimento[k],
                                  (70 + 12 * k) * p.velocita / 100});
        }
        if (m.indice == 0 && m.occorrenza > 0 && livello >= 2 && s.piatto)
            t.note.push_back({m.inizio, tpq * 2, piatto_crash, 100 * p.velocita / 100});
    }
}

// ================================================================ bass

// The bass note of a chord in the bass's range.
int nota_basso(const Accordo& a, int registro) { return nel_registro(a.basso, registro); }

void suona_basso(const Contesto& c, const Parte& p, Traccia& t)
{
    const int b = c.r.battiti;
    for (std::size_t i = 0; i < c.misure.size(); ++i) {
        const Misura& m = c.misure[i];
        if (m.finale) {
            t.note.push_back({m.inizio, m.durata, nota_basso(m.accordi.front(), p.registro), p.velocita + 10});
            continue;
        }
        if (m.sez->intensita < p.da_intensita) continue;
        const bool pieno = m.sez->intensita >= 2;
        for (std::size_t k = 0; k < m.accordi.size(); ++k) {
            const Accordo& a = m.accordi[k];
            const int radice = nota_basso(a, p.registro);
            const int quinta =
                a.contiene(classe(a.radice + 7)) ? radice + 7 - (radice + 7 > p.registro + 7 ? 12 : 0) : radice;
            const long fine = a.inizio + a.durata;
            const Accordo& seguente = c.accordo_a(fine);
            const int arrivo = nota_basso(seguente, p.registro);
            auto nota = [&](double da, double lung, int altezza, int vel) {
                const long inizio = a.inizio + battito(da);
                if (inizio >= fine) return;
                t.note.push_back({inizio, std::min(battito(lung), fine - inizio), altezza, vel});
            };
            const double battiti = double(a.durata) / tpq;
            const int v = p.velocita;
            if (p.stile == "radice") {
                nota(0, battiti * p.legato, radice, v + 8);
                if (battiti >= 4 && pieno) nota(2, 2 * p.legato, quinta, v);
            } else if (p.stile == "camminata") {
                // A walking line: the root, chord and scale tones, and a
                // chromatic step into the next chord.
                const std::vector<int> scala = scala_accordo(c.r.tonalita, a);
                int n = radice;
                for (int q = 0; q < int(battiti); ++q) {
                    int altezza;
                    if (q == 0) {
                        altezza = radice;
                    } else if (q == int(battiti) - 1) {
                        altezza = arrivo + (c.caso.probabile(0.5) ? 1 : -1);
                    } else {
                        altezza = c.caso.probabile(0.6) ? piu_vicina(n + (arrivo > n ? 3 : -3), a.classi())
                                                        : passo_scala(n, arrivo > n ? 1 : -1, scala);
                    }
                    if (!pieno && q % 2 == 1) continue;
                    altezza = std::clamp(altezza, p.registro - 10, p.registro + 10);
                    nota(q, pieno ? 0.9 : 1.9, altezza, v + (q == 0 ? 8 : 0) + c.caso.intero(-4, 4));
                    n = altezza;
                }
            } else if (p.stile == "ottavi") {
                for (double q = 0; q < battiti; q += 0.5) {
                    const bool su = std::fmod(q, 1.0) > 0.1 && pieno;
                    nota(q, 0.5 * p.legato, radice + (su ? 12 : 0), v + (su ? -6 : 6));
                }
            } else if (p.stile == "galoppo") {
                // Rolling semiquavers with the beat left to the kick drum.
                for (double q = 0; q < battiti; q += 0.25) {
                    const double dentro = std::fmod(q, 1.0);
                    if (dentro < 0.1 && q > 0) continue;
                    const int alt = dentro > 0.6 && pieno ? radice + 12 : radice;
                    nota(q, 0.2, alt, v + (dentro > 0.4 && dentro < 0.6 ? 10 : -4));
                }
            } else if (p.stile == "funk") {
                static const char* schemi[] = {"X..x..x.x.o.x..o", "X..o.xx...x.x.o.", "X.ox..x...o.x.xo"};
                const std::string schema = schemi[(m.globale + int(k)) % 3];
                for (int q = 0; q < int(battiti * 4) && q < 16; ++q) {
                    const char s = schema[std::size_t(q)];
                    if (s == '.') continue;
                    const bool ottava = s == 'o';
                    nota(q / 4.0, 0.22, radice + (ottava ? 12 : 0), velocita_segno(s) * v / 96);
                }
            } else if (p.stile == "bossa") {
                nota(0, 1.4, radice, v + 6);
                nota(1.5, 0.45, quinta, v - 6);
                if (battiti >= 4) {
                    nota(2, 1.4, quinta, v);
                    nota(3.5, 0.45, radice, v - 6);
                }
            } else if (p.stile == "marcia") {
                for (int q = 0; q < int(battiti); ++q) {
                    int alt = q % 2 == 0 ? radice : quinta;
                    if (q == int(battiti) - 1 && q > 0 && pieno) alt = arrivo + (arrivo > radice ? -2 : 2);
                    nota(q, 0.55, alt, v + (q == 0 ? 10 : 0));
                }
            } else if (p.stile == "valzer") {
                nota(0, 0.9, radice, v + 8);
                if (pieno && b == 3) nota(2, 0.9, quinta, v - 8);
            } else if (p.stile == "ballata") {
                nota(0, battiti >= 4 ? 2.9 : battiti * 0.95, radice, v + 4);
                if (battiti >= 4 && pieno) nota(3, 0.95, c.caso.probabile(0.5) ? quinta : radice, v - 6);
            } else if (p.stile == "pulsante") {
                for (double q = 0; q < battiti; q += 0.5) nota(q, 0.45, radice, v + (std::fmod(q, 1.0) < 0.1 ? 6 : -4));
            } else if (p.stile == "timpani") {
                nota(0, 1, radice, v + 10);
                if (m.ultima_della_sezione() && k + 1 == m.accordi.size())
                    for (double q = battiti - 1; q < battiti; q += 0.125)
                        nota(q, 0.125, quinta, 50 + int((q - battiti + 1) * 60));
            } else {
                throw std::invalid_argument("unknown bass style: " + p.stile);
            }
        }
    }
}

// ================================================================ chords

// Rhythms of the chord instruments: onsets and lengths in beats within a bar.
struct Colpo {
    double inizio, durata;
    int accento;  // added to the velocity
};

std::vector<Colpo> ritmo_accordi(const std::string& stile, const Misura& m, int battiti, Caso& caso)
{
    static const std::vector<std::vector<Colpo>> swing = {
        {{0, 0.75, 4}, {1.5, 1.0, 0}},
        {{1, 0.5, 0}, {2.5, 1.2, 4}},
        {{0, 1.8, 4}, {3.5, 0.5, 0}},
        {{1.5, 0.5, 2}, {3, 0.8, 0}},
        {{0, 0.5, 4}, {2, 0.5, 0}, {3.5, 0.5, 2}},
    };
    std::vector<Colpo> v;
    if (stile == "tappeto") {
        v.push_back({0, double(battiti), 0});
    } else if (stile == "swing") {
        v = swing[std::size_t(caso.intero(0, int(swing.size()) - 1))];
    } else if (stile == "bossa") {
        static const char* schemi[] = {"x..x..x...x..x..", "..x..x...x..x..."};
        const std::string s = schemi[m.globale % 2];
        for (int q = 0; q < 16; ++q)
            if (s[std::size_t(q)] == 'x') v.push_back({q / 4.0, 0.6, q % 4 == 0 ? 4 : 0});
    } else if (stile == "anima") {
        v = {{0, 1.4, 4}, {1.5, 0.4, -6}, {2.5, 1.4, 0}};
    } else if (stile == "valzer") {
        v = {{1, 0.7, 0}, {2, 0.7, -4}};
    } else if (stile == "marcia") {
        v = {{0, 0.8, 10}, {1, 0.4, -6}, {2, 0.8, 4}, {3, 0.4, -6}};
        if (m.sez->intensita >= 3) v.push_back({3.5, 0.25, 0}), v.push_back({3.75, 0.25, 4});
    } else if (stile == "inno") {
        if (m.sez->intensita >= 3)
            v = {{0, 1.5, 8}, {1.5, 0.5, 0}, {2, 2, 4}};
        else
            v = {{0, 2, 4}, {2, 2, 0}};
    } else if (stile == "funk") {
        static const char* schemi[] = {"..x..x.x..x..x.x", ".x.x..x...x.x..x", "..x.x..x.xx..x.."};
        const std::string s = schemi[m.globale % 3];
        for (int q = 0; q < 16; ++q)
            if (s[std::size_t(q)] == 'x') v.push_back({q / 4.0, 0.18, q % 2 ? -4 : 4});
    } else if (stile == "potenza") {
        static const char* schemi[] = {"X.x.x.X..xx.x.x.", "X..x..X.x.x.X..."};
        const std::string s = schemi[(m.globale / 2) % 2];
        for (int q = 0; q < 16; ++q)
            if (s[std::size_t(q)] != '.') v.push_back({q / 4.0, 0.4, s[std::size_t(q)] == 'X' ? 12 : 0});
    } else if (stile == "rasgueado") {
        // A strum on every quaver, with a quick triple strum closing the bar.
        for (int q = 0; q < battiti * 2; ++q) v.push_back({q / 2.0, 0.45, q == 0 ? 14 : (q % 2 ? -8 : 2)});
        if (caso.probabile(0.5)) {
            v.pop_back();
            for (int k = 0; k < 3; ++k) v.push_back({battiti - 0.5 + k / 6.0, 0.16, -4 + 4 * k});
        }
    } else {
        throw std::invalid_argument("unknown chord style: " + stile);
    }
    return v;
}

void suona_accordi(const Contesto& c, const Parte& p, Traccia& t)
{
    const bool jazz = p.stile == "swing" || p.stile == "bossa" || p.stile == "anima";
    const bool chitarra = p.stile == "rasgueado";
    const int voci = p.stile == "potenza" ? 3 : chitarra ? 5 : p.stile == "funk" ? 3 : 4;
    std::vector<int> prima;
    for (const Misura& m : c.misure) {
        if (m.finale) {
            prima = disponi(m.accordi.front(), voci, p.registro, prima, false);
            for (std::size_t k = 0; k < prima.size(); ++k)
                t.note.push_back({m.inizio + long(k) * (chitarra ? 25 : 0), m.durata, prima[k], p.velocita});
            continue;
        }
        if (m.sez->intensita < p.da_intensita) continue;
        for (const Colpo& colpo : ritmo_accordi(p.stile, m, c.r.battiti, c.caso)) {
            const long inizio = m.inizio + battito(colpo.inizio);
            if (inizio >= m.inizio + m.durata) continue;
            const Accordo& a = c.accordo_a(inizio);
            std::vector<int> voci_accordo;
            if (p.stile == "potenza") {
                const int r = nel_registro(a.radice, p.registro);
                voci_accordo = {r, r + 7, r + 12};
            } else {
                voci_accordo = disponi(a, voci, p.registro, prima, jazz && a.intervalli.size() >= 4);
                prima = voci_accordo;
            }
            long durata = battito(colpo.durata * p.legato);
            if (p.stile == "tappeto" || p.stile == "inno") durata = std::min(durata, a.inizio + a.durata - inizio) - 10;
            const bool in_su = chitarra && std::fmod(colpo.inizio, 1.0) > 0.1;
            for (std::size_t k = 0; k < voci_accordo.size(); ++k) {
                const std::size_t corda = in_su ? voci_accordo.size() - 1 - k : k;
                const long sfasa = chitarra ? long(k) * 12 : 0;
                t.note.push_back(
                    {inizio + sfasa, std::max(30L, durata - sfasa), voci_accordo[corda], p.velocita + colpo.accento});
            }
        }
        // A pad changes with each chord, not only at the rhythm's onsets.
        if (p.stile == "tappeto" || p.stile == "inno")
            for (std::size_t k = 1; k < m.accordi.size(); ++k) {
                const Accordo& a = m.accordi[k];
                if (p.stile == "inno" && m.sez->intensita >= 2) break;
                prima = disponi(a, voci, p.registro, prima, false);
                for (int n : prima) t.note.push_back({a.inizio, a.durata - 10, n, p.velocita});
            }
    }
}

// ================================================================ arpeggio

void suona_arpeggio(const Contesto& c, const Parte& p, Traccia& t)
{
    for (const Misura& m : c.misure) {
        if (m.finale) {
            const Accordo& a = m.accordi.front();
            int n = nel_registro(a.radice, p.registro - 6);
            std::vector<int> toni;
            for (int pc : a.appoggi(false)) toni.push_back(nel_registro(pc, n + 6));
            std::sort(toni.begin(), toni.end());
            for (std::size_t k = 0; k < toni.size(); ++k)
                t.note.push_back({m.inizio + long(k) * 60, m.durata - long(k) * 60, toni[k], p.velocita});
            continue;
        }
        if (m.sez->intensita < p.da_intensita) continue;
        for (const Accordo& a : m.accordi) {
            // Chord tones stacked over two octaves from the part's register.
            std::vector<int> toni;
            const int base = nel_registro(a.radice, p.registro - 6);
            std::vector<int> classi = a.appoggi(false);
            for (int ottava = 0; ottava < 2; ++ottava)
                for (int pc : classi) toni.push_back(base + classe(pc - a.radice) + 12 * ottava);
            std::sort(toni.begin(), toni.end());
            toni.erase(std::unique(toni.begin(), toni.end()), toni.end());
            std::vector<int> giro;
            double passo = 0.25;
            if (p.stile == "su") {
                giro = toni;
            } else if (p.stile == "sugiu") {
                giro = toni;
                for (int k = int(toni.size()) - 2; k > 0; --k) giro.push_back(toni[std::size_t(k)]);
            } else if (p.stile == "ottavi") {
                passo = 0.5;
                giro = toni;
            } else if (p.stile == "arpa") {
                // Broken chord over the bar: up and back down in quavers.
                passo = 0.5;
                giro = {toni[0],
                        toni[std::min<std::size_t>(2, toni.size() - 1)],
                        toni[std::min<std::size_t>(3, toni.size() - 1)],
                        toni[std::min<std::size_t>(4, toni.size() - 1)],
                        toni[std::min<std::size_t>(3, toni.size() - 1)],
                        toni[std::min<std::size_t>(1, toni.size() - 1)]};
            } else if (p.stile == "spezzato") {
                // The left hand of a ballad: root, fifth, octave, tenth.
                passo = 0.5;
                const int r = nel_registro(a.basso, p.registro - 6);
                const int terza = nel_registro(a.terza(), r + 12 + 3);
                giro = {r, r + 7, r + 12, terza, r + 12, r + 7, r + 12, r + 7};
            } else {
                throw std::invalid_argument("unknown arpeggio style: " + p.stile);
            }
            int k = 0;
            for (long tt = a.inizio; tt < a.inizio + a.durata; tt += battito(passo), ++k) {
                const bool sul_battito = (tt - m.inizio) % tpq == 0;
                const int n = giro[std::size_t(k) % giro.size()];
                t.note.push_back({tt, long(battito(passo) * p.legato), n, p.velocita + (sul_battito ? 8 : 0)});
            }
        }
    }
}

// ================================================================ melody

struct NotaMotivo {
    double inizio = 0, durata = 0;  // in beats from the start of the motif
    int grado = 0;  // scale steps from the phrase's anchor
};

struct Motivo {
    std::vector<NotaMotivo> note;
};

// Rhythm cells: note lengths in beats, a rest negative; every cell fills
// whole beats.
const std::vector<std::vector<double>>& cellule(const std::string& ritmo)
{
    static const std::map<std::string, std::vector<std::vector<double>>> tutte = {
        {"lirico", {{2}, {1, 1}, {1.5, 0.5}, {1, 0.5, 0.5}, {0.5, 0.5, 1}, {1}, {-1, 1}}},
        {"vivace", {{0.5, 0.5}, {0.25, 0.25, 0.5}, {0.75, 0.25}, {1}, {0.5, 0.25, 0.25}, {-0.5, 0.5}, {1, 0.5, 0.5}}},
        {"jazz", {{0.5, 0.5}, {1}, {-0.5, 0.5}, {1.5, 0.5}, {0.5, 1, 0.5}, {-1, 0.5, 0.5}, {0.5, 0.5, 1}}},
        {"marcia", {{1}, {0.75, 0.25}, {0.5, 0.5}, {2}, {1.5, 0.5}, {1, 0.5, 0.5}}},
        {"valzer", {{2, 1}, {1, 1, 1}, {1.5, 0.5, 1}, {1, 0.5, 0.5, 1}, {3}}},
        {"riff", {{0.5, 0.5}, {0.75, 0.75, 0.5}, {-0.5, 0.5}, {0.25, 0.25, 0.5}, {1}, {0.5, 0.25, 0.25}}},
    };
    const auto it = tutte.find(ritmo);
    if (it == tutte.end()) throw std::invalid_argument("unknown melody rhythm: " + ritmo);
    return it->second;
}

double somma(const std::vector<double>& cella)
{
    double s = 0;
    for (double d : cella) s += std::abs(d);
    return s;
}

// A two-bar motif: a rhythm from the style's cells closing on a long note,
// and a contour of small steps rising then falling, a leap turned back by a step.
Motivo crea_motivo(Caso& caso, const std::string& ritmo, int battiti)
{
    const double lunghezza = 2.0 * battiti;
    const double chiusura = battiti == 3 ? 3 : 2;
    std::vector<double> durate;
    double t = 0;
    while (t < lunghezza - chiusura - 1e-6) {
        const double resta = lunghezza - chiusura - t;
        std::vector<const std::vector<double>*> adatte;
        for (const auto& c : cellule(ritmo))
            if (somma(c) <= resta + 1e-6 && !(t == 0 && c.front() < 0 && caso.probabile(0.5))) adatte.push_back(&c);
        if (adatte.empty()) {
            durate.push_back(resta);
            break;
        }
        const auto& scelta = *adatte[std::size_t(caso.intero(0, int(adatte.size()) - 1))];
        durate.insert(durate.end(), scelta.begin(), scelta.end());
        t += somma(scelta);
    }
    const int fine_tipo = caso.intero(0, 2);
    if (battiti == 3) {
        if (fine_tipo == 0)
            durate.insert(durate.end(), {3});
        else
            durate.insert(durate.end(), {2, -1});
    } else {
        if (fine_tipo == 0)
            durate.insert(durate.end(), {2});
        else if (fine_tipo == 1)
            durate.insert(durate.end(), {1.5, -0.5});
        else
            durate.insert(durate.end(), {1, -1});
    }

    Motivo m;
    int grado = 0, ultimo_salto = 0;
    double inizio = 0;
    int suonate = 0;
    for (double d : durate) {
        if (d > 0) ++suonate;
    }
    int k = 0;
    for (double d : durate) {
        if (d < 0) {
            inizio -= d;
            continue;
        }
        if (k > 0) {
            int passo;
            if (ultimo_salto != 0) {
                passo = ultimo_salto > 0 ? -1 : 1;
            } else {
                const double r = caso.reale();
                passo = r < 0.5 ? 1 : r < 0.72 ? 2 : r < 0.82 ? 0 : caso.intero(3, 4);
                // Up in the first half of the motif, down in the second.
                const bool sale = k < suonate / 2 ? caso.probabile(0.7) : caso.probabile(0.3);
                if (!sale) passo = -passo;
            }
            if (grado + passo > 6 || grado + passo < -4) passo = -passo;
            grado += passo;
            ultimo_salto = std::abs(passo) >= 3 ? passo : 0;
        }
        m.note.push_back({inizio, d, grado});
        inizio += d;
        ++k;
    }
    return m;
}

// The same motif with passing and neighbour notes in its long notes.
Motivo orna(const Motivo& m, Caso& caso)
{
    Motivo o;
    for (std::size_t i = 0; i < m.note.size(); ++i) {
        const NotaMotivo& n = m.note[i];
        if (i + 1 < m.note.size() && n.durata >= 1 && caso.probabile(0.45)) {
            const int seguente = m.note[i + 1].grado;
            const int altro = std::abs(seguente - n.grado) >= 2 ? (n.grado + seguente) / 2 : n.grado + 1;
            o.note.push_back({n.inizio, n.durata / 2, n.grado});
            o.note.push_back({n.inizio + n.durata / 2, n.durata / 2, altro == n.grado ? n.grado + 1 : altro});
        } else {
            o.note.push_back(n);
        }
    }
    return o;
}

// The motif's answer closing the phrase: its first bar, then a descent by
// step onto the anchor held long.
Motivo cadenza(const Motivo& m, int battiti)
{
    Motivo c;
    std::vector<NotaMotivo> seconda;
    for (const NotaMotivo& n : m.note) (n.inizio < battiti ? c.note : seconda).push_back(n);
    if (seconda.empty()) return m;
    const int n = int(seconda.size());
    for (int i = 0; i < n; ++i) {
        NotaMotivo x = seconda[std::size_t(i)];
        x.grado = n - 1 - i;
        c.note.push_back(x);
    }
    return c;
}

void suona_melodia(const Contesto& c, const Parte& p, Traccia& t)
{
    std::map<char, Motivo> motivi;
    const double battiti = c.r.battiti;
    const long unita = long(2 * battiti * tpq);
    int precedente = p.registro;
    for (std::size_t i = 0; i < c.misure.size(); ++i) {
        const Misura& m = c.misure[i];
        if (m.finale) {
            const Accordo& a = m.accordi.front();
            t.note.push_back({m.inizio, m.durata, piu_vicina(precedente, {a.radice}), p.velocita});
            continue;
        }
        // Phrases start on even bars of a section that has a motif.
        if (m.indice % 2 != 0 || !m.sez->motivo || m.sez->intensita < p.da_intensita) continue;
        if (!motivi.count(m.sez->motivo)) motivi[m.sez->motivo] = crea_motivo(c.caso, c.r.ritmo_melodia, c.r.battiti);
        const Motivo& base = motivi[m.sez->motivo];
        const int unita_nella_sezione = m.misure / 2;
        const int u = m.indice / 2;
        const bool ultima = u == unita_nella_sezione - 1;
        const bool seguita_da_finale = i + 2 < c.misure.size() && c.misure[i + 2].finale;
        Motivo motivo = ultima || (m.indice + 2 >= m.misure) ? cadenza(base, c.r.battiti) : base;
        if (m.sez->variazione >= 1 && u % 2 == 1) motivo = orna(motivo, c.caso);
        if (m.sez->variazione >= 1 && u % 2 == 0 && !ultima && c.caso.probabile(0.5)) motivo = orna(motivo, c.caso);
        int spostamento = (u % 4 == 1) ? 2 : (u % 4 == 3 && !ultima) ? -1 : 0;
        int centro = p.registro + (m.sez->motivo == 'b' ? 4 : 0) + (m.sez->variazione >= 2 ? 3 : 0);

        const Accordo& primo = c.accordo_a(m.inizio);
        const int ancora = piu_vicina(centro, primo.appoggi(false));
        for (std::size_t k = 0; k < motivo.note.size(); ++k) {
            const NotaMotivo& n = motivo.note[k];
            const long inizio = m.inizio + battito(n.inizio);
            if (inizio >= m.inizio + unita || inizio >= c.fine) break;
            if (seguita_da_finale && inizio >= c.misure[i + 2].inizio) break;
            const Accordo& a = c.accordo_a(inizio);
            const std::vector<int> scala = scala_accordo(c.r.tonalita, a);
            int altezza = passo_scala(ancora, n.grado + spostamento, scala);
            const double nel_battito = std::fmod(n.inizio, battiti);
            const bool forte = std::fmod(nel_battito, battiti == 4 ? 2.0 : 3.0) < 0.01 || n.durata >= 1;
            const bool ultima_nota = k + 1 == motivo.note.size();
            if (forte) altezza = piu_vicina(altezza, a.appoggi(p.stile == "jazz"), n.grado >= 0 ? 1 : -1);
            if (ultima_nota && ultima) altezza = piu_vicina(altezza, {a.radice, a.terza()});
            // No wild leaps and no straying from the register.
            while (altezza - precedente > 8) altezza -= 12;
            while (precedente - altezza > 8) altezza += 12;
            while (altezza > centro + 10) altezza -= 12;
            while (altezza < centro - 9) altezza += 12;
            const double arco = std::sin(M_PI * std::min(1.0, n.inizio / (2 * battiti)));
            int vel = p.velocita + int(6 * arco) + (forte ? 6 : 0) + (m.sez->variazione >= 2 ? 6 : 0);
            long durata = std::lround(battito(n.durata) * (n.durata >= 1.5 ? std::max(p.legato, 0.92) : p.legato));
            t.note.push_back({inizio, durata, altezza, vel});
            precedente = altezza;
        }
    }
}

// A slow line of guide tones: for each chord its third, seventh or fifth,
// whichever lies nearest the line's last note.
void suona_controcanto(const Contesto& c, const Parte& p, Traccia& t)
{
    int n = p.registro;
    for (const Misura& m : c.misure) {
        if (!m.finale && m.sez->intensita < p.da_intensita) continue;
        for (const Accordo& a : m.accordi) {
            std::vector<int> guida;
            for (int i : a.intervalli)
                if (i == 3 || i == 4 || i == 10 || i == 11 || i == 9 || (i == 7 && a.intervalli.size() == 3))
                    guida.push_back(classe(a.radice + i));
            n = piu_vicina(n, guida);
            if (n > p.registro + 7) n -= 12;
            if (n < p.registro - 7) n += 12;
            t.note.push_back({a.inizio, long(a.durata * p.legato), n, p.velocita + (a.inizio == m.inizio ? 4 : 0)});
            if (m.finale) break;
        }
    }
}

// ================================================================ finishing

long swing_tick(long t)
{
    const long nel_battito = t % tpq;
    if (std::abs(nel_battito - tpq / 2) < tpq / 16) return t - nel_battito + tpq * 2 / 3;
    return t;
}

void rifinisci(const Ricetta& r, const Parte& p, Traccia& t, Caso& caso)
{
    const bool tamburi = p.ruolo == Ruolo::batteria;
    for (Nota& n : t.note) {
        if (r.swing && !(tamburi && stile_batteria(p.stile).passi_per_battito == 3)) {
            const long fine = swing_tick(n.inizio + n.durata);
            n.inizio = swing_tick(n.inizio);
            n.durata = std::max(30L, fine - n.inizio);
        }
        if (r.umano) {
            const int scarto = tamburi ? 3 : 7;
            if (n.inizio > 0) n.inizio += caso.intero(-scarto, scarto);
        }
        n.velocita = std::clamp(n.velocita + caso.intero(-5, 5), 20, 127);
        n.altezza = std::clamp(n.altezza, 0, 127);
    }
    std::stable_sort(t.note.begin(), t.note.end(), [](const Nota& a, const Nota& b) { return a.inizio < b.inizio; });
}

}  // namespace

Brano componi(const Ricetta& r)
{
    Caso caso(r.seme);
    Contesto c{r, caso, costruisci_forma(r), 0};
    c.fine = c.misure.back().inizio + c.misure.back().durata;

    Brano b;
    b.titolo = r.titolo;
    b.battiti = r.battiti;
    b.fine = c.fine + tpq;
    b.tempi.push_back({0, r.bpm});
    if (r.rallentando > 0) {
        const long da = c.fine - 2 * c.misura_lunga();
        for (int k = 1; k <= 8; ++k)
            b.tempi.push_back({da + k * c.misura_lunga() / 4, r.bpm * (1 - r.rallentando * k / 8.0)});
    }

    int canale = 0;
    b.tracce.reserve(r.parti.size());
    const Traccia* prima_melodia = nullptr;
    for (const Parte& p : r.parti) {
        Traccia t;
        t.nome = p.nome;
        t.programma = p.programma;
        t.volume = std::clamp(int(std::lround(p.volume * r.livello)), 1, 127);
        t.pan = p.pan;
        t.riverbero = p.riverbero;
        t.coro = p.coro;
        if (p.ruolo == Ruolo::batteria) {
            t.canale = 9;
        } else {
            if (canale == 9) ++canale;
            t.canale = canale++;
        }
        switch (p.ruolo) {
        case Ruolo::batteria: suona_batteria(c, p, t); break;
        case Ruolo::basso: suona_basso(c, p, t); break;
        case Ruolo::accordi: suona_accordi(c, p, t); break;
        case Ruolo::arpeggio: suona_arpeggio(c, p, t); break;
        case Ruolo::melodia: suona_melodia(c, p, t); break;
        case Ruolo::controcanto: suona_controcanto(c, p, t); break;
        case Ruolo::raddoppio:
            // Doubles the first melody, shifted, where the section is intense enough.
            if (!prima_melodia) throw std::invalid_argument("a doubling needs a melody before it");
            for (const Nota& n : prima_melodia->note)
                if (c.misura_a(n.inizio).sez->intensita >= p.da_intensita || c.misura_a(n.inizio).finale)
                    t.note.push_back({n.inizio, n.durata, n.altezza + p.registro, n.velocita * p.velocita / 100});
            break;
        }
        rifinisci(r, p, t, caso);
        b.tracce.push_back(std::move(t));
        if (p.ruolo == Ruolo::melodia && !prima_melodia) prima_melodia = &b.tracce.back();
    }
    return b;
}

}  // namespace composizione
