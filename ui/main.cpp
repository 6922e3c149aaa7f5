// Tavolata: Italian rummy, one player against the computer.
#include "ui/frmSplash.h"
#include "ui/frmTV.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavolata"));
    QApplication::setApplicationVersion(QStringLiteral("2.1.2"));
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tavolata.Tavolata"));
    QApplication::setQuitOnLastWindowClosed(false);
    carica_risorse();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/risorse/tavolata.png")));
    FrmSplash splash;
    splash.show();
    return app.exec();
}
