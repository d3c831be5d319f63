#pragma once

#include <QString>
#include <QStringList>

namespace quorel {

/// The Windows directory in backslash form without a trailing one: QUOREL_WINDIR where it is set; else the system's
/// own on Windows, and on Linux the user's data directory + "\quorel".
QString windowsDirectory();

/// Name of the account that runs the program, as a part of a file's name: letters, digits, "-", "_" and "." alone,
/// anything else as "_". "conta" where the system tells none.
QString accountName();

/// The folder that an installation makes for what all accounts of the machine keep in it; native, it may be missing.
QString machineDirectory();

/// The only drive type that is asked for.
inline constexpr int kOpticalDrive = 5;

/// Roots of the drives of a type, each with its trailing backslash. On Linux the mounts of type iso9660 or udf for
/// type 5, nothing for others.
QStringList driveRoots(int tipo);

/// How many devices can play a wave file; 0 means no sound.
int waveOutputCount();

/// Whether the file is marked read-only, or lies on a medium that is; what the user may do doesn't count. A missing
/// file counts as writable.
bool isReadOnly(const QString &caminho);

/// Clears the read-only attribute. @return false when that failed or there is no such file.
bool clearReadOnly(const QString &caminho);

/// Whether this machine shows another process that has the file open. One of another user may stay unseen, one of
/// another machine does.
bool isOpenElsewhere(const QString &caminho);

/// Where pictures and sounds are proposed to be copied to, without a trailing backslash: on Windows "C:\FigurasQuorel",
/// on Linux a directory of that name among the user's documents.
QString proposedCopies();

/// Where the media collection is proposed to be: on Windows "D:\zeto_MM", on Linux "zeto_mm" on the optical disc, else
/// in the Windows directory.
QString proposedMedia();

/// Directory for temporary files, backslash form, no trailing one.
QString temporaryDirectory();

/// Whether the machine is connected to the internet: on Windows the registry value of the dial-up, on Linux an active
/// default route.
bool dialUpConnected();

} // namespace quorel
