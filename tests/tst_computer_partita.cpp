// Whole hands of the computer against a plain human who only draws from the
// stock and throws away a card at random. The computer must hand the turn
// back every time, close hands, and never make up a real card; the ends that
// the game's own rules lead to (a fatal error, a turn that never ends) are
// counted and printed, so that their frequency can be followed. TAVOLATA_MANI
// and TAVOLATA_TURNI set the number of hands and the turns allowed to each.
#include "aiuto/posizione.h"
#include "computer/mdCompTV.h"
#include "ui/frmTV.h"

#include <QTimer>
#include <QtTest>

#include <map>
#include <random>

namespace {
// How a hand of the simulation ended.
enum class Fine {
    chiusa,              // the computer closed
    pozzo_di_una_carta,  // error 9: the computer took a pile of one card
    mano_piena,          // error 9: a hand with doubled jollies had no slot for a card
    mano_vuota,          // error 9: the computer laid every card and had none to discard
    senza_fine,          // a turn whose jollies kept it going round
    troppo_lunga,        // no close within the turns allowed
    altro,               // anything else: a fault
};

struct Conteggi {
    int mani = 0;
    int turni = 0;
    int prese_dal_pozzo = 0;
    int rimescolate_umano = 0;
    int mani_con_jolly_in_piu = 0;
    std::map<Fine, int> fini;
    std::vector<std::string> guasti;
};

std::string tavolo_computer_testo()
{
    std::string s;
    for (int c = 1; c <= 13 && tavolo_computer(c, 1) != 0; ++c) s += "|" + prova::combinazione_computer_come_testo(c);
    return s;
}

// How many times each real card (suit and number, either pack) is in play,
// and how many jollies, plain or standing.
struct Carte {
    std::map<long, int> reali;
    int jolly = 0;
    void conta(long codice)
    {
        if (codice == 0) return;
        if (codice > 108 || basic::Mod(codice - 1, 54) >= 52)
            ++jolly;
        else
            ++reali[basic::Mod(codice - 1, 54)];
    }
};

Carte carte_in_gioco()
{
    Carte carte;
    for (long i = 1; i <= 14; ++i) {
        carte.conta(mano_umano(i));
        carte.conta(mano_computer(i));
    }
    for (long c = 1; c <= 13; ++c)
        for (long k = 1; k <= 13; ++k) {
            carte.conta(tavolo_umano(c, k));
            carte.conta(tavolo_computer(c, k));
        }
    for (long i = 1; i <= n_pozzo; ++i) carte.conta(pozzo(i));
    for (long i = tallone + 1; i <= 108; ++i) carte.conta(mazzo(i));
    return carte;
}

class Simulazione {
public:
    Simulazione(unsigned seme, int turni_massimi) : caso_(seme), turni_massimi_(turni_massimi) {}

    Fine gioca_mano(bool inizia, Conteggi& conti)
    {
        FrmTV& f = frmTV();
        punti(1) = 0;
        punti(2) = 0;
        inizia_computer = inizia;
        ++conti.mani;
        long pozzo_prima = 0;  // the first turn of a hand begun by the computer never takes the pile
        try {
            f.gioco_imposta();
            for (int turno = 0; turno < turni_massimi_; ++turno) {
                if (f.picture_score->isVisible()) return finita(Fine::chiusa, conti);
                if (const std::string g = guasto(); !g.empty()) return finita(Fine::altro, conti, g);
                umano_pesca(conti);
                umano_scarta();
                turno_umano = false;
                fase = "100";
                pozzo_prima = n_pozzo;
                const long tallone_prima = tallone;
                ++conti.turni;
                con_guardia([] { turno_computer(); });
                fase = "000";
                if (f.picture_score->isVisible()) continue;
                if (!turno_umano) return finita(Fine::altro, conti, "the turn did not come back");
                if (tallone == tallone_prima) ++conti.prese_dal_pozzo;
            }
            return finita(Fine::troppo_lunga, conti, "no close: " + stato());
        } catch (const basic::ProgrammaTerminato&) {
            basic::prova::azzera();
            return finita(Fine::senza_fine, conti, "endless turn: " + stato());
        } catch (const basic::ErroreRuntime& e) {
            if (e.numero() == 9 && conta_carte() == 0) return finita(Fine::mano_vuota, conti);
            if (e.numero() == 9 && prima_posizione_libera(false) == 15)
                return finita(Fine::mano_piena, conti, "full hand: " + stato());
            if (e.numero() == 9 && pozzo_prima == 1) return finita(Fine::pozzo_di_una_carta, conti);
            return finita(Fine::altro, conti, "run-time error " + std::to_string(e.numero()) + ": " + stato());
        }
    }

private:
    // The human's draw from the stock, with the reshuffle on the last card.
    void umano_pesca(Conteggi& conti)
    {
        tallone = tallone + 1;
        mano_umano(prima_posizione_libera(true)) = long(mazzo(tallone));
        if (tallone == 108) {
            frmTV().Rimescola();
            n_pozzo = 0;
            tallone = 27;
            ++conti.rimescolate_umano;
        }
    }

