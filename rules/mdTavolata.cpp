// SPDX-License-Identifier: GPL-3.0-or-later
#include "rules/mdTavolata.h"

#include "ui/frmTV.h"

using basic::Int;
using basic::Mod;

Tabella<Byte, 1, 108> mazzo;
Integer tallone;
Tabella<Integer, 1, 82> pozzo;
Integer n_pozzo;
Tabella<Integer, 1, 14> mano_umano;
Tabella<Byte, 1, 14> mano_computer;
Tabella2<Byte, 1, 13, 1, 13> tavolo_umano;
Tabella2<Byte, 1, 13, 1, 13> tavolo_computer;
Tabella<Long, 1, 2> punti;
Tabella<std::string, 1, 2> nomi;
std::string fase;
bool turno_umano = false;
bool inizia_computer = false;
Integer carta_selezionata;
Long posizione_selezionata = 0;
bool attesa_timer = false;
bool uscita = false;

Byte seme_carta(Byte c)
{
    const Integer k = Mod(long(c) - 1, 54);
    // The empty code gives k = -1, which Int(k / 13) turns into suit 0.
    return Byte(Int(double(k) / 13.0) + 1);
}

Byte numero_carta(Byte c)
{
    const Integer k = Mod(long(c) - 1, 54);
    if (k > 51) return Byte(0);
    return Byte(Mod(k, 13) + 1);
}

Byte prima_posizione_libera(bool umano)
{
    for (long i = 1; i <= 14; ++i) {
        if (umano ? mano_umano(i) == 0 : mano_computer(i) == 0) return Byte(i);
    }
    return Byte(15);
}

bool controlla_chiusura(bool computer)
{
    long i = 1;
    for (; i <= 14; ++i) {
        if ((computer ? long(mano_computer(i)) : long(mano_umano(i))) > 0) break;
    }
    if (i <= 14) return false;
    frmTV().MostraPunteggio(Byte(computer ? 1 : 2));
    return true;
}

Long valore_in_mano(Byte c)
{
    long v = numero_carta(c);
    if (v > 10) v = 10;
    if (v == 0) v = 25;
    if (v == 1) v = 11;
    return v;
}

void azzera_stato()
{
    mazzo.azzera();
    tallone = 0;
    pozzo.azzera();
    n_pozzo = 0;
    mano_umano.azzera();
    mano_computer.azzera();
    tavolo_umano.azzera();
    tavolo_computer.azzera();
    punti.azzera();
    nomi.azzera();
    fase.clear();
    turno_umano = false;
    inizia_computer = false;
    carta_selezionata = 0;
    posizione_selezionata = 0;
    attesa_timer = false;
    uscita = false;
}
