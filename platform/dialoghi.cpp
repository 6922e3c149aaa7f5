// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dialoghi.h"

#include "platform/basic.h"

#include <QApplication>
#include <QInputDialog>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>

#include <deque>

namespace piattaforma {

namespace {
std::deque<std::string> input_previsti;
std::deque<int> messaggi_previsti;
std::vector<std::string> registro;
bool sempre_automatico = false;
}  // namespace

std::string InputBox(const std::string& prompt, const std::string& titolo, const std::string& predefinito)
{
    if (basic::prova::attivo()) registro.push_back("InputBox|" + prompt + "|" + titolo + "|" + predefinito);
    if (!input_previsti.empty()) {
        std::string r = input_previsti.front();
        input_previsti.pop_front();
        return r;
    }
    if (sempre_automatico) return predefinito;
    bool ok = false;
    const QString r = QInputDialog::getText(QApplication::activeWindow(), QString::fromStdString(titolo),
                                            QString::fromStdString(prompt), QLineEdit::Normal,
                                            QString::fromStdString(predefinito), &ok);
    return ok ? r.toStdString() : std::string();
}

int MsgBox(const std::string& testo, int pulsanti, int icona, const std::string& titolo)
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

    protected:
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
    box.setIcon(icona == vbCritical ? QMessageBox::Critical
                : icona == vbQuestion ? QMessageBox::Question
                                      : QMessageBox::NoIcon);
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
