#pragma once

#include <poll.h>

#include <cerrno>

namespace bouncecheck {

/// Whether a read or write that has just failed, as errno says, may be tried again. Waits
/// for `event` (POLLIN or POLLOUT) where whoever has opened the pipe wants no call to wait:
/// that holds for all who share it.
inline bool mayTryAgain(int fd, short event) noexcept {
    if (errno == EINTR) return true;
    if (errno != EAGAIN) return false;
    pollfd waited = {fd, event, 0};
    return ::poll(&waited, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace bouncecheck
