#include "tool/Interrupt.h"

#include <csignal>
#include <cstdlib>
#include <initializer_list>

namespace bouncecheck {
namespace {

volatile std::sig_atomic_t notedSignal = 0;

}  // namespace

void noteSignals() {
    struct sigaction action {};
    action.sa_handler = [](int signal) { notedSignal = signal; };
    sigemptyset(&action.sa_mask);
    // No SA_RESTART: a read that waits for more has to end.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        struct sigaction before {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
    }
}

void throwIfInterrupted() {
    if (notedSignal != 0) throw Interrupted();
}

void endByNotedSignal() {
    const int signal = notedSignal;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    std::_Exit(128 + signal);
}

}  // namespace bouncecheck
