// SPDX-License-Identifier: GPL-3.0-or-later
// The tempo map of a Standard MIDI File: enough to turn a song's milliseconds
// into its ticks and back, to know how long it lasts, and to tell a song from
// a file that is not one.
#pragma once

#include <QByteArray>

#include <optional>
#include <utility>
#include <vector>

struct MappaTempi {
    long divisione = 96;  // ticks per quarter note
    double tick_al_secondo_smpte = 0;  // > 0 for files timed in frames
    std::vector<std::pair<long, long>> cambi{{0, 500000}};  // tick, microseconds per quarter
    long ultimo_tick = 0;

    double ms_del_tick(long tick) const;
    long tick_del_ms(double ms) const;
};

// Empty when the data do not start as a Standard MIDI File or hold no track.
std::optional<MappaTempi> leggi_mappa_tempi(const QByteArray& dati);
