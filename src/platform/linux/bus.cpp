#include "platform/linux/bus.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include <algorithm>

namespace quorel::bus {

/// A chain of sends within sends goes no deeper: each level costs stack in both processes.
static constexpr int kMaxDepth = 500;

Bus &Bus::instance()
{
    static Bus bus;
    return bus;
}

void Bus::publish(std::vector<OwnWindow> windows)
{
    startListening();
    for (OwnWindow &window : windows)
        mWindows.add(std::move(window));
    writeEntries();
}

void Bus::startListening()
{
    if (mListener)
        return;
    mListener = mDirectory.listen();
    if (!mListener)
        return;
    mAccepts = std::make_unique<QSocketNotifier>(mListener.get(), QSocketNotifier::Read);
    QObject::connect(mAccepts.get(), &QSocketNotifier::activated, mAccepts.get(), [this] { acceptAll(); });
    if (!mWatcher)
        qAddPostRoutine([] { Bus::instance().leave(); }); // notifiers do not outlive the application
    watchDirectory();
}

/// A child whose answer is due looks for us in the directory: what was removed there can't wait for our own next
/// search.
void Bus::watchDirectory()
{
    if (!mWatcher) {
        mWatcher = std::make_unique<QFileSystemWatcher>();
        QObject::connect(mWatcher.get(), &QFileSystemWatcher::directoryChanged, mWatcher.get(), [this] { renew(); });
    }
    if (mWatcher->directories().isEmpty()) // one that was removed is not watched any more
        mWatcher->addPath(BusDirectory::path());
}

void Bus::writeEntries()
{
    mWritten = mDirectory.publish(mWindows.entries());
}

/// Publishes again what somebody has removed, or what could not be published so far.
void Bus::renew()
{
    if (mWindows.entries().empty() || (mListener && mDirectory.holdsOwn()))
        return;
    mAccepts.reset();
    mListener.reset(); // connections that stand go on
    startListening();
    writeEntries();
}

const std::vector<Entry> &Bus::entries()
{
    renew();
    return mDirectory.entries();
}

bool Bus::isReachable()
{
    startListening();
    return mListener && mWritten;
}

void Bus::setTitle(Janela handle, const QString &title)
{
    if (mWindows.setTitle(handle, title))
        writeEntries();
}

void Bus::withdraw(Janela handle)
{
    const std::vector<Janela> removed = mWindows.remove(handle);
    if (removed.empty())
        return;
    writeEntries();
    for (Incoming &incoming : mIncoming) {
        if (!incoming.answered && std::ranges::count(removed, incoming.target) > 0) {
            incoming.answered = true;
            answer(incoming.connection, incoming.number, 0);
        }
    }
}

void Bus::leave()
{
    mWatches.clear();
    for (const Entry &entry : mWindows.entries())
        withdraw(entry.handle);
    for (const auto connections = mConnections; const Peer &peer : connections) {
        peer->flush();
        drop(peer);
    }
    mAccepts.reset();
    mWatcher.reset();
    mContext.reset();
    mQueued = false;
    if (mListener) {
        mListener.reset();
        mDirectory.remove(::getpid());
    }
}

qintptr Bus::send(const SendHead &head, QByteArrayView bytes)
{
    if (mDepth >= kMaxDepth)
        return 0;
    ++mDepth;
    const auto restore = qScopeGuard([this] { --mDepth; });
    return processOf(head.target) == ::getpid() ? sendWithin(head, bytes) : sendAcross(head, bytes);
}

qintptr Bus::sendWithin(const SendHead &head, QByteArrayView bytes)
{
    return call(head, bytes.data());
}

/// Calls the procedure of a window of ours; 0 when there is none.
qintptr Bus::call(const SendHead &head, const void *bytes)
{
    const auto procedure = mWindows.procedureOf(head.target);
    if (!procedure)
        return 0;
    const CopyData data{head.code, quint32(head.size), head.size > 0 ? bytes : nullptr};
    return callWindowProc(*procedure, head.target, kCopyData, head.sender, qintptr(&data));
}

qintptr Bus::sendAcross(SendHead head, QByteArrayView bytes)
{
    const Peer peer = connectionTo(processOf(head.target));
    if (!peer)
        return 0;
    head.number = ++mNumber;
    // Where its silence has ended a send of the chain, the message goes out, but there is no time left to wait in.
    const bool silent = wasSilent(peer->peer());
    const auto pending = mPending.insert(mPending.end(), {head.number, peer, quietNow(), silent});
    const auto forget = qScopeGuard([&] { mPending.erase(pending); });
    write(peer, encode(head), bytes);
    while (!pending->done && !pending->silent) {
        std::chrono::milliseconds left{-1}; // for ever
        if (mSendLimit.count() > 0) {
            left = std::chrono::ceil<std::chrono::milliseconds>(pending->lastSign + mSendLimit - quietNow());
            if (left.count() <= 0)
                giveUp(peer->peer());
        }
        if (!pending->silent)
            step(left);
    }
    return pending->result;
}

/// An answer, or a whole send, has come from a process: what else it writes is no sign of life.
void Bus::heardFrom(pid_t process)
{
    for (Pending &pending : mPending) {
        if (pending.connection->peer() == process) {
            pending.lastSign = quietNow();
            pending.silent = false;
        }
    }
}

bool Bus::wasSilent(pid_t process) const
{
    return std::ranges::any_of(
        mPending, [&](const Pending &each) { return each.silent && each.connection->peer() == process; });
}

/// Ends all sends to a process that are waiting inside one another: each would otherwise wait as long again.
void Bus::giveUp(pid_t process)
{
    for (Pending &pending : mPending)
        pending.silent = pending.silent || pending.connection->peer() == process;
}

void Bus::place(const Place &place)
{
    if (const Peer peer = connectionTo(processOf(place.target)))
        write(peer, encode(place));
}

bool Bus::isAlive(pid_t process)
{
    return process == ::getpid() || connectionTo(process);
}

bool Bus::isDone(pid_t process)
{
    return !isAlive(process)
        && std::ranges::none_of(mConnections, [&](const Peer &peer) { return peer->peer() == process; });
}

void Bus::releaseSenders()
{
    for (Incoming &incoming : mIncoming) {
        if (!std::exchange(incoming.answered, true))
            answer(incoming.connection, incoming.number, 1);
    }
}

bool Bus::serveUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    static constexpr std::chrono::milliseconds kLook{5};
    const auto end = Clock::now() + limit;
    for (bool last = false; !condition(); last = Clock::now() >= end) {
        step(last ? std::chrono::milliseconds(0) : kLook);
        if (last)
            return condition();
    }
    return true;
}

