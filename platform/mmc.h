// SPDX-License-Identifier: GPL-3.0-or-later
// MMC1, the multimedia control that plays the background songs: string
// commands ("Open"/"open", "play"/"Play", "close"), the file name, the waiting
// switch, the start position and the Done event with a notification code.
//
// The songs are General MIDI files played through a software synthesizer on
// the sound server; without any sound device the control keeps the songs'
// time on its own clock, so songs still end and Done still arrives. File
// names are looked up without regard to case. A file that cannot be opened
// makes "open" and "play" fail silently: no Done follows.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QTimer;

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
    // ("play from 0" when a start position was set).
    QStringList registro;

    // Tests: play on the control's own clock, as without any sound device,
    // running `velocita` times faster than real time. 0 goes back to the
    // sound device when there is one.
    static void prova_orologio(double velocita);
    // True while a sound device takes the songs.
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
    void notifica_piu_tardi(int codice);

    struct Impl;
    std::unique_ptr<Impl> d_;
};
