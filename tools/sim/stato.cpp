// SPDX-License-Identifier: GPL-3.0-or-later
#include "stato.h"

#include "aiuto/posizione.h"
#include "rules/mdTavolata.h"

namespace simulazione {

Istantanea fotografa()
{
    Istantanea s;
    for (long i = 1; i <= CARTE; ++i) s.mazzo[i] = mazzo(i);
    s.tallone = tallone;
    for (long i = 1; i <= 82; ++i) s.pozzo[i] = pozzo(i);
    s.n_pozzo = n_pozzo;
    for (long i = 1; i <= 14; ++i) {
        s.mano_umano[i] = mano_umano(i);
        s.mano_computer[i] = mano_computer(i);
    }
    for (long c = 1; c <= 13; ++c)
        for (long k = 1; k <= 13; ++k) {
            s.tavolo_umano[c][k] = tavolo_umano(c, k);
            s.tavolo_computer[c][k] = tavolo_computer(c, k);
        }
    s.punti[1] = punti(1);
    s.punti[2] = punti(2);
    s.fase = fase;
    s.turno_umano = turno_umano;
    s.inizia_computer = inizia_computer;
    s.carta_selezionata = carta_selezionata;
    s.posizione_selezionata = posizione_selezionata;
    return s;
}

namespace {
std::uint64_t mescola_numero(std::uint64_t h, long n)
{
    for (int b = 0; b < 8; ++b) h = (h ^ ((std::uint64_t(n) >> (8 * b)) & 0xff)) * 0x100000001b3ull;
    return h;
}
}  // namespace

std::uint64_t impronta(std::uint64_t h, const std::string& testo)
{
    for (unsigned char c : testo) h = (h ^ c) * 0x100000001b3ull;
    return h;
}

std::uint64_t impronta(std::uint64_t h, const Istantanea& s)
{
    for (long c : s.mazzo) h = mescola_numero(h, c);
    h = mescola_numero(h, s.tallone);
    for (long c : s.pozzo) h = mescola_numero(h, c);
    h = mescola_numero(h, s.n_pozzo);
    for (long c : s.mano_umano) h = mescola_numero(h, c);
    for (long c : s.mano_computer) h = mescola_numero(h, c);
    for (const auto& combinazione : s.tavolo_umano)
        for (long c : combinazione) h = mescola_numero(h, c);
    for (const auto& combinazione : s.tavolo_computer)
        for (long c : combinazione) h = mescola_numero(h, c);
    for (long p : s.punti) h = mescola_numero(h, p);
    h = impronta(h, s.fase + "|");
    h = mescola_numero(h, s.turno_umano);
    h = mescola_numero(h, s.inizia_computer);
    h = mescola_numero(h, s.carta_selezionata);
    return mescola_numero(h, s.posizione_selezionata);
}

int classe_carta(long codice)
{
    if (codice <= 0) return -1;
    if (codice > SUL_TAVOLO_PRIMO) return JOLLY;
    const int k = int((codice - 1) % CARTE_PER_MAZZO);
    return k >= 52 ? JOLLY : k;
}

int seme(long codice)
{
    if (codice <= 0) return 0;
    return int((codice - 1) % CARTE_PER_MAZZO) / 13 + 1;
}

int numero(long codice)
{
    if (codice <= 0) return 0;
    const int k = int((codice - 1) % CARTE_PER_MAZZO);
    return k > 51 ? 0 : k % 13 + 1;
}

bool jolly_semplice(long codice)
{
    return codice == JOLLY_PRIMO || codice == JOLLY_SECONDO || codice == JOLLY_PRIMO + CARTE_PER_MAZZO ||
           codice == JOLLY_SECONDO + CARTE_PER_MAZZO;
}

long penalita(long codice)
{
    const int n = numero(codice);
    if (n == 0) return 25;
    if (n == 1) return 11;
    return n > 10 ? 10 : n;
}

std::array<int, JOLLY + 1> conta_carte(const Istantanea& s)
{
    std::array<int, JOLLY + 1> n{};
    auto conta = [&n](long codice) {
        const int c = classe_carta(codice);
        if (c >= 0) ++n[std::size_t(c)];
    };
    for (long i = 1; i <= 14; ++i) {
        conta(s.mano_umano[i]);
        conta(s.mano_computer[i]);
    }
    for (long c = 1; c <= 13; ++c)
        for (long k = 1; k <= 13; ++k) {
            conta(s.tavolo_umano[c][k]);
            conta(s.tavolo_computer[c][k]);
        }
    // Slots of the pile above its top keep the cards taken from it: stale.
    for (long i = 1; i <= s.n_pozzo && i <= 82; ++i) conta(s.pozzo[i]);
    // The deck keeps the cards already dealt and drawn below the stock.
    for (long i = s.tallone + 1; i <= CARTE; ++i)
        if (i >= 1) conta(s.mazzo[i]);
    return n;
}

std::array<int, JOLLY + 1> carte_di_un_mazzo()
{
    std::array<int, JOLLY + 1> n{};
    n.fill(2);
    n[JOLLY] = 4;
    return n;
}

int lunghezza(const std::array<long, 14>& combinazione)
{
    int n = 0;
    while (n < 13 && combinazione[n + 1] != 0) ++n;
    return n;
}

bool mano_vuota(const std::array<long, 15>& mano)
{
    for (long i = 1; i <= 14; ++i)
        if (mano[i] != 0) return false;
    return true;
}

bool tavolo_vuoto(const std::array<std::array<long, 14>, 14>& tavolo)
{
    for (long c = 1; c <= 13; ++c)
        if (tavolo[c][1] != 0) return false;
    return true;
}

std::string testo_mano(const std::array<long, 15>& mano)
{
    std::string t;
    for (long i = 1; i <= 14; ++i) t += (i > 1 ? " " : "") + prova::nome_carta(int(mano[i]));
    return t;
}

std::string testo_tavolo(const std::array<std::array<long, 14>, 14>& tavolo)
{
    std::string t;
    for (long c = 1; c <= 13; ++c) {
        bool vuota = true;
        for (long k = 1; k <= 13; ++k) vuota = vuota && tavolo[c][k] == 0;
        if (vuota) continue;
        t += " [" + std::to_string(c) + ":";
        for (long k = 1; k <= 13; ++k) t += " " + prova::nome_carta(int(tavolo[c][k]));
        t += "]";
    }
    return t.empty() ? " (empty)" : t;
}

std::string testo_stato(const Istantanea& s)
{
    std::string pila;
    for (long i = 1; i <= s.n_pozzo && i <= 82; ++i) pila += " " + prova::nome_carta(int(s.pozzo[i]));
    return "  phase \"" + s.fase + "\", player's turn " + (s.turno_umano ? "yes" : "no") + ", stock at " +
           std::to_string(s.tallone) + ", pile " + std::to_string(s.n_pozzo) + ", marked " +
           prova::nome_carta(int(s.carta_selezionata)) + " from slot " + std::to_string(s.posizione_selezionata) +
           ", totals " + std::to_string(s.punti[1]) + "/" + std::to_string(s.punti[2]) +
           "\n  player's hand:   " + testo_mano(s.mano_umano) + "\n  computer's hand: " + testo_mano(s.mano_computer) +
           "\n  player's table:  " + testo_tavolo(s.tavolo_umano) +
           "\n  computer's table:" + testo_tavolo(s.tavolo_computer) + "\n  pile:" + pila + "\n";
}

}  // namespace simulazione
