#include "tool/sources/FolderListing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "tool/sources/InputStream.h"

namespace bouncecheck {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

}  // namespace

FolderListing::Listed FolderListing::listedAs(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return Listed::regular;
    if (entry.d_type == DT_DIR) return Listed::folder;
    struct stat status;
    const bool isLink = entry.d_type == DT_LNK;
    if (::fstatat(folder, entry.d_name, &status, isLink ? 0 : AT_SYMLINK_NOFOLLOW) != 0) {
        return Listed::file;
    }
    if (S_ISDIR(status.st_mode)) return isLink ? Listed::other : Listed::folder;
    return Listed::file;
}

FolderListing::FolderListing(const std::string& path) {
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(path.c_str()));
    if (!folder) throw ReadError(std::strerror(errno));
    for (errno = 0; const dirent* entry = ::readdir(folder.get()); errno = 0) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        starts_.push_back(names_.size());
        names_ += static_cast<char>(listedAs(::dirfd(folder.get()), *entry));
        names_.append(name).push_back('\0');
    }
    if (errno != 0) throw ReadError(std::strerror(errno));
    folder_ = UniqueFd(::fcntl(::dirfd(folder.get()), F_DUPFD_CLOEXEC, 3));
    std::ranges::sort(starts_, {}, [&](std::size_t start) {
        return std::string_view(names_.data() + start + 1);
    });
}

std::unique_ptr<InputStream> FolderListing::open(std::size_t i, const std::string& path) const {
    if (listed(i) != Listed::regular || !folder_) return openFile(path);
    return openListedFile(folder_.get(), name(i).data());
}

bool FolderListing::hasFolder(std::string_view wanted) const noexcept {
    for (std::size_t i = 0; i < size(); ++i) {
        if (name(i) == wanted) return kind(i) == Kind::folder;
    }
    return false;
}

std::span<const std::size_t> FolderListing::flaggedNames(std::string_view uniqueName) const {
    const std::string beginning = std::string(uniqueName) + ':';
    const auto first = std::ranges::lower_bound(starts_, std::string_view(beginning), {},
                                                [&](std::size_t start) { return nameAt(start); });
    const auto end = std::find_if_not(first, starts_.end(), [&](std::size_t start) {
        return nameAt(start).starts_with(beginning);
    });
    return {first, end};
}

std::optional<std::string_view> FolderListing::plainName(std::string_view uniqueName) const {
    const auto found = std::ranges::lower_bound(starts_, uniqueName, {},
                                                [&](std::size_t start) { return nameAt(start); });
    if (found == starts_.end() || nameAt(*found) != uniqueName) return std::nullopt;
    return nameAt(*found);
}

std::optional<std::string_view> FolderListing::findMessage(std::string_view uniqueName) const {
    const auto flagged = flaggedNames(uniqueName);
    return flagged.empty() ? plainName(uniqueName) : nameAt(flagged.front());
}

std::size_t FolderListing::countNames(std::string_view uniqueName) const {
    return flaggedNames(uniqueName).size() + (plainName(uniqueName) ? 1 : 0);
}

}  // namespace bouncecheck
