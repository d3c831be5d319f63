#include "platform/speech.h"

#include "platform/speech_engine.h"

#include <utility>

namespace quorel {

Speech::Speech() = default;
Speech::~Speech() = default;

Speech &Speech::instance()
{
    static Speech only;
    return only;
}

void Speech::prepare()
{
    if (!mEngine)
        mEngine = std::make_unique<Engine>([this](bool available) { setAvailable(available); });
    mEngine->prepare();
}

void Speech::setAvailable(bool available)
{
    if (std::exchange(mAvailable, available) != available)
        emit changed(available);
    if (!available)
        emit lost();
}

void Speech::say(const QString &text)
{
    if (text.trimmed().isEmpty())
        return stop();
    prepare();
    mEngine->say(text);
}

void Speech::stop()
{
    if (mEngine)
        mEngine->stop();
}

} // namespace quorel
