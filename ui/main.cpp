// SPDX-License-Identifier: GPL-3.0-or-later
// Tavolata: Italian rummy, one player against the computer.
#include "platform/memoria.h"
#include "ui/frmSplash.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "versione.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

namespace {
// The pictures, sounds and songs sit beside the program where it was built;
// installed, the program is in <prefix>/games and they are in
// <prefix>/share/games/tavolata. Found in neither place, the folder stays the
// program's own and the missing picture is reported as it always is.
void trova_cartella_media()
{
    const QDir programma(QCoreApplication::applicationDirPath());
    if (QFileInfo(programma.filePath(QStringLiteral("totale.bmp"))).isFile()) return;
    const QString installata = QDir::cleanPath(programma.filePath(QStringLiteral("../share/games/tavolata")));
    if (QFileInfo(installata + QStringLiteral("/totale.bmp")).isFile()) imposta_cartella_programma(installata);
}
// On a Wayland desktop the window is drawn into shared memory, as the whole
// table is drawn by the processor. Qt 6 draws a window's own frame there only
// through its GL buffers, and asking for them maps Mesa and its compiler,
// some 45 MB, for a title bar. Desktops that frame their windows themselves
// (KDE, wlroots) still do; a player who wants Qt's frame can ask for it.
void finestre_senza_gl()
{
    if (!qEnvironmentVariableIsSet("QT_WAYLAND_DISABLE_WINDOWDECORATION") &&
        !qEnvironmentVariableIsSet("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION"))
        qputenv("QT_WAYLAND_DISABLE_WINDOWDECORATION", "1");
}
}  // namespace

int main(int argc, char** argv)
{
    piattaforma::memoria_parca();
    finestre_senza_gl();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavolata"));
    QApplication::setApplicationVersion(QStringLiteral(TAVOLATA_VERSIONE));
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tavolata.Tavolata"));
    QApplication::setQuitOnLastWindowClosed(false);
    trova_cartella_media();
    carica_risorse();
    sostituisci_caratteri();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/risorse/tavolata.png")));
    FrmSplash splash;
    splash.show();
    return app.exec();
}
