// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulatore.h"

#include "contrasto.h"
#include "giocatore.h"
#include "invarianti.h"
#include "stato.h"
#include "turni.h"

#include "human/frmJolly.h"
#include "platform/basic.h"
#include "platform/dialoghi.h"
#include "platform/lettore_wave.h"
#include "platform/mmc.h"
#include "rules/mdTavolata.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>

namespace simulazione {

namespace {

// A move of the simulated game that never ends by itself: stopped after this
// many turns of the event loop (a whole turn of the computer takes a few
// hundred).
constexpr long GIRI_MASSIMI = 200000;

// Chances, at each turn of the event loop while the computer plays, of a
// press anywhere, of a harmless menu command, of "New game" and of "Quit".
constexpr double P_PRESSIONE = 0.02;
constexpr double P_MENU = 0.004;
constexpr double P_NUOVA_PARTITA = 0.00002;
constexpr double P_ESCI = 0.000004;
// The same for the other waits of the game (a deal, a move of the player, the
// end of a hand), far fewer turns of the loop: "New game" and "Quit". And of a
// click on a score sheet left up over the hand, in any wait.
constexpr double P_NUOVA_PARTITA_ALTROVE = 0.0005;
constexpr double P_ESCI_ALTROVE = 0.00005;
constexpr double P_FOGLIO = 0.01;

QString cartella_figure()
{
    const QByteArray scelta = qgetenv("TAVOLATA_MEDIA");
    if (!scelta.isEmpty()) return QString::fromLocal8Bit(scelta);
    const QString accanto = QCoreApplication::applicationDirPath();
    if (QFileInfo::exists(accanto + QStringLiteral("/totale.bmp"))) return accanto;
    return QStringLiteral(TAVOLATA_SORGENTE "/media");
}

double probabilita(std::mt19937& caso) { return std::uniform_real_distribution<double>(0, 1)(caso); }

// Which wait of the game the event loop is turning in, read from the tables.
// A deal shows the player's new cards while the computer's are still to come
// or the first discard still to be counted; the end of a hand has an empty
// hand.
const char* attesa_in_corso()
{
    bool distribuite = mano_umano(14) == 0;
    for (long i = 1; i <= 13; ++i) distribuite = distribuite && mano_umano(i) == mazzo(i);
    for (long c = 1; c <= 13; ++c) distribuite = distribuite && tavolo_umano(c, 1) == 0 && tavolo_computer(c, 1) == 0;
    bool computer_vuoto = true, computer_nuovo = mano_computer(14) == 0;
    for (long i = 1; i <= 13; ++i) {
        computer_vuoto = computer_vuoto && mano_computer(i) == 0;
        computer_nuovo = computer_nuovo && mano_computer(i) == mazzo(i + 13);
    }
    const bool pozzo_contato = n_pozzo == 1 && pozzo(1) == mazzo(27) && tallone == 27;
    if (distribuite && (computer_vuoto || (computer_nuovo && !pozzo_contato))) return "during the deal";
    bool umano_vuoto = true;
    for (long i = 1; i <= 14; ++i) umano_vuoto = umano_vuoto && mano_umano(i) == 0;
    if (umano_vuoto || computer_vuoto) return "at the end of a hand";
    return turno_umano ? "during the player's move" : "while the computer plays";
}

class Motore {
public:
    explicit Motore(const Opzioni& o) : opzioni_(o), giocatore_(o.rumore) {}
    Rapporto esegui();

private:
    struct Azione {
        std::string nome;
        Area area = Area::nessuna;
    };

    // One call into the game, checked afterwards.
    template <class F>
    void mossa(const Azione& azione, F&& chiamata);
    void dopo_la_mossa(const Azione& azione, const Istantanea& prima);
    void fine_fatale(const Azione& azione, const Istantanea& prima, const Istantanea& dopo);
    std::string riconosci(const Azione& azione, const Istantanea& prima, const Istantanea& dopo) const;
    void guasto(const std::string& testo, const Azione& azione, const Istantanea& prima, const Istantanea& dopo);
    void osserva();
    void disturba();
    void rispondi_al_dialogo(FrmJolly& dialogo);
    void comando_menu(bool anche_nuova_partita, const char* chi);
    void conta_mani_distribuite();
    void salva_foglio();

