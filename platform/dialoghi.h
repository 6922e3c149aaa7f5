// SPDX-License-Identifier: GPL-3.0-or-later
// The two standard boxes of the classic toolkit: the input box and the
// message box. Tests script the answers and read back what was asked.
#pragma once

#include <QRect>

#include <string>
#include <vector>

namespace piattaforma {

enum Pulsanti { vbOKOnly = 0, vbYesNo = 4 };
enum Icona { vbNessuna = 0, vbCritical = 16, vbQuestion = 32 };
enum Risposta { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

// Modal input box; Cancel gives the empty string.
std::string InputBox(const std::string& prompt, const std::string& titolo, const std::string& predefinito);

// Modal message box with the given buttons and icon; an empty title shows the
// program's name, as the classic toolkit does. Given `in_vista` (global
// pixels), the box opens beside that rectangle, below it where the screen has
// room, instead of over the middle of the window.
int MsgBox(const std::string& testo, int pulsanti, int icona, const std::string& titolo = "",
           const QRect& in_vista = QRect());

// The boxes open with letters `scala` times the desktop's, in proportion to
// the window they are asked over (1 by default).
void imposta_scala_dialoghi(double scala);

namespace prova {
// With scripted answers queued, the boxes are not shown: each call takes the
// next answer (for an input box, the text; for a message box, the Risposta).
void rispondi_input(const std::string& testo);
void rispondi_messaggio(int risposta);
// What each box asked, in order: "InputBox|prompt|title|default" or
// "MsgBox|text|buttons|icon|title". Kept only while the test hook is on.
const std::vector<std::string>& richieste();
void azzera();
// True while any scripted answer is queued or scripting is forced on; when
// on and the queue is empty, an input box answers its default and a message
// box answers Yes/OK.
void automatico(bool acceso);
}  // namespace prova

}  // namespace piattaforma
