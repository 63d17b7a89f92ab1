#pragma once

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

#include "files/UniqueFd.h"

namespace bouncecheck {

/// Keeps the signals that ask the program to end, so that it can end in its own time.
class EndSignals {
public:
    EndSignals() noexcept {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
        ::pthread_sigmask(SIG_BLOCK, &signals, &before_);
        fd_ = UniqueFd(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals() {
        // Those that have come were heard; they are not to end the program another time.
        signalfd_siginfo heard;
        while (::read(fd_.get(), &heard, sizeof heard) > 0) {
        }
        ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

    /// Is ready to be read once a signal has come.
    int fd() const noexcept { return fd_.get(); }

private:
    sigset_t before_;
    UniqueFd fd_;
};

}  // namespace bouncecheck
