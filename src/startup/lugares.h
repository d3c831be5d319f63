#pragma once

#include <QString>

namespace quorel {

/// Name of the configuration file, behind a directory.
inline constexpr char16_t kArquivoCnf[] = u"zeto_cnf.txt";

/// Root of the first optical drive with its backslash; empty when there is none, and paths built on it are then
/// looked for in the current directory.
QString opticalRoot();

/// The installation's directory below the Windows directory, without a trailing backslash.
QString installationDirectory();

/// Web address of the maker's page, a setting of the build: it is opened, named in a box, and heads the reports.
QString makerAddress();

} // namespace quorel
