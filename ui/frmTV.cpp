// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frmTV.h"

#include "platform/dialoghi.h"
#include "platform/mmc.h"
#include "rules/mdTavolata.h"
#include "ui/foglio_punti.h"
#include "ui/mdGraphics.h"
#include "ui/testi.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QWindow>

namespace {
FrmTV* finestra_principale = nullptr;

QColor colore(int r, int g, int b) { return QColor(r, g, b); }

// The classic toolkit's mouse buttons and shift keys as numbers.
int pulsante_classico(Qt::MouseButton b)
{
    switch (b) {
    case Qt::LeftButton: return 1;
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 0;
    }
}
int maiuscole_classiche(Qt::KeyboardModifiers m)
{
    return (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) | (m & Qt::AltModifier ? 4 : 0);
}

QFont carattere(const char* famiglia, int punti, bool grassetto = false, bool sottolineato = false)
{
    QFont f(QString::fromLatin1(famiglia), punti);
    f.setBold(grassetto);
    f.setUnderline(sottolineato);
    return f;
}
}  // namespace

// The pictures and texts built into the game live in the game's library,
// which the linker would otherwise leave out of the program.
void carica_risorse() { Q_INIT_RESOURCE(risorse); }

void sostituisci_caratteri()
{
    QFont::insertSubstitution(QStringLiteral("MS Sans Serif"), QStringLiteral("Liberation Sans"));
    QFont::insertSubstitution(QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"));
}

FrmTV& frmTV()
{
    if (!finestra_principale) basic::errore(91);
    return *finestra_principale;
}

bool esiste_frmTV() { return finestra_principale != nullptr; }

// ------------------------------------------------------------------ controls

TavoloWidget::TavoloWidget(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void TavoloWidget::paintEvent(QPaintEvent* e)
{
    if (!tela) return;
    QPainter p(this);
    // The table is painted from its drawing calls straight into the window's
    // own buffer, a band of rows at a time through one small picture.
    const double rapporto = double(tela->larghezza_px()) / std::max(1, width());
    for (const QRect& r : e->region()) {
        const QRectF logico(r);
        const QRectF fisico(r.x() * rapporto, r.y() * rapporto, r.width() * rapporto, r.height() * rapporto);
        const QRect pixel = fisico.toAlignedRect();
        const int righe = std::max(1, int(righe_di_banda / std::max(1.0, rapporto)));

        for (int y = r.top(); y <= r.bottom(); y += righe) {
            const int alte = std::min(righe, r.bottom() + 1 - y);
            const QRectF parte(logico.x(), y, logico.width(), alte);
            const QRectF sorgente(fisico.x(), y * rapporto, fisico.width(), alte * rapporto);
            const QRect da = sorgente.toAlignedRect().intersected(pixel);
            if (da.isEmpty()) continue;
            if (banda_.width() < da.width() || banda_.height() < da.height())
                banda_ = QImage(std::max(banda_.width(), da.width()), std::max(banda_.height(), da.height()),
                                QImage::Format_RGB32);
            QImage vista(banda_.bits(), da.width(), da.height(), banda_.bytesPerLine(), QImage::Format_RGB32);
            tela->dipingi(vista, da.topLeft());
            p.drawImage(parte, vista, sorgente.translated(-da.topLeft()));
        }
    }
}

void TavoloWidget::mousePressEvent(QMouseEvent* e)
{
    const QPointF p = e->position();
    emit premuto(pulsante_classico(e->button()), maiuscole_classiche(e->modifiers()),
                 float(p.x() * Canvas::larghezza_logica / std::max(1, width())),
                 float(p.y() * Canvas::altezza_logica / std::max(1, height())));
}

void TavoloWidget::mouseMoveEvent(QMouseEvent* e)
{
    const QPointF p = e->position();
    int pulsanti = 0;
    for (auto b : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        if (e->buttons() & b) pulsanti |= pulsante_classico(b);
    emit mosso(pulsanti, maiuscole_classiche(e->modifiers()),
               float(p.x() * Canvas::larghezza_logica / std::max(1, width())),
               float(p.y() * Canvas::altezza_logica / std::max(1, height())));
}

void TavoloWidget::resizeEvent(QResizeEvent*) { emit ridimensionato(); }

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

void PictureBox::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    if (immagine.isNull()) {
        p.fillRect(rect(), Qt::white);
        return;
    }
    p.drawImage(QRectF(rect()), immagine);
}

void PictureBox::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton) emit Click();
}

void Etichetta::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton) emit Click();
}

void Etichetta::paintEvent(QPaintEvent* e)
{
    if (lastra.isValid() && !text().isEmpty()) QPainter(this).fillRect(rect(), lastra);
    QLabel::paintEvent(e);
}

