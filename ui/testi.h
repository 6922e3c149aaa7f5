// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of the three panels of the main window.
#pragma once

#include <QString>

namespace testi {
// The rules as shipped, exactly: line breaks are CR LF in the files.
QString regole_inglese();
QString regole_italiano();
QString informazioni();
// The same texts as they stand in the resource files.
QByteArray file_regole_inglese();
QByteArray file_regole_italiano();
}  // namespace testi
