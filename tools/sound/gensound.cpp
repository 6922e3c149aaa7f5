// SPDX-License-Identifier: GPL-3.0-or-later
// gensound MEDIA_FOLDER
// Writes the card sound, the error sound and the ten songs of the music menu
// (MEDIA_FOLDER/carta.wav, errore.wav, music/<caption>.mid) and prints what
// each song holds.
#include "canzoni.h"
#include "composizione.h"
#include "onde.h"
#include "scrittura_midi.h"

#include <cstdio>
#include <filesystem>
#include <string>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s MEDIA_FOLDER\n", argv[0]);
        return 2;
    }
    const std::filesystem::path media = argv[1];
    std::error_code ec;
    std::filesystem::create_directories(media / "music", ec);
    std::string errore;

    if (!onde::scrivi_wav((media / "carta.wav").string(), onde::suono_carta(), errore) ||
        !onde::scrivi_wav((media / "errore.wav").string(), onde::suono_errore(), errore)) {
        std::fprintf(stderr, "%s\n", errore.c_str());
        return 1;
    }

    bool tutto_bene = true;
    for (const composizione::Ricetta& r : canzoni::tutte()) {
        const composizione::Brano b = composizione::componi(r);
        const std::string file = (media / "music" / (r.titolo + ".mid")).string();
        if (!scrittura_midi::scrivi(b, file, errore)) {
            std::fprintf(stderr, "%s\n", errore.c_str());
            return 1;
        }
        const double secondi = b.secondi();
        std::printf("%-9s %5.1f s  %3ld bars of %d  %.0f bpm\n", r.titolo.c_str(), secondi,
                    b.fine / (composizione::tpq * b.battiti), b.battiti, r.bpm);
        for (const composizione::Traccia& t : b.tracce)
            std::printf("    channel %2d  program %3d  %5zu notes  %s\n", t.canale + 1, t.programma, t.note.size(),
                        t.nome.c_str());
        if (secondi < 60 || secondi > 180) {
            std::fprintf(stderr, "%s lasts %.0f s: a song must last from one to three minutes\n", r.titolo.c_str(),
                         secondi);
            tutto_bene = false;
        }
    }
    return tutto_bene ? 0 : 1;
}
