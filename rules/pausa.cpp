// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where time passes inside the game: a wait on the window's
// timer during which the window goes on handling its events (presses, menu
// commands, repaints, the end of a song).
//
// A command handled during a wait may deal a new hand ("New game", a click on
// the score sheet). Whatever was waiting then belongs to a hand that is gone:
// the computer's turn, an older deal, a move of the player, the end of a hand.
// The wait does not return into it: it unwinds it, and the handler that
// started it ends quietly, leaving the game exactly as the new deal made it.
#include "rules/mdTavolata.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

double fattore_pause = 1.0;
void (*ascolta_pausa)(double t) = nullptr;
long mani_distribuite = 0;

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

// After events were handled: "Quit" ends everything; a hand dealt meanwhile
// ends whatever waited in the old one.
void dopo_gli_eventi(long mano)
{
    basic::verifica_fine();
    if (mano != mani_distribuite) throw basic::AttesaSuperata{};
}
}  // namespace

void Timer1_Timer() { attesa_timer = true; }

void pausa(double t)
{
    const long mano = mani_distribuite;
    if (ascolta_pausa) ascolta_pausa(t);
    attesa_timer = false;
    const long ms = basic::Int(t * 600.0 * fattore_pause);
    Timer1().setInterval(ms > 0 ? int(ms) : 0);
    Timer1().start();
    // A wait started from an event handled here shares the timer and the flag:
    // its tick ends this wait too, and it leaves the timer stopped.
    while (!attesa_timer && mano == mani_distribuite) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        basic::verifica_fine();
    }
    Timer1().stop();
    dopo_gli_eventi(mano);
}

void DoEvents()
{
    const long mano = mani_distribuite;
    QCoreApplication::processEvents();
    dopo_gli_eventi(mano);
}
