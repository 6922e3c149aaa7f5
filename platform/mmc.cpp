#include "platform/mmc.h"

struct MMControl::Impl {};
MMControl::MMControl(QObject* parent) : QObject(parent) {}
MMControl::~MMControl() = default;
void MMControl::Command(const QString& comando)
{
    const QString c = comando.toLower();
    registro << (c == QLatin1String("open") ? c + QLatin1Char(' ') + FileName : c);
    Wait = false;
    From = -1;
}
