// SPDX-License-Identifier: GPL-3.0-or-later
// The ten songs of the music menu, each named after its menu caption.
#pragma once

#include "composizione.h"

#include <vector>

namespace canzoni {

std::vector<composizione::Ricetta> tutte();

}  // namespace canzoni