PannelloTesto::PannelloTesto(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    viewport()->setCursor(Qt::ArrowCursor);
}

void PannelloTesto::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton) emit Click();
}

// ------------------------------------------------------------------ window

FrmTV::FrmTV()
{
    finestra_principale = this;
    carica_risorse();
    setWindowTitle(QStringLiteral("Tavolata"));
    setWindowIcon(QIcon(QStringLiteral(":/risorse/tavolata.png")));
    crea_controlli();
    crea_menu();
}

FrmTV::~FrmTV()
{
    // The placed controls live on the table: they go while their places are
    // still known.
    delete tavolo;
    tavolo = nullptr;
    if (finestra_principale == this) finestra_principale = nullptr;
}

void FrmTV::crea_controlli()
{
    tavolo = new TavoloWidget(this);
    tavolo->tela = &tela;
    setCentralWidget(tavolo);
    // The window is green until the table is painted over it.
    tela.Cls(qRgb(0, 192, 0));
    tela.modificato = [this](const QRect& r) {
        if (!tavolo) return;
        const double s = double(tela.larghezza_px()) / std::max(1, tavolo->width());
        // Exactly the points that hold the pixels drawn: a card repaints the
        // card alone, without a sliver of felt around it to paint again.
        tavolo->update(QRectF(r.x() / s, r.y() / s, r.width() / s, r.height() / s).toAlignedRect());
    };
    connect(tavolo, &TavoloWidget::premuto, this,
            [this](int b, int s, float x, float y) { basic::protetto([&] { Form_MouseDown(b, s, x, y); }); });
    connect(tavolo, &TavoloWidget::mosso, this,
            [this](int b, int s, float x, float y) { basic::protetto([&] { Form_MouseMove(b, s, x, y); }); });
    connect(tavolo, &TavoloWidget::ridimensionato, this, [this] { basic::protetto([&] { Form_Resize(); }); });

    picture_score = new PictureBox(tavolo);
    picture_score->hide();
    connect(picture_score, &PictureBox::Click, this, [this] { basic::protetto([&] { picture_score_Click(); }); });

    foglio_punti::crea(*this);

    auto pannello = [this](const QString& testo, QColor sfondo, QFont f) {
        auto* t = new PannelloTesto(tavolo);
        t->setPlainText(testo);
        imposta_carattere(t, f);
        QPalette pal = t->palette();
        pal.setColor(QPalette::Base, sfondo);
        pal.setColor(QPalette::Text, Qt::black);
        t->setPalette(pal);
        t->hide();
        return t;
    };
    Text2 = pannello(testi::regole_inglese(), colore(255, 255, 192), carattere("MS Sans Serif", 12));
    text5 = pannello(testi::regole_italiano(), colore(255, 255, 192), carattere("MS Sans Serif", 12));
    Text4 = pannello(testi::informazioni(), colore(224, 224, 224), carattere("MS Sans Serif", 8));
    Text4->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    posiziona(Text4, QRectF(0, 0, 212, 124));
    connect(Text2, &PannelloTesto::Click, this, [this] { basic::protetto([&] { Text2_Click(); }); });
    connect(text5, &PannelloTesto::Click, this, [this] { basic::protetto([&] { text5_Click(); }); });
    connect(Text4, &PannelloTesto::Click, this, [this] { basic::protetto([&] { text4_Click(); }); });

    MMC1 = new MMControl(this);
    connect(MMC1, &MMControl::Done, this, [this](int codice) { basic::protetto([&] { MMC1_Done(codice); }); });
}

