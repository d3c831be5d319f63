#pragma once

#include "autoria/source.h"

#include <memory>

namespace quorel {

struct CheckMemory;

/// Looks for what the shell would pass over in silence, and for what a lesson can't be played with. One object for all
/// files of a run: a code used twice is found across them, and a month's theme that differs.
class Checker final
{
public:
    /// @param withMedia  also look for figures, sounds and HTML lessons through gConfig
    explicit Checker(bool withMedia);

    /// @param edb  the whole file, bytes of code page 1252 @return in the order of the places
    Findings check(const BlockFile &file, const QByteArray &edb);

    /// Of a block made of a source: the source's own findings, then the block's at the lines of the source.
    /// @param sourcePath  the findings' file
    Findings check(const MadeBlock &made, const BlockFile &destination, const QString &sourcePath);

private:
    bool mWithMedia;
    std::shared_ptr<CheckMemory> mMemory; ///< of the files before; a copy of this object shares it
};

} // namespace quorel
