// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frmSplash.h"

#include "platform/dialoghi.h"
#include "ui/alta_risoluzione.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"
#include "versione.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include <malloc.h>

FrmSplash::FrmSplash() : QWidget(nullptr, Qt::SplashScreen)
{
    setWindowTitle(QStringLiteral("Tavolata"));
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::white);
    setPalette(pal);
    QFont f(QStringLiteral("Times New Roman"), 14);
    f.setBold(true);
    setFont(f);

    Picture1 = new QLabel(this);
    // On a screen of more than one pixel per point the finer picture shows,
    // at the same size.
    QPixmap figura =
        QPixmap::fromImage(alta_risoluzione::per_schermo(QStringLiteral(":/risorse/splash.png"), devicePixelRatioF()));
    if (figura.isNull()) {
        figura = QPixmap(420, 240);
        figura.fill(Qt::white);
    }
    Picture1->setPixmap(figura);
    const QSize lato = figura.deviceIndependentSize().toSize();
    Picture1->setGeometry(0, 0, lato.width(), lato.height());

    const char* didascalie[] = {"Version " TAVOLATA_VERSIONE, "Classic Italian Game",
                                "Italian rummy for one player and the computer"};
    for (long i = 0; i <= 2; ++i) {
        Label1(i) = new QLabel(QString::fromLatin1(didascalie[i]), this);
        Label1(i)->setStyleSheet(QStringLiteral("color: rgb(0,0,192);"));
        if (i == 2) {
            QFont piccolo = font();
            piccolo.setBold(false);
            piccolo.setPointSize(10);
            Label1(i)->setFont(piccolo);
        }
        Label1(i)->adjustSize();
    }
    // The version line keeps its designed place at the bottom left of the picture.
    Label1(0)->move(20, lato.height() + 50);
    Form_Load();
}

void FrmSplash::Form_Load()
{
    const int larghezza = Picture1->width();
    for (long i = 1; i <= 2; ++i)
        Label1(i)->move(larghezza - Label1(i)->width() - 20, Picture1->height() + 50 * int(i));
    setFixedSize(larghezza, Label1(2)->y() + Label1(2)->height() + 50);
    if (QScreen* s = QGuiApplication::primaryScreen()) move(s->availableGeometry().center() - rect().center());
}

void FrmSplash::showEvent(QShowEvent* e)
{
    QWidget::showEvent(e);
    if (attivato_) return;
    attivato_ = true;
    QTimer::singleShot(0, this, [this] { basic::protetto([this] { Form_Activate(); }); });
}

void FrmSplash::Form_Activate()
{
    QApplication::processEvents();

    auto* principale = new FrmTV();
    principale->Form_Load();
    if (carica_immagini() != 0)
        piattaforma::MsgBox("Unable to initialize graphics.", piattaforma::vbOKOnly, piattaforma::vbCritical);
    close();
    // The splash is not seen again: its picture and its window's buffer go.
    Picture1->clear();
    destroy();
    principale->showMaximized();
    QApplication::processEvents();
    principale->gioco_imposta();
    // What start-up built and let go (the splash's picture, the name box,
    // the pictures' decoding) goes back to the system.
    malloc_trim(0);
}
