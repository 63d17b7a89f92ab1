#pragma once

#include <unistd.h>

#include <utility>

namespace bouncecheck {

/// Owns a file descriptor.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) noexcept : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~UniqueFd() { reset(); }

    int get() const noexcept { return fd_; }
    explicit operator bool() const noexcept { return fd_ >= 0; }
    /// Closes it; false when that shows that something was not written.
    bool reset() noexcept { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

private:
    int fd_ = -1;
};

}  // namespace bouncecheck
