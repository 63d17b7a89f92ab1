#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "files/Retry.h"
#include "files/UniqueFd.h"
#include "tool/sources/InputStream.h"

namespace bouncecheck {
namespace {

[[noreturn]] void failWithErrno() {
    if (errno == ENOENT) throw NoSuchFile(std::strerror(errno));
    throw ReadError(std::strerror(errno));
}

class FileStream final : public InputStream {
public:
    explicit FileStream(UniqueFd fd) : fd_(std::move(fd)) {
        struct stat status;
        if (::fstat(fd_.get(), &status) == 0) note(status);
    }
    /// `status` is that of the file.
    FileStream(UniqueFd fd, const struct stat& status) : fd_(std::move(fd)) { note(status); }

    std::size_t read(std::span<char> room) override {
        // What is added from now on is for the next run.
        if (size_ && position_ >= *size_) return 0;
        for (;;) {
            const ssize_t count = ::read(fd_.get(), room.data(), room.size());
            if (count >= 0) {
                if (count == 0 && size_ && !room.empty()) {
                    size_ = position_;
                    throw ReadError("became shorter while it was read");
                }
                position_ += static_cast<std::uint64_t>(count);
                return static_cast<std::size_t>(count);
            }
            if (!mayTryAgain(fd_.get(), POLLIN)) failWithErrno();
        }
    }

    std::optional<std::uint64_t> sizeLeft() const override {
        if (!size_) return std::nullopt;
        return *size_ > position_ ? *size_ - position_ : 0;
    }

    std::optional<FileIdentity> identity() const override { return identity_; }

    double fractionRead() const override {
        return size_ && *size_ > 0 ? static_cast<double>(position_) / static_cast<double>(*size_)
                                   : 0;
    }
    std::uint64_t bytesRead() const override { return position_; }

private:
    void note(const struct stat& status) {
        if (!S_ISREG(status.st_mode)) return;
        // Files of the kernel have no size and are read to their end.
        if (status.st_size > 0) size_ = static_cast<std::uint64_t>(status.st_size);
        identity_ = identityIn(status);
    }

    UniqueFd fd_;
    std::optional<std::uint64_t> size_;
    std::optional<FileIdentity> identity_;
    std::uint64_t position_ = 0;
};

UniqueFd openReadOnly(int folder, const char* name) {
    // Without O_NONBLOCK the open of a pipe waits for its writer.
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    // Mail readers recognise new mail by the access time. Only the owner may spare it.
    UniqueFd fd(::openat(folder, name, flags | O_NOATIME));
    if (!fd && errno == EPERM) fd = UniqueFd(::openat(folder, name, flags));
    if (!fd) failWithErrno();
    return fd;
}

void requireRegular(const struct stat& status) {
    if (S_ISFIFO(status.st_mode)) throw ReadError("is a named pipe");
    if (S_ISSOCK(status.st_mode)) throw ReadError("is a socket");
    if (S_ISDIR(status.st_mode)) throw ReadError("is a folder");
    if (!S_ISREG(status.st_mode)) throw ReadError("is a device");
}

bool namesDescriptor(std::string_view path) noexcept {
    return path == "/dev/stdin" || path.starts_with("/dev/fd/") ||
           path.starts_with("/proc/self/fd/");
}

}  // namespace

std::unique_ptr<InputStream> openFile(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) failWithErrno();
    if (S_ISFIFO(status.st_mode) && namesDescriptor(path)) {
        UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        if (!fd) failWithErrno();
        return std::make_unique<FileStream>(std::move(fd));
    }
    requireRegular(status);
    return std::make_unique<FileStream>(openReadOnly(AT_FDCWD, path.c_str()));
}

std::unique_ptr<InputStream> openListedFile(int folder, const char* name) {
    UniqueFd fd = openReadOnly(folder, name);
    struct stat status;
    if (::fstat(fd.get(), &status) != 0) failWithErrno();
    // It may have been replaced since.
    requireRegular(status);
    return std::make_unique<FileStream>(std::move(fd), status);
}

std::unique_ptr<InputStream> openStandardInput() {
    UniqueFd fd(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3));
    if (!fd) failWithErrno();
    return std::make_unique<FileStream>(std::move(fd));
}

}  // namespace bouncecheck
