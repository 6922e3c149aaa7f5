// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/testi.h"

#include "versione.h"

#include <QFile>

namespace testi {

namespace {
QByteArray leggi(const QString& nome)
{
    QFile f(nome);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
// A panel breaks lines on LF; the CR of each pair has nothing to show.
QString per_pannello(const QByteArray& testo)
{
    return QString::fromUtf8(testo).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}
}  // namespace

QByteArray file_regole_inglese() { return leggi(QStringLiteral(":/risorse/regole_en.txt")); }
QByteArray file_regole_italiano() { return leggi(QStringLiteral(":/risorse/regole_it.txt")); }
QString regole_inglese() { return per_pannello(file_regole_inglese()); }
QString regole_italiano() { return per_pannello(file_regole_italiano()); }

QString informazioni()
{
    return QStringLiteral("Tavolata - Italian rummy for two\n"
                          "Tavolata ver " TAVOLATA_VERSIONE "\n"
                          "--------------------\n"
                          "You against the computer:\n"
                          "two packs, four jollies,\n"
                          "40 points to open,\n"
                          "101 penalty points end the game.\n"
                          "The rules are in the Rules menu.");
}

}  // namespace testi
