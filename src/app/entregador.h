#pragma once

#include <QObject>
#include <QProcess>
#include <QTimer>

#include <chrono>

namespace quorel {

/// Has the waiting rows of the log delivered while no lesson runs, by a program beside this one: a share that hangs
/// holds that program and never the shell. Asks at growing intervals, and only while rows wait.
class Entregador final : public QObject
{
    Q_OBJECT
public:
    explicit Entregador(std::chrono::milliseconds primeiro = kPrimeiro); ///< @param primeiro  until it first looks

    /// At the end of the program, which does not wait for it: what still waits is delivered by a program that lives on.
    static void leavesToAnother();

    static constexpr std::chrono::milliseconds kPrimeiro{5'000};

private:
    void looks();

    QTimer mTimer;
    std::chrono::milliseconds mPausa;
    QProcess mProcess;
};

} // namespace quorel
