// SPDX-License-Identifier: GPL-3.0-or-later
// frmTV: the main window. Its client area is the card table (a persistent
// canvas of 1024 x 768 logical units); the menu bar holds every command and
// setting. The game's methods keep the names of the design and are defined in
// the folder of their subsystem: the deal and the score in rules/, the
// human's moves in human/, the music handlers in ui/musica.cpp.
#pragma once

#include "platform/basic.h"
#include "rules/carte.h"
#include "ui/canvas.h"

#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QRectF>

#include <map>
#include <string>

class QAction;
class QMenu;
class MMControl;

using basic::Byte;
using basic::Integer;
using basic::Long;

// The table surface of the window: shows the canvas and hands presses and
// moves to frmTV in logical units.
class TavoloWidget : public QWidget {
    Q_OBJECT
public:
    explicit TavoloWidget(QWidget* parent);
    Canvas* tela = nullptr;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void resizeEvent(QResizeEvent*) override;

signals:
    void premuto(int pulsante, int maiuscole, float x, float y);
    void mosso(int pulsante, int maiuscole, float x, float y);
    void ridimensionato();

private:
    // Device rows of the table painted at a time, and the picture they pass
    // through: a quarter of a megabyte on a 4K screen.
    static constexpr int righe_di_banda = 16;
    QImage banda_;
};

// A picture box: a child window with a persistent picture of its own whose
// inside is addressed in its own logical units. A click anywhere on it counts.
class PictureBox : public QWidget {
    Q_OBJECT
public:
    explicit PictureBox(QWidget* parent);
    QImage immagine;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;

signals:
    void Click();
};

// A label that tells when it is clicked, its caption on a plate of its own
// when it is given one.
class Etichetta : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;
    // Painted under a caption only: an empty label leaves the table bare.
    QColor lastra;

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

signals:
    void Click();
};

// A multi-line text panel that tells when it is clicked.
class PannelloTesto : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit PannelloTesto(QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* e) override;

signals:
    void Click();
};

class FrmTV : public QMainWindow {
    Q_OBJECT
public:
    FrmTV();
    ~FrmTV() override;

    // ----- controls
    TavoloWidget* tavolo = nullptr;
    Canvas tela;
    PictureBox* picture_score = nullptr;
    basic::Tabella<Etichetta*, 0, 2> lblName;
    basic::Tabella<Etichetta*, 0, 2> lblScore;
    Etichetta* Label5 = nullptr;
    PannelloTesto* Text2 = nullptr;  // the English rules
    PannelloTesto* text5 = nullptr;  // the Italian rules
    PannelloTesto* Text4 = nullptr;  // the information text
    MMControl* MMC1 = nullptr;

    QMenu* menu_game = nullptr;
    QAction* menu_newgame = nullptr;
    QAction* menu_quit = nullptr;
    QMenu* menu_rules = nullptr;
    QAction* menu_english_rules = nullptr;
    QAction* menu_regole_italiano = nullptr;
    QMenu* menu_sounds = nullptr;
    QMenu* menu_card_rustle = nullptr;
    QAction* menu_card_rustle_yes = nullptr;
    QAction* menu_card_rustle_no = nullptr;
    QMenu* menu_music = nullptr;
    QAction* nomusic = nullptr;
    QAction* all = nullptr;
    basic::Tabella<QAction*, 1, 10> canzoni;
    static constexpr int numero_canzoni = 10;
    QAction* menu_about = nullptr;

    // The window's free text property: the jolly dialog leaves its answer here.
    std::string Tag;

    // ----- window-level values
    float larghezza_precedente = 0;
    float altezza_precedente = 0;
    Integer canzone_corrente = 0;
    bool gioco_avviato = false;
    basic::Tabella<Integer, 0, CARTE> disponibili;

    // ----- the window (ui/frmTV.cpp)
    void Form_Load();
    void Form_Resize();
    void Form_Unload();
    void menu_newgame_Click();
    void menu_quit_Click();
    void menu_card_rustle_yes_Click();
    void menu_card_rustle_no_Click();
    void menu_english_rules_Click();
    void menu_regole_italiano_Click();
    void menu_about_Click();
    void Text2_Click();
    void text5_Click();
    void text4_Click();
    // MousePointer: 0 default, 1 arrow, 10 up arrow, 11 hourglass, 12 no
    // drop, 13 arrow and hourglass.
    int MousePointer() const { return puntatore_; }
    void setMousePointer(int forma);
    // Places a child control at a rectangle of the table in logical units; it
    // keeps that place whatever the size of the window.
    void posiziona(QWidget* controllo, const QRectF& logico);
    QRectF posizione(QWidget* controllo) const;
    // Gives a control of the table its letters: `base` on a table of 1024 x
    // 768 screen pixels or less, larger in proportion on a larger table.
    void imposta_carattere(QWidget* controllo, const QFont& base);
    // How much larger the letters of the table are than on a 1024 x 768
    // table: its smaller stretch, never below 1.
    double scala_testi() const;
    // Height of the window's frame in twips: what Form_Resize narrows.
    void imposta_dpi_prova(double twip_per_pixel) { twip_per_pixel_ = twip_per_pixel; }

    // ----- the music (ui/musica.cpp)
    void canzoni_Click(int index);
    void all_Click();
    void nomusic_Click();
    void MMC1_Done(int NotifyCode);

    // ----- the deal (rules/mazzo.cpp)
    void mescola();
    void gioco_imposta();
    void Rimescola();

    // ----- the end of a hand (rules/punteggio.cpp)
    void MostraPunteggio(Byte chi);
    void picture_score_Click();
    void Label5_Click() { picture_score_Click(); }

    // ----- the human's turn (human/)
    void Form_MouseDown(int Button, int Shift, float X, float Y);
    void Form_MouseMove(int Button, int Shift, float X, float Y);
    void gioca_proposta_pescare_tallone();
    void gioca_proposta_pescare_pozzo();
    void gioca_proposta_selezionare(Long x);
    void sposta_carta(Long a, Long b);
    void giocata(float X);
    void gioca_attacca(Long X);
    void gioca_proposta_scartare();

protected:
    void closeEvent(QCloseEvent*) override;
    void changeEvent(QEvent*) override;
    void showEvent(QShowEvent*) override;

private:
    void crea_menu();
    void crea_controlli();
    void applica_posizioni();
    void applica_caratteri();
    void Form_Resize_protetto();
    int puntatore_ = 0;
    double twip_per_pixel_ = 0;  // 0: from the screen
    std::map<QWidget*, QRectF> posizioni_;
    std::map<QWidget*, QFont> caratteri_;
    bool segue_lo_schermo_ = false;
};

// The one main window of the program; run-time error 91 when there is none.
FrmTV& frmTV();
bool esiste_frmTV();
// Registers the pictures and texts built into the game (idempotent).
void carica_risorse();
// The letters the panels and labels ask for (MS Sans Serif, Times New Roman)
// drawn with their free look-alikes, for the whole process: main() sets them
// once, and so does whatever builds the window without it.
void sostituisci_caratteri();
