#pragma once

#include <sys/types.h>

#include <string>

#include "files/UniqueFd.h"

namespace bouncecheck {

/// From here on a signal that ends the program (SIGINT, SIGTERM, SIGHUP, SIGPIPE and
/// others) removes the temporary files first, wherever the program waits. Its caller
/// sees the status that it expects of that signal. Signals that are ignored stay so,
/// and a file that grows beyond the limit of the process is an error of that write.
void removeTemporariesOnSignals() noexcept;

/// A file that is complete when it is moved to its place, and is removed otherwise.
/// At most eight of them are removed on signals.
class TemporaryFile {
public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { remove(); }

    /// Creates the file at `path`, where nothing may be. False when that fails, and errno
    /// says why; so do all below.
    bool create(std::string path, mode_t mode);
    /// Creates it beside `target`, with a name that no other file has.
    bool createBeside(const std::string& target, mode_t mode);

    /// "" when there is none.
    const std::string& path() const noexcept { return path_; }
    /// -1 when there is none.
    int fd() const noexcept { return fd_.get(); }

    /// Moves it to `target` once all that was written is on the disk.
    bool moveTo(const std::string& target) noexcept;
    /// Gives it the name `target` besides its own by then, unless something has that name (EEXIST).
    bool linkTo(const std::string& target) const noexcept;
    void remove() noexcept;

private:
    template <class Open>
    bool createBy(std::string path, Open open);
    void forget() noexcept;

    std::string path_;
    UniqueFd fd_;
};

}  // namespace bouncecheck
