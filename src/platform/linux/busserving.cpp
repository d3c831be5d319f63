// What comes in: new connections, frames, and the handlers that they lead to. Any handler may send, and so come back
// here before it returns.
#include "platform/costuras.h"
#include "platform/linux/bus.h"

#include <QScopeGuard>
#include <QVarLengthArray>

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>

namespace quorel::bus {

static constexpr std::size_t kMaxConnections = 256;
static constexpr int kUsualConnections = 16;
/// So long a connection may stand without a whole frame before it makes room for a new one.
static constexpr std::chrono::seconds kMuteLimit{30};

void Bus::acceptAll()
{
    for (;;) {
        UnixFd socket(::accept4(mListener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!socket)
            return;
        pid_t process = 0;
        if (peerIsOurs(socket.get(), process) && makeRoom())
            adopt(std::move(socket), process);
    }
}

/// Where all places are taken, the oldest connection that never said anything gives up its own.
bool Bus::makeRoom()
{
    if (mConnections.size() < kMaxConnections)
        return true;
    const auto mute = std::ranges::find_if(mConnections, [this, now = agora()](const Peer &peer) {
        return !peer->wasHeard() && !isWaitedFor(peer) && peer->since().secsTo(now) >= kMuteLimit.count();
    });
    if (mute == mConnections.end())
        return false;
    drop(*mute);
    return true;
}

bool Bus::isWaitedFor(const Peer &peer) const
{
    return std::ranges::count(mPending, peer, &Pending::connection) > 0;
}

void Bus::readable(const Peer &peer)
{
    if (!peer->isOpen() || !peer->isReading())
        return;
    if (!peer->receive()) {
        drop(peer);
        return;
    }
    serve(peer);
}

void Bus::writable(const Peer &peer)
{
    if (!peer->isOpen())
        return;
    if (!peer->flush())
        endSendsOn(peer);
}

/// Whether a send of that process may be served now. Who sends is waiting for the answer: another send of the same
/// process is due only while it serves one of ours. What comes beyond that (a flood) waits for its turn, or each would
/// be handled inside the one before until the stack is gone.
bool Bus::mayServe(const Peer &peer) const
{
    const auto running = std::ranges::count_if(
        mIncoming, [&](const Incoming &each) { return each.connection->peer() == peer->peer() && !each.answered; });
    const auto waiting = std::ranges::count_if(
        mPending, [&](const Pending &each) { return each.connection->peer() == peer->peer() && !each.done; });
    return running <= waiting;
}

/// Handles the frames taken in, but one send at most: then the others, and the user, have their turn.
void Bus::serve(const Peer &peer)
{
    for (bool served = false; peer->isOpen();) {
        switch (peer->next()) {
        case Connection::Next::Nothing:
            peer->setReading(true);
            return;
        case Connection::Next::Bad:
            drop(peer);
            return;
        case Connection::Next::Reply:
            receiveReply(peer, decodeReply(peer->front()));
            peer->pop();
            break;
        case Connection::Next::Place: {
            const Place place = decodePlace(peer->front());
            peer->pop();
            applyPlace(place);
            break;
        }
        case Connection::Next::OversizedSend: {
            const quint32 number = decodeSend(peer->front()).number;
            peer->pop();
            answer(peer, number, 0);
            break;
        }
        case Connection::Next::Send:
            if (served || !mayServe(peer)) {
                peer->setReading(false);
                if (served)
                    serveHeldBackLater();
                return;
            }
            served = true;
            dispatch(peer);
            break;
        }
    }
}

void Bus::dispatch(const Peer &peer)
{
    const SendHead head = decodeSend(peer->front());
    const char *bytes = peer->front().data() + kSendHeadBytes;
    const auto incoming = mIncoming.insert(mIncoming.end(), {head.number, peer, Janela(head.target), false});
    heardFrom(peer->peer());
    {
        const auto finished = qScopeGuard([&, start = Clock::now(), before = mHandling] {
            mIncoming.erase(incoming);
            mHandling = before + (Clock::now() - start); // the time of our handlers does not count
            for (Pending &pending : mPending) // a sign that came inside one counts from its end
                pending.lastSign = std::min(pending.lastSign, quietNow());
        });
        BufferPool::Buffer kept = peer->popKeeping();
        const qintptr result = call(head, bytes);
        mPool.giveBack(std::move(kept));
        if (!incoming->answered)
            answer(peer, head.number, result);
    }
    serveHeldBackLater();
}

void Bus::receiveReply(const Peer &peer, const Reply &reply)
{
    for (Pending &pending : mPending) {
        if (pending.number == reply.number && pending.connection == peer) {
            pending.result = pending.done ? 0 : qintptr(reply.result);
            pending.done = true;
            heardFrom(peer->peer());
        }
    } // one that nobody waits for any more is dropped
}

void Bus::applyPlace(const Place &place)
{
    QWidget *body = mWindows.contains(place.target) ? mWindows.bodyOf(place.target) : nullptr;
    if (body && place.order <= quint32(Ordem::NoTopmost))
        placeWidget(*body, Ordem(place.order), place.flags);
}

/// @return whether one was served: more may follow, and what somebody waits for may have come meanwhile
bool Bus::serveHeldBack()
{
    bool served = false;
    for (const auto connections = mConnections; const Peer &peer : connections) {
        if (peer->isOpen() && !peer->isReading() && mayServe(peer)) {
            serve(peer);
            served = true;
        }
    }
    return served;
}

/// In the next turn of the event loop, so that user and windows are not shut out.
void Bus::serveHeldBackLater()
{
    if (mQueued || std::ranges::all_of(mConnections, &Connection::isReading, &Peer::operator*))
        return;
    mQueued = true;
    later([this] {
        mQueued = false;
        serveHeldBack();
    });
}

/// Waits for something to come, no longer than the time given (negative: for ever), and serves it.
void Bus::step(std::chrono::milliseconds timeout)
{
    if (serveHeldBack())
        timeout = std::chrono::milliseconds(0);
    QVarLengthArray<pollfd, kUsualConnections> places;
    QVarLengthArray<Peer, kUsualConnections> peers;
    places.push_back({mListener.get(), POLLIN, 0}); // a negative one is passed over
    for (const Peer &peer : std::as_const(mConnections)) {
        const int events = (peer->isReading() ? POLLIN : 0) | (peer->isWriting() ? POLLOUT : 0);
        if (events == 0)
            continue;
        peers.push_back(peer);
        places.push_back({peer->fd(), short(events), 0});
    }
    if (::poll(places.data(), nfds_t(places.size()), int(timeout.count())) <= 0)
        return;
    if (places[0].revents != 0)
        acceptAll();
    for (qsizetype i = 0; i < peers.size(); ++i) {
        if ((places[i + 1].revents & POLLOUT) != 0)
            writable(peers[i]);
        if ((places[i + 1].revents & ~POLLOUT) != 0)
            readable(peers[i]);
    }
}

} // namespace quorel::bus
