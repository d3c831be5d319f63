#pragma once

#include "platform/linux/frame.h"
#include "platform/linux/unixfd.h"

#include <QDateTime>
#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <vector>

namespace quorel::bus {

/// Room for the largest frame and the beginnings of others; fresh memory costs only where it is touched.
inline constexpr std::size_t kBufferBytes = kLargestFrame + (std::size_t(64) << 10);

/// Buffers that were used once are used again: fresh memory is the dearest part of a large message.
class BufferPool final
{
public:
    using Buffer = std::unique_ptr<char[]>;
    Buffer take();
    void giveBack(Buffer buffer);

private:
    std::vector<Buffer> mFree;
};

/// One stream to another process of the bus, read and written without ever waiting.
class Connection final
{
    Q_DISABLE_COPY_MOVE(Connection)
public:
    using Ready = std::function<void()>;

    Connection(UnixFd socket, pid_t peer, BufferPool &pool);
    ~Connection();

    int fd() const { return mSocket.get(); }
    pid_t peer() const { return mPeer; }
    bool isOpen() const { return bool(mSocket); }
    const QDateTime &since() const { return mSince; } ///< when it was made
    bool wasHeard() const { return mHeard; } ///< whether a whole frame has come
    /// From now on the event loop calls these when something came, or when there is room to write again.
    void watch(const Ready &readable, const Ready &writable);
    void setReading(bool on); ///< whether the event loop, and the waits, look for what comes
    bool isReading() const { return mReading; }
    void close();

    /// Takes in what came, as far as there is room. @return false when the stream has ended or failed
    bool receive();

    enum class Next { Nothing, Send, OversizedSend, Reply, Place, Bad };
    /// What stands at the front of the bytes taken in; Nothing while it is not there whole.
    Next next() const;
    QByteArrayView front() const; ///< the whole frame (of an oversized send the head) that next() told of
    void pop(); ///< drops that frame

    /// As pop(), and gives away the buffer that the frame lies in, so that its bytes outlast whatever comes meanwhile.
    BufferPool::Buffer popKeeping();

    /// Sends a frame of two parts, now or as soon as there is room.
    /// @return false when the peer reads no more: it is gone, or far too much is waiting already
    bool write(QByteArrayView head, QByteArrayView body = {});
    bool flush(); ///< goes on with what is waiting; false when the peer reads no more
    bool isWriting() const { return mSent < mWaiting.size(); }
    /// Whether what is written now has a chance to be read; what the peer sent before it went can still be taken in.
    bool canWrite() const;

private:
    bool giveUpWriting();
    std::size_t available() const { return mEnd - mBegin; }

    UnixFd mSocket;
    pid_t mPeer;
    BufferPool &mPool;
    BufferPool::Buffer mBuffer;
    std::size_t mBegin = 0; ///< of what was taken in and not yet dropped
    std::size_t mEnd = 0;
    std::size_t mSkip = 0; ///< bytes of an oversized send that are still to come
    std::vector<char> mWaiting; ///< what could not be written yet
    std::size_t mSent = 0; ///< of mWaiting
    const QDateTime mSince;
    bool mHeard = false;
    bool mReading = true;
    bool mWriteFailed = false;
    std::unique_ptr<QSocketNotifier> mReads;
    std::unique_ptr<QSocketNotifier> mWrites;
};

} // namespace quorel::bus
