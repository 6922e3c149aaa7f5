// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers that keep each test case one line: cards and positions written as
// short strings, and a ready main window with the pauses shrunk.
//
// A card is its rank (A 2 3 ... 10 J Q K) and suit (H hearts, D diamonds,
// C clubs, S spades): "7H", "10S", "AD". A trailing ' takes the second pack
// ("7H'" is code 7 + 54). "J1" and "J2" are the two plain jollies of the first
// pack (53, 54), "J1'" and "J2'" those of the second (107, 108). A jolly laid
// on the table is "*" (first kind, 108 + t) or "**" (second kind, 162 + t)
// before the card it stands for: "*8S". "." is an empty slot (0).
#pragma once

#include "rules/mdTavolata.h"

#include <string>
#include <vector>

class FrmTV;

namespace prova {

int carta(const std::string& nome);
std::string nome_carta(int codice);
std::vector<int> carte(const std::string& elenco);
std::string elenco(const std::vector<int>& codici);

// Hands: slot 1 onwards from the list, the other slots emptied.
void mano_umano_da(const std::string& elenco);
void mano_computer_da(const std::string& elenco);
std::string mano_umano_come_testo();  // "7H 8H . 9H" up to the last card
std::string mano_computer_come_testo();

// Combination k of a table (positions 1 onwards), the rest of it emptied.
void combinazione_umano(int k, const std::string& elenco);
void combinazione_computer(int k, const std::string& elenco);
std::string combinazione_umano_come_testo(int k);
std::string combinazione_computer_come_testo(int k);

// The discard pile, bottom card first; n_pozzo follows.
void pozzo_da(const std::string& elenco);
std::string pozzo_come_testo();

// Both tables and the pile as one text: "u1:KS QS JS | c2:9H 8H 7H | p:4S 5S".
// tavoli_da empties both tables, then fills the combinations named; the pile
// changes only when "p:" is given ("p:" alone empties it). tavoli_come_testo
// names every combination that holds a card, the human's first, gaps as ".",
// and always ends with the pile.
void tavoli_da(const std::string& testo);
std::string tavoli_come_testo();

// The number of the run-time error that `azione` raises, 0 when none.
template <class F>
int errore_di(F azione)
{
    try {
        azione();
    } catch (const basic::ErroreRuntime& e) {
        return e.numero();
    }
    return 0;
}

// The main window, created once per test program with the test hooks on and
// the shuffles seeded alike: run-
// time errors and the end of the program are recorded instead of ending the
// process, boxes answer automatically, pauses last nothing, and the pictures
// come from the source tree's media folder. Every call also clears the state,
// the recorded sounds and the recorded boxes, and repaints an empty table.
FrmTV& finestra();

// The sounds requested since the last finestra() or azzera_suoni(), as the
// file names only: "carta.wav", "errore.wav".
std::vector<std::string> suoni();
int quanti_suoni(const std::string& file);
void azzera_suoni();

// Logical point at the middle of a grid cell (column c, row r).
double x_colonna(int c);
double y_riga(int r);

}  // namespace prova

namespace prova {
// What a cell of the table shows, compared pixel by pixel with the picture
// the game should have put there: the face of `codice` (its back when
// `coperta`), or the table background when `codice` is 0. `visibili` limits
// the check to the top (or, with `dal_basso`, the bottom) strips of 16 units,
// for cards partly covered by the next card of a combination.
bool cella_mostra(int colonna, int riga, int codice, bool coperta = false, int visibili = 6, bool dal_basso = false);
// The same as text, for messages: "face 7H", "back 0", "background", "other".
std::string cosa_mostra(int colonna, int riga);

// Every cell of a hand shows what the hand holds: the human's faces on row 41,
// the computer's backs on row 1, the table where a slot is empty. The cell of
// slot `salvo` (the one carrying the red mark) is left out.
bool mano_mostrata(bool computer, int salvo = 0);
// Combination k drawn as its table holds it: the visible strip of every card
// (downwards on the human's side, upwards on the computer's), the last whole.
bool combinazione_disegnata(int k, bool del_umano);
}  // namespace prova

namespace prova {
// The computer's hand and both tables as one text, "hand / tables": the tables
// as tavoli_da reads them, and the pile left out while it is empty.
void posizione_computer_da(const std::string& testo);
std::string posizione_computer_come_testo();
}  // namespace prova
