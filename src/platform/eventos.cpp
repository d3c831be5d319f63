#include "platform/eventos.h"

#include <QCoreApplication>

namespace quorel {

static int gHeld = 0; ///< how many stand

void eventTurn()
{
    QCoreApplication::processEvents(gHeld > 0 ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents);
}

HeldUserInput::HeldUserInput()
{
    ++gHeld;
}

HeldUserInput::~HeldUserInput()
{
    --gHeld;
}

} // namespace quorel