    Opzioni opzioni_;
    Rapporto r_;
    Giocatore giocatore_;
    Controllore controllore_;
    std::mt19937 caso_;
    std::mt19937 caso_rumore_;

    bool in_mossa_ = false;
    long giri_ = 0;
    bool senza_fine_ = false;
    FrmJolly* dialogo_risposto_ = nullptr;
    bool dialogo_in_corso_ = false;
    // A hand ends closed or cut short by the next deal (or a fatal end).
    long mani_viste_ = 0;  // of the game's count of deals
    bool mano_aperta_ = false;  // the hand on the table has not closed
    // "New game" was chosen over the score sheet and the player plays the
    // new hand with the sheet still up.
    bool sotto_il_foglio_ = false;

    // Hand ends seen by the observer: who closed (1 the player, 2 the
    // computer) and what the loser's hand is worth.
    struct Chiusura {
        int chi;
        long penalita;
    };
    std::vector<Chiusura> chiusure_;
    bool chiusura_vista_ = false;
    long mani_prima_ = 0;  // the game's count of deals before the move
    bool foglio_prima_ = false;  // the score sheet was up before the move
    std::size_t richieste_lette_ = 0;
    std::unique_ptr<MisuraTurni> misura_;
};

template <class F>
void Motore::mossa(const Azione& azione, F&& chiamata)
{
    const Istantanea prima = fotografa();
    mani_prima_ = mani_distribuite;
    foglio_prima_ = frmTV().picture_score->isVisible();
    in_mossa_ = true;
    giri_ = 0;
    senza_fine_ = false;
    chiusure_.clear();
    const long mano = r_.mani() + 1;
    basic::protetto(chiamata);
    in_mossa_ = false;
    if (misura_) misura_->fine_mossa(mano, basic::programma_terminato());
    // The table is repainted as the window would do it.
    QCoreApplication::processEvents();
    dopo_la_mossa(azione, prima);
}

void Motore::conta_mani_distribuite()
{
    // Deals met since the last look; a deal that another deal overtook before
    // it was seen was never played either.
    const long nuove = mani_distribuite - mani_viste_;
    if (nuove <= 0) return;
    r_.mani_interrotte += (mano_aperta_ ? 1 : 0) + nuove - 1;
    mano_aperta_ = true;
    mani_viste_ = mani_distribuite;
}

void Motore::dopo_la_mossa(const Azione& azione, const Istantanea& prima)
{
    const Istantanea dopo = fotografa();
    r_.impronta = impronta(r_.impronta, dopo);
    conta_mani_distribuite();
    if (basic::programma_terminato()) {
        fine_fatale(azione, prima, dopo);
        return;
    }
    const bool mano_nuova = mani_distribuite != mani_prima_;

    // A game is over when the end-of-game question was asked.
    bool partita_nuova = false;
    const auto& richieste = piattaforma::prova::richieste();
    for (std::size_t i = richieste_lette_; i < richieste.size(); ++i)
        if (richieste[i].rfind("MsgBox|", 0) == 0 && richieste[i].find(" lost.") != std::string::npos) {
            ++r_.partite;
            partita_nuova = true;
        }
    richieste_lette_ = richieste.size();

    for (const Chiusura& c : chiusure_) {
        ++r_.mani_chiuse;
        if (c.chi == 1) {
            ++r_.vinte_umano;
            r_.penalita_computer += c.penalita;
        } else {
            ++r_.vinte_computer;
            r_.penalita_umano += c.penalita;
        }
    }
    // The score sheet charges exactly what the loser's hand is worth (unless
    // a deal in a wait of the sheet cut the count short).
    if (chiusure_.size() == 1 && !partita_nuova && !mano_nuova) {
        const long perdente = chiusure_[0].chi == 1 ? 2 : 1;
        const long addebito = dopo.punti[std::size_t(perdente)] - prima.punti[std::size_t(perdente)];
        if (addebito != chiusure_[0].penalita)
            guasto("the loser was charged " + std::to_string(addebito) + " for a hand worth " +
                       std::to_string(chiusure_[0].penalita),
                   azione, prima, dopo);
    }
    if (chiusure_.empty() &&
        (partita_nuova || (frmTV().picture_score->isVisible() && !foglio_prima_ && prima.turno_umano))) {
        ++r_.mani_chiuse;
        ++r_.mani_senza_penalita;
    }
    if (!chiusure_.empty()) sotto_il_foglio_ = false;
    if (!opzioni_.foto.empty() && frmTV().picture_score->isVisible() && !foglio_prima_) salva_foglio();

    if (opzioni_.controlli)
        for (const std::string& g : controllore_.controlla(prima, dopo, azione.area, mano_nuova, partita_nuova))
            guasto(g, azione, prima, dopo);

    // The records the game keeps for the tests would grow for ever.
    piattaforma::prova::azzera_suoni();
    frmTV().MMC1->registro.clear();
}

// The table as the player sees it at a hand's end, and how well each label
// of the sheet reads over whatever the sheet copied from the table.
void Motore::salva_foglio()
{
    FrmTV& f = frmTV();
    ++r_.fogli;
    const QString nome = QStringLiteral("%1/sheet-%2.png")
                             .arg(QString::fromStdString(opzioni_.foto))
                             .arg(r_.fogli, 5, 10, QLatin1Char('0'));
    if (!f.tavolo->grab().save(nome)) std::fprintf(stderr, "tavolata-sim: cannot write %s\n", qPrintable(nome));
    const std::pair<QLabel*, const char*> etichette[] = {{f.lblName(1), "names"},
                                                         {f.lblName(2), "names"},
                                                         {f.lblScore(1), "totals"},
                                                         {f.lblScore(2), "totals"},
                                                         {f.Label5, "\"Click here to continue\""}};
    for (const auto& [etichetta, tipo] : etichette) {
        const double c = etichetta ? contrasto_minimo(etichetta) : 0;
        if (c == 0) continue;  // an empty caption: the computer's name
        ++r_.etichette;
        auto [voce, nuova] = r_.contrasto.emplace(tipo, c);
        if (!nuova) voce->second = std::min(voce->second, c);
    }
}

void Motore::fine_fatale(const Azione& azione, const Istantanea& prima, const Istantanea& dopo)
{
    const std::string esito = riconosci(azione, prima, dopo);
    if (senza_fine_) {
        // The computer's laying round stops once a state comes back: a turn
        // that goes on for ever is a fault, not one of the game's own ends.
        guasto("the computer's turn never ends", azione, prima, dopo);
    } else if (esito.empty()) {
        guasto("the program ended: run-time error " + std::to_string(basic::prova::ultimo_errore_fatale()) +
                   ", exit code " + std::to_string(basic::prova::codice_di_uscita()),
               azione, prima, dopo);
    } else {
        if (!r_.esiti.count(esito)) r_.prima_mano[esito] = r_.mani() + 1;
        ++r_.esiti[esito];
    }
    // A hand that closed before the end counts as closed, any other as cut short.
    if (mano_aperta_) ++r_.mani_interrotte;
    mano_aperta_ = false;
    sotto_il_foglio_ = false;
    for (const Chiusura& c : chiusure_) {
        ++r_.mani_chiuse;
        (c.chi == 1 ? r_.vinte_umano : r_.vinte_computer)++;
        (c.chi == 1 ? r_.penalita_computer : r_.penalita_umano) += c.penalita;
    }

    // The program would end here; the simulator deals afresh and goes on.
    basic::prova::azzera();
    frmTV().picture_score->hide();
    controllore_.nuova_mano();
    mossa({"deal after the end", Area::nessuna}, [] { frmTV().gioco_imposta(); });
}

std::string Motore::riconosci(const Azione& azione, const Istantanea& prima, const Istantanea& dopo) const
{
    const int numero = basic::prova::ultimo_errore_fatale();
    const int codice = basic::prova::codice_di_uscita();
    if (numero == 0 && codice == 0) return "\"Quit\" chosen from the menu during a move";
    if (numero != 9) return {};
    if (azione.area == Area::pozzo && prima.turno_umano && prima.fase.size() == 3 && prima.fase[1] == '0' &&
        prima.n_pozzo == 1)
        return "9: the player takes a discard pile of one card";
    if ((azione.area == Area::tavolo_proprio || azione.area == Area::tavolo_avversario) && prima.fase == "011") {
        for (long c = 1; c <= 13; ++c)
            if (lunghezza(prima.tavolo_umano[std::size_t(c)]) == 13 ||
                lunghezza(prima.tavolo_computer[std::size_t(c)]) == 13)
                return "9: the player puts a 14th card on a straight of 13";
    }
    if (!dopo.turno_umano) {
        if (mano_vuota(dopo.mano_computer)) return "9: the computer laid every card and has none left to discard";
        for (long c = 1; c <= 13; ++c)
            if (lunghezza(dopo.tavolo_umano[std::size_t(c)]) == 13 ||
                lunghezza(dopo.tavolo_computer[std::size_t(c)]) == 13)
                return "9: the computer puts a 14th card on a straight of 13";
        bool piena = true;
        for (long i = 1; i <= 14; ++i) piena = piena && dopo.mano_computer[std::size_t(i)] != 0;
        if (piena) return "9: a card goes into the computer's full hand";
    }
    return {};
}

void Motore::guasto(const std::string& testo, const Azione& azione, const Istantanea& prima, const Istantanea& dopo)
{
    std::ostringstream s;
    s << "seed " << opzioni_.seme << ", hand " << r_.mani() + 1 << ", after \"" << azione.nome << "\": " << testo
      << "\n before:\n"
      << testo_stato(prima) << " after:\n"
      << testo_stato(dopo);
    r_.guasti.push_back(s.str());
    if (!opzioni_.silenzioso) std::fprintf(stderr, "FAILURE %s\n", s.str().c_str());
}

void Motore::osserva()
{
    if (in_mossa_ && ++giri_ > GIRI_MASSIMI && !basic::programma_terminato()) {
        senza_fine_ = true;
        try {
            basic::fine_programma(99);
        } catch (const basic::ProgrammaTerminato&) {}
        // A dialog left open would keep its own loop going.
        if (QWidget* modale = QApplication::activeModalWidget()) modale->close();
        return;
    }

    conta_mani_distribuite();
    // The end of a hand, seen as the score sheet is being prepared: the hand
    // of the player who closed is empty and his table holds what he laid.
    const bool umano_vuoto = [] {
        for (long i = 1; i <= 14; ++i)
            if (mano_umano(i) != 0) return false;
        return true;
    }();
    const bool computer_vuoto = [] {
        for (long i = 1; i <= 14; ++i)
            if (mano_computer(i) != 0) return false;
        return true;
    }();
    if (!umano_vuoto && !computer_vuoto) {
        chiusura_vista_ = false;
    } else if (!chiusura_vista_ && fase == "000") {
        bool umano_ha_calato = false;
        for (long c = 1; c <= 13; ++c) umano_ha_calato = umano_ha_calato || tavolo_umano(c, 1) != 0;
        const bool umano_ha_chiuso = umano_vuoto && umano_ha_calato;
        const bool computer_ha_chiuso = computer_vuoto && tavolo_computer(1, 1) != 0;
        if (umano_ha_chiuso || computer_ha_chiuso) {
            chiusura_vista_ = true;
            mano_aperta_ = false;
            long valore = 0;
            for (long i = 1; i <= 14; ++i) {
                const long c = umano_ha_chiuso ? long(mano_computer(i)) : long(mano_umano(i));
                if (c != 0) valore += penalita(c);
            }
            chiusure_.push_back({umano_ha_chiuso ? 1 : 2, valore});
        }
    }

    // The jolly dialog is answered once each time it shows (a dialog shown
    // later may well live at the same address).
    auto* dialogo = qobject_cast<FrmJolly*>(QApplication::activeModalWidget());
    if (!dialogo || !dialogo->isVisible()) {
        dialogo_risposto_ = nullptr;
    } else if (dialogo != dialogo_risposto_) {
        dialogo_risposto_ = dialogo;
        // Until its own loop has returned, the menus stay out of the player's
        // reach, even once the dialog is answered.
        dialogo_in_corso_ = true;
        QObject::connect(dialogo, &QObject::destroyed, [this] { dialogo_in_corso_ = false; });
        rispondi_al_dialogo(*dialogo);
    }
}

void Motore::rispondi_al_dialogo(FrmJolly& dialogo)
{
    int carta = giocatore_.valore_jolly();
    if (carta == 0) carta = std::uniform_int_distribution<int>(1, 52)(caso_);
    const int seme_scelto = (carta - 1) / 13 + 1;
    PulsanteSeme* semi[] = {dialogo.Option1, dialogo.Option2, dialogo.Option3, dialogo.Option4};
    if (!semi[seme_scelto - 1]->isChecked()) semi[seme_scelto - 1]->click();
    dialogo.Combo1->setCurrentIndex((carta - 1) % 13);

    const double modo = opzioni_.rumore ? probabilita(caso_) : 0;
    if (modo < 0.7) {
        // A press in the middle of the preview confirms the card.
        const QPointF punto = dialogo.posto_anteprima().center();
        QMouseEvent premi(QEvent::MouseButtonPress, punto, dialogo.mapToGlobal(punto), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&dialogo, &premi);
        ++r_.dialoghi["confirmed on the preview"];
    } else if (modo < 0.85) {
        QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&dialogo, &esc);
        ++r_.dialoghi["closed with Escape"];
    } else {
        dialogo.close();
        ++r_.dialoghi["closed by the close box"];
    }
}

void Motore::comando_menu(bool anche_nuova_partita, const char* chi)
{
    FrmTV& f = frmTV();
    std::vector<std::pair<QAction*, const char*>> voci = {{f.menu_english_rules, "English rules"},
                                                          {f.menu_regole_italiano, "Italian rules"},
                                                          {f.menu_about, "Info"},
                                                          {f.menu_card_rustle_yes, "card rustle Yes"},
                                                          {f.menu_card_rustle_no, "card rustle No"},
                                                          {f.nomusic, "no music"},
                                                          {f.all, "sequential mode"}};
    for (long i = 1; i <= FrmTV::numero_canzoni; ++i) voci.push_back({f.canzoni(i), "a song"});
    if (anche_nuova_partita) voci.push_back({f.menu_newgame, "New game"});
    const auto& [azione, nome] = voci[std::uniform_int_distribution<std::size_t>(0, voci.size() - 1)(caso_rumore_)];
    ++r_.disturbi[std::string(nome) + " (" + chi + ")"];
    azione->trigger();
}

void Motore::disturba()
{
    // A dialog on screen keeps the menus and the table out of reach.
    if (!opzioni_.rumore || !in_mossa_ || basic::programma_terminato() || dialogo_in_corso_ ||
        QApplication::activeModalWidget())
        return;
    const char* attesa = attesa_in_corso();
    const double p = probabilita(caso_rumore_);
    FrmTV& f = frmTV();
    if (f.picture_score->isVisible() && probabilita(caso_rumore_) < P_FOGLIO) {
        ++r_.disturbi[std::string("click on the score sheet (") + attesa + ")"];
        emit f.picture_score->Click();
        return;
    }
    if (std::string(attesa) != "while the computer plays") {
        if (p < P_NUOVA_PARTITA_ALTROVE) {
            ++r_.disturbi[std::string("New game (") + attesa + ")"];
            f.menu_newgame->trigger();
        } else if (p < P_NUOVA_PARTITA_ALTROVE + P_ESCI_ALTROVE) {
            ++r_.disturbi[std::string("Quit (") + attesa + ")"];
            f.menu_quit->trigger();
        }
        return;
    }
    if (p < P_PRESSIONE) {
        // The player's presses while the computer plays change nothing.
        const float x = std::uniform_real_distribution<float>(0, 1024)(caso_rumore_);
        const float y = std::uniform_real_distribution<float>(0, 768)(caso_rumore_);
        const Istantanea prima = fotografa();
        basic::protetto([&] { f.Form_MouseDown(1, 0, x, y); });
        ++r_.disturbi["press while the computer plays"];
        const Istantanea dopo = fotografa();
        if (!(prima == dopo))
            guasto("a press during the computer's turn changed the game", {"noise press", area_di(x, y)}, prima, dopo);
    } else if (p < P_PRESSIONE + P_MENU) {
        comando_menu(false, "while the computer plays");
    } else if (p < P_PRESSIONE + P_MENU + P_NUOVA_PARTITA) {
        ++r_.disturbi["New game (while the computer plays)"];
        f.menu_newgame->trigger();
    } else if (p < P_PRESSIONE + P_MENU + P_NUOVA_PARTITA + P_ESCI) {
        ++r_.disturbi["Quit (while the computer plays)"];
        f.menu_quit->trigger();
    }
}

Rapporto Motore::esegui()
{
    QElapsedTimer orologio;
    orologio.start();
    r_.seme = opzioni_.seme;
    r_.impronta = 0xcbf29ce484222325ull;
    r_.rumore = opzioni_.rumore;
    r_.larghezza = frmTV().tela.larghezza_px();
    r_.altezza = frmTV().tela.altezza_px();
    if (!opzioni_.foto.empty()) QDir().mkpath(QString::fromStdString(opzioni_.foto));
    fissa_seme(opzioni_.seme);
    caso_.seed(opzioni_.seme * 2654435761u + 1);
    caso_rumore_.seed(opzioni_.seme * 2246822519u + 7);
    if (opzioni_.lunghezze_turni) misura_ = std::make_unique<MisuraTurni>(opzioni_.seme);

    FrmTV& f = frmTV();
    azzera_stato();
    f.gioco_avviato = false;
    f.picture_score->hide();
    basic::prova::azzera();
    piattaforma::prova::azzera();
    richieste_lette_ = 0;
    mani_viste_ = mani_distribuite;
    mano_aperta_ = false;
    sotto_il_foglio_ = false;

    QTimer osservatore, rumore;
    osservatore.setInterval(0);
    rumore.setInterval(0);
    QObject::connect(&osservatore, &QTimer::timeout, [this] { osserva(); });
    QObject::connect(&rumore, &QTimer::timeout, [this] { disturba(); });
    osservatore.start();
    rumore.start();

    controllore_.nuova_mano();
    mossa({"first deal", Area::nessuna}, [&f] { f.gioco_imposta(); });
    long ultima_segnalata = 0;
    long pressioni_turno = 0;
    while (r_.mani() < opzioni_.mani && long(r_.guasti.size()) < opzioni_.guasti_massimi) {
        if (!opzioni_.silenzioso && r_.mani() >= ultima_segnalata + 1000) {
            ultima_segnalata = r_.mani();
            std::fprintf(stderr, "  %ld hands, %.1f s\n", r_.mani(), orologio.elapsed() / 1000.0);
        }
        if (!f.picture_score->isVisible()) sotto_il_foglio_ = false;
        if (f.picture_score->isVisible() && !sotto_il_foglio_) {
            const double q = opzioni_.rumore ? probabilita(caso_) : 1;
            if (q < 0.01) {
                // "New game" leaves the sheet up: now and then the player plays
                // the new hand under it, and a click on it may come in any wait.
                ++r_.disturbi["New game, the sheet left up (on the score sheet)"];
                sotto_il_foglio_ = true;
                mossa({"New game over the score sheet", Area::nessuna}, [&f] { f.menu_newgame->trigger(); });
            } else if (q < 0.04) {
                mossa({"a menu command on the score sheet", Area::nessuna},
                      [this] { comando_menu(true, "on the score sheet"); });
            } else {
                mossa({"click on the score sheet", Area::nessuna}, [&f] { f.picture_score_Click(); });
            }
            continue;
        }
        if (!turno_umano) {
            const Istantanea s = fotografa();
            guasto("nobody's turn: the computer has played and the player may not", {"waiting", Area::nessuna}, s, s);
            controllore_.nuova_mano();
            mossa({"deal after a stuck hand", Area::nessuna}, [&f] { f.gioco_imposta(); });
            continue;
        }
        if (opzioni_.rumore && probabilita(caso_) < 0.01) {
            mossa({"a menu command in the player's turn", Area::nessuna},
                  [this] { comando_menu(probabilita(caso_) < 0.05, "in the player's turn"); });
            continue;
        }
        const bool deve_pescare = fase.size() == 3 && fase[1] == '0';
        if (deve_pescare && pressioni_turno > 0) {
            ++r_.turni_umano;
            pressioni_turno = 0;
        }
        if (++pressioni_turno > 400) {
            const Istantanea s = fotografa();
            guasto("the player's turn does not end", {"waiting", Area::nessuna}, s, s);
            controllore_.nuova_mano();
            mossa({"deal after a stuck hand", Area::nessuna}, [&f] { f.gioco_imposta(); });
            pressioni_turno = 0;
            continue;
        }
        const Pressione p = giocatore_.prossima(caso_);
        ++r_.pressioni;
        ++r_.mosse[nome_mossa(p.mossa)];
        mossa({nome_mossa(p.mossa), area_di(p.x, p.y)}, [&f, p] { f.Form_MouseDown(1, 0, p.x, p.y); });
    }
    osservatore.stop();
    rumore.stop();
    r_.rifiutate = giocatore_.rifiutate();
    r_.casi = controllore_.casi();
    // The time is not yet set: the report hashed is the same in every run.
    r_.impronta = impronta(r_.impronta, r_.testo());
    for (const std::string& g : r_.guasti) r_.impronta = impronta(r_.impronta, g);
    r_.secondi = orologio.elapsed() / 1000.0;
    if (misura_) r_.turni = misura_->testo();
    misura_.reset();
    return r_;
}

std::string percento(long parte, long tutto)
{
    char t[32];
    std::snprintf(t, sizeof t, "%.1f%%", tutto ? 100.0 * parte / tutto : 0.0);
    return t;
}

std::string decimale(double x)
{
    char t[32];
    std::snprintf(t, sizeof t, "%.1f", x);
    return t;
}

}  // namespace

