#pragma once

#include <QString>

namespace quorel {

/// What a backend gives to windowsDirectory(): the directory used where QUOREL_WINDIR is not set, in backslash form.
QString systemWindowsDirectory();

/// What a backend gives to accountName(): the account's name as the system has it; empty when it tells none.
QString systemAccountName();

} // namespace quorel