    void umano_scarta()
    {
        std::vector<long> piene;
        for (long i = 1; i <= 14; ++i)
            if (mano_umano(i) != 0) piene.push_back(i);
        const long i = piene[std::uniform_int_distribution<std::size_t>(0, piene.size() - 1)(caso_)];
        n_pozzo = n_pozzo + 1;
        pozzo(n_pozzo) = long(mano_umano(i));
        mano_umano(i) = 0;
    }

    // A turn still going after two seconds goes round for ever: the end of
    // the program is recorded, and the next pause of the turn unwinds it.
    template <class F>
    static void con_guardia(F turno)
    {
        QTimer guardia;
        guardia.setSingleShot(true);
        QObject::connect(&guardia, &QTimer::timeout, [] {
            try {
                basic::fine_programma(99);
            } catch (const basic::ProgrammaTerminato&) {
            }
        });
        guardia.start(2000);
        turno();
    }

    // A real card in play three times is a fault; jollies may multiply.
    static std::string guasto()
    {
        for (const auto& [carta, volte] : carte_in_gioco().reali)
            if (volte > 2) return "a real card in play " + std::to_string(volte) + " times: " + stato();
        return {};
    }

    static std::string stato()
    {
        return "hand " + prova::mano_computer_come_testo() + ", table " + tavolo_computer_testo();
    }

    Fine finita(Fine fine, Conteggi& conti, const std::string& perche = {})
    {
        ++conti.fini[fine];
        if (carte_in_gioco().jolly > 4) ++conti.mani_con_jolly_in_piu;
        if (fine == Fine::altro) conti.guasti.push_back(perche);
        if (!perche.empty()) qInfo("%s", perche.c_str());
        frmTV().picture_score->hide();
        return fine;
    }

    std::mt19937 caso_;
    int turni_massimi_;
};
}  // namespace

class TestComputerPartita : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        prova::finestra();
        fissa_seme(20240611);
        nomi(1) = "Anna";
    }

    void molte_mani()
    {
        const int quante =
            qEnvironmentVariableIsSet("TAVOLATA_MANI") ? qEnvironmentVariableIntValue("TAVOLATA_MANI") : 60;
        const int turni =
            qEnvironmentVariableIsSet("TAVOLATA_TURNI") ? qEnvironmentVariableIntValue("TAVOLATA_TURNI") : 400;
        Simulazione sim(7, turni);
        Conteggi conti;
        for (int i = 0; i < quante; ++i) sim.gioca_mano(i % 2 == 1, conti);

        qInfo(
            "hands %d, computer turns %d, pile takes %d, reshuffles on the human's draw %d, hands with more "
            "than four jollies %d",
            conti.mani, conti.turni, conti.prese_dal_pozzo, conti.rimescolate_umano, conti.mani_con_jolly_in_piu);
        qInfo(
            "closed %d; error 9 on a one-card pile %d, on a full hand %d, on an empty hand %d; endless turn %d; "
            "no close %d; faults %d",
            conti.fini[Fine::chiusa], conti.fini[Fine::pozzo_di_una_carta], conti.fini[Fine::mano_piena],
            conti.fini[Fine::mano_vuota], conti.fini[Fine::senza_fine], conti.fini[Fine::troppo_lunga],
            conti.fini[Fine::altro]);
        QVERIFY2(conti.guasti.empty(), conti.guasti.empty() ? "" : conti.guasti.front().c_str());
        QVERIFY(!basic::programma_terminato());
        if (turni >= 400)
            QVERIFY2(conti.fini[Fine::chiusa] * 2 > conti.mani, "the computer closed fewer than half of the hands");
    }
};

QTEST_MAIN(TestComputerPartita)
#include "tst_computer_partita.moc"
