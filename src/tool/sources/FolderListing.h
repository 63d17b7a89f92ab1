#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/UniqueFd.h"

struct dirent;

namespace bouncecheck {

class InputStream;

/// The names in a folder, in their order as bytes, stored closely because a
/// Maildir may have millions. The folder stays open meanwhile.
class FolderListing {
public:
    enum class Kind { file, folder, other };

    /// Reads the folder `path`. Throws ReadError.
    explicit FolderListing(const std::string& path);

    std::size_t size() const noexcept { return starts_.size(); }
    /// Valid as long as the listing.
    std::string_view name(std::size_t i) const noexcept { return nameAt(starts_[i]); }
    /// A symbolic link is what it leads to, but to a folder it is `other`, since
    /// links may go round in circles; one that leads nowhere is a file, which
    /// cannot be opened.
    Kind kind(std::size_t i) const noexcept {
        switch (listed(i)) {
            case Listed::folder: return Kind::folder;
            case Listed::other: return Kind::other;
            default: return Kind::file;
        }
    }
    /// Opens a file, whose path is `path`, as openFile does.
    std::unique_ptr<InputStream> open(std::size_t i, const std::string& path) const;
    bool hasFolder(std::string_view name) const noexcept;
    /// The name that a message of a Maildir has here, whatever its flags ("NAME:2,S"); nothing when
    /// it is not here. `uniqueName` is the part in front of them.
    std::optional<std::string_view> findMessage(std::string_view uniqueName) const;
    /// How many names it has here: two, if it was renamed while the folder was listed.
    std::size_t countNames(std::string_view uniqueName) const;

private:
    /// What the kernel says of a name: `file` may be a link to one, or what cannot be read.
    enum class Listed : char { regular, file, folder, other };
    static Listed listedAs(int folder, const dirent& entry);
    Listed listed(std::size_t i) const noexcept { return static_cast<Listed>(names_[starts_[i]]); }

    std::string_view nameAt(std::size_t start) const noexcept { return names_.data() + start + 1; }
    /// The name without flags, if it is here.
    std::optional<std::string_view> plainName(std::string_view uniqueName) const;
    /// The names of a message with flags, which stand one behind the other.
    std::span<const std::size_t> flaggedNames(std::string_view uniqueName) const;

    /// Not open when too many files were.
    UniqueFd folder_;
    /// Each with a Listed before and a NUL behind it.
    std::string names_;
    std::vector<std::size_t> starts_;
};

}  // namespace bouncecheck
