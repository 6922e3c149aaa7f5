// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold after every move of a simulated game: card codes in the
// range of the table that holds them, combinations packed from position 1,
// every physical card in exactly one place, the totals only growing within a
// game, and the table picture showing what the tables say. Where the game
// itself drops or doubles a card, the checker names the case, counts it and
// carries the difference until the next deal.
#pragma once

#include "giocatore.h"
#include "stato.h"

#include <QImage>

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace simulazione {

class Controllore {
public:
    // The 108 cards are expected again.
    void nuova_mano();

    // Checks the state after one move. `premuta` is the area of the player's
    // press (nessuna for anything else), `prima` the state before it;
    // `mano_nuova` when the move dealt a hand, whatever the deal interrupted.
    // Returns the violations found, each as one line.
    std::vector<std::string> controlla(const Istantanea& prima, const Istantanea& dopo, Area premuta, bool mano_nuova,
                                       bool partita_nuova);

    // How often each named case of the game's own quirks was met.
    const std::map<std::string, long>& casi() const { return casi_; }

private:
    std::vector<std::string> controlla_codici(const Istantanea& s);
    std::vector<std::string> controlla_mano_nuova(const Istantanea& s);
    std::vector<std::string> controlla_combinazioni(const Istantanea& s);
    std::vector<std::string> controlla_carte(const Istantanea& prima, const Istantanea& dopo, Area premuta);
    std::vector<std::string> controlla_tela(const Istantanea& s);
    const QImage& riferimento(long colonna, long riga, long codice, bool coperta);

    std::array<int, JOLLY + 1> attese_{};
    std::map<std::string, long> casi_;
    std::map<std::tuple<long, long, long, bool>, QImage> riferimenti_;
    QSize misura_riferimenti_;
};

}  // namespace simulazione
