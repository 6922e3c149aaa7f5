// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where time passes inside the game: a wait on the window's
// timer during which the window goes on handling its events (presses, menu
// commands, repaints, the end of a song).
#include "rules/mdTavolata.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

double fattore_pause = 1.0;

namespace {
QTimer& Timer1()
{
    static QTimer* timer = [] {
        auto* t = new QTimer(QCoreApplication::instance());
        t->setInterval(1000);
        QObject::connect(t, &QTimer::timeout, [] { Timer1_Timer(); });
        return t;
    }();
    return *timer;
}
}  // namespace

void Timer1_Timer() { attesa_timer = true; }

void pausa(double t)
{
    attesa_timer = false;
    const long ms = basic::Int(t * 600.0 * fattore_pause);
    Timer1().setInterval(ms > 0 ? int(ms) : 0);
    Timer1().start();
    // A wait started from an event handled here shares the timer and the flag:
    // its tick ends this wait too, and it leaves the timer stopped.
    while (!attesa_timer) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        basic::verifica_fine();
    }
    Timer1().stop();
}
