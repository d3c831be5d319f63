#pragma once

#include "platform/linux/connection.h"
#include "platform/linux/ownwindows.h"

#include <QFileSystemWatcher>
#include <QObject>

#include <chrono>
#include <functional>
#include <list>

namespace quorel::bus {

/// The message bus as this process sees it: its connections, the sends that wait for their answer, and those of others
/// that are being served.
class Bus final
{
    Q_DISABLE_COPY_MOVE(Bus)
public:
    static Bus &instance();

    OwnWindows &windows() { return mWindows; }

    /// All published windows, as BusDirectory::entries(). Before that our own are published again where they were
    /// removed.
    const std::vector<Entry> &entries();
    bool isReachable(); ///< whether others can reach this process; listens for them if need be

    void publish(std::vector<OwnWindow> windows); ///< at one stroke
    void setTitle(Janela handle, const QString &title);
    /// Takes a window off the bus; the sends to it that are being served are answered with 0 at once.
    void withdraw(Janela handle);
    void leave(); ///< withdraws all and closes all connections

    /// As sendCopyData(); `bytes` has exactly max(size, 0) of them.
    qintptr send(const SendHead &head, QByteArrayView bytes);
    void place(const Place &place); ///< sends it on its way, or passes over a process that is gone
    bool insideSend() const { return mDepth > 0; }
    void setSendLimit(int milliseconds) { mSendLimit = std::chrono::milliseconds(milliseconds); }

    /// Whether a process can be reached; cleans up after one that is gone.
    bool isAlive(pid_t process);
    bool isDone(pid_t process); ///< whether it is gone and all that it sent has been served

    /// Answers the sends that are being served with 1, before their handlers return.
    void releaseSenders();

    /// Calls `gone` once, from the event loop, when a process can no longer be reached.
    void watch(pid_t process, std::function<void()> gone);

    /// Serves incoming sends until the condition holds or the time is over, and then what has come by then; looks at
    /// the condition every few milliseconds. @return whether it holds
    bool serveUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit);

private:
    using Peer = std::shared_ptr<Connection>;
    using Clock = std::chrono::steady_clock;

    /// A send of ours that waits for its answer.
    struct Pending
    {
        quint32 number = 0;
        Peer connection;
        Clock::time_point lastSign; ///< of life from the receiver's process, by quietNow()
        bool silent = false; ///< that process let the time of a send in the chain go by
        bool done = false;
        qintptr result = 0;
    };
    /// A send of another process whose handler runs.
    struct Incoming
    {
        quint32 number = 0;
        Peer connection;
        Janela target = 0;
        bool answered = false;
    };

    /// A process whose end somebody wants to know.
    struct Watch
    {
        pid_t process = 0;
        std::function<void()> gone;
    };

    Bus() = default;
    qintptr sendWithin(const SendHead &head, QByteArrayView bytes);
    qintptr sendAcross(SendHead head, QByteArrayView bytes);
    qintptr call(const SendHead &head, const void *bytes);
    void startListening();
    void writeEntries();
    void watchDirectory();
    void renew();

    Peer connectionTo(pid_t process);
    Peer adopt(UnixFd socket, pid_t peer);
    void acceptAll();
    bool makeRoom();
    bool isWaitedFor(const Peer &peer) const;
    void drop(const Peer &peer);
    void endSendsOn(const Peer &peer);
    void write(const Peer &peer, QByteArrayView head, QByteArrayView body = {});

    void readable(const Peer &peer);
    void writable(const Peer &peer);
    void serve(const Peer &peer);
    void dispatch(const Peer &peer);
    Clock::time_point quietNow() const { return Clock::now() - mHandling; }
    void heardFrom(pid_t process);
    bool wasSilent(pid_t process) const;
    void giveUp(pid_t process);
    void receiveReply(const Peer &peer, const Reply &reply);
    void answer(const Peer &peer, quint32 number, qintptr result);
    void applyPlace(const Place &place);
    bool mayServe(const Peer &peer) const;
    void later(const std::function<void()> &work);
    void tellWatchers(pid_t process);
    bool serveHeldBack();
    void serveHeldBackLater();
    void step(std::chrono::milliseconds timeout);

    BufferPool mPool; // outlives the connections
    BusDirectory mDirectory;
    OwnWindows mWindows;
    UnixFd mListener;
    bool mWritten = true; ///< the entries stand as they were last to be written
    std::unique_ptr<QSocketNotifier> mAccepts;
    std::unique_ptr<QFileSystemWatcher> mWatcher; ///< of the directory
    std::vector<Peer> mConnections;
    std::list<Pending> mPending; // a list: the elements stay where they are
    std::list<Incoming> mIncoming;
    std::vector<Watch> mWatches;
    quint32 mNumber = 0;
    int mDepth = 0; ///< of our own sends
    std::chrono::milliseconds mSendLimit{5000};
    Clock::duration mHandling{}; ///< time of the handlers that have returned into the wait that runs
    std::unique_ptr<QObject> mContext; ///< of calls queued in the event loop
    bool mQueued = false;
};

/// Moves a widget as placeWindow() tells.
void placeWidget(QWidget &widget, Ordem ordem, unsigned flags);

} // namespace quorel::bus
