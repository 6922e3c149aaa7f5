// SPDX-License-Identifier: GPL-3.0-or-later
// The run-time error of the game: its texts, the message box that ends the
// program, and the hook that lets the tests watch an ending instead.
#include "platform/basic.h"

#include <QApplication>
#include <QMessageBox>

#include <cctype>
#include <cstdlib>
#include <map>

namespace basic {

namespace {
bool hook_prova = false;
bool terminato = false;
bool in_chiusura = false;
int errore_registrato = 0;
int uscita_registrata = -1;
}  // namespace

std::string testo_errore(int numero)
{
    static const std::map<int, std::string> testi = {
        {5, "Invalid procedure call or argument"},
        {6, "Overflow"},
        {7, "Out of memory"},
        {9, "Subscript out of range"},
        {11, "Division by zero"},
        {13, "Type mismatch"},
        {51, "Internal error"},
        {52, "Bad file name or number"},
        {53, "File not found"},
        {91, "Object variable or With block variable not set"},
        {380, "Invalid property value"},
        {481, "Invalid picture"},
    };
    const auto it = testi.find(numero);
    return it != testi.end() ? it->second : "Application-defined or object-defined error";
}

ErroreRuntime::ErroreRuntime(int numero) : numero_(numero), testo_(testo_errore(numero)) {}

void errore(int numero) { throw ErroreRuntime(numero); }

long Val(const std::string& testo)
{
    std::size_t i = 0;
    while (i < testo.size() && (testo[i] == ' ' || testo[i] == '\t')) ++i;
    bool negativo = false;
    if (i < testo.size() && (testo[i] == '-' || testo[i] == '+')) negativo = testo[i++] == '-';
    long n = 0;
    while (i < testo.size() && std::isdigit(static_cast<unsigned char>(testo[i])) && n < 100000000)
        n = n * 10 + (testo[i++] - '0');
    return negativo ? -n : n;
}

void fine_programma(int codice)
{
    if (hook_prova) {
        terminato = true;
        uscita_registrata = codice;
        throw ProgrammaTerminato{};
    }
    // End stops everything at once: no window is closed, nothing is saved.
    std::_Exit(codice);
}

void errore_fatale(const ErroreRuntime& e)
{
    if (hook_prova) {
        errore_registrato = e.numero();
        fine_programma(e.numero());
    }
    in_chiusura = true;
    if (qApp) {
        QMessageBox::critical(
            nullptr, QStringLiteral("Tavolata"),
            QStringLiteral("Run-time error '%1':\n\n%2").arg(e.numero()).arg(QString::fromStdString(e.testo())));
    }
    fine_programma(e.numero() & 0xff ? e.numero() & 0xff : 1);
}

bool programma_terminato() { return terminato || in_chiusura; }

namespace prova {
void attiva(bool acceso) { hook_prova = acceso; }
bool attivo() { return hook_prova; }
int ultimo_errore_fatale() { return errore_registrato; }
int codice_di_uscita() { return uscita_registrata; }
void azzera()
{
    terminato = false;
    errore_registrato = 0;
    uscita_registrata = -1;
}
}  // namespace prova

}  // namespace basic
