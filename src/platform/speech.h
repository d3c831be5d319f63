#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace quorel {

/// Reads texts aloud with the system's Portuguese voice: speech-dispatcher on Linux, the system's speech on Windows. It
/// is looked for at the first use, never waited for, and a voice that dies or hangs is one that is not there.
class Speech final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Speech)
public:
    Speech();
    ~Speech() override;

    static Speech &instance(); ///< the program's own

    /// Looks for a voice, if that has not been done; changed() tells what came of it.
    void prepare();

    /// Whether there is a voice, as far as is known.
    bool isAvailable() const { return mAvailable; }

    /// Says a text in the place of what is being said; empty texts only end that. While the voice is still being looked
    /// for, the last text waits for it.
    void say(const QString &text);

    void stop(); ///< says nothing more of what is being said

    class Engine; ///< the system's way to speak; in the backend

signals:
    void changed(bool available);
    void lost(); ///< there is no voice, or it has gone

private:
    void setAvailable(bool available);

    bool mAvailable = false;
    std::unique_ptr<Engine> mEngine; ///< null until the first use
};

} // namespace quorel
