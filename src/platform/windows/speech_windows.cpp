#include "platform/speech_engine.h"

#include "platform/windows/texto.h"

#include <QtGlobal>

#include <qt_windows.h>

#include <sapi.h>

#include <utility>

namespace quorel {

/// An object of the system that is given back with this one.
template <typename T>
class Held final
{
    Q_DISABLE_COPY_MOVE(Held)
public:
    Held() = default;
    ~Held()
    {
        if (mObject)
            mObject->Release();
    }
    T *operator->() const { return mObject; }
    T *get() const { return mObject; }
    T **fill() { return &mObject; }
    explicit operator bool() const { return mObject != nullptr; }

private:
    T *mObject = nullptr;
};

/// The system's voices. Nothing here waits: a text is handed over and spoken aside.
class Speech::Engine::System final
{
    Q_DISABLE_COPY_MOVE(System)
public:
    explicit System(std::function<void(bool)> tell) : mTell(std::move(tell)) { }

    void prepare();
    void say(const QString &text);
    void stop();

private:
    bool choosePortuguese();

    std::function<void(bool)> mTell;
    Held<ISpVoice> mVoice;
    bool mAsked = false;
};

/// @return whether a voice of Brazil, else of Portugal, is there and was taken
bool Speech::Engine::System::choosePortuguese()
{
    Held<ISpObjectTokenCategory> voices;
    if (FAILED(CoCreateInstance(CLSID_SpObjectTokenCategory, nullptr, CLSCTX_INPROC_SERVER, IID_ISpObjectTokenCategory,
            reinterpret_cast<void **>(voices.fill())))
        || FAILED(voices->SetId(SPCAT_VOICES, FALSE)))
        return false;
    for (const wchar_t *language : {L"Language=416", L"Language=816"}) {
        Held<IEnumSpObjectTokens> found;
        Held<ISpObjectToken> first;
        if (SUCCEEDED(voices->EnumTokens(language, nullptr, found.fill())) && found
            && found->Next(1, first.fill(), nullptr) == S_OK)
            return SUCCEEDED(mVoice->SetVoice(first.get()));
    }
    return false;
}

void Speech::Engine::System::prepare()
{
    if (std::exchange(mAsked, true))
        return;
    const bool there = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))
        && SUCCEEDED(CoCreateInstance(
            CLSID_SpVoice, nullptr, CLSCTX_INPROC_SERVER, IID_ISpVoice, reinterpret_cast<void **>(mVoice.fill())))
        && choosePortuguese();
    mTell(there);
}

void Speech::Engine::System::say(const QString &text)
{
    constexpr DWORD kAside = SPF_ASYNC | SPF_PURGEBEFORESPEAK | SPF_IS_NOT_XML;
    // A voice that is listed may still be unable to speak: the first text tells.
    if (mVoice && FAILED(mVoice->Speak(win::wide(text), kAside, nullptr)))
        mTell(false);
}

void Speech::Engine::System::stop()
{
    if (mVoice)
        mVoice->Speak(nullptr, SPF_ASYNC | SPF_PURGEBEFORESPEAK, nullptr);
}

Speech::Engine::Engine(std::function<void(bool)> tell) : mSystem(std::make_unique<System>(std::move(tell))) { }
Speech::Engine::~Engine() = default;

void Speech::Engine::prepare()
{
    mSystem->prepare();
}

void Speech::Engine::say(const QString &text)
{
    mSystem->say(text);
}

void Speech::Engine::stop()
{
    mSystem->stop();
}

} // namespace quorel
