#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck {

/// The names in a folder, in their order as bytes, stored closely because a
/// Maildir may have millions.
class FolderListing {
public:
    enum class Kind : char { file, folder, other };

    /// Reads the folder `path`. Throws ReadError.
    explicit FolderListing(const std::string& path);

    std::size_t size() const noexcept { return starts_.size(); }
    /// Valid as long as the listing.
    std::string_view name(std::size_t i) const noexcept { return names_.data() + starts_[i] + 1; }
    /// A symbolic link is what it leads to, but to a folder it is `other`, since
    /// links may go round in circles; one that leads nowhere is a file, which
    /// cannot be opened.
    Kind kind(std::size_t i) const noexcept { return static_cast<Kind>(names_[starts_[i]]); }
    bool hasFolder(std::string_view name) const noexcept;
    /// The name that a message of a Maildir has here, whatever its flags ("NAME:2,S"); nothing when
    /// it is not here. `uniqueName` is the part in front of them.
    std::optional<std::string_view> findMessage(std::string_view uniqueName) const;
    /// How many names it has here: two, if it was renamed while the folder was listed.
    std::size_t countNames(std::string_view uniqueName) const;

private:
    std::string_view nameAt(std::size_t start) const noexcept { return names_.data() + start + 1; }
    /// The name without flags, if it is here.
    std::optional<std::string_view> plainName(std::string_view uniqueName) const;
    /// The names of a message with flags, which stand one behind the other.
    std::span<const std::size_t> flaggedNames(std::string_view uniqueName) const;

    /// Each with its kind before and a NUL behind it.
    std::string names_;
    std::vector<std::size_t> starts_;
};

}  // namespace bouncecheck
