#pragma once

#include <functional>

namespace quorel {

/// Opens RSCLxAL for the frame on view. Reading rows lets events through, and with them another frame's or a newer
/// choice's opening: the rows of the one asked for last are the ones that stay.
class Abertura final
{
public:
    /// @param consulta  opens the rows for what is current when it is called; it may be called again later
    /// @return false when another opening came in meanwhile: its rows are open, and it has shown them
    bool abre(std::function<void()> consulta);

private:
    std::function<void()> mUltima;
    unsigned mVezes = 0; ///< openings asked for so far
};

} // namespace quorel
