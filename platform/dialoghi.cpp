// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dialoghi.h"

#include "platform/basic.h"

#include <QApplication>
#include <QCloseEvent>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <deque>

namespace piattaforma {

namespace {
std::deque<std::string> input_previsti;
std::deque<int> messaggi_previsti;
std::vector<std::string> registro;
bool sempre_automatico = false;
double scala_dialoghi = 1;

void in_scala(QWidget& box)
{
    if (scala_dialoghi <= 1) return;
    QFont f = box.font();
    f.setPointSizeF(f.pointSizeF() * scala_dialoghi);
    box.setFont(f);
}

// Beside `in_vista`: below it, or above it where the screen ends first, or
// at the screen's edge when neither has room; centred on it across.
QPoint accanto(const QRect& in_vista, QSize box, const QRect& schermo, int margine)
{
    int y = in_vista.bottom() + 1 + margine;
    if (y + box.height() > schermo.bottom() + 1) y = in_vista.top() - margine - box.height();
    if (y < schermo.top()) y = schermo.bottom() + 1 - box.height();
    const int x = std::clamp(in_vista.center().x() - box.width() / 2, schermo.left(),
                             std::max(schermo.left(), schermo.right() + 1 - box.width()));
    return QPoint(x, std::max(y, schermo.top()));
}
}  // namespace

void imposta_scala_dialoghi(double scala) { scala_dialoghi = scala; }

std::string InputBox(const std::string& prompt, const std::string& titolo, const std::string& predefinito)
{
    if (basic::prova::attivo()) registro.push_back("InputBox|" + prompt + "|" + titolo + "|" + predefinito);
    if (!input_previsti.empty()) {
        std::string r = input_previsti.front();
        input_previsti.pop_front();
        return r;
    }
    if (sempre_automatico) return predefinito;
    QInputDialog box(QApplication::activeWindow());
    box.setWindowTitle(QString::fromStdString(titolo));
    box.setLabelText(QString::fromStdString(prompt));
    box.setTextValue(QString::fromStdString(predefinito));
    in_scala(box);
    return box.exec() == QDialog::Accepted ? box.textValue().toStdString() : std::string();
}

int MsgBox(const std::string& testo, int pulsanti, int icona, const std::string& titolo, const QRect& in_vista)
{
    if (basic::prova::attivo())
        registro.push_back("MsgBox|" + testo + "|" + std::to_string(pulsanti) + "|" + std::to_string(icona) + "|" +
                           titolo);
    if (!messaggi_previsti.empty()) {
        const int r = messaggi_previsti.front();
        messaggi_previsti.pop_front();
        return r;
    }
    if (sempre_automatico) return pulsanti == vbYesNo ? vbYes : vbOK;

    // A question is answered by its buttons only: Escape and the close box
    // would otherwise count as No, which ends the game.
    class Domanda : public QMessageBox {
    public:
        using QMessageBox::QMessageBox;
        bool solo_pulsanti = false;
        QRect in_vista;

    protected:
        void showEvent(QShowEvent* e) override
        {
            QMessageBox::showEvent(e);
            if (in_vista.isNull() || !screen()) return;
            // A window's position is that of its frame.
            move(accanto(in_vista, frameGeometry().size(), screen()->availableGeometry(), int(8 * scala_dialoghi)));
        }
        void keyPressEvent(QKeyEvent* e) override
        {
            if (solo_pulsanti && e->key() == Qt::Key_Escape) return;
            QMessageBox::keyPressEvent(e);
        }
        void closeEvent(QCloseEvent* e) override
        {
            if (solo_pulsanti && !result()) {
                e->ignore();
                return;
            }
            QMessageBox::closeEvent(e);
        }
    };
    Domanda box(QApplication::activeWindow());
    box.setWindowTitle(titolo.empty() ? QStringLiteral("Tavolata") : QString::fromStdString(titolo));
    box.setText(QString::fromStdString(testo));
    box.setIcon(icona == vbCritical   ? QMessageBox::Critical
                : icona == vbQuestion ? QMessageBox::Question
                                      : QMessageBox::NoIcon);
    box.in_vista = in_vista;
    in_scala(box);
    if (scala_dialoghi > 1 && icona != vbNessuna) {
        const int lato = int(box.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &box) * scala_dialoghi);
        const auto figura = icona == vbCritical ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxQuestion;
        // The style may hold the icon no larger than its usual size.
        QPixmap icona_grande = box.style()->standardIcon(figura, nullptr, &box).pixmap(lato, lato);
        if (icona_grande.width() < lato)
            icona_grande = icona_grande.scaled(lato, lato, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        box.setIconPixmap(icona_grande);
    }
    if (pulsanti == vbYesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.solo_pulsanti = true;
        box.setWindowFlag(Qt::WindowCloseButtonHint, false);
        return box.exec() == QMessageBox::Yes ? vbYes : vbNo;
    }
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return vbOK;
}

namespace prova {
void rispondi_input(const std::string& testo) { input_previsti.push_back(testo); }
void rispondi_messaggio(int risposta) { messaggi_previsti.push_back(risposta); }
const std::vector<std::string>& richieste() { return registro; }
void azzera()
{
    input_previsti.clear();
    messaggi_previsti.clear();
    registro.clear();
}
void automatico(bool acceso) { sempre_automatico = acceso; }
}  // namespace prova

}  // namespace piattaforma
