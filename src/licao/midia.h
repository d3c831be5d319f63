#pragma once

#include <QString>

#include <functional>

namespace quorel {

/// Where a lesson's figures and sounds come from.
struct Midia
{
    std::function<QString(const QString &nome)> figura; ///< native path of a figure; empty when there is none
    std::function<QString(const QString &nome)> som; ///< native path of a sound; likewise
};

/// The media root that the configuration's key ZETO_MM names, else that of the Windows directory.
/// @param cfg  path of the configuration with backslashes; may be empty or name no file
Midia midiaDaConfiguracao(const QString &cfg);

} // namespace quorel
