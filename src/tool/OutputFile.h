#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string>

#include "tool/UniqueFd.h"

namespace bouncecheck {

/// Writes to a file descriptor in large pieces.
class FdBuffer final : public std::streambuf {
public:
    explicit FdBuffer(int fd) noexcept : fd_(fd) {
        setp(buffer_.data(), buffer_.data() + buffer_.size());
    }

protected:
    int_type overflow(int_type c) override;
    int sync() override;

private:
    int fd_;
    std::array<char, 1 << 16> buffer_;
};

/// Writes all of `bytes`; false when that fails, and errno tells why.
bool writeAll(int fd, const char* bytes, std::size_t size) noexcept;

/// A file that comes to be whole or not at all: what is written goes to a file
/// beside it, which takes its place on `commit`. Without, the file beside it goes
/// and what was there before stays. What is no regular file (a device, a pipe) is
/// written to as it is.
class OutputFile {
public:
    /// Throws std::runtime_error when it cannot be created.
    explicit OutputFile(std::string path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    std::ostream& stream() noexcept { return stream_; }
    /// The path of the file beside it; "" when there is none.
    const std::string& temporary() const noexcept { return temporary_; }
    /// Throws std::runtime_error when not everything could be written.
    void commit();

private:
    void open();
    [[noreturn]] void fail() const;

    std::string path_;
    /// Empty when there is none, or none any more.
    std::string temporary_;
    UniqueFd fd_;
    FdBuffer buffer_;
    std::ostream stream_;
};

/// Makes a rename or a new file in the folder of `path` last.
void syncFolderOf(const std::string& path) noexcept;

}  // namespace bouncecheck
