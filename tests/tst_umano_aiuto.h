// What the tests of the human's turn share: a hand in play on the real
// window, presses on grid cells, the red mark read back from the table, and
// the jolly dialog answered as a player answers it.
#pragma once

#include "aiuto/posizione.h"
#include "human/frmJolly.h"
#include "ui/canvas.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QTimer>
#include <QtTest>

#include <string>

namespace umano_prova {

// A computer's hand that holds nothing to lay: its turn after a discard only
// draws and discards.
inline const char* const MANO_COMPUTER_INNOCUA = "2H 5H 9H KH 3D 7D JD 4C 8C QC 6S 10S AS";

// The window with a hand in play: the deck in order (mazzo(i) = i) with the
// stock at 27 showing the back of card 28, the discard pile `pila` with its
// top card shown, the human's hand drawn, the computer's hand harmless, and
// the human to play in phase `codice_fase`.
inline FrmTV& partita(const std::string& mano, const std::string& codice_fase = "000",
                      const std::string& pila = "5C")
{
    FrmTV& f = prova::finestra();
    for (long i = 1; i <= 108; ++i) mazzo(i) = i;
    tallone = 27;
    prova::pozzo_da(pila);
    prova::mano_umano_da(mano);
    prova::mano_computer_da(MANO_COMPUTER_INNOCUA);
    disegna_mano(f.tela, mano_umano, false, 0);
    disegna_mano(f.tela, mano_computer, true, 0);
    if (n_pozzo > 0) disegna_carta(f.tela, 13, 21, Byte(long(pozzo(n_pozzo))), false, 0);
    disegna_carta(f.tela, 14, 21, mazzo(28), true, 0);
    fase = codice_fase;
    turno_umano = true;
    f.gioco_avviato = true;
    prova::azzera_suoni();
    return f;
}

// A combination put on the table and drawn there; the sounds of its cards
// are not counted.
inline void sul_tavolo_umano(int k, const std::string& carte)
{
    prova::combinazione_umano(k, carte);
    disegna_combinazione(frmTV().tela, Byte(k), true);
    prova::azzera_suoni();
}
inline void sul_tavolo_computer(int k, const std::string& carte)
{
    prova::combinazione_computer(k, carte);
    disegna_combinazione(frmTV().tela, Byte(k), false);
    prova::azzera_suoni();
}

// A press with the left button in the middle of a grid cell.
inline void premi(int colonna, int riga, int pulsante = 1)
{
    frmTV().Form_MouseDown(pulsante, 0, float(prova::x_colonna(colonna)), float(prova::y_riga(riga)));
}
// The same press as a real mouse click on the table, which goes through the
// window's own handler (a fatal error there ends the program).
inline void clic(int colonna, int riga)
{
    FrmTV& f = frmTV();
    const QPoint p(int(prova::x_colonna(colonna) * f.tavolo->width() / 1024.0),
                   int(prova::y_riga(riga) * f.tavolo->height() / 768.0));
    QTest::mouseClick(f.tavolo, Qt::LeftButton, {}, p);
}
inline void premi_mano(int slot) { premi(slot, 43); }
inline void premi_pozzo() { premi(13, 23); }
inline void premi_tallone() { premi(14, 23); }

// The red mark seen at the top-left corner of hand slot k.
inline bool segnata(int k) { return frmTV().tela.Point(10 + 72 * (k - 1), 658) == 255; }
inline int slot_segnati()
{
    int n = 0;
    for (int k = 1; k <= 14; ++k) n += segnata(k);
    return n;
}

// Every hand cell shows its card (or the table where the slot is empty);
// the cell of slot `segnato`, which carries the mark, is left out.
inline bool mano_disegnata(int segnato = 0)
{
    for (int i = 1; i <= 14; ++i)
        if (i != segnato && !prova::cella_mostra(i, 41, long(mano_umano(i)))) return false;
    return true;
}

// Combination k drawn as its table holds it: the visible strip of every card,
// the last card whole.
inline bool combinazione_disegnata(int k, bool del_umano)
{
    for (int j = 1; j <= 13; ++j) {
        const long carta = del_umano ? long(tavolo_umano(k, j)) : long(tavolo_computer(k, j));
        if (carta == 0) break;
        const long successiva = j < 13 ? (del_umano ? long(tavolo_umano(k, j + 1)) : long(tavolo_computer(k, j + 1))) : 0;
        const int riga = del_umano ? 24 + j - 1 : 19 - j;
        if (!prova::cella_mostra(k, riga, int(carta), false, successiva ? 1 : 6, !del_umano)) return false;
    }
    return true;
}

// The jolly dialog answered by a player: suit button `seme` (1-4; 0 leaves
// hearts), `giu` presses of the Down key on the number list (0 leaves "Ace"),
// then a press on the middle of the preview. Schedule it before the call that
// shows the dialog; `mostrato` tells afterwards whether a dialog came up.
struct RispostaJolly {
    bool mostrato = false;
};
inline void rispondi_jolly(int seme, int giu, RispostaJolly* esito = nullptr)
{
    QTimer::singleShot(0, [=] {
        QPointer<FrmJolly> d = qobject_cast<FrmJolly*>(QApplication::activeModalWidget());
        if (!d) return;
        if (esito) esito->mostrato = true;
        if (seme) QTest::mouseClick(d->findChild<QAbstractButton*>(QStringLiteral("Option%1").arg(seme)), Qt::LeftButton);
        for (int i = 0; i < giu; ++i) QTest::keyClick(d->Combo1, Qt::Key_Down);
        QTest::mouseClick(d, Qt::LeftButton, {}, d->posto_anteprima().center().toPoint());
        // Never leave a test waiting on a dialog that stayed open.
        if (d && d->isVisible()) d->done(QDialog::Rejected);
    });
}

}  // namespace umano_prova
