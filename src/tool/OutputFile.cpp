#include "tool/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "files/Paths.h"

namespace bouncecheck {
namespace {

mode_t modeForNewFiles() noexcept {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

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

}  // namespace bouncecheck
