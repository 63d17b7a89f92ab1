#pragma once

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "files/UniqueFd.h"
#include "tool/sources/FileIdentity.h"

namespace bouncecheck {

/// Tells of the messages in Maildirs: those that are there, and those that come. Folders may
/// vanish and return. A message may be told of more than once; one that is written in place, rather
/// than moved or linked there when it is complete, perhaps before it is.
class MaildirWatch {
public:
    /// Throws std::runtime_error when nothing can be watched on this system.
    explicit MaildirWatch(std::vector<std::string> maildirs);

    /// Calls `onFile` with the path of each message that is new since the last call.
    void takeNew(const std::function<void(const std::string& path)>& onFile);
    /// Takes all messages for new, those before included.
    void forget() noexcept;

    /// What is ready to be read when there may be new messages. There may be some a second later
    /// as well.
    int fd() const noexcept { return notify_.get(); }
    /// Calls `onLost` with each folder that cannot be watched, and why, once until it can again.
    void reportLost(
        const std::function<void(const std::string& folder, const std::string& why)>& onLost);

private:
    /// `new` or `cur` of a Maildir.
    struct Folder {
        std::string path;
        /// That of inotify; -1 when it is not watched.
        int watch = -1;
        /// The errno of why it is not.
        int error = ENOENT;
        std::optional<FileIdentity> identity;
        /// Whether what is in it has to be looked through.
        bool isFresh = true;
        bool isReported = false;
    };

    void renewWatches();
    void readEvents();

    UniqueFd notify_;
    std::vector<Folder> folders_;
    std::vector<std::string> arrived_;
    /// Files that were created in place and may still be written, by the time they have been seen.
    std::map<std::string, std::chrono::steady_clock::time_point> created_;
};

}  // namespace bouncecheck
