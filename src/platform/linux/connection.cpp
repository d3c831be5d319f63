#include "platform/linux/connection.h"

#include "platform/costuras.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace quorel::bus {

static constexpr std::size_t kKeptBuffers = 8;
/// A peer that has left this much unread will not read any more.
static constexpr std::size_t kLargestWaiting = 8 * kLargestFrame;

BufferPool::Buffer BufferPool::take()
{
    if (mFree.empty())
        return std::make_unique_for_overwrite<char[]>(kBufferBytes);
    Buffer buffer = std::move(mFree.back());
    mFree.pop_back();
    return buffer;
}

void BufferPool::giveBack(Buffer buffer)
{
    if (buffer && mFree.size() < kKeptBuffers)
        mFree.push_back(std::move(buffer));
}

Connection::Connection(UnixFd socket, pid_t peer, BufferPool &pool)
    : mSocket(std::move(socket)), mPeer(peer), mPool(pool), mBuffer(pool.take()), mSince(agora())
{ }

Connection::~Connection()
{
    close();
    mPool.giveBack(std::move(mBuffer));
}

void Connection::watch(const Ready &readable, const Ready &writable)
{
    mReads = std::make_unique<QSocketNotifier>(fd(), QSocketNotifier::Read);
    mWrites = std::make_unique<QSocketNotifier>(fd(), QSocketNotifier::Write);
    mWrites->setEnabled(isWriting());
    QObject::connect(mReads.get(), &QSocketNotifier::activated, mReads.get(), readable);
    QObject::connect(mWrites.get(), &QSocketNotifier::activated, mWrites.get(), writable);
}

void Connection::setReading(bool on)
{
    mReading = on;
    if (mReads && mReads->isEnabled() != on)
        mReads->setEnabled(on);
}

void Connection::close()
{
    // A notifier may be closing its own connection: it goes when its signal is done.
    for (auto *notifier : {&mReads, &mWrites}) {
        if (*notifier) {
            (*notifier)->setEnabled(false);
            notifier->release()->deleteLater();
        }
    }
    mSocket.reset();
}

bool Connection::receive()
{
    if (mBegin > 0) {
        std::memmove(mBuffer.get(), mBuffer.get() + mBegin, available());
        mEnd -= mBegin;
        mBegin = 0;
    }
    if (mEnd == kBufferBytes)
        return true;
    const ssize_t got = ::recv(fd(), mBuffer.get() + mEnd, kBufferBytes - mEnd, MSG_DONTWAIT);
    if (got < 0)
        return errno == EAGAIN || errno == EINTR;
    mEnd += std::size_t(got);
    const std::size_t skipped = std::min(mSkip, available());
    mSkip -= skipped;
    mBegin += skipped;
    mHeard = mHeard || (skipped > 0 && mSkip == 0);
    return got > 0;
}

Connection::Next Connection::next() const
{
    const auto start = frameStart(QByteArrayView(mBuffer.get() + mBegin, qsizetype(available())));
    if (!start)
        return Next::Nothing;
    if (!plausible(*start))
        return Next::Bad;
    const bool oversized = start->length > kLargestFrame;
    if (available() < (oversized ? kSendHeadBytes : start->length))
        return Next::Nothing;
    if (start->kind == kReply)
        return Next::Reply;
    if (start->kind == kPlace)
        return Next::Place;
    // The size claimed and the bytes that came have to agree, or a receiver would read what is not there.
    const qint64 size = decodeSend(front()).size;
    if (std::max<qint64>(size, 0) != qint64(start->length - kSendHeadBytes))
        return Next::Bad;
    return oversized ? Next::OversizedSend : Next::Send;
}

QByteArrayView Connection::front() const
{
    const char *at = mBuffer.get() + mBegin;
    const auto start = frameStart(QByteArrayView(at, qsizetype(available())));
    return QByteArrayView(at, qsizetype(std::min(start->length, available())));
}

void Connection::pop()
{
    const auto start = frameStart(QByteArrayView(mBuffer.get() + mBegin, qsizetype(available())));
    const std::size_t here = std::min(start->length, available());
    mSkip = start->length - here;
    mHeard = mHeard || mSkip == 0;
    mBegin += here;
    if (mBegin == mEnd)
        mBegin = mEnd = 0;
}

BufferPool::Buffer Connection::popKeeping()
{
    pop();
    BufferPool::Buffer fresh = mPool.take();
    std::memcpy(fresh.get(), mBuffer.get() + mBegin, available());
    mEnd = available();
    mBegin = 0;
    std::swap(fresh, mBuffer);
    return fresh;
}

bool Connection::canWrite() const
{
    pollfd state{fd(), 0, 0};
    return isOpen() && !mWriteFailed && ::poll(&state, 1, 0) == 0;
}

bool Connection::giveUpWriting()
{
    mWriteFailed = true;
    ::shutdown(fd(), SHUT_WR); // half a frame may be out: the peer sees the end, and closes
    mWaiting.clear();
    mSent = 0;
    if (mWrites)
        mWrites->setEnabled(false);
    return false;
}

bool Connection::write(QByteArrayView head, QByteArrayView body)
{
    if (!isOpen() || mWriteFailed)
        return false;
    std::size_t sent = 0;
    if (!isWriting()) {
        std::array<iovec, 2> parts{{{const_cast<char *>(head.data()), std::size_t(head.size())},
            {const_cast<char *>(body.data()), std::size_t(body.size())}}};
        msghdr message = {};
        message.msg_iov = parts.data();
        message.msg_iovlen = body.isEmpty() ? 1 : 2;
        const ssize_t done = ::sendmsg(fd(), &message, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (done < 0 && errno != EAGAIN && errno != EINTR)
            return giveUpWriting();
        sent = std::size_t(std::max<ssize_t>(done, 0));
    }
    const std::size_t total = std::size_t(head.size() + body.size());
    if (sent == total)
        return true;
    if (mWaiting.size() - mSent + total > kLargestWaiting)
        return giveUpWriting();
    mWaiting.erase(mWaiting.begin(), mWaiting.begin() + std::ptrdiff_t(std::exchange(mSent, 0)));
    const auto ofHead = std::min(qsizetype(sent), head.size());
    mWaiting.insert(mWaiting.end(), head.begin() + ofHead, head.end());
    mWaiting.insert(mWaiting.end(), body.begin() + (qsizetype(sent) - ofHead), body.end());
    if (mWrites)
        mWrites->setEnabled(true);
    return true;
}

bool Connection::flush()
{
    while (isWriting()) {
        const ssize_t done =
            ::send(fd(), mWaiting.data() + mSent, mWaiting.size() - mSent, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (done < 0)
            return errno == EAGAIN || errno == EINTR || giveUpWriting();
        mSent += std::size_t(done);
    }
    mWaiting.clear();
    mSent = 0;
    if (mWrites)
        mWrites->setEnabled(false);
    return true;
}

} // namespace quorel::bus