void FrmTV::crea_menu()
{
    auto comando = [this](QMenu* menu, const QString& testo, void (FrmTV::*gestore)()) {
        QAction* a = menu->addAction(testo);
        connect(a, &QAction::triggered, this, [this, gestore] { basic::protetto([&] { (this->*gestore)(); }); });
        return a;
    };
    // The handlers set the check marks themselves: the toggle the toolkit
    // makes on a click is undone before the handler runs.
    auto spunta = [this](QMenu* menu, const QString& testo, void (FrmTV::*gestore)()) {
        QAction* a = menu->addAction(testo);
        a->setCheckable(true);
        connect(a, &QAction::triggered, this, [this, a, gestore] {
            a->setChecked(!a->isChecked());
            basic::protetto([&] { (this->*gestore)(); });
        });
        return a;
    };

    menu_game = menuBar()->addMenu(QStringLiteral("&Game"));
    menu_newgame = comando(menu_game, QStringLiteral("New game"), &FrmTV::menu_newgame_Click);
    menu_quit = comando(menu_game, QStringLiteral("Quit"), &FrmTV::menu_quit_Click);

    menu_rules = menuBar()->addMenu(QStringLiteral("&Rules"));
    menu_english_rules = comando(menu_rules, QStringLiteral("English"), &FrmTV::menu_english_rules_Click);
    menu_regole_italiano = comando(menu_rules, QStringLiteral("Italiano"), &FrmTV::menu_regole_italiano_Click);

    menu_sounds = menuBar()->addMenu(QStringLiteral("&Sounds"));
    menu_card_rustle = menu_sounds->addMenu(QStringLiteral("Card rustle"));
    menu_card_rustle_yes = spunta(menu_card_rustle, QStringLiteral("Yes"), &FrmTV::menu_card_rustle_yes_Click);
    menu_card_rustle_no = spunta(menu_card_rustle, QStringLiteral("No"), &FrmTV::menu_card_rustle_no_Click);

    menu_music = menuBar()->addMenu(QStringLiteral("&Music"));
    nomusic = spunta(menu_music, QStringLiteral("no music"), &FrmTV::nomusic_Click);
    all = spunta(menu_music, QStringLiteral("sequential mode"), &FrmTV::all_Click);
    static const char* titoli[] = {"Chill1",   "Champion", "Champs",  "Easycity", "inds_01",
                                   "Humanoid", "Iepact",   "Lastday", "Brezza",   "Sevilana"};
    for (int i = 1; i <= numero_canzoni; ++i) {
        QAction* a = menu_music->addAction(QString::fromLatin1(titoli[i - 1]));
        a->setCheckable(true);
        connect(a, &QAction::triggered, this, [this, a, i] {
            a->setChecked(!a->isChecked());
            basic::protetto([&] { canzoni_Click(i); });
        });
        canzoni(i) = a;
    }

    menu_about = menuBar()->addAction(QStringLiteral("&Info"));
    connect(menu_about, &QAction::triggered, this, [this] { basic::protetto([&] { menu_about_Click(); }); });
}

// ------------------------------------------------------------------ placing

void FrmTV::posiziona(QWidget* controllo, const QRectF& logico)
{
    if (posizioni_.find(controllo) == posizioni_.end())
        connect(controllo, &QObject::destroyed, this, [this, controllo] { posizioni_.erase(controllo); });
    posizioni_[controllo] = logico;
    const double sx = tavolo->width() / Canvas::larghezza_logica;
    const double sy = tavolo->height() / Canvas::altezza_logica;
    controllo->setGeometry(
        QRectF(logico.x() * sx, logico.y() * sy, logico.width() * sx, logico.height() * sy).toRect());
}

QRectF FrmTV::posizione(QWidget* controllo) const
{
    const auto it = posizioni_.find(controllo);
    return it == posizioni_.end() ? QRectF() : it->second;
}

void FrmTV::applica_posizioni()
{
    for (const auto& [controllo, logico] : std::map<QWidget*, QRectF>(posizioni_)) posiziona(controllo, logico);
    if (picture_score->isVisible() || !picture_score->immagine.isNull()) foglio_punti::colloca_invito(*this);
}

double FrmTV::scala_testi() const
{
    if (!tavolo) return 1;
    return std::max(1.0,
                    std::min(tavolo->width() / Canvas::larghezza_logica, tavolo->height() / Canvas::altezza_logica));
}

void FrmTV::imposta_carattere(QWidget* controllo, const QFont& base)
{
    if (caratteri_.find(controllo) == caratteri_.end())
        connect(controllo, &QObject::destroyed, this, [this, controllo] { caratteri_.erase(controllo); });
    caratteri_[controllo] = base;
    QFont f = base;
    f.setPointSizeF(base.pointSizeF() * scala_testi());
    controllo->setFont(f);
}

// The letters of the panels and labels follow the table's stretch, as the
// cards do, and the boxes asked over the table open in proportion to it.
void FrmTV::applica_caratteri()
{
    for (const auto& [controllo, base] : std::map<QWidget*, QFont>(caratteri_)) imposta_carattere(controllo, base);
    piattaforma::imposta_scala_dialoghi(scala_testi());
}

void FrmTV::setMousePointer(int forma)
{
    puntatore_ = forma;
    Qt::CursorShape q = Qt::ArrowCursor;
    switch (forma) {
    case 10: q = Qt::UpArrowCursor; break;
    case 11: q = Qt::WaitCursor; break;
    case 12: q = Qt::ForbiddenCursor; break;
    case 13: q = Qt::BusyCursor; break;
    default: break;
    }
    tavolo->setCursor(q);
}

// ------------------------------------------------------------------ events

