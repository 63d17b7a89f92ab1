#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "tool/TemporaryFile.h"
#include "tool/UniqueFd.h"

namespace bouncecheck {

/// Writes to a file descriptor in large pieces. A failure throws std::runtime_error with
/// the name and the cause, and what was not written is dropped. What is left at the end is
/// written as far as that is possible.
class FdBuffer final : public std::streambuf {
public:
    /// `name` is for people. The descriptor stays with the caller.
    FdBuffer(int fd, std::string name);
    ~FdBuffer() override { writePending(); }

protected:
    int_type overflow(int_type c) override;
    int sync() override;

private:
    bool writePending() noexcept;

    int fd_;
    std::string name_;
    /// Not cleared: a message's line touches one page of it, a clear buffer all.
    std::unique_ptr<char[]> buffer_;
};

/// A stream that writes to a file descriptor. What its buffer throws comes out of every
/// operation, so that no failure goes unseen.
class FdStream final : public std::ostream {
public:
    FdStream(int fd, std::string name);

private:
    FdBuffer buffer_;
};

/// Writes all of `bytes`; false when that fails, and errno says why.
bool writeAll(int fd, const char* bytes, std::size_t size) noexcept;

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

/// The descriptor of this process that `path` names, such as 1 for /dev/stdout or
/// /dev/fd/1; -1 when it names none.
int descriptorIn(std::string_view path) noexcept;

/// The path that `path` leads to by symbolic links, when nothing is there yet as well.
/// `path` itself when they go round in circles.
std::string withoutLinks(const std::string& path);

/// Makes a rename or a new file in the folder of `path` last.
void syncFolderOf(std::string_view path) noexcept;

}  // namespace bouncecheck
