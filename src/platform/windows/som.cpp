#include "platform/som.h"

#include "platform/windows/texto.h"

#include <QFileInfo>

#include <mmsystem.h>

namespace quorel {

bool playSound(const QString &native)
{
    stopSound();
    return QFileInfo(native).isFile() && waveOutGetNumDevs() > 0
        && PlaySoundW(win::wide(native), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}

void stopSound()
{
    PlaySoundW(nullptr, nullptr, 0);
}

} // namespace quorel
