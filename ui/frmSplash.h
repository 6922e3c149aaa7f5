// SPDX-License-Identifier: GPL-3.0-or-later
// frmSplash: the start-up window. It shows a picture and three caption lines
// while it creates the main window, loads the pictures and deals the first
// hand; then it closes.
#pragma once

#include "platform/basic.h"

#include <QLabel>
#include <QWidget>

class FrmSplash : public QWidget {
    Q_OBJECT
public:
    FrmSplash();

    QLabel* Picture1 = nullptr;
    basic::Tabella<QLabel*, 0, 2> Label1;

    void Form_Load();
    void Form_Activate();

protected:
    void showEvent(QShowEvent*) override;

private:
    bool attivato_ = false;
};
