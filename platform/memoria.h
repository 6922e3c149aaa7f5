// SPDX-License-Identifier: GPL-3.0-or-later
// How the program holds its memory, set before anything else starts.
#pragma once

#include <malloc.h>

namespace piattaforma {

inline void memoria_parca()
{
    // Pictures decoded and card pieces resampled are big and short-lived:
    // given pages of their own, they go back to the system when freed,
    // instead of raising the allocator's bar for good after the first one.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    // The window system's and the sound's threads allocate little and
    // seldom: they share one arena rather than each keep one of its own.
    mallopt(M_ARENA_MAX, 1);
}

}  // namespace piattaforma
