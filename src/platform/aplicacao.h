#pragma once

#include <QApplication>

#include <exception>
#include <memory>

namespace quorel {

class PressFilter;

/// The command line as one text, without the program's name, quotes kept. On Linux the arguments joined by one blank,
/// taken before Qt strips its own: call it before the QApplication is made.
QString rawCommandLine(int argc, char **argv);

/// The words of the command line, the program's own name first, as the system cuts them. Before the QApplication, too.
QStringList commandLineWords(int argc, char **argv);

/// Shows a failure that nobody caught once, in a box, and ends the program: number, blank and description of a run-time
/// failure; memory that ran out and what else the library throws have numbers of their own.
[[noreturn]] void encerraPorFalha(const std::exception &falha);

/// The application object: a run-time failure that nobody caught never crosses an event; it is shown once and ends the
/// program, at whatever depth of loop. A press counts once, see PressFilter.
class Aplicacao final : public QApplication
{
    Q_OBJECT
public:
    /// Prepares the platform first (under Wayland X11 is asked for, since windows of fixed places need it; memory is
    /// set up for large messages), then Qt. Never sets a display name: that would append to every title.
    /// @param zoom  see ZoomedStart
    Aplicacao(int &argc, char **argv, int zoom = 0);
    ~Aplicacao() override;
    bool notify(QObject *receiver, QEvent *event) override;

private:
    const std::unique_ptr<PressFilter> mPresses;
};

} // namespace quorel
