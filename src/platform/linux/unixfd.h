#pragma once

#include <unistd.h>

#include <utility>

namespace quorel::bus {

/// Owns a file descriptor; -1 is none.
class UnixFd final
{
public:
    UnixFd() = default;
    explicit UnixFd(int fd) : mFd(fd) { }
    UnixFd(UnixFd &&other) noexcept : mFd(std::exchange(other.mFd, -1)) { }
    UnixFd &operator=(UnixFd &&other) noexcept
    {
        std::swap(mFd, other.mFd);
        return *this;
    }
    UnixFd(const UnixFd &) = delete;
    UnixFd &operator=(const UnixFd &) = delete;
    ~UnixFd() { reset(); }

    int get() const { return mFd; }
    explicit operator bool() const { return mFd >= 0; }
    void reset()
    {
        if (mFd >= 0)
            ::close(std::exchange(mFd, -1));
    }

private:
    int mFd = -1;
};

} // namespace quorel::bus
