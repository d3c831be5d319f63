#pragma once

#include <QString>

namespace quorel::teste {

/// Stands between SQLite and the disk as the default file system of the process: counts the calls and fails those it
/// is told to. Syncs are counted and left out, since no test cuts the power. One at a time, made before the first
/// database is opened; no database may be open when it goes.
class DiscoFalho final
{
    Q_DISABLE_COPY_MOVE(DiscoFalho)
public:
    DiscoFalho();
    ~DiscoFalho();

    void reset(); ///< nothing fails, counts start anew
    /// Fails a call, counted from 1 since the last reset().
    /// @param forEver  all later ones too
    /// @param full  writes fail for want of space and nothing else fails
    void failAt(int call, bool forEver, bool full = false);
    void loseAnswerAt(int call); ///< it is made, and then told to have failed
    void readLate(int microseconds); ///< each page

    int syncs() const; ///< since reset()
    bool failed() const; ///< whether a call was failed
    void syncForReal(); ///< syncs are passed on from now on
};

} // namespace quorel::teste
