// SPDX-License-Identifier: GPL-3.0-or-later
#include "invarianti.h"

#include "aiuto/posizione.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <cstring>
#include <numeric>

namespace simulazione {

namespace {

bool codice_da_tavolo(long c)
{
    return (c > SUL_TAVOLO_PRIMO && c <= SUL_TAVOLO_PRIMO + 52) ||
           (c > SUL_TAVOLO_SECONDO && c <= SUL_TAVOLO_SECONDO + 52);
}
bool codice_reale(long c) { return c >= 1 && c <= CARTE && !jolly_semplice(c); }

std::string n(long x) { return std::to_string(x); }

// The pieces of a cell that nothing but that cell's card ever covers: the
// middle of a hand card (the red mark runs along its edges, and a player's
// 13th combination card covers its top strip), the lower part of the pile
// (the computer's 13th combination covers its top) and the stock.
QRectF parte_controllata(long colonna, long riga)
{
    const double x = 8 + 72.0 * (colonna - 1);
    if (riga == 41) return QRectF(x + 16, 676, 40, 64);
    if (colonna == 13) return QRectF(x + 16, 392, 40, 32);
    return QRectF(x + 16, 344, 40, 80);
}

}  // namespace

void Controllore::nuova_mano() { attese_ = carte_di_un_mazzo(); }

std::vector<std::string> Controllore::controlla(const Istantanea& prima, const Istantanea& dopo, Area premuta,
                                                bool mano_nuova, bool partita_nuova)
{
    std::vector<std::string> guasti = controlla_codici(dopo);
    if (!partita_nuova)
        for (long i = 1; i <= 2; ++i)
            if (dopo.punti[std::size_t(i)] < prima.punti[std::size_t(i)])
                guasti.push_back("the total of " + std::string(i == 1 ? "the player" : "the computer") +
                                 " went down within a game: " + n(prima.punti[std::size_t(i)]) + " -> " +
                                 n(dopo.punti[std::size_t(i)]));
    if (mano_nuova) {
        attese_ = carte_di_un_mazzo();
        for (auto& g : controlla_mano_nuova(dopo)) guasti.push_back(g);
    }
    for (auto& g : controlla_combinazioni(dopo)) guasti.push_back(g);
    for (auto& g : controlla_carte(prima, dopo, mano_nuova ? Area::nessuna : premuta)) guasti.push_back(g);
    for (auto& g : controlla_tela(dopo)) guasti.push_back(g);
    return guasti;
}

std::vector<std::string> Controllore::controlla_codici(const Istantanea& s)
{
    std::vector<std::string> g;
    bool da_tavolo_in_mano = false;
    for (long i = 1; i <= 14; ++i) {
        const long u = s.mano_umano[std::size_t(i)], c = s.mano_computer[std::size_t(i)];
        if (codice_da_tavolo(u))
            da_tavolo_in_mano = true;
        else if (u < 0 || u > CARTE)
            g.push_back("player's hand slot " + n(i) + " holds code " + n(u));
        // Standing codes live in the computer's hand only between its own
        // steps: its discard turns them all back into plain jollies.
        if (c < 0 || c > CARTE) g.push_back("computer's hand slot " + n(i) + " holds code " + n(c) + " after its turn");
    }
    // A jolly the player discarded with the value it was given (after the
    // value was refused) goes round the pile and the stock as it stands, and
    // can come back into a hand so.
    if (da_tavolo_in_mano) ++casi_["a jolly discarded with its table value is back in the player's hand"];
    for (long c = 1; c <= 13; ++c)
        for (long k = 1; k <= 13; ++k)
            for (const bool umano : {true, false}) {
                const long t = umano ? s.tavolo_umano[std::size_t(c)][std::size_t(k)]
                                     : s.tavolo_computer[std::size_t(c)][std::size_t(k)];
                if (t != 0 && !codice_reale(t) && !codice_da_tavolo(t))
                    g.push_back(std::string(umano ? "player's" : "computer's") + " combination " + n(c) + " position " +
                                n(k) + " holds code " + n(t));
            }
    if (s.n_pozzo < 0 || s.n_pozzo > 81) g.push_back("the pile counts " + n(s.n_pozzo) + " cards");
    for (long i = 1; i <= std::min(s.n_pozzo, 82L); ++i) {
        const long p = s.pozzo[std::size_t(i)];
        if (!(p >= 1 && p <= CARTE) && !codice_da_tavolo(p)) g.push_back("pile slot " + n(i) + " holds code " + n(p));
    }
    if (s.tallone < 27 || s.tallone > CARTE - 1) g.push_back("the stock stands at " + n(s.tallone));
    for (long i = std::max(s.tallone + 1, 1L); i <= CARTE; ++i) {
        const long m = s.mazzo[std::size_t(i)];
        if (!(m >= 1 && m <= CARTE) && !codice_da_tavolo(m)) g.push_back("stock slot " + n(i) + " holds code " + n(m));
    }
    if (s.carta_selezionata < 0 || s.carta_selezionata > SUL_TAVOLO_SECONDO + 52)
        g.push_back("the marked card is code " + n(s.carta_selezionata));
    if (s.turno_umano && s.fase != "000" && s.fase != "010" && s.fase != "011")
        g.push_back("the player's turn runs with phase \"" + s.fase + "\"");
    return g;
}

std::vector<std::string> Controllore::controlla_mano_nuova(const Istantanea& s)
{
    // Right after a deal, whatever it interrupted: the player holds the first
    // 13 cards of the deck and has laid nothing; the computer holds the next
    // 13 beside the first discard, or, when it began, has played one turn
    // from the stock.
    std::vector<std::string> g;
    bool umano = s.mano_umano[14] == 0 && tavolo_vuoto(s.tavolo_umano);
    for (std::size_t i = 1; i <= 13; ++i) umano = umano && s.mano_umano[i] == s.mazzo[i];
    if (!umano) g.push_back("the player's side is not that of a fresh deal: " + testo_mano(s.mano_umano));
    if (s.fase != "000") g.push_back("a fresh deal in phase \"" + s.fase + "\"");
    if (s.pozzo[1] != s.mazzo[27]) g.push_back("the first discard is not the 27th card of the deck");
    if (!s.inizia_computer) {
        bool computer = s.mano_computer[14] == 0 && tavolo_vuoto(s.tavolo_computer);
        for (std::size_t i = 1; i <= 13; ++i) computer = computer && s.mano_computer[i] == s.mazzo[i + 13];
        if (!computer) g.push_back("the computer's side is not that of a fresh deal: " + testo_mano(s.mano_computer));
        if (s.n_pozzo != 1 || s.tallone != 27 || !s.turno_umano)
            g.push_back("a fresh deal with " + n(s.n_pozzo) + " cards on the pile, the stock at " + n(s.tallone) +
                        (s.turno_umano ? "" : ", the player not to play"));
    } else if (s.n_pozzo != 2 || s.tallone != 28 || !(s.turno_umano || mano_vuota(s.mano_computer))) {
        g.push_back("after the computer's first turn " + n(s.n_pozzo) + " cards on the pile, the stock at " +
                    n(s.tallone) + (s.turno_umano ? "" : ", the player not to play"));
    }
    return g;
}

std::vector<std::string> Controllore::controlla_combinazioni(const Istantanea& s)
{
    std::vector<std::string> g;
    bool libera_prima = false;
    for (long c = 1; c <= 13; ++c) {
        for (const bool umano : {true, false}) {
            const auto& col = umano ? s.tavolo_umano[std::size_t(c)] : s.tavolo_computer[std::size_t(c)];
            const int lung = lunghezza(col);
            for (long k = lung + 1; k <= 13; ++k)
                if (col[std::size_t(k)] != 0) {
                    g.push_back(std::string(umano ? "player's" : "computer's") + " combination " + n(c) +
                                " has a card after its first empty position");
                    break;
                }
            // The player's presses reach only columns 1 to 10.
            if (umano && c > 10 && lung > 0) g.push_back("the player's combination " + n(c) + " is in use");
        }
        // The computer lays into its first free column and never takes one
        // combination back alone.
        const bool libera = s.tavolo_computer[std::size_t(c)][1] == 0;
        if (!libera && libera_prima) g.push_back("the computer's combination " + n(c) + " follows a free one");
        libera_prima = libera_prima || libera;
    }
    return g;
}

std::vector<std::string> Controllore::controlla_carte(const Istantanea& prima, const Istantanea& dopo, Area premuta)
{
    const std::array<int, JOLLY + 1> presenti = conta_carte(dopo);
    auto differenza = [&](const std::array<int, JOLLY + 1>& attese) {
        std::array<int, JOLLY + 1> d{};
        for (std::size_t i = 0; i < d.size(); ++i) d[i] = presenti[i] - attese[i];
        return d;
    };
    auto nulla = [](const std::array<int, JOLLY + 1>& d) {
        return std::all_of(d.begin(), d.end(), [](int x) { return x == 0; });
    };
    // The computer names a jolly of its hand and writes it into the slot
    // where it found the jolly before sorting the hand, whatever lies there
    // now: another card is lost under it, or an empty slot gains a jolly.
    auto jolly_scritto_altrove = [](const std::array<int, JOLLY + 1>& d) {
        int persi = 0;
        for (int i = 0; i < JOLLY; ++i) {
            if (d[std::size_t(i)] > 0) return false;
            persi -= d[std::size_t(i)];
        }
        return d[JOLLY] > 0 && d[JOLLY] >= persi;
    };
    auto conta_jolly_scritti = [this](const std::array<int, JOLLY + 1>& d) {
        const int persi = -std::accumulate(d.begin(), d.begin() + JOLLY, 0);
        if (persi > 0) casi_["a jolly named by the computer was written over another card of its hand"] += persi;
        if (d[JOLLY] > persi)
            casi_["a jolly named by the computer was written into an empty slot of its hand"] += d[JOLLY] - persi;
    };

    std::array<int, JOLLY + 1> d = differenza(attese_);
    if (nulla(d)) return {};

    // After the player wins back a jolly on the computer's table the mark
    // still names the card that went there; playing or discarding the mark
    // then puts that card down a second time and the jolly's slot is emptied.
    const long pos = prima.posizione_selezionata;
    if ((premuta == Area::pozzo || premuta == Area::tavolo_proprio || premuta == Area::tavolo_avversario) &&
        prima.fase == "011" && pos >= 1 && pos <= 14 && prima.mano_umano[std::size_t(pos)] != 0) {
        const int x = classe_carta(prima.carta_selezionata), y = classe_carta(prima.mano_umano[std::size_t(pos)]);
        if (x >= 0 && x != y) {
            std::array<int, JOLLY + 1> d2 = d;
            d2[std::size_t(x)] -= 1;
            d2[std::size_t(y)] += 1;
            if (nulla(d2) || jolly_scritto_altrove(d2)) {
                ++casi_
                    ["the card the mark still names after a jolly won back on the computer's table was played again"];
                if (!nulla(d2)) conta_jolly_scritti(d2);
                attese_ = presenti;
                return {};
            }
        }
    }
    if (jolly_scritto_altrove(d)) {
        conta_jolly_scritti(d);
        attese_ = presenti;
        return {};
    }

    std::string testo = "the cards in play do not add up:";
    for (int i = 0; i <= JOLLY; ++i)
        if (d[std::size_t(i)] != 0)
            testo += " " + (i == JOLLY ? std::string("jolly") : prova::nome_carta(i + 1)) + " " +
                     (d[std::size_t(i)] > 0 ? "+" : "") + n(d[std::size_t(i)]);
    attese_ = presenti;
    return {testo};
}

const QImage& Controllore::riferimento(long colonna, long riga, long codice, bool coperta)
{
    Canvas& tela = frmTV().tela;
    const QSize misura(tela.larghezza_px(), tela.altezza_px());
    if (misura != misura_riferimenti_) {
        riferimenti_.clear();
        misura_riferimenti_ = misura;
    }
    // The picture a code shows: a standing jolly the plain jolly's face (and
    // the first pack's back), a card of either pack the same face.
    long aspetto = -1;
    if (codice != 0) {
        if (coperta) {
            const long c = codice > SUL_TAVOLO_PRIMO ? codice / (SUL_TAVOLO_SECONDO + 1) + JOLLY_PRIMO : codice;
            aspetto = (c - 1) / CARTE_PER_MAZZO;
        } else {
            aspetto = codice > SUL_TAVOLO_PRIMO && codice <= SUL_TAVOLO_SECONDO ? JOLLY_PRIMO - 1
                      : codice > SUL_TAVOLO_SECONDO                             ? JOLLY_SECONDO - 1
                                                                                : (codice - 1) % CARTE_PER_MAZZO;
        }
    }
    const auto chiave = std::make_tuple(colonna, riga, aspetto, coperta);
    const auto trovato = riferimenti_.find(chiave);
    if (trovato != riferimenti_.end()) return trovato->second;

    static Canvas prova_tela;
    prova_tela.ridimensiona(misura.width(), misura.height());
    const QRectF cella((colonna - 1) * 72 + 8, riga * 16, 72, 96);
    if (aspetto < 0)
        prova_tela.PaintPicture(immagine_sfondo, cella, cella);
    else if (coperta)
        prova_tela.PaintPicture(dorsi(aspetto), cella, QRectF(0, 0, dorsi(aspetto).width(), dorsi(aspetto).height()));
    else
        prova_tela.PaintPicture(immagine_carte, cella, QRectF((aspetto % 9) * 71, (aspetto / 9) * 96, 71, 96));
    return riferimenti_[chiave] = prova_tela.Image(prova_tela.in_pixel(parte_controllata(colonna, riga)));
}

std::vector<std::string> Controllore::controlla_tela(const Istantanea& s)
{
    std::vector<std::string> g;
    const Canvas& tela = frmTV().tela;
    auto mostra = [&](long colonna, long riga, long codice, bool coperta) {
        const QImage& atteso = riferimento(colonna, riga, codice, coperta);
        return tela.Image(tela.in_pixel(parte_controllata(colonna, riga))) == atteso;
    };
    for (long i = 1; i <= 14; ++i)
        if (!mostra(i, 41, s.mano_umano[std::size_t(i)], false))
            g.push_back("hand slot " + n(i) + " does not show " + prova::nome_carta(int(s.mano_umano[std::size_t(i)])));
    const long cima = s.n_pozzo >= 1 && s.n_pozzo <= 82 ? s.pozzo[std::size_t(s.n_pozzo)] : 0;
    if (!mostra(13, 21, cima, false)) g.push_back("the pile does not show " + prova::nome_carta(int(cima)));
    if (s.tallone >= 0 && s.tallone < CARTE && !mostra(14, 21, s.mazzo[std::size_t(s.tallone + 1)], true))
        g.push_back("the stock does not show the back of " +
                    prova::nome_carta(int(s.mazzo[std::size_t(s.tallone + 1)])));
    return g;
}

}  // namespace simulazione