namespace {
// Headless, every jolly dialog the simulator opens makes the offscreen
// platform say that it cannot pass on size hints; thousands of those lines
// would bury the report. Everything else still goes through.
QtMessageHandler gestore_precedente = nullptr;
void filtra_messaggi(QtMsgType tipo, const QMessageLogContext& contesto, const QString& testo)
{
    if (testo.contains(QLatin1String("does not support propagateSizeHints"))) return;
    if (gestore_precedente) gestore_precedente(tipo, contesto, testo);
}
}  // namespace

void prepara_finestra(int larghezza, int altezza)
{
    static FrmTV* finestra = nullptr;
    if (finestra) {
        finestra->resize(larghezza, altezza + finestra->menuBar()->sizeHint().height());
        QCoreApplication::processEvents();
        return;
    }
    gestore_precedente = qInstallMessageHandler(filtra_messaggi);
    basic::prova::attiva(true);
    piattaforma::prova::automatico(true);
    fattore_pause = 0;
    imposta_cartella_programma(cartella_figure());
    sostituisci_caratteri();
    finestra = new FrmTV();
    finestra->Form_Load();
    if (carica_immagini() != 0)
        throw std::runtime_error("the pictures did not load from " + cartella_programma().toStdString());
    finestra->setWindowState(Qt::WindowNoState);
    finestra->resize(larghezza, altezza + finestra->menuBar()->sizeHint().height());
    finestra->show();
    QCoreApplication::processEvents();
}

