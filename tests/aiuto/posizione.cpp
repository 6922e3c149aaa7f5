// SPDX-License-Identifier: GPL-3.0-or-later
#include "aiuto/posizione.h"

#include "platform/dialoghi.h"
#include "platform/lettore_wave.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QApplication>
#include <QFileInfo>
#include <QMenuBar>

#include <sstream>
#include <stdexcept>

namespace prova {

namespace {
const std::string ranghi[] = {"A", "2", "3", "4", "5", "6", "7", "8", "9", "10", "J", "Q", "K"};
const char semi[] = {'H', 'D', 'C', 'S'};

template <class Tab>
void riempi_mano(Tab& mano, const std::string& testo)
{
    const auto codici = carte(testo);
    if (codici.size() > 14) throw std::invalid_argument("a hand holds 14 cards at most");
    for (long i = 1; i <= 14; ++i) mano(i) = i <= long(codici.size()) ? codici[i - 1] : 0;
}

template <class Tab>
std::string mano_testo(Tab& mano)
{
    std::vector<int> v;
    for (long i = 1; i <= 14; ++i) v.push_back(long(mano(i)));
    while (!v.empty() && v.back() == 0) v.pop_back();
    return elenco(v);
}

void riempi_combinazione(Tabella2<Byte, 1, 13, 1, 13>& t, int k, const std::string& testo)
{
    const auto codici = carte(testo);
    for (long j = 1; j <= 13; ++j) t(k, j) = j <= long(codici.size()) ? codici[j - 1] : 0;
}

std::string combinazione_testo(Tabella2<Byte, 1, 13, 1, 13>& t, int k)
{
    std::vector<int> v;
    for (long j = 1; j <= 13 && t(k, j) != 0; ++j) v.push_back(long(t(k, j)));
    return elenco(v);
}
}  // namespace

int carta(const std::string& nome_dato)
{
    std::string nome = nome_dato;
    if (nome == ".") return 0;
    int extra = 0;
    if (nome.rfind("**", 0) == 0) {
        extra = SUL_TAVOLO_SECONDO;
        nome = nome.substr(2);
    } else if (nome.rfind('*', 0) == 0) {
        extra = SUL_TAVOLO_PRIMO;
        nome = nome.substr(1);
    }
    int pacco = 0;
    if (!nome.empty() && nome.back() == '\'') {
        pacco = CARTE_PER_MAZZO;
        nome.pop_back();
    }
    if (nome == "J1") return JOLLY_PRIMO + pacco;
    if (nome == "J2") return JOLLY_SECONDO + pacco;
    if (nome.size() < 2) throw std::invalid_argument("not a card: " + nome_dato);
    const char s = nome.back();
    const std::string r = nome.substr(0, nome.size() - 1);
    int seme = -1, numero = -1;
    for (int i = 0; i < 4; ++i)
        if (semi[i] == s) seme = i;
    for (int i = 0; i < 13; ++i)
        if (ranghi[i] == r) numero = i;
    if (seme < 0 || numero < 0) throw std::invalid_argument("not a card: " + nome_dato);
    const int t = seme * 13 + numero + 1;
    return extra ? extra + t : t + pacco;
}

std::string nome_carta(int c)
{
    if (c == 0) return ".";
    std::string prefisso;
    if (c > SUL_TAVOLO_SECONDO) {
        prefisso = "**";
        c -= SUL_TAVOLO_SECONDO;
    } else if (c > SUL_TAVOLO_PRIMO) {
        prefisso = "*";
        c -= SUL_TAVOLO_PRIMO;
    }
    const std::string pacco = c > CARTE_PER_MAZZO ? "'" : "";
    const int k = (c - 1) % CARTE_PER_MAZZO;
    if (k == JOLLY_PRIMO - 1) return prefisso + "J1" + pacco;
    if (k == JOLLY_SECONDO - 1) return prefisso + "J2" + pacco;
    return prefisso + ranghi[k % 13] + semi[k / 13] + pacco;
}

std::vector<int> carte(const std::string& testo)
{
    std::istringstream in(testo);
    std::vector<int> v;
    for (std::string p; in >> p;)
        if (p != "|") v.push_back(carta(p));
    return v;
}

std::string elenco(const std::vector<int>& codici)
{
    std::string s;
    for (int c : codici) s += (s.empty() ? "" : " ") + nome_carta(c);
    return s;
}

void mano_umano_da(const std::string& t) { riempi_mano(mano_umano, t); }
void mano_computer_da(const std::string& t) { riempi_mano(mano_computer, t); }
std::string mano_umano_come_testo() { return mano_testo(mano_umano); }
std::string mano_computer_come_testo() { return mano_testo(mano_computer); }
void combinazione_umano(int k, const std::string& t) { riempi_combinazione(tavolo_umano, k, t); }
void combinazione_computer(int k, const std::string& t) { riempi_combinazione(tavolo_computer, k, t); }
std::string combinazione_umano_come_testo(int k) { return combinazione_testo(tavolo_umano, k); }
std::string combinazione_computer_come_testo(int k) { return combinazione_testo(tavolo_computer, k); }

void pozzo_da(const std::string& t)
{
    const auto codici = carte(t);
    for (long i = 1; i <= long(codici.size()); ++i) pozzo(i) = codici[i - 1];
    n_pozzo = long(codici.size());
}

std::string pozzo_come_testo()
{
    std::vector<int> v;
    for (long i = 1; i <= n_pozzo; ++i) v.push_back(long(pozzo(i)));
    return elenco(v);
}

void tavoli_da(const std::string& testo)
{
    for (long k = 1; k <= 13; ++k)
        for (long j = 1; j <= 13; ++j) tavolo_umano(k, j) = tavolo_computer(k, j) = 0;
    std::istringstream in(testo);
    for (std::string parte; std::getline(in, parte, '|');) {
        const auto due_punti = parte.find(':');
        if (due_punti == std::string::npos) {
            if (parte.find_first_not_of(' ') == std::string::npos) continue;
            throw std::invalid_argument("no table named in: " + parte);
        }
        const std::string chi = parte.substr(parte.find_first_not_of(' '), due_punti - parte.find_first_not_of(' '));
        const std::string carte_date = parte.substr(due_punti + 1);
        if (chi == "p") {
            pozzo_da(carte_date);
        } else if (chi.size() > 1 && (chi[0] == 'u' || chi[0] == 'c')) {
            const int k = std::stoi(chi.substr(1));
            if (k < 1 || k > 13) throw std::invalid_argument("no combination " + chi);
            riempi_combinazione(chi[0] == 'u' ? tavolo_umano : tavolo_computer, k, carte_date);
        } else {
            throw std::invalid_argument("no table named " + chi);
        }
    }
}

std::string tavoli_come_testo()
{
    std::string s;
    const auto tavolo = [&](Tabella2<Byte, 1, 13, 1, 13>& t, char chi) {
        for (long k = 1; k <= 13; ++k) {
            std::vector<int> v;
            for (long j = 1; j <= 13; ++j) v.push_back(long(t(k, j)));
            while (!v.empty() && v.back() == 0) v.pop_back();
            if (!v.empty()) s += chi + std::to_string(k) + ":" + elenco(v) + " | ";
        }
    };
    tavolo(tavolo_umano, 'u');
    tavolo(tavolo_computer, 'c');
    return s + "p:" + pozzo_come_testo();
}

FrmTV& finestra()
{
    static FrmTV* f = nullptr;
    basic::prova::attiva(true);
    basic::prova::azzera();
    piattaforma::prova::automatico(true);
    piattaforma::prova::azzera();
    fattore_pause = 0;
    // Every test sees the same deals: a designed run-time error met by chance
    // in some deal would otherwise come and go between runs.
    fissa_seme(20261122);
    if (!f) {
        imposta_cartella_programma(QStringLiteral(TAVOLATA_SORGENTE "/media"));
        sostituisci_caratteri();
        f = new FrmTV();
        f->Form_Load();
        if (carica_immagini() != 0) throw std::runtime_error("the pictures of media/ did not load");
        f->setWindowState(Qt::WindowNoState);
        f->resize(1024, 768 + f->menuBar()->sizeHint().height());
        f->show();
        QApplication::processEvents();
    }
    azzera_stato();
    f->gioco_avviato = false;
    f->Tag.clear();
    f->tela.Cls(qRgb(0, 192, 0));
    f->tela.PaintPicture(immagine_sfondo, QRectF(0, 0, 1024, 768), QRectF(0, 0, 1024, 768));
    piattaforma::prova::azzera_suoni();
    return *f;
}

std::vector<std::string> suoni()
{
    std::vector<std::string> v;
    for (const QString& s : piattaforma::prova::suoni_richiesti()) v.push_back(QFileInfo(s).fileName().toStdString());
    return v;
}

int quanti_suoni(const std::string& file)
{
    int n = 0;
    for (const auto& s : suoni()) n += s == file;
    return n;
}

void azzera_suoni() { piattaforma::prova::azzera_suoni(); }

double x_colonna(int c) { return 8 + 72.0 * (c - 1) + 36; }
double y_riga(int r) { return 16.0 * r + 8; }

}  // namespace prova

