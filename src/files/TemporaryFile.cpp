#include "files/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "files/SignalsBlocked.h"

namespace bouncecheck {
namespace {

/// What a signal removes. The names belong to their TemporaryFile.
std::array<std::atomic<const char*>, 8> namesToRemove;

bool replaceName(const char* before, const char* after) noexcept {
    for (std::atomic<const char*>& name : namesToRemove) {
        const char* expected = before;
        if (name.compare_exchange_strong(expected, after)) return true;
    }
    return false;
}

void removeAndEnd(int signal) noexcept {
    for (const std::atomic<const char*>& name : namesToRemove) {
        if (const char* path = name.load()) ::unlink(path);
    }
    // It waits until this handler is left, and then ends the program.
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace

void removeTemporariesOnSignals() noexcept {
    struct sigaction action {};
    action.sa_handler = removeAndEnd;
    sigfillset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGQUIT, SIGXCPU, SIGABRT, SIGALRM,
                             SIGVTALRM, SIGPROF, SIGUSR1, SIGUSR2}) {
        struct sigaction before {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

template <class Open>
bool TemporaryFile::createBy(std::string path, Open open) {
    remove();
    path_ = std::move(path);
    const SignalsBlocked blocked;
    fd_ = UniqueFd(open(path_.data()));
    if (fd_) {
        replaceName(nullptr, path_.c_str());
        return true;
    }
    path_.clear();
    return false;
}

bool TemporaryFile::create(std::string path, mode_t mode) {
    return createBy(std::move(path), [mode](const char* name) {
        return ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    });
}

bool TemporaryFile::createBeside(const std::string& target, mode_t mode) {
    // A name of its own: that of the target may be as long as a name can be.
    const std::string folder = target.substr(0, target.find_last_of('/') + 1);
    const bool isCreated = createBy(folder + ".bouncecheck.XXXXXX",
                                    [](char* name) { return ::mkostemp(name, O_CLOEXEC); });
    if (isCreated && ::fchmod(fd_.get(), mode) == 0) return true;
    remove();
    return false;
}

bool TemporaryFile::moveTo(const std::string& target) noexcept {
    const bool isMoved =
        ::fsync(fd_.get()) == 0 && fd_.reset() && std::rename(path_.c_str(), target.c_str()) == 0;
    if (isMoved) forget();
    return isMoved;
}

bool TemporaryFile::linkTo(const std::string& target) const noexcept {
    return ::fsync(fd_.get()) == 0 && ::link(path_.c_str(), target.c_str()) == 0;
}

void TemporaryFile::remove() noexcept {
    if (path_.empty()) return;
    const int reason = errno;
    ::unlink(path_.c_str());
    forget();
    errno = reason;
}

void TemporaryFile::forget() noexcept {
    replaceName(path_.c_str(), nullptr);
    path_.clear();
    fd_.reset();
}

}  // namespace bouncecheck
