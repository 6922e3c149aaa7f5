// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a composed song as a Standard MIDI File (format 1): a conductor
// track with the tempo map and metre, then one track per part.
#pragma once

#include "composizione.h"

#include <string>

namespace scrittura_midi {

// False with `errore` set when the file cannot be written.
bool scrivi(const composizione::Brano& brano, const std::string& percorso, std::string& errore);

}  // namespace scrittura_midi