Rapporto simula(const Opzioni& opzioni)
{
    Motore m(opzioni);
    return m.esegui();
}

std::string Rapporto::testo() const
{
    std::string t;
    t += "Tavolata simulator, seed " + std::to_string(seme) + (rumore ? ", with noise" : ", without noise") + "\n";
    t += "hands: " + std::to_string(mani()) + " (" + std::to_string(mani_chiuse) + " closed, " +
         std::to_string(mani_interrotte) + " cut short); games finished: " + std::to_string(partite) + "\n";
    t += "hands won: computer " + std::to_string(vinte_computer) + " (" + percento(vinte_computer, mani_chiuse) +
         "), player " + std::to_string(vinte_umano) + " (" + percento(vinte_umano, mani_chiuse) + ")\n";
    const long contate = mani_chiuse - mani_senza_penalita;
    t += "average penalty per closed hand: player " + decimale(contate ? double(penalita_umano) / contate : 0) +
         ", computer " + decimale(contate ? double(penalita_computer) / contate : 0);
    t += "; per hand lost: player " + decimale(vinte_computer ? double(penalita_umano) / vinte_computer : 0) +
         ", computer " + decimale(vinte_umano ? double(penalita_computer) / vinte_umano : 0) + "\n";
    if (mani_senza_penalita)
        t += "closed hands whose charge was not seen (left out of the averages): " +
             std::to_string(mani_senza_penalita) + "\n";
    t += "player's turns: " + std::to_string(turni_umano) + ", presses: " + std::to_string(pressioni) +
         ", plays the game refused: " + std::to_string(rifiutate) + "\n";
    for (const auto& [nome, n] : mosse) t += "  " + nome + ": " + std::to_string(n) + "\n";
    if (!dialoghi.empty()) {
        t += "jolly dialog:\n";
        for (const auto& [nome, n] : dialoghi) t += "  " + nome + ": " + std::to_string(n) + "\n";
    }
    if (!disturbi.empty()) {
        t += "noise:\n";
        for (const auto& [nome, n] : disturbi) t += "  " + nome + ": " + std::to_string(n) + "\n";
    }
    t += "fatal ends the game keeps on purpose:" + std::string(esiti.empty() ? " none\n" : "\n");
    for (const auto& [nome, n] : esiti)
        t += "  " + nome + ": " + std::to_string(n) + " (first in hand " + std::to_string(prima_mano.at(nome)) + ")\n";
    t += "the game's own quirks met (cards it drops or doubles on purpose):" +
         std::string(casi.empty() ? " none\n" : "\n");
    for (const auto& [nome, n] : casi) t += "  " + nome + ": " + std::to_string(n) + "\n";
    if (fogli) {
        t += "score sheets saved: " + std::to_string(fogli) + ", labels measured: " + std::to_string(etichette) +
             "; lowest contrast of their letters:";
        for (const auto& [tipo, c] : contrasto) t += " " + tipo + " " + decimale(c) + " : 1,";
        t.back() = '\n';
    }
    t += turni;
    t += "failures: " + std::to_string(guasti.size()) + "\n";
    t += "table: " + std::to_string(larghezza) + " x " + std::to_string(altezza) + " pixels\n";
    t += "time: " + decimale(secondi) + " s, " + decimale(secondi > 0 ? mani() / secondi : 0) + " hands per second\n";
    return t;
}

}  // namespace simulazione
