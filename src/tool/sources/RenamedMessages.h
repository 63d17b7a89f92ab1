#pragma once

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

    /// `path` is the file that was not there, and `folder` where it was listed.
    void add(const std::string& path, Folder folder);
    bool empty() const noexcept { return messages_.empty(); }

    /// Calls `read` with the path of each message that was not read yet: in `cur`, of which `now`
    /// is a new listing, or, when it is nowhere, the path that it had. `before` is the listing of
    /// `cur` by which the other messages were read.
    void readAgain(const std::string& cur, const std::optional<FolderListing>& before,
                   const std::optional<FolderListing>& now,
                   const std::function<void(const std::string& path)>& read) const;

private:
    struct Message {
        std::string path;
        bool wasInCur = false;
    };

    /// By the part of their names that stays.
    std::map<std::string, Message, std::less<>> messages_;
};

}  // namespace bouncecheck
