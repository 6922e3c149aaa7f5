// SPDX-License-Identifier: GPL-3.0-or-later
#include "human/frmJolly.h"

#include "ui/alta_risoluzione.h"
#include "ui/frmTV.h"
#include "ui/mdGraphics.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QShowEvent>

namespace {

const QColor GRIGIO_CHIARO(192, 192, 192);
const QColor GRIGIO_SCURO(128, 128, 128);

// A raised (or sunken) frame of two lines inside rectangle r.
void cornice(QPainter& p, const QRect& r, bool infossata)
{
    const QColor luce = infossata ? Qt::black : Qt::white;
    const QColor ombra = infossata ? Qt::white : Qt::black;
    const QColor mezza = GRIGIO_SCURO;
    p.setPen(luce);
    p.drawLine(r.left(), r.top(), r.right() - 1, r.top());
    p.drawLine(r.left(), r.top(), r.left(), r.bottom() - 1);
    p.setPen(ombra);
    p.drawLine(r.left(), r.bottom(), r.right(), r.bottom());
    p.drawLine(r.right(), r.top(), r.right(), r.bottom());
    p.setPen(mezza);
    if (infossata) {
        p.drawLine(r.left() + 1, r.top() + 1, r.right() - 2, r.top() + 1);
        p.drawLine(r.left() + 1, r.top() + 1, r.left() + 1, r.bottom() - 2);
    } else {
        p.drawLine(r.left() + 1, r.bottom() - 1, r.right() - 1, r.bottom() - 1);
        p.drawLine(r.right() - 1, r.top() + 1, r.right() - 1, r.bottom() - 1);
    }
}

// The symbol of suit 1-4 filling a square of side l with its top-left corner at (x, y).
QPainterPath simbolo(int seme, double x, double y, double l)
{
    QPainterPath s;
    const double cx = x + l / 2;
    switch (seme) {
    case 1:  // heart: two lobes and a point below
        s.addEllipse(QRectF(x, y, l / 2 + 0.5, l / 2 + 0.5));
        s.addEllipse(QRectF(cx - 0.5, y, l / 2 + 0.5, l / 2 + 0.5));
        s.addPolygon(
            QPolygonF({QPointF(x + 0.3, y + l * 0.35), QPointF(x + l - 0.3, y + l * 0.35), QPointF(cx, y + l)}));
        break;
    case 2:  // diamond
        s.addPolygon(QPolygonF(
            {QPointF(cx, y), QPointF(x + l * 0.85, y + l / 2), QPointF(cx, y + l), QPointF(x + l * 0.15, y + l / 2)}));
        break;
    case 3:  // club: three leaves and a stem
        s.addEllipse(QRectF(cx - l * 0.22, y, l * 0.44, l * 0.44));
        s.addEllipse(QRectF(x, y + l * 0.33, l * 0.44, l * 0.44));
        s.addEllipse(QRectF(x + l * 0.56, y + l * 0.33, l * 0.44, l * 0.44));
        s.addPolygon(QPolygonF({QPointF(cx - 1, y + l * 0.4), QPointF(cx + 1, y + l * 0.4),
                                QPointF(cx + l * 0.2, y + l), QPointF(cx - l * 0.2, y + l)}));
        break;
    default:  // spade: an upturned heart on a stem
        s.addEllipse(QRectF(x, y + l * 0.35, l / 2 + 0.5, l * 0.4));
        s.addEllipse(QRectF(cx - 0.5, y + l * 0.35, l / 2 + 0.5, l * 0.4));
        s.addPolygon(QPolygonF({QPointF(cx, y), QPointF(x + l - 0.3, y + l * 0.55), QPointF(x + 0.3, y + l * 0.55)}));
        s.addPolygon(QPolygonF({QPointF(cx - 1, y + l * 0.5), QPointF(cx + 1, y + l * 0.5),
                                QPointF(cx + l * 0.2, y + l), QPointF(cx - l * 0.2, y + l)}));
        break;
    }
    s.setFillRule(Qt::WindingFill);
    return s;
}

}  // namespace

// ------------------------------------------------------------ suit buttons

