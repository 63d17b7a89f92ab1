#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace bouncecheck {

/// A file, whatever names and links lead to it.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

inline FileIdentity identityIn(const struct stat& status) noexcept {
    return {status.st_dev, status.st_ino};
}

/// What `path` leads to; nothing when that is not there.
inline std::optional<FileIdentity> identityOf(const std::string& path) noexcept {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return identityIn(status);
}

}  // namespace bouncecheck
