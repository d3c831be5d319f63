#pragma once

#include <QString>
#include <QWidget>

#include <memory>

namespace quorel::teste {

/// Keeps everybody, this process too, from writing a native file as long as the result lives. Null when nothing can
/// keep this user from it (the superuser); the file is then left without the permission all the same.
std::shared_ptr<void> impedeEscrita(const QString &native);

/// How many sends within sends a test may count on.
extern const int kCorrente;

/// Whether a file that somebody has open can be moved away, as a share that goes does to its users.
extern const bool kOpenFilesMove;

/// Whether our programs meet in a directory, which somebody may spoil, or over windows.
extern const bool kMeetInADirectory;

/// Ends a process at once, wherever it hangs. One that has ended already is passed over.
void mataProcesso(qint64 process);

/// The upper left corner of a window with its frame, as the system has it.
QPoint cantoDe(const QWidget &window);

/// Whether a window stays above those of other programs.
bool sempreNaFrente(const QWidget &window);

} // namespace quorel::teste
