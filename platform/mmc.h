// MMC1, the multimedia control that plays the background songs: string
// commands ("Open"/"open", "play"/"Play", "close"), the file name, the waiting
// switch, the start position and the Done event with a notification code.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class MMControl : public QObject {
    Q_OBJECT
public:
    // Notification codes of Done.
    enum { mciSuccessful = 1, mciSuperseded = 2, mciAborted = 4, mciFailure = 8 };

    explicit MMControl(QObject* parent = nullptr);
    ~MMControl() override;

    QString FileName;
    bool Wait = false;  // applies to the next command only
    long From = -1;  // start position of the next play; -1 = where it stands

    // Sends one command. Case does not matter ("Open", "open").
    void Command(const QString& comando);

    // Test visibility: the commands sent, as "close", "open <file>", "play".
    QStringList registro;

signals:
    // Comes on the window's thread; 1 only when a song has played to its end.
    void Done(int NotifyCode);

private:
    struct Impl;
    Impl* d_ = nullptr;
};
