// SPDX-License-Identifier: GPL-3.0-or-later
#include "scrittura_midi.h"

#include <smf.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

namespace scrittura_midi {

namespace {

using composizione::Brano;
using composizione::Nota;
using composizione::Traccia;

struct Evento {
    long tick;
    int ordine;  // at the same tick: settings, then note-offs, then note-ons
    std::vector<unsigned char> byte;
};

std::vector<unsigned char> meta(int tipo, const std::vector<unsigned char>& dati)
{
    std::vector<unsigned char> v(dati.size() + 3);
    v[0] = 0xff;
    v[1] = static_cast<unsigned char>(tipo);
    v[2] = static_cast<unsigned char>(dati.size());
    std::copy(dati.begin(), dati.end(), v.begin() + 3);
    return v;
}

std::vector<unsigned char> testo(const std::string& s)
{
    return meta(0x03, std::vector<unsigned char>(s.begin(), s.end()));
}

// A note that sounds again before it has ended is cut short there, so that
// its note-off does not silence the new one.
std::vector<Nota> senza_sovrapposizioni(std::vector<Nota> note)
{
    std::stable_sort(note.begin(), note.end(), [](const Nota& a, const Nota& b) { return a.inizio < b.inizio; });
    std::map<int, std::size_t> ultima;
    for (std::size_t i = 0; i < note.size(); ++i) {
        const auto it = ultima.find(note[i].altezza);
        if (it != ultima.end()) {
            Nota& prima = note[it->second];
            if (prima.inizio + prima.durata >= note[i].inizio)
                prima.durata = std::max(10L, note[i].inizio - prima.inizio - 1);
        }
        ultima[note[i].altezza] = i;
    }
    return note;
}

bool aggiungi_traccia(smf_t* smf, std::vector<Evento> eventi, long fine)
{
    std::stable_sort(eventi.begin(), eventi.end(), [](const Evento& a, const Evento& b) {
        return a.tick != b.tick ? a.tick < b.tick : a.ordine < b.ordine;
    });
    smf_track_t* traccia = smf_track_new();
    if (!traccia) return false;
    smf_add_track(smf, traccia);
    long ultimo = 0;
    for (Evento& e : eventi) {
        smf_event_t* ev = smf_event_new_from_pointer(e.byte.data(), int(e.byte.size()));
        if (!ev) return false;
        smf_track_add_event_pulses(traccia, ev, int(std::max(0L, e.tick)));
        ultimo = std::max(ultimo, e.tick);
    }
    return smf_track_add_eot_pulses(traccia, int(std::max(ultimo, fine))) == 0;
}

}  // namespace

bool scrivi(const Brano& brano, const std::string& percorso, std::string& errore)
{
    std::unique_ptr<smf_t, void (*)(smf_t*)> smf(smf_new(), smf_delete);
    if (!smf || smf_set_ppqn(smf.get(), int(composizione::tpq)) != 0) {
        errore = "cannot create the MIDI file";
        return false;
    }

    std::vector<Evento> direttore;
    direttore.push_back({0, 0, testo(brano.titolo)});
    direttore.push_back({0, 0, meta(0x58, {static_cast<unsigned char>(brano.battiti), 2, 24, 8})});
    for (const auto& t : brano.tempi) {
        const long us = std::lround(60000000.0 / t.bpm);
        direttore.push_back({t.tick, 1,
                             meta(0x51, {static_cast<unsigned char>(us >> 16), static_cast<unsigned char>(us >> 8),
                                         static_cast<unsigned char>(us)})});
    }
    bool ok = aggiungi_traccia(smf.get(), direttore, brano.fine);

    for (const Traccia& t : brano.tracce) {
        const auto c = static_cast<unsigned char>(t.canale);
        std::vector<Evento> eventi;
        eventi.push_back({0, 0, testo(t.nome)});
        eventi.push_back({0, 0, {static_cast<unsigned char>(0xc0 | c), static_cast<unsigned char>(t.programma)}});
        for (auto [controllo, valore] : {std::pair{7, t.volume}, {10, t.pan}, {91, t.riverbero}, {93, t.coro}})
            eventi.push_back({0,
                              0,
                              {static_cast<unsigned char>(0xb0 | c), static_cast<unsigned char>(controllo),
                               static_cast<unsigned char>(std::clamp(valore, 0, 127))}});
        for (const Nota& n : senza_sovrapposizioni(t.note)) {
            const auto altezza = static_cast<unsigned char>(n.altezza);
            eventi.push_back(
                {n.inizio, 2, {static_cast<unsigned char>(0x90 | c), altezza, static_cast<unsigned char>(n.velocita)}});
            eventi.push_back(
                {n.inizio + std::max(1L, n.durata), 1, {static_cast<unsigned char>(0x80 | c), altezza, 0}});
        }
        ok = ok && aggiungi_traccia(smf.get(), eventi, brano.fine);
    }
    if (!ok) {
        errore = "cannot build the MIDI tracks";
        return false;
    }
    if (smf_save(smf.get(), percorso.c_str()) != 0) {
        errore = "cannot write " + percorso;
        return false;
    }
    return true;
}

}  // namespace scrittura_midi