PulsanteSeme::PulsanteSeme(int seme, QWidget* parent, double scala) : QAbstractButton(parent)
{
    const qreal rapporto = parent ? parent->devicePixelRatioF() : 1.0;
    figura_ = figura_seme(seme, rapporto * scala);
    // Without a finer companion the bitmap is stretched to the dialog's size.
    const QSize misura(qRound(24 * rapporto * scala), qRound(22 * rapporto * scala));
    if (scala > 1 && figura_.size() != misura)
        figura_ = figura_.scaled(misura, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (scala > 1) figura_.setDevicePixelRatio(rapporto);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

QImage PulsanteSeme::figura_seme(int seme, qreal rapporto)
{
    QImage figura = alta_risoluzione::per_schermo(QStringLiteral(":/risorse/seme%1.bmp").arg(seme), rapporto);
    if (!figura.isNull()) return figura;
    figura = QImage(24, 22, QImage::Format_RGB32);
    figura.fill(GRIGIO_CHIARO);
    QPainter p(&figura);
    cornice(p, figura.rect(), false);
    p.setPen(Qt::NoPen);
    p.setBrush(seme <= 2 ? QColor(255, 0, 0) : QColor(0, 0, 0));
    p.drawPath(simbolo(seme, 6, 5, 12));
    return figura;
}

void PulsanteSeme::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const bool giu = isChecked() || isDown();
    p.fillRect(rect(), GRIGIO_CHIARO);
    // The picture is centred and cut to the button; it sinks with the button.
    const int spinta = giu ? 1 : 0;
    const QSize lato = figura_.deviceIndependentSize().toSize();
    p.drawImage(QPoint((width() - lato.width()) / 2 + spinta, (height() - lato.height()) / 2 + spinta), figura_);
    cornice(p, rect(), giu);
    if (hasFocus()) {
        p.setPen(QPen(Qt::black, 1, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(rect().adjusted(2, 2, -3, -3));
    }
}

// ------------------------------------------------------------ the dialog

FrmJolly::FrmJolly(QWidget* parent) : QDialog(parent), scala_(esiste_frmTV() ? frmTV().scala_testi() : 1)
{
    setWindowTitle(QStringLiteral("Play a jolly"));
    setModal(true);
    QFont lettere(QStringLiteral("MS Sans Serif"));
    lettere.setPointSizeF(8 * scala_);
    setFont(lettere);

    Label1 = new QLabel(QStringLiteral("Select suit and number for your jolly."), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setWordWrap(true);
    Label1->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Label1->setGeometry(px(8), px(8), px(170), px(30));

    gruppo_semi_ = new QButtonGroup(this);
    gruppo_semi_->setExclusive(true);
    PulsanteSeme** pulsanti[] = {&Option1, &Option2, &Option3, &Option4};
    for (int s = 1; s <= 4; ++s) {
        PulsanteSeme* b = new PulsanteSeme(s, this, scala_);
        b->setObjectName(QStringLiteral("Option%1").arg(s));
        b->setGeometry(px(16 + 24 * (s - 1)), px(40), px(17), px(17));
        gruppo_semi_->addButton(b, s);
        *pulsanti[s - 1] = b;
    }
    Option1->setChecked(true);

    Combo1 = new QComboBox(this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Combo1->addItems({QStringLiteral("Ace"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"),
                      QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7"), QStringLiteral("8"),
                      QStringLiteral("9"), QStringLiteral("10"), QStringLiteral("J"), QStringLiteral("Q"),
                      QStringLiteral("K")});
    // No entry is chosen until the dialog becomes active.
    Combo1->setCurrentIndex(-1);
    Combo1->setGeometry(px(16), px(72), px(89), Combo1->sizeHint().height());

    setTabOrder(Option1, Option2);
    setTabOrder(Option2, Option3);
    setTabOrder(Option3, Option4);
    setTabOrder(Option4, Combo1);

    Form_Load();

    connect(Combo1, &QComboBox::currentIndexChanged, this, [this] { basic::protetto([&] { Combo1_Click(); }); });
    void (FrmJolly::*clic[])() = {&FrmJolly::Option1_Click, &FrmJolly::Option2_Click, &FrmJolly::Option3_Click,
                                  &FrmJolly::Option4_Click};
    for (int s = 1; s <= 4; ++s) {
        auto gestore = clic[s - 1];
        connect(gruppo_semi_->button(s), &QAbstractButton::toggled, this, [this, gestore](bool scelto) {
            if (scelto) basic::protetto([&] { (this->*gestore)(); });
        });
    }
}

// The dialog takes its size from its label and its suit buttons.
QSize FrmJolly::misura_esterna() const
{
    return QSize(2 * Label1->x() + Label1->width(), 2 * Label1->y() + Option4->y() + px(100));
}

void FrmJolly::Form_Load() { setFixedSize(misura_esterna()); }

void FrmJolly::Form_Activate() { Combo1->setCurrentIndex(0); }

void FrmJolly::Combo1_Click() { mostra_jolly(); }
void FrmJolly::Option1_Click() { mostra_jolly(); }
void FrmJolly::Option2_Click() { mostra_jolly(); }
void FrmJolly::Option3_Click() { mostra_jolly(); }
void FrmJolly::Option4_Click() { mostra_jolly(); }

void FrmJolly::mostra_jolly()
{
    const long base = Option1->isChecked() ? 1 : Option2->isChecked() ? 14 : Option3->isChecked() ? 27 : 40;
    carta_jolly = base + Combo1->currentIndex();
    const long k = carta_jolly - 1;
    faccia_ = QRectF(basic::Mod(k, 9) * 71, basic::Int(k / 9.0) * 96, 71, 96);
    update(posto_anteprima().toAlignedRect());
}

QRectF FrmJolly::posto_anteprima() const
{
    return QRectF(Option4->x() + Option4->width() + px(10), Option4->y(), px(51), px(70));
}

void FrmJolly::Form_MouseDown(int, int, float X, float Y)
{
    // Only a press on the preview, edges included, confirms the card.
    const QRectF a = posto_anteprima();
    if (X >= a.left() && X <= a.right() && Y >= a.top() && Y <= a.bottom()) conferma();
}

void FrmJolly::conferma()
{
    frmTV().Tag = basic::Str(carta_jolly);
    QDialog::accept();
}

// Closing by the close box or Escape takes the card the preview shows, so a
// jolly never goes down without a card to stand for.
void FrmJolly::reject()
{
    basic::protetto([&] { conferma(); });
}

void FrmJolly::showEvent(QShowEvent* e)
{
    QDialog::showEvent(e);
    // The designed size is the outer one: the window's frame comes out of it.
    const QSize cornice = frameGeometry().size() - geometry().size();
    if (cornice.width() > 0 || cornice.height() > 0) setFixedSize(misura_esterna() - cornice);
    if (!e->spontaneous()) basic::protetto([&] { Form_Activate(); });
}

void FrmJolly::mousePressEvent(QMouseEvent* e)
{
    const QPointF p = e->position();
    basic::protetto([&] { Form_MouseDown(int(e->button()), int(e->modifiers()), float(p.x()), float(p.y())); });
}

void FrmJolly::paintEvent(QPaintEvent*)
{
    if (faccia_.isEmpty() || immagine_carte.isNull()) return;
    // On a screen of more than one pixel per point the face comes from the
    // finer sheet, resampled to the preview's own pixels.
    const qreal rapporto = devicePixelRatioF();
    const QSize misura = (posto_anteprima().size() * rapporto).toSize();
    const QImage fine =
        rapporto > 1 ? alta_risoluzione::fine(immagine_carte, misura.height() / faccia_.height()) : QImage();
    QImage anteprima =
        fine.isNull()
            ? immagine_carte.copy(faccia_.toRect()).scaled(misura, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            : alta_risoluzione::ricampiona(fine, immagine_carte.size(), faccia_, misura);
    // The faces are drawn for the felt, which fills their rounded corners
    // and bleeds into the next pixels once they are shrunk: on the grey
    // dialog the corners are cut away, a little rounder than the card's.
    anteprima = anteprima.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    {
        QPainter taglio(&anteprima);
        taglio.setRenderHint(QPainter::Antialiasing, true);
        taglio.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        const double raggio = 5.0 * misura.width() / 71;
        QPainterPath angoli, sagoma;
        angoli.addRect(QRectF(anteprima.rect()));
        sagoma.addRoundedRect(QRectF(anteprima.rect()), raggio, raggio);
        taglio.fillPath(angoli.subtracted(sagoma), Qt::black);
    }
    anteprima.setDevicePixelRatio(rapporto);
    QPainter(this).drawImage(posto_anteprima().topLeft(), anteprima);
}
