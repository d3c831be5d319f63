#pragma once

#include "platform/speech.h"

#include <functional>

namespace quorel {

/// What a backend gives to Speech.
class Speech::Engine final
{
    Q_DISABLE_COPY_MOVE(Engine)
public:
    /// @param tell  called with what is known of the voice, also when it goes or comes back
    explicit Engine(std::function<void(bool available)> tell);
    ~Engine();

    void prepare(); ///< begins to look for a voice unless one is there, or was just found missing; returns at once
    void say(const QString &text); ///< after prepare(); not empty
    void stop();

private:
    class System;
    std::unique_ptr<System> mSystem;
};

} // namespace quorel
