#include "platform/eventos.h"

#include <QCoreApplication>

namespace quorel {

static bool gHeld = false;

void eventTurn()
{
    QCoreApplication::processEvents(gHeld ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents);
}

void holdUserInput(bool hold)
{
    gHeld = hold;
}

} // namespace quorel
