#include "tool/sources/Sources.h"

#include <sys/stat.h>

#include <climits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "tool/sources/FileIdentity.h"
#include "tool/sources/FileKind.h"
#include "tool/sources/FileReader.h"
#include "tool/sources/FolderListing.h"
#include "tool/sources/InputStream.h"
#include "tool/sources/OwnFiles.h"
#include "tool/sources/PathList.h"
#include "tool/sources/RenamedMessages.h"

namespace bouncecheck {
namespace {

/// Whether `folder` is `cur` or `new` of a Maildir.
bool isInMaildir(const std::string& folder) {
    const auto self = identityOf(folder);
    const auto cur = identityOf(folder + "/../cur/.");
    const auto fresh = identityOf(folder + "/../new/.");
    return self && cur && fresh && (self == cur || self == fresh);
}

/// The paths of what is in a folder, one at a time, made without another allocation.
class EntryPath {
public:
    explicit EntryPath(const std::string& folder) {
        path_.reserve(folder.size() + 1 + NAME_MAX);
        path_ = folder;
        if (!path_.ends_with('/')) path_ += '/';
        folderSize_ = path_.size();
    }

    /// Valid until the next.
    const std::string& of(std::string_view name) {
        path_.resize(folderSize_);
        return path_.append(name);
    }

private:
    std::string path_;
    std::size_t folderSize_ = 0;
};

/// A file by its path and, if a folder was listed, by its place in it.
struct FileName {
    const std::string& path;
    const FolderListing* listing = nullptr;
    std::size_t index = 0;

    std::unique_ptr<InputStream> open() const {
        if (path == "-") return openStandardInput();
        return listing ? listing->open(index, path) : openFile(path);
    }
};

class SourceReader {
public:
    SourceReader(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem)
        : options_(options),
          onProblem_(onProblem),
          ownFiles_(options),
          files_(options, onMessage, onProblem) {}

    void readAll() {
        for (std::size_t i = 0; i < options_.paths.size(); ++i) {
            // Of a list nobody knows how long it is.
            const Stretch whole = {0, options_.listFile ? 0.0 : 1.0};
            readPath(options_.paths[i], whole.part(i, options_.paths.size()));
        }
        if (options_.listFile) readList(*options_.listFile);
    }

private:
    /// Counts a folder while it is read.
    class Level {
    public:
        explicit Level(unsigned& levels) noexcept : levels_(levels) { ++levels_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --levels_; }

    private:
        unsigned& levels_;
    };

    template <class Read>
    void tryReading(const std::string& name, Read&& read) {
        reportingProblems(onProblem_, name, std::forward<Read>(read));
    }

    void readList(const std::string& name) {
        tryReading(name, [&] {
            const auto list = open({name});
            if (!list) return;
            forEachPath(*list, options_.nulSeparated ? '\0' : '\n',
                        [this](const std::string& path) {
                            readPath(path, {0, 0});
                        });
        });
    }

    /// Null for what is the run's own.
    std::unique_ptr<InputStream> open(const FileName& name) const {
        // Opening and closing a database would take away its locks.
        if (name.path != "-" && ownFiles_.isExcluded(name.path)) return nullptr;
        auto stream = name.open();
        return ownFiles_.has(*stream, name.path) ? nullptr : std::move(stream);
    }

    void readPath(const std::string& path, Stretch stretch) {
        struct stat status;
        if (path == "-" || ::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
            tryReading(path, [&] { readFile({path}, isOfMaildir(path), stretch); });
        } else if (ownFiles_.isExcluded(identityIn(status))) {
            onProblem_(path, "is the folder that messages are delivered to");
        } else {
            readFolder(path, stretch, isInMaildir(path));
        }
    }

    /// Whether the file `path` is in `cur` or `new` of a Maildir.
    bool isOfMaildir(const std::string& path) {
        if (path == "-") return false;
        const std::size_t name = path.find_last_of('/') + 1;
        const std::string folder = name == 0 ? "." : path.substr(0, name);
        // Lists name many files of one folder.
        if (folder != lastFolder_) {
            lastFolder_ = folder;
            lastIsInMaildir_ = isInMaildir(folder);
        }
        return lastIsInMaildir_;
    }

    void readFolder(const std::string& folder, Stretch stretch, bool isOfMaildir = false) {
        // Each takes some of the stack.
        constexpr unsigned mostLevels = 100;
        if (ownFiles_.isExcluded(folder)) return;
        const Level level(levels_);
        tryReading(folder, [&] {
            if (levels_ > mostLevels) throw ReadError("is in too many folders, one in the other");
            const std::optional<FolderListing> listing = list(folder);
            if (!listing) return;
            if (listing->hasFolder("cur") && listing->hasFolder("new")) {
                readMaildir(folder, *listing, stretch);
            } else {
                readEntries(folder, *listing, stretch, isOfMaildir);
            }
        });
    }

