// SPDX-License-Identifier: GPL-3.0-or-later
#include "giocatore.h"

#include "stato.h"

#include "rules/mdTavolata.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <algorithm>
#include <array>

namespace simulazione {

namespace {

constexpr long COLONNE_PROPRIE = 10;  // the columns a press can reach on either table

float centro_x(long colonna) { return float(8 + 72 * (colonna - 1) + 36); }

double probabilita(std::mt19937& caso) { return std::uniform_real_distribution<double>(0, 1)(caso); }

float scosta(std::mt19937& caso, float quanto) { return std::uniform_real_distribution<float>(-quanto, quanto)(caso); }

long codice_tavolo(bool umano, long c, long k)
{
    return umano ? long(tavolo_umano(c, k)) : long(tavolo_computer(c, k));
}

int carte_in(bool umano, long c)
{
    int n = 0;
    while (n < 13 && codice_tavolo(umano, c, n + 1) != 0) ++n;
    return n;
}

bool ha_jolly(bool umano, long c)
{
    for (long k = 1; k <= 13; ++k)
        if (codice_tavolo(umano, c, k) > SUL_TAVOLO_PRIMO) return true;
    return false;
}

// The player's own reading of where a card joins a combination: a set takes
// its number in a suit it lacks, a straight the next number at either end.
bool si_aggancia(long carta, bool umano, long c)
{
    const int n = carte_in(umano, c);
    if (n == 0 || numero(carta) == 0) return false;
    if (numero(carta) == numero(codice_tavolo(umano, c, 1))) {
        for (long i = 1; i <= n; ++i)
            if (seme(codice_tavolo(umano, c, i)) == seme(carta) || numero(codice_tavolo(umano, c, i)) != numero(carta))
                return false;
        return n < 4;
    }
    std::string numeri;
    for (long i = 1; i <= n; ++i) {
        if (seme(codice_tavolo(umano, c, i)) != seme(carta)) return false;
        numeri += basic::Str(numero(codice_tavolo(umano, c, i)));
    }
    return n < 13 && unisci_sequenza(numeri, basic::Str(numero(carta))) != numeri;
}

// A card a plain jolly could stand for at an end of combination c (pack-1 code), 0 for none.
int jolly_per(bool umano, long c)
{
    const int n = carte_in(umano, c);
    if (n < 2 || ha_jolly(umano, c)) return 0;
    const long primo = codice_tavolo(umano, c, 1), secondo = codice_tavolo(umano, c, 2);
    if (seme(primo) != seme(secondo)) {
        if (n >= 4) return 0;
        std::array<bool, 5> semi{};
        for (long i = 1; i <= n; ++i) semi[std::size_t(seme(codice_tavolo(umano, c, i)))] = true;
        for (int s = 1; s <= 4; ++s)
            if (!semi[std::size_t(s)]) return (s - 1) * 13 + numero(primo);
        return 0;
    }
    for (const int candidato : {numero(primo) == 13 ? 1 : numero(primo) + 1, numero(codice_tavolo(umano, c, n)) - 1}) {
        if (candidato < 1 || candidato > 13) continue;
        const int t = (seme(primo) - 1) * 13 + candidato;
        if (si_aggancia(t, umano, c)) return t;
    }
    return 0;
}

struct CartaInMano {
    long slot;
    long codice;
};

struct Combinazione {
    std::vector<CartaInMano> carte;  // in the order they are laid; a jolly's code holds the card it stands for
    std::vector<int> jolly;  // per card: the card a jolly stands for, 0 for a real card
    long valore = 0;
    bool con_jolly = false;
};

long valore_al_tavolo(int numero_carta, bool asso_in_cima)
{
    if (numero_carta == 1) return asso_in_cima ? 11 : 1;
    return numero_carta > 10 ? 10 : numero_carta;
}

// Every straight and set the hand could make, with at most one jolly each.
std::vector<Combinazione> candidate(const std::vector<CartaInMano>& mano)
{
    std::vector<Combinazione> tutte;
    const bool c_e_jolly =
        std::any_of(mano.begin(), mano.end(), [](const CartaInMano& c) { return jolly_semplice(c.codice); });

    for (int s = 1; s <= 4; ++s) {
        // Position p of a straight holds number p; the ace stands at 1 and at 14.
        std::array<long, 15> dove{};
        dove.fill(-1);
        for (std::size_t i = 0; i < mano.size(); ++i) {
            const long c = mano[i].codice;
            if (jolly_semplice(c) || seme(c) != s) continue;
            const int n = numero(c);
            if (dove[std::size_t(n)] < 0) dove[std::size_t(n)] = long(i);
            if (n == 1 && dove[14] < 0) dove[14] = long(i);
        }
        for (int basso = 1; basso <= 12; ++basso) {
            for (int alto = basso + 2; alto <= std::min(14, basso + 12); ++alto) {
                int mancanti = 0;
                for (int p = basso; p <= alto; ++p) mancanti += dove[std::size_t(p)] < 0;
                if (mancanti > 1 || (mancanti == 1 && !c_e_jolly)) continue;
                Combinazione k;
                k.con_jolly = mancanti == 1;
                for (int p = alto; p >= basso; --p) {
                    const int n = p == 14 ? 1 : p;
                    if (dove[std::size_t(p)] >= 0) {
                        k.carte.push_back(mano[std::size_t(dove[std::size_t(p)])]);
                        k.jolly.push_back(0);
                    } else {
                        k.carte.push_back({0, 0});
                        k.jolly.push_back((s - 1) * 13 + n);
                    }
                    k.valore += valore_al_tavolo(n, p == alto && p == 14);
                }
                tutte.push_back(k);
            }
        }
    }

    for (int n = 1; n <= 13; ++n) {
        Combinazione k;
        std::array<bool, 5> semi{};
        for (const CartaInMano& c : mano) {
            if (jolly_semplice(c.codice) || numero(c.codice) != n || semi[std::size_t(seme(c.codice))]) continue;
            semi[std::size_t(seme(c.codice))] = true;
            k.carte.push_back(c);
            k.jolly.push_back(0);
        }
        if (k.carte.size() == 2 && c_e_jolly) {
            for (int s = 1; s <= 4; ++s) {
                if (semi[std::size_t(s)]) continue;
                k.carte.push_back({0, 0});
                k.jolly.push_back((s - 1) * 13 + n);
                k.con_jolly = true;
                break;
            }
        }
        if (k.carte.size() < 3) continue;
        k.valore = long(k.carte.size()) * (n == 1 ? 11 : std::min(n, 10));
        tutte.push_back(k);
    }
    return tutte;
}

// The best combinations that do not share a card, the jollies handed out one each.
std::vector<Combinazione> scegli(std::vector<Combinazione> tutte, const std::vector<CartaInMano>& mano)
{
    std::stable_sort(tutte.begin(), tutte.end(), [](const Combinazione& a, const Combinazione& b) {
        if (a.valore != b.valore) return a.valore > b.valore;
        return a.con_jolly < b.con_jolly;
    });
    std::vector<long> jolly_liberi;
    for (const CartaInMano& c : mano)
        if (jolly_semplice(c.codice)) jolly_liberi.push_back(c.slot);
    std::set<long> usati;
    std::vector<Combinazione> scelte;
    for (Combinazione k : tutte) {
        bool libera = true;
        for (const CartaInMano& c : k.carte) libera = libera && (c.codice == 0 || !usati.count(c.slot));
        if (!libera || (k.con_jolly && jolly_liberi.empty())) continue;
        for (std::size_t i = 0; i < k.carte.size(); ++i) {
            if (k.carte[i].codice != 0) continue;
            const long slot = jolly_liberi.back();
            jolly_liberi.pop_back();
            k.carte[i] = {slot, long(mano_umano(slot))};
        }
        for (const CartaInMano& c : k.carte) usati.insert(c.slot);
        scelte.push_back(k);
    }
    return scelte;
}

std::vector<CartaInMano> carte_in_mano()
{
    std::vector<CartaInMano> v;
    for (long i = 1; i <= 14; ++i)
        if (mano_umano(i) != 0) v.push_back({i, long(mano_umano(i))});
    return v;
}

// The hand slot that shows the red mark, read from the table as the game does; 0 for none.
long slot_segnato()
{
    const Canvas& tela = frmTV().tela;
    for (long k = 1; k <= 14; ++k)
        if (tela.Point(10 + 72 * (k - 1), 16 * (righe_tavolo - 7) + 2) == 255) return k;
    return 0;
}

Pressione su_mano(long slot, Mossa m, std::mt19937& caso)
{
    return {m, centro_x(slot) + scosta(caso, 20), float(16 * 43) + scosta(caso, 30)};
}

}  // namespace

const char* nome_mossa(Mossa m)
{
    switch (m) {
    case Mossa::pesca_tallone: return "draw from the stock";
    case Mossa::prende_pozzo: return "take the discard pile";
    case Mossa::segna: return "mark a card";
    case Mossa::sposta: return "move a card in the hand";
    case Mossa::cala: return "lay on the own table";
    case Mossa::attacca: return "attach to the computer's table";
    case Mossa::scarta: return "discard";
    case Mossa::a_caso: return "press anywhere";
    }
    return "?";
}

long colonna_di(float x) { return basic::Int((x - 8) / 72.0) + 1; }

Area area_di(float x, float y)
{
    const long c = colonna_di(x);
    const long r = basic::Int(basic::Round(y) / 16.0);
    if (c == 14 && r >= 21 && r <= 27) return Area::tallone;
    if (c == 13 && r >= 21 && r <= 27) return Area::pozzo;
    if (c >= 1 && c <= 14 && r >= 41 && r <= 46) return Area::mano;
    if (c >= 1 && c <= 10 && r >= 24 && r <= 40) return Area::tavolo_proprio;
    if (c >= 1 && c <= 10 && r >= 2 && r <= 24) return Area::tavolo_avversario;
    return Area::nessuna;
}

int Giocatore::valore_jolly() const { return in_corso_ ? in_corso_->jolly : 0; }

bool Giocatore::gia_provato(const Passo& p) const
{
    return provati_.count({p.codice, int(p.dove), p.colonna, p.jolly}) > 0;
}

Pressione Giocatore::prossima(std::mt19937& caso)
{
    const bool deve_pescare = fase.size() == 3 && fase[1] == '0';
    if (deve_pescare && (in_corso_ || !provati_.empty() || basta_calare_ || pressioni_turno_ > 3)) {
        // A new turn: what was tried in the last one may work now.
        piano_.clear();
        in_corso_.reset();
        provati_.clear();
        basta_calare_ = false;
        pressioni_turno_ = 0;
    }
    ++pressioni_turno_;
    if (esplora_ && probabilita(caso) < 0.03)
        return {Mossa::a_caso, std::uniform_real_distribution<float>(0, 1024)(caso),
                std::uniform_real_distribution<float>(0, 768)(caso)};
    if (deve_pescare) return pesca(caso);

    // Did the last play go through? A card still in its slot was refused.
    if (in_corso_) {
        if (in_corso_->slot >= 1 && long(mano_umano(in_corso_->slot)) == in_corso_->codice) {
            provati_.insert({in_corso_->codice, int(in_corso_->dove), in_corso_->colonna, in_corso_->jolly});
            if (in_corso_->dove != Area::pozzo) ++rifiutate_;
            // A discard refused means the table went back into the hand: no
            // more laying this turn, only the discard.
            basta_calare_ = true;
            piano_.clear();
        }
        in_corso_.reset();
    }
    if (!piano_.empty() && long(mano_umano(piano_.front().slot)) != piano_.front().codice) piano_.clear();
    if (piano_.empty()) {
        piano_ = pressioni_turno_ > 60 ? std::vector<Passo>{scarto(caso)} : pianifica(caso);
    }
    const Passo p = piano_.front();

    if (fase[2] == '1') {
        const long segnato = slot_segnato();
        const bool giusto = long(carta_selezionata) == p.codice ||
                            (p.jolly != 0 && long(carta_selezionata) > SUL_TAVOLO_PRIMO &&
                             (long(carta_selezionata) - SUL_TAVOLO_PRIMO) % CARTE_PER_MAZZO == p.jolly);
        if (segnato == p.slot && giusto) {
            // Now and then the card goes to another slot of the hand first.
            if (esplora_ && probabilita(caso) < 0.03) {
                const long altro = std::uniform_int_distribution<long>(1, 14)(caso);
                if (altro != p.slot) {
                    piano_.clear();
                    return su_mano(altro, Mossa::sposta, caso);
                }
            }
            piano_.erase(piano_.begin());
            in_corso_ = p;
            return premi_bersaglio(p, caso);
        }
        // Unmark whatever is marked (a press on the marked card itself), or
        // clear a mark that no longer shows.
        return su_mano(segnato != 0 ? segnato : p.slot, Mossa::segna, caso);
    }
    return su_mano(p.slot, Mossa::segna, caso);
}

Pressione Giocatore::pesca(std::mt19937& caso)
{
    const Pressione tallone_ = {Mossa::pesca_tallone, centro_x(14) + scosta(caso, 30),
                                float(16 * 24) + scosta(caso, 40)};
    const Pressione pozzo_ = {Mossa::prende_pozzo, centro_x(13) + scosta(caso, 30), float(16 * 24) + scosta(caso, 40)};
    if (esplora_ && probabilita(caso) < 0.02) return pozzo_;
    if (n_pozzo < 1 || !aperto_umano()) return tallone_;
    const long cima = pozzo(n_pozzo);
    // Worth taking when it joins a combination on the table or makes a new one with the hand.
    for (long c = 1; c <= COLONNE_PROPRIE; ++c)
        if (si_aggancia(cima, true, c) || si_aggancia(cima, false, c)) return pozzo_;
    std::vector<CartaInMano> mano = carte_in_mano();
    mano.push_back({15, cima});
    for (const Combinazione& k : candidate(mano))
        for (const CartaInMano& c : k.carte)
            if (c.slot == 15) return pozzo_;
    return tallone_;
}

Pressione Giocatore::premi_bersaglio(const Passo& p, std::mt19937& caso)
{
    switch (p.dove) {
    case Area::tavolo_proprio:
        return {Mossa::cala, centro_x(p.colonna) + scosta(caso, 30), float(16 * 32) + scosta(caso, 100)};
    case Area::tavolo_avversario:
        return {Mossa::attacca, centro_x(p.colonna) + scosta(caso, 30), float(16 * 12) + scosta(caso, 100)};
    default: return {Mossa::scarta, centro_x(13) + scosta(caso, 30), float(16 * 24) + scosta(caso, 40)};
    }
}

std::vector<Giocatore::Passo> Giocatore::pianifica(std::mt19937& caso)
{
    const std::vector<CartaInMano> mano = carte_in_mano();
    const long quante = long(mano.size());
    const bool aperto = aperto_umano();

    // Jollies won back first: a real card in the place of a jolly standing for it.
    for (const CartaInMano& c : mano) {
        if (jolly_semplice(c.codice) || c.codice > SUL_TAVOLO_PRIMO) continue;
        for (const bool umano : {true, false}) {
            if (!umano && !aperto) continue;
            for (long k = 1; k <= COLONNE_PROPRIE; ++k)
                for (long j = 1; j <= 13; ++j) {
                    const long t = codice_tavolo(umano, k, j);
                    if (t <= SUL_TAVOLO_PRIMO || t % CARTE_PER_MAZZO != c.codice % CARTE_PER_MAZZO) continue;
                    const Passo p{
                        umano ? Area::tavolo_proprio : Area::tavolo_avversario, c.slot, c.codice, k, 0, false};
                    if (!gia_provato(p)) return {p};
                }
        }
    }

    // Cards that join a combination already on the table, keeping one for the discard.
    if (quante >= 2) {
        for (const CartaInMano& c : mano) {
            for (const bool umano : {true, false}) {
                if (!umano && !aperto) continue;
                for (long k = 1; k <= COLONNE_PROPRIE; ++k) {
                    Passo p{umano ? Area::tavolo_proprio : Area::tavolo_avversario, c.slot, c.codice, k, 0, false};
                    if (jolly_semplice(c.codice)) {
                        // A jolly goes on the table only near the end, or now and then.
                        if (quante > 3 && !(esplora_ && probabilita(caso) < 0.2)) continue;
                        p.jolly = jolly_per(umano, k);
                        if (p.jolly == 0) continue;
                    } else if (!si_aggancia(c.codice, umano, k)) {
                        continue;
                    }
                    if (!gia_provato(p)) return {p};
                }
            }
        }
    }

    // New combinations: all of them once opened, or enough for the 40 points.
    if (!basta_calare_) {
        const std::vector<Combinazione> scelte = scegli(candidate(mano), mano);
        std::vector<long> libere;
        for (long k = 1; k <= COLONNE_PROPRIE; ++k)
            if (tavolo_umano(k, 1) == 0) libere.push_back(k);
        std::vector<Passo> passi;
        long valore = 0, usate = 0;
        std::size_t colonna = 0;
        for (const Combinazione& k : scelte) {
            if (colonna >= libere.size() || usate + long(k.carte.size()) > quante - 1) continue;
            for (std::size_t i = 0; i < k.carte.size(); ++i)
                passi.push_back(
                    {Area::tavolo_proprio, k.carte[i].slot, k.carte[i].codice, libere[colonna], k.jolly[i], true});
            ++colonna;
            valore += k.valore;
            usate += long(k.carte.size());
        }
        const bool troppo_presto = esplora_ && probabilita(caso) < 0.05;
        if (!passi.empty() && (aperto || valore >= 40 || troppo_presto)) return passi;
    }
    return {scarto(caso)};
}

Giocatore::Passo Giocatore::scarto(std::mt19937& caso) const
{
    const std::vector<CartaInMano> mano = carte_in_mano();
    // The card least likely to make a combination, the dearest of those.
    long migliore = -1, utilita_migliore = 0, prezzo_migliore = 0;
    std::vector<long> pari;
    const bool solo_jolly =
        std::all_of(mano.begin(), mano.end(), [](const CartaInMano& c) { return jolly_semplice(c.codice); });
    for (std::size_t i = 0; i < mano.size(); ++i) {
        const long c = mano[i].codice;
        if (jolly_semplice(c) && !solo_jolly) continue;
        long utilita = 0;
        for (const CartaInMano& altra : mano) {
            if (altra.slot == mano[i].slot || jolly_semplice(altra.codice)) continue;
            if (numero(altra.codice) == numero(c) && seme(altra.codice) != seme(c)) utilita += 2;
            const int distanza = std::abs(numero(altra.codice) - numero(c));
            if (seme(altra.codice) == seme(c) && distanza >= 1 && (distanza <= 2 || distanza >= 11)) ++utilita;
        }
        const long prezzo = penalita(c);
        if (migliore < 0 || utilita < utilita_migliore || (utilita == utilita_migliore && prezzo > prezzo_migliore)) {
            migliore = long(i);
            utilita_migliore = utilita;
            prezzo_migliore = prezzo;
            pari = {long(i)};
        } else if (utilita == utilita_migliore && prezzo == prezzo_migliore) {
            pari.push_back(long(i));
        }
    }
    if (migliore < 0) return {Area::pozzo, mano.empty() ? 1 : mano.front().slot, 0, 0, 0, false};
    const CartaInMano& scelta =
        mano[std::size_t(pari[std::uniform_int_distribution<std::size_t>(0, pari.size() - 1)(caso)])];
    return {Area::pozzo, scelta.slot, scelta.codice, 0, 0, false};
}

}  // namespace simulazione
