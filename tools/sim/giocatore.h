// SPDX-License-Identifier: GPL-3.0-or-later
// The scripted player of the simulator. It looks at the table as it stands
// before every press and chooses the next one the way a person with the mouse
// would: draw, mark a card, lay the straights and sets it finds (with a jolly
// where one fills a gap), attach to any combination, win back jollies, and
// discard the card it needs least. With `esplora` it also makes the odd
// moves a person makes now and then: a press anywhere, a card moved in the
// hand, a take of the pile before opening, a combination laid too early.
#pragma once

#include <optional>
#include <random>
#include <set>
#include <tuple>
#include <vector>

namespace simulazione {

enum class Mossa { pesca_tallone, prende_pozzo, segna, sposta, cala, attacca, scarta, a_caso };
const char* nome_mossa(Mossa m);

// A press on the table in its logical units.
struct Pressione {
    Mossa mossa;
    float x, y;
};

// Where a logical point falls, by the areas the game routes presses to.
enum class Area { nessuna, tallone, pozzo, mano, tavolo_proprio, tavolo_avversario };
Area area_di(float x, float y);
// The grid column under x (1-14; 0 or 15 outside).
long colonna_di(float x);

class Giocatore {
public:
    explicit Giocatore(bool esplora) : esplora_(esplora) {}

    Pressione prossima(std::mt19937& caso);
    // The card (pack-1 code, 1-52) the jolly now being laid should stand for;
    // 0 when the press that opened the dialog was not one of the player's plans.
    int valore_jolly() const;
    // Presses since the player last had to draw.
    long pressioni_nel_turno() const { return pressioni_turno_; }

    // Plays that went wrong by the player's own reading of the rules (the
    // game refused a card the player thought would fit).
    long rifiutate() const { return rifiutate_; }

private:
    struct Passo {
        Area dove;  // tavolo_proprio, tavolo_avversario or pozzo (the discard)
        long slot;
        long codice;
        long colonna;  // for the two tables
        int jolly;  // the card a plain jolly is to stand for, 0 otherwise
        bool di_combinazione;  // part of a new combination being laid
    };

    Pressione pesca(std::mt19937& caso);
    std::vector<Passo> pianifica(std::mt19937& caso);
    Passo scarto(std::mt19937& caso) const;
    Pressione premi_bersaglio(const Passo& p, std::mt19937& caso);
    bool gia_provato(const Passo& p) const;

    bool esplora_;
    std::vector<Passo> piano_;
    std::optional<Passo> in_corso_;
    std::set<std::tuple<long, int, long, int>> provati_;
    bool basta_calare_ = false;
    long pressioni_turno_ = 0;
    long rifiutate_ = 0;
};

}  // namespace simulazione