    void readEntries(const std::string& folder, const FolderListing& listing, Stretch stretch,
                     bool isOfMaildir) {
        EntryPath path(folder);
        for (std::size_t i = 0; i < listing.size(); ++i) {
            const std::string& entry = path.of(listing.name(i));
            const Stretch part = stretch.part(i, listing.size());
            switch (listing.kind(i)) {
                case FolderListing::Kind::folder: readFolder(entry, part); break;
                case FolderListing::Kind::file:
                    readFile({entry, &listing, i}, isOfMaildir, part);
                    break;
                case FolderListing::Kind::other: break;
            }
        }
    }

    /// The messages in `cur` and `new`, and the Maildirs inside. `tmp` is never
    /// looked at, and files beside them are the notes of mail servers.
    void readMaildir(const std::string& folder, const FolderListing& listing, Stretch stretch) {
        EntryPath path(folder);
        // In this order: who moves a message meanwhile moves it from new to cur.
        const auto fresh = list(path.of("new"));
        const auto cur = list(path.of("cur"));
        RenamedMessages renamed;
        const auto sizeOf = [](const auto& names) { return names ? names->size() : 0; };
        const std::size_t count = listing.size() + sizeOf(cur) + sizeOf(fresh);
        std::size_t done = 0;
        const auto readMessages = [&](const std::string& from, const auto& names,
                                      RenamedMessages::Folder kind) {
            EntryPath message(from);
            for (std::size_t i = 0; i < sizeOf(names); ++i) {
                if (names->kind(i) != FolderListing::Kind::file) continue;
                const std::string& file = message.of(names->name(i));
                const Stretch part = stretch.part(done + i, count);
                if (!readIfThere({file, &*names, i}, part)) renamed.add(file, kind);
            }
            done += sizeOf(names);
        };
        for (std::size_t i = 0; i < listing.size(); ++i) {
            const std::string_view name = listing.name(i);
            const std::string& entry = path.of(name);
            const bool isFolder = listing.kind(i) == FolderListing::Kind::folder;
            if (name == "cur") {
                readMessages(entry, cur, RenamedMessages::Folder::cur);
            } else if (name == "new") {
                readMessages(entry, fresh, RenamedMessages::Folder::fresh);
            } else if (isFolder && name != "tmp") {
                readFolder(entry, stretch.part(done, count));
            }
            ++done;
        }
        if (renamed.empty()) return;
        const std::string curPath = path.of("cur");
        const Stretch end = {stretch.begin + stretch.size, 0};
        renamed.readAgain(
            curPath, cur,
            {.list = [&] { return list(curPath); },
             .read = [&](const std::string& file) { return readIfThere({file}, end); },
             .miss = [&](const std::string& file) { readFile({file}, true, end); }});
    }

    /// The names in a folder; nothing when it cannot be read, which is reported.
    std::optional<FolderListing> list(const std::string& folder) {
        std::optional<FolderListing> listing;
        tryReading(folder, [&] { listing.emplace(folder); });
        return listing;
    }

    /// Reads a message of a Maildir; false when there is no such file.
    bool readIfThere(const FileName& file, Stretch stretch) {
        bool isThere = true;
        tryReading(file.path, [&] {
            try {
                readOpened(file, FileKind::message, stretch);
            } catch (const NoSuchFile&) {
                isThere = false;
            }
        });
        return isThere;
    }

    void readFile(const FileName& file, bool isOfMaildir, Stretch stretch) {
        const bool isMessage = options_.single || isOfMaildir;
        const FileKind kind = isMessage ? FileKind::message : kindOfName(file.path);
        tryReading(file.path, [&] { readOpened(file, kind, stretch); });
    }

    void readOpened(const FileName& file, FileKind kind, Stretch stretch) {
        if (auto stream = open(file)) files_.read({file.path, kind, stretch}, std::move(stream));
    }

    const SourceOptions& options_;
    const OnProblem& onProblem_;
    OwnFiles ownFiles_;
    FileReader files_;
    /// The folder of the last file that was named, and whether it is of a Maildir.
    std::string lastFolder_;
    bool lastIsInMaildir_ = false;
    /// How many folders are being read, one in the other.
    unsigned levels_ = 0;
};

}  // namespace

void readSources(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem) {
    SourceReader(options, onMessage, onProblem).readAll();
}

}  // namespace bouncecheck
