// SPDX-License-Identifier: GPL-3.0-or-later
// The game's two short sounds, synthesised: the card laid on the felt and the
// refusal of a move. 16-bit PCM, 44.1 kHz, mono.
#pragma once

#include <string>
#include <vector>

namespace onde {

constexpr int frequenza = 44100;

std::vector<float> suono_carta();
std::vector<float> suono_errore();

// False with `errore` set when the file cannot be written.
bool scrivi_wav(const std::string& percorso, const std::vector<float>& campioni, std::string& errore);

}  // namespace onde
