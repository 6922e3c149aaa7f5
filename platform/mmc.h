// SPDX-License-Identifier: GPL-3.0-or-later
// MMC1, the multimedia control that plays the background songs: string
// commands ("Open"/"open", "play"/"Play", "close"), the file name, the waiting
// switch, the start position and the Done event with a notification code.
//
// A playing song keeps its time on the control's own clock, heard or not:
// it is heard through a General MIDI synthesizer on the sound server while
// there is one, and without one it still ends and Done still arrives. File
// names are looked up without regard to case. A file that cannot be opened
// makes "open" and "play" fail silently: no Done follows. A file that opens
// but holds no song plays as a second of silence.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class MMControl : public QObject {
    Q_OBJECT
public:
    // Notification codes of Done.
    enum { mciSuccessful = 1, mciSuperseded = 2, mciAborted = 4, mciFailure = 8 };
    // What Mode() tells.
    enum { mciModeNotOpen = 524, mciModeStop = 525, mciModePlay = 526 };

    explicit MMControl(QObject* parent = nullptr);
    ~MMControl() override;

    QString FileName;
    bool Wait = false;  // applies to the next command only: it returns once done
    long From = -1;  // start of the next play in milliseconds; -1 = where it stands

    // Sends one command. Case does not matter ("Open", "open").
    void Command(const QString& comando);

    int Mode() const;
    long Length() const;  // of the open song, in milliseconds
    long Position() const;  // in milliseconds

    // Test visibility: the commands sent, as "close", "open <file>", "play"
    // ("play from 0" when a start position was set), kept only while the
    // test hook is on.
    QStringList registro;

    // Tests: songs keep their time running `velocita` times faster than real
    // time, and are not heard. 0 goes back to real time on the sound server.
    static void prova_orologio(double velocita);
    // True while a song is heard on the sound server.
    static bool suona_su_dispositivo();

signals:
    // Comes on the window's thread; 1 only when a song has played to its end,
    // 2 for a play overtaken by another, 4 for a play stopped by close/open.
    void Done(int NotifyCode);

private:
    void apri();
    void suona(long da_ms);
    void chiudi();
    void controlla_fine();
    void segui_il_suono();
    void notifica_piu_tardi(int codice);

    struct Impl;
    std::unique_ptr<Impl> d_;
};
