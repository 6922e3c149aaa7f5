// SPDX-License-Identifier: GPL-3.0-or-later
// frmJolly, "Play a jolly": the small modal dialog that asks which card a
// plain jolly laid or attached by the human stands for. A suit button and a
// number from the list choose the card, its face shows as a preview, and a
// press on the preview confirms it: the main window's Tag then holds the
// card's pack-1 code as text (" 7", " 40").
#pragma once

#include "platform/basic.h"

#include <QAbstractButton>
#include <QDialog>
#include <QImage>
#include <QRectF>

class QButtonGroup;
class QComboBox;
class QLabel;

// A suit button in picture style: the suit's bitmap, centred and cut to the
// button, in a frame that is raised, or sunken while the suit is chosen.
class PulsanteSeme : public QAbstractButton {
    Q_OBJECT
public:
    // `scala`: how much larger than designed the dialog opens.
    PulsanteSeme(int seme, QWidget* parent, double scala = 1);
    // The 24 x 22 bitmap of suit 1-4 for a screen of `rapporto` device pixels
    // per point, from the program's resources or, when they lack it, painted
    // on the spot.
    static QImage figura_seme(int seme, qreal rapporto = 1);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    QImage figura_;
};

class FrmJolly : public QDialog {
    Q_OBJECT
public:
    explicit FrmJolly(QWidget* parent = nullptr);

    QLabel* Label1 = nullptr;
    PulsanteSeme* Option1 = nullptr;  // hearts
    PulsanteSeme* Option2 = nullptr;  // diamonds
    PulsanteSeme* Option3 = nullptr;  // clubs
    PulsanteSeme* Option4 = nullptr;  // spades
    QComboBox* Combo1 = nullptr;

    // The card chosen, 1 to 52 (pack 1).
    basic::Byte carta_jolly;

    void Form_Load();
    void Form_Activate();
    void Form_MouseDown(int Button, int Shift, float X, float Y);
    void Combo1_Click();
    void Option1_Click();
    void Option2_Click();
    void Option3_Click();
    void Option4_Click();
    void mostra_jolly();

    // Where the preview is painted, in the dialog's pixels.
    QRectF posto_anteprima() const;
    // How much larger than designed the dialog opens: as much as the table's
    // letters are larger than on a table of 1024 x 768.
    double scala() const { return scala_; }

public slots:
    void reject() override;

protected:
    void showEvent(QShowEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void paintEvent(QPaintEvent*) override;

private:
    void conferma();
    // A designed length in the dialog's pixels.
    int px(double designato) const { return int(designato * scala_ + 0.5); }
    QSize misura_esterna() const;
    double scala_ = 1;
    QButtonGroup* gruppo_semi_ = nullptr;
    QRectF faccia_;  // the face last shown, a cell of the card sheet; empty before
};