namespace prova {
namespace {
QImage riferimento(int colonna, int riga, int codice, bool coperta, const QRect& parte)
{
    FrmTV& f = frmTV();
    Canvas rif;
    rif.ridimensiona(f.tela.larghezza_px(), f.tela.altezza_px());
    const QRectF cella((colonna - 1) * 72 + 8, riga * 16, 72, 96);
    if (codice == 0) {
        rif.PaintPicture(immagine_sfondo, cella, cella);
    } else if (coperta) {
        long c = codice > SUL_TAVOLO_PRIMO ? codice / (SUL_TAVOLO_SECONDO + 1) + JOLLY_PRIMO : codice;
        const QImage& d = dorsi((c - 1) / CARTE_PER_MAZZO);
        rif.PaintPicture(d, cella, QRectF(0, 0, d.width(), d.height()));
    } else {
        long c = codice;
        if (c > SUL_TAVOLO_PRIMO && c <= SUL_TAVOLO_SECONDO) c = JOLLY_PRIMO;
        if (c > SUL_TAVOLO_SECONDO) c = JOLLY_SECONDO;
        const long k = (c - 1) % CARTE_PER_MAZZO;
        rif.PaintPicture(immagine_carte, cella, QRectF((k % 9) * 71, (k / 9) * 96, 71, 96));
    }
    return rif.Image(parte);
}
}  // namespace

bool cella_mostra(int colonna, int riga, int codice, bool coperta, int visibili, bool dal_basso)
{
    FrmTV& f = frmTV();
    const double y0 = dal_basso ? riga * 16 + 96 - 16 * visibili : riga * 16;
    // One pixel in from every edge: neighbours may share the edge pixels.
    QRect r = f.tela.in_pixel(QRectF((colonna - 1) * 72 + 8, y0, 72, 16.0 * visibili)).adjusted(1, 1, -1, -1);
    r = r.intersected(QRect(0, 0, f.tela.larghezza_px(), f.tela.altezza_px()));
    return !r.isEmpty() && f.tela.Image(r) == riferimento(colonna, riga, codice, coperta, r);
}

std::string cosa_mostra(int colonna, int riga)
{
    if (cella_mostra(colonna, riga, 0)) return "background";
    for (int c = 1; c <= CARTE_PER_MAZZO; ++c)
        if (cella_mostra(colonna, riga, c)) return "face " + nome_carta(c);
    if (cella_mostra(colonna, riga, 1, true)) return "back 0";
    if (cella_mostra(colonna, riga, CARTE_PER_MAZZO + 1, true)) return "back 1";
    return "other";
}

bool mano_mostrata(bool computer, int salvo)
{
    for (int i = 1; i <= 14; ++i) {
        if (i == salvo) continue;
        const long c = computer ? long(mano_computer(i)) : long(mano_umano(i));
        if (!cella_mostra(i, computer ? 1 : 41, int(c), computer && c != 0)) return false;
    }
    return true;
}

bool combinazione_disegnata(int k, bool del_umano)
{
    auto& t = del_umano ? tavolo_umano : tavolo_computer;
    for (int j = 1; j <= 13 && t(k, j) != 0; ++j) {
        const bool coperta_dalla_successiva = j < 13 && t(k, j + 1) != 0;
        const int riga = del_umano ? 24 + j - 1 : 19 - j;
        if (!cella_mostra(k, riga, long(t(k, j)), false, coperta_dalla_successiva ? 1 : 6, !del_umano)) return false;
    }
    return true;
}
}  // namespace prova

namespace prova {
void posizione_computer_da(const std::string& testo)
{
    const auto barra = testo.find('/');
    tavoli_da(barra == std::string::npos ? "" : testo.substr(barra + 1));
    mano_computer_da(testo.substr(0, barra));
}

std::string posizione_computer_come_testo()
{
    std::string t = tavoli_come_testo();
    t.resize(t == "p:" ? 0 : t.ends_with(" | p:") ? t.size() - 5 : t.size());
    return mano_computer_come_testo() + " / " + t;
}
}  // namespace prova
