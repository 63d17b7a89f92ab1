#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "tool/sources/FolderListing.h"

namespace bouncecheck {

/// Messages of a Maildir that had another name when their turn came: mail servers move them from
/// `new` to `cur`, and give them a new name for new flags. What stands before the ':' stays.
class RenamedMessages {
public:
    enum class Folder { fresh, cur };

    struct Reading {
        /// Lists `cur` anew; nothing when that cannot be done.
        std::function<std::optional<FolderListing>()> list;
        /// Reads a file; false when there is none of that name.
        std::function<bool(const std::string& path)> read;
        /// Tells of a file that is nowhere.
        std::function<void(const std::string& path)> miss;
    };

    /// `path` is the file that was not there, and `folder` where it was listed.
    void add(const std::string& path, Folder folder);
    bool empty() const noexcept { return messages_.empty(); }

    /// Reads each message that was not read yet under the name that it has in the folder `cur` now.
    /// `before` is the listing of `cur` by which the other messages were read.
    void readAgain(const std::string& cur, const std::optional<FolderListing>& before,
                   const Reading& reading);

private:
    struct Message {
        std::string path;
        /// How many of its names in `cur` were not there.
        std::size_t missedInCur = 0;
    };

    /// By the part of their names that stays.
    std::map<std::string, Message, std::less<>> messages_;
};

}  // namespace bouncecheck
