#pragma once

#include <QString>

namespace quorel {

/// What a backend gives to windowsDirectory(): the directory used where QUOREL_WINDIR is not set, in backslash form.
QString systemWindowsDirectory();

} // namespace quorel