Bus::Peer Bus::connectionTo(pid_t process)
{
    for (const Peer &peer : mConnections) {
        if (peer->peer() == process && peer->canWrite())
            return peer;
    }
    if (process <= 0 || process == ::getpid())
        return nullptr;
    BusDirectory::Connected connected = mDirectory.connect(process);
    if (connected.reach == BusDirectory::Reach::Gone)
        mDirectory.remove(process);
    if (connected.reach != BusDirectory::Reach::Connected)
        return nullptr;
    return adopt(std::move(connected.socket), process);
}

Bus::Peer Bus::adopt(UnixFd socket, pid_t process)
{
    auto peer = std::make_shared<Connection>(std::move(socket), process, mPool);
    mConnections.push_back(peer);
    const std::weak_ptr<Connection> weak = peer;
    peer->watch(
        [this, weak] {
            if (const Peer here = weak.lock())
                readable(here);
        },
        [this, weak] {
            if (const Peer here = weak.lock())
                writable(here);
        });
    return peer;
}

void Bus::drop(const Peer &peer)
{
    // The argument may lie in the list.
    const Peer keep = peer; // NOLINT(performance-unnecessary-copy-initialization)
    keep->close();
    std::erase(mConnections, keep);
    endSendsOn(keep);
    if (std::ranges::count(mWatches, keep->peer(), &Watch::process) > 0)
        later([this, process = keep->peer()] { tellWatchers(process); });
}

/// A connection to the process stands for as long as it lives: its end is what tells.
void Bus::watch(pid_t process, std::function<void()> gone)
{
    if (process <= 0 || process == ::getpid())
        return;
    mWatches.push_back({process, std::move(gone)});
    if (!isAlive(process))
        later([this, process] { tellWatchers(process); });
}

void Bus::tellWatchers(pid_t process)
{
    if (isAlive(process)) // only that connection was closed
        return;
    const auto first = std::stable_partition(
        mWatches.begin(), mWatches.end(), [&](const Watch &each) { return each.process != process; });
    const std::vector<Watch> told(std::make_move_iterator(first), std::make_move_iterator(mWatches.end()));
    mWatches.erase(first, mWatches.end());
    for (const Watch &each : told)
        each.gone();
}

/// Once, in the next turn of the event loop.
void Bus::later(const std::function<void()> &work)
{
    if (!mContext)
        mContext = std::make_unique<QObject>();
    QMetaObject::invokeMethod(mContext.get(), work, Qt::QueuedConnection);
}

void Bus::endSendsOn(const Peer &peer)
{
    for (Pending &pending : mPending) {
        if (pending.connection == peer)
            pending.done = true;
    }
}

/// Writes, or ends the sends that can't be answered any more; what the peer wrote before is still read.
void Bus::write(const Peer &peer, QByteArrayView head, QByteArrayView body)
{
    if (!peer->write(head, body))
        endSendsOn(peer);
}

void Bus::answer(const Peer &peer, quint32 number, qintptr result)
{
    write(peer, encode(Reply{number, result}));
}

} // namespace quorel::bus