void FrmTV::Form_Load()
{
    // Maximised; where no window manager maximises it, it still fills the screen.
    if (QScreen* schermo = screen()) setGeometry(schermo->availableGeometry());
    setWindowState(windowState() | Qt::WindowMaximized);
    const double tpp = twip_per_pixel_ > 0 ? twip_per_pixel_ : 1440.0 / std::max(1.0, double(logicalDpiY()));
    larghezza_precedente = float(frameGeometry().width() * tpp);
    altezza_precedente = float(frameGeometry().height() * tpp);
    gioco_avviato = false;
    for (PannelloTesto* t : {text5, Text2}) {
        posiziona(t, QRectF(8, 144, 504, 240));
        t->hide();
    }
    uscita = false;

    MMC1->Command(QStringLiteral("close"));
    MMC1->FileName = cartella_programma() + QStringLiteral("/music/brezza.mid");
    MMC1->Command(QStringLiteral("Open"));
    MMC1->Wait = false;
    MMC1->Command(QStringLiteral("play"));

    menu_card_rustle_yes->setChecked(true);
    for (int i = 1; i <= numero_canzoni; ++i) canzoni(i)->setChecked(false);
    canzoni(9)->setChecked(true);
    nomusic->setChecked(false);
    all->setChecked(false);
    canzone_corrente = 0;
}

void FrmTV::Form_Resize()
{
    if (isMinimized() || !tavolo) return;
    const double tpp = twip_per_pixel_ > 0 ? twip_per_pixel_ : 1440.0 / std::max(1.0, double(logicalDpiY()));
    const float larghezza = float(frameGeometry().width() * tpp);
    // The height is held as a 16-bit whole number: a window taller than
    // 32767 twips overflows here, before any error is ignored.
    const Integer altezza = basic::CInt(frameGeometry().height() * tpp);

    // Every control keeps its place on the table in table units, which is
    // what scaling each one by the ratio of the sizes achieves.
    applica_caratteri();
    applica_posizioni();
    larghezza_precedente = larghezza;
    altezza_precedente = float(long(altezza));

    const double dpr = tavolo->devicePixelRatioF();
    tela.ridimensiona(int(std::lround(tavolo->width() * dpr)), int(std::lround(tavolo->height() * dpr)));
    passo_x = float(Canvas::larghezza_logica / tela.larghezza_px());
    passo_y = float(Canvas::altezza_logica / tela.altezza_px());
    altezza_tavolo = 768;
    larghezza_tavolo = 1024;
    tavolo->update();
}

void FrmTV::Form_Unload() { basic::fine_programma(0); }

void FrmTV::closeEvent(QCloseEvent* e)
{
    e->accept();
    basic::protetto([&] { Form_Unload(); });
}

void FrmTV::changeEvent(QEvent* e)
{
    QMainWindow::changeEvent(e);
    if (e->type() == QEvent::WindowStateChange) basic::protetto([&] { Form_Resize(); });
}

void FrmTV::showEvent(QShowEvent* e)
{
    QMainWindow::showEvent(e);
    // Moved to a screen of another density, the window may keep its size in
    // points while the table needs more or fewer pixels.
    if (!segue_lo_schermo_ && windowHandle()) {
        segue_lo_schermo_ = true;
        connect(windowHandle(), &QWindow::screenChanged, this, [this] { basic::protetto([&] { Form_Resize(); }); });
    }
}

void FrmTV::menu_newgame_Click() { gioco_imposta(); }

void FrmTV::menu_quit_Click()
{
    uscita = true;
    Form_Unload();
}

void FrmTV::menu_card_rustle_yes_Click()
{
    menu_card_rustle_yes->setChecked(true);
    menu_card_rustle_no->setChecked(false);
}

void FrmTV::menu_card_rustle_no_Click()
{
    menu_card_rustle_no->setChecked(true);
    menu_card_rustle_yes->setChecked(false);
}

namespace {
void alterna(PannelloTesto* pannello)
{
    if (pannello->isVisible()) {
        pannello->hide();
    } else {
        pannello->show();
        pannello->raise();
    }
}
}  // namespace

void FrmTV::menu_english_rules_Click()
{
    text5->hide();
    Text4->hide();
    alterna(Text2);
}

void FrmTV::menu_regole_italiano_Click()
{
    Text2->hide();
    Text4->hide();
    alterna(text5);
}

void FrmTV::menu_about_Click()
{
    text5->hide();
    Text2->hide();
    alterna(Text4);
}

void FrmTV::Text2_Click()
{
    Text2->hide();
    text5->hide();
}

void FrmTV::text5_Click()
{
    Text2->hide();
    text5->hide();
}

void FrmTV::text4_Click() { Text4->hide(); }
