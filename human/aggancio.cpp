// SPDX-License-Identifier: GPL-3.0-or-later
#include "human/umano.h"

namespace umano {

long carte_in_mano()
{
    long n = 0;
    for (long i = 1; i <= 14; ++i)
        if (mano_umano(i) != 0) ++n;
    return n;
}

Aggancio dove_si_aggancia(Byte c, const Tavolo& tavolo, Long k, Long n)
{
    // The first card decides: the same number makes a set, anything else is
    // tried as a straight.
    if (numero_carta(c) == numero_carta(tavolo(k, 1))) {
        for (long i = 1; i <= n; ++i) {
            if (seme_carta(c) == seme_carta(tavolo(k, i)) || numero_carta(c) != numero_carta(tavolo(k, i)))
                return Aggancio::nessuno;
        }
        return Aggancio::in_fondo;
    }
    std::string numeri;
    for (long i = 1; i <= n; ++i) {
        if (seme_carta(c) != seme_carta(tavolo(k, i))) return Aggancio::nessuno;
        numeri += basic::Str(numero_carta(tavolo(k, i)));
    }
    const std::string numero = basic::Str(numero_carta(c));
    const std::string unita = unisci_sequenza(numeri, numero);
    if (unita == numeri) return Aggancio::nessuno;
    if (unita == numero + numeri) return Aggancio::davanti;
    return Aggancio::in_fondo;
}

}  // namespace umano
