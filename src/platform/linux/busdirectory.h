#pragma once

#include "platform/janela.h"
#include "platform/linux/unixfd.h"

#include <QString>

#include <sys/types.h>
#include <time.h>

#include <vector>

namespace quorel::bus {

/// The process that a handle belongs to; 0 for one that is not on the bus.
pid_t processOf(Janela janela);

/// Handle number n (from 1) of a process.
Janela handleIn(pid_t process, quint32 n);

/// A published window.
struct Entry
{
    Janela handle = 0;
    Janela parent = 0; ///< handle of the top-level window that an inner one belongs to; 0 for a top-level one
    QString title;
    bool operator==(const Entry &) const = default;
};

/// The private directory in which the processes of one user find each other: for each a socket and a text file with
/// its published windows. Only a directory that is ours, and no link, is used; it is closed to others where it was not.
class BusDirectory final
{
public:
    static QString path(); ///< native; the directory need not be there

    /// All published windows, in the order of their handles, those of dead processes not yet removed included. Read
    /// again only when the directory changed. Empty when there is no directory to trust. The reference is good until
    /// the next call.
    const std::vector<Entry> &entries();

    /// Replaces what the own process publishes; an empty list removes its file. @return false when it can't be written
    bool publish(const std::vector<Entry> &own);

    UnixFd listen(); ///< makes the own process's socket; none on failure

    enum class Reach { Connected, Gone, Busy };
    struct Connected
    {
        Reach reach = Reach::Gone;
        UnixFd socket;
    };
    /// Connects to a process's socket. Gone means that nobody listens there.
    Connected connect(pid_t process);

    void remove(pid_t process); ///< the files of a process that is gone

    /// Whether the directory in use stands in its place, with the own process's socket and entries in it.
    bool holdsOwn();

private:
    bool open(); ///< makes sure that the directory is there
    bool isInPlace() const; ///< whether the one in use is still what its path names
    bool changed(); ///< whether entries() has to read again
    void read();
    void readFile(const char *name);

    UnixFd mDirectory;
    std::vector<Entry> mEntries;
    timespec mModified = {};
    timespec mRead = {};
};

/// Whether the process at the other end of a socket is this user's. @param process  its number, 0 when unknown
bool peerIsOurs(int socket, pid_t &process);

} // namespace quorel::bus
