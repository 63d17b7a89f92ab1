#include "tool/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace bouncecheck {
namespace {

mode_t modeForNewFiles() noexcept {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

bool writeAll(int fd, const char* bytes, std::size_t size) noexcept {
    while (size > 0) {
        const ssize_t count = ::write(fd, bytes, size);
        if (count < 0 && errno != EINTR) return false;
        if (count < 0) continue;
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

FdBuffer::int_type FdBuffer::overflow(int_type c) {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) sputc(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
}

int FdBuffer::sync() {
    const bool isWritten = writeAll(fd_, pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    return isWritten ? 0 : -1;
}

OutputFile::OutputFile(std::string path)
    : path_(std::move(path)), buffer_((open(), fd_.get())), stream_(&buffer_) {}

void OutputFile::open() {
    struct stat status;
    const bool exists = ::stat(path_.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        fd_ = UniqueFd(::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
        if (!fd_) fail();
        return;
    }
    std::error_code error;
    // A link stays a link: what it leads to is replaced.
    if (exists) path_ = std::filesystem::canonical(path_, error).string();
    if (error) fail();
    std::string temporary = path_ + ".XXXXXX";
    fd_ = UniqueFd(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!fd_) fail();
    temporary_ = std::move(temporary);
    const mode_t mode = exists ? status.st_mode & 07777 : modeForNewFiles();
    if (::fchmod(fd_.get(), mode) != 0) {
        ::unlink(temporary_.c_str());
        fail();
    }
}

OutputFile::~OutputFile() {
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void OutputFile::commit() {
    if (!stream_.flush()) fail();
    if (temporary_.empty()) return;
    if (::fsync(fd_.get()) != 0 || !fd_.reset()) fail();
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail();
    temporary_.clear();
    syncFolderOf(path_);
}

void OutputFile::fail() const { throw std::runtime_error(path_ + ": " + std::strerror(errno)); }

void syncFolderOf(const std::string& path) noexcept {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const UniqueFd fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd) ::fsync(fd.get());
}

}  // namespace bouncecheck
