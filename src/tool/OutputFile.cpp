#include "tool/OutputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "tool/Retry.h"

namespace bouncecheck {
namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 16;

mode_t modeForNewFiles() noexcept {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

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

OutputFile::OutputFile(std::string path) : path_(std::move(path)), stream_{open(), path_} {}

int OutputFile::open() {
    const int descriptor = descriptorIn(path_);
    struct stat status;
    const bool exists = ::stat(path_.c_str(), &status) == 0;
    if (descriptor >= 0 || (exists && !S_ISREG(status.st_mode))) {
        // A descriptor that is opened anew would write over what it has written.
        fd_ = UniqueFd(descriptor >= 0 ? ::fcntl(descriptor, F_DUPFD_CLOEXEC, 3)
                                       : ::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
        if (!fd_) fail();
        return fd_.get();
    }
    if (!exists && errno != ENOENT) fail();
    path_ = withoutLinks(path_);
    const mode_t mode = exists ? status.st_mode & 07777 : modeForNewFiles();
    if (!file_.createBeside(path_, mode)) fail();
    return file_.fd();
}

void OutputFile::commit() {
    stream_.flush();
    if (temporary().empty()) return;
    if (!file_.moveTo(path_)) fail();
    syncFolderOf(path_);
}

void OutputFile::fail() const { throw std::runtime_error(path_ + ": " + std::strerror(errno)); }

int descriptorIn(std::string_view path) noexcept {
    constexpr std::array<std::pair<std::string_view, int>, 3> names = {
        {{"/dev/stdin", STDIN_FILENO},
         {"/dev/stdout", STDOUT_FILENO},
         {"/dev/stderr", STDERR_FILENO}}};
    for (const auto& [name, descriptor] : names) {
        if (path == name) return descriptor;
    }
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder)) continue;
        const std::string_view number = path.substr(folder.size());
        int descriptor = -1;
        const auto [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), descriptor);
        if (error == std::errc() && end == number.data() + number.size()) return descriptor;
    }
    return -1;
}

std::string withoutLinks(const std::string& path) {
    namespace fs = std::filesystem;
    constexpr int mostLinks = 40;  // as the kernel has it
    std::error_code error;
    fs::path target = path;
    for (int links = 0; links < mostLinks; ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error) return target.string();
        target = target.parent_path() / next;  // which is `next` when that is absolute
    }
    return path;
}

void syncFolderOf(std::string_view path) noexcept {
    std::array<char, PATH_MAX> folder = {'.'};
    const std::size_t size = path.rfind('/') + 1;
    if (size >= folder.size()) return;  // what is that long cannot have been opened
    path.copy(folder.data(), size);
    const UniqueFd fd(::open(folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd) ::fsync(fd.get());
}

}  // namespace bouncecheck
