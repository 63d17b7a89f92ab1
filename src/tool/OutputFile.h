#pragma once

#include <ostream>
#include <string>

#include "files/FdStream.h"
#include "files/TemporaryFile.h"
#include "files/UniqueFd.h"

namespace bouncecheck {

/// A file that appears complete or not at all: what is written goes to a temporary file
/// beside it, which takes its place on `commit`. Without, the temporary file is removed
/// and what was there before stays. A symbolic link stays, and what it leads to is
/// replaced or created. What is no regular file (a device, a pipe) is written to as it
/// is, and so are the descriptors of this process (/dev/stdout, /dev/fd/3).
class OutputFile {
public:
    /// Throws std::runtime_error when it cannot be created.
    explicit OutputFile(std::string path);

    std::ostream& stream() noexcept { return stream_; }
    /// The path of the temporary file; "" when there is none.
    const std::string& temporary() const noexcept { return file_.path(); }
    /// Throws std::runtime_error when not everything could be written.
    void commit();

private:
    /// The descriptor to write to.
    int open();
    [[noreturn]] void fail() const;

    std::string path_;
    TemporaryFile file_;
    /// What is written to as it is.
    UniqueFd fd_;
    FdStream stream_;
};

}  // namespace bouncecheck
