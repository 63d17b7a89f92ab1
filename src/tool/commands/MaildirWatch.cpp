#include "tool/commands/MaildirWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "tool/sources/FolderListing.h"
#include "tool/sources/InputStream.h"

namespace bouncecheck {
namespace {

/// How long a file that was created in place, rather than moved there, may take to be written.
constexpr std::chrono::milliseconds patience(300);

std::string whyLost(int error) {
    switch (error) {
        case ENOENT: return "is not there";
        // What the system calls a full disk.
        case ENOSPC: return "cannot be watched: no more watches are allowed";
        default: return std::string("cannot be watched: ") + std::strerror(error);
    }
}

}  // namespace

MaildirWatch::MaildirWatch(std::vector<std::string> maildirs)
    : notify_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (!notify_) {
        throw std::runtime_error(std::string("nothing can be watched: ") + std::strerror(errno));
    }
    for (std::string& maildir : maildirs) {
        if (!maildir.ends_with('/')) maildir += '/';
        // A message moves from the first to the second.
        for (const char* name : {"new", "cur"}) folders_.emplace_back().path = maildir + name;
    }
}

void MaildirWatch::forget() noexcept {
    for (Folder& folder : folders_) folder.isFresh = true;
}

void MaildirWatch::takeNew(const std::function<void(const std::string& path)>& onFile) {
    readEvents();
    renewWatches();
    for (Folder& folder : folders_) {
        if (!std::exchange(folder.isFresh, false) || folder.watch < 0) continue;
        try {
            const FolderListing listing(folder.path);
            for (std::size_t i = 0; i < listing.size(); ++i) {
                if (listing.kind(i) != FolderListing::Kind::file) continue;
                onFile(folder.path + '/' + std::string(listing.name(i)));
            }
        } catch (const ReadError&) {
            folder.isFresh = true;
        }
    }
    for (const std::string& path : std::exchange(arrived_, {})) onFile(path);
    const auto now = std::chrono::steady_clock::now();
    for (auto one = created_.begin(); one != created_.end();) {
        if (now - one->second < patience) {
            ++one;
            continue;
        }
        onFile(one->first);
        one = created_.erase(one);
    }
}

void MaildirWatch::reportLost(
    const std::function<void(const std::string& folder, const std::string& why)>& onLost) {
    for (Folder& folder : folders_) {
        if (folder.watch < 0 && !folder.isReported) onLost(folder.path, whyLost(folder.error));
        folder.isReported = folder.watch < 0;
    }
}

void MaildirWatch::renewWatches() {
    for (Folder& folder : folders_) {
        const auto identity = identityOf(folder.path);
        if (folder.watch >= 0 && identity == folder.identity) continue;
        if (folder.watch >= 0) ::inotify_rm_watch(notify_.get(), folder.watch);
        folder.watch = ::inotify_add_watch(
            notify_.get(), folder.path.c_str(),
            IN_MOVED_TO | IN_CREATE | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR);
        if (folder.watch < 0) folder.error = errno;
        folder.identity = identity;
        // What came in before it was watched is there.
        folder.isFresh = true;
    }
}

void MaildirWatch::readEvents() {
    alignas(inotify_event) std::array<char, 65536> room;
    for (;;) {
        const ssize_t size = ::read(notify_.get(), room.data(), room.size());
        if (size <= 0) return;
        for (const char* at = room.data(); at < room.data() + size;) {
            inotify_event event;
            std::memcpy(&event, at, sizeof event);
            const char* name = at + sizeof event;
            at = name + event.len;
            if ((event.mask & IN_Q_OVERFLOW) != 0) forget();
            const auto folder = std::ranges::find(folders_, event.wd, &Folder::watch);
            if (event.wd < 0 || folder == folders_.end()) continue;
            if ((event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT)) != 0) {
                ::inotify_rm_watch(notify_.get(), folder->watch);
                folder->watch = -1;
                folder->error = ENOENT;
            }
            if (event.len == 0 || (event.mask & IN_ISDIR) != 0) continue;
            const std::string path = folder->path + '/' + name;
            if ((event.mask & IN_CREATE) != 0) {
                created_.emplace(path, std::chrono::steady_clock::now());
            } else {
                created_.erase(path);
                arrived_.push_back(path);
            }
        }
    }
}

}  // namespace bouncecheck
