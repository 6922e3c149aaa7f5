// SPDX-License-Identifier: GPL-3.0-or-later
#include "rules/mdTavolata.h"

#include "ui/frmTV.h"

Tabella<Byte, 1, CARTE> mazzo;
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
