#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

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

}  // namespace bouncecheck
