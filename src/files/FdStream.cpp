#include "files/FdStream.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "files/Retry.h"

namespace bouncecheck {
namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 16;

}  // namespace

bool writeAll(int fd, const char* bytes, std::size_t size) noexcept {
    while (size > 0) {
        const ssize_t count = ::write(fd, bytes, size);
        if (count < 0 && !mayTryAgain(fd, POLLOUT)) return false;
        if (count < 0) continue;
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

FdBuffer::FdBuffer(int fd, std::string name)
    : fd_(fd), name_(std::move(name)), buffer_(std::make_unique_for_overwrite<char[]>(bufferSize)) {
    setp(buffer_.get(), buffer_.get() + bufferSize);
}

FdBuffer::int_type FdBuffer::overflow(int_type c) {
    sync();
    if (!traits_type::eq_int_type(c, traits_type::eof())) sputc(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
}

int FdBuffer::sync() {
    if (!writePending()) throw std::runtime_error(name_ + ": " + std::strerror(errno));
    return 0;
}

bool FdBuffer::writePending() noexcept {
    const bool isWritten = writeAll(fd_, pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(buffer_.get(), buffer_.get() + bufferSize);
    return isWritten;
}

FdStream::FdStream(int fd, std::string name) : std::ostream(nullptr), buffer_(fd, std::move(name)) {
    rdbuf(&buffer_);
    exceptions(std::ios::badbit);
}

}  // namespace bouncecheck
