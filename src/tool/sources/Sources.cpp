#include "tool/sources/Sources.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <climits>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "tool/sources/FolderListing.h"
#include "tool/sources/InputStream.h"
#include "tool/sources/MboxReader.h"

namespace bouncecheck {
namespace {

/// The stretch of the whole work that something takes, from 0 to 1.
struct Stretch {
    double begin = 0;
    double size = 1;

    Stretch part(std::size_t i, std::size_t count) const noexcept {
        const double share = size / static_cast<double>(count);
        return {begin + share * static_cast<double>(i), share};
    }
};

/// Whether the first bytes decide what a file is.
enum class FileKind { either, message };

class SourceReader {
public:
    SourceReader(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem)
        : options_(options), onMessage_(onMessage), onProblem_(onProblem) {
        for (const std::string& path : options.excluded) {
            struct stat status;
            if (::stat(path.c_str(), &status) == 0) excluded_.push_back(status);
        }
    }

    void readAll() {
        for (std::size_t i = 0; i < options_.paths.size(); ++i) {
            // Of a list nobody knows how long it is.
            const Stretch whole = {0, options_.listFile ? 0.0 : 1.0};
            readPath(options_.paths[i], whole.part(i, options_.paths.size()));
        }
        if (options_.listFile) readList(*options_.listFile);
    }

private:
    template <class Read>
    void tellingProblems(const std::string& name, Read&& read) {
        try {
            read();
        } catch (const ReadError& error) {
            onProblem_(name, error.what());
        } catch (const std::bad_alloc&) {  // one huge file does not end the run
            onProblem_(name, "not enough memory");
        }
    }

    void readList(const std::string& name) {
        tellingProblems(name, [&] {
            const auto list = open(name);
            const char end = options_.nulSeparated ? '\0' : '\n';
            std::array<char, 4096> piece;
            std::string path;
            const auto readNext = [&] {
                if (!path.empty()) readPath(path, {0, 0});
                path.clear();
            };
            while (const std::size_t size = list->read(piece)) {
                for (const char c : std::string_view(piece.data(), size)) {
                    if (c == end) {
                        readNext();
                    } else if (path.size() <= PATH_MAX) {  // no file has a longer one
                        path += c;
                    }
                }
            }
            readNext();
        });
    }

    static std::unique_ptr<InputStream> open(const std::string& path) {
        return path == "-" ? openStandardInput() : openFile(path);
    }

    void readPath(const std::string& path, Stretch stretch) {
        struct stat status;
        if (path != "-" && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
            readFolder(path, stretch);
        } else {
            readFile(path, FileKind::either, stretch);
        }
    }

    bool isExcluded(const std::string& path) const {
        struct stat status;
        return !excluded_.empty() && ::stat(path.c_str(), &status) == 0 &&
               std::ranges::any_of(excluded_, [&](const struct stat& one) {
                   return one.st_dev == status.st_dev && one.st_ino == status.st_ino;
               });
    }

    void readFolder(const std::string& folder, Stretch stretch) {
        if (isExcluded(folder)) return;
        const std::optional<FolderListing> listing = list(folder);
        if (!listing) return;
        if (listing->hasFolder("cur") && listing->hasFolder("new")) {
            readMaildir(folder, *listing, stretch);
            return;
        }
        for (std::size_t i = 0; i < listing->size(); ++i) {
            const std::string path = below(folder, listing->name(i));
            const Stretch part = stretch.part(i, listing->size());
            switch (listing->kind(i)) {
                case FolderListing::Kind::folder: readFolder(path, part); break;
                case FolderListing::Kind::file: readFile(path, FileKind::either, part); break;
                case FolderListing::Kind::other: break;
            }
        }
    }

    /// The messages in `cur` and `new`, and the Maildirs inside. `tmp` is never
    /// looked at, and files beside them are the notes of mail servers.
    void readMaildir(const std::string& folder, const FolderListing& listing, Stretch stretch) {
        const auto cur = list(below(folder, "cur"));
        const auto fresh = list(below(folder, "new"));
        const auto sizeOf = [](const auto& names) { return names ? names->size() : 0; };
        const std::size_t count = listing.size() + sizeOf(cur) + sizeOf(fresh);
        std::size_t done = 0;
        const auto readMessages = [&](const std::string& path, const auto& names) {
            for (std::size_t i = 0; i < sizeOf(names); ++i) {
                if (names->kind(i) != FolderListing::Kind::file) continue;
                readFile(below(path, names->name(i)), FileKind::message,
                         stretch.part(done + i, count));
            }
            done += sizeOf(names);
        };
        for (std::size_t i = 0; i < listing.size(); ++i) {
            const std::string_view name = listing.name(i);
            const std::string path = below(folder, name);
            const bool isFolder = listing.kind(i) == FolderListing::Kind::folder;
            if (name == "cur") {
                readMessages(path, cur);
            } else if (name == "new") {
                readMessages(path, fresh);
            } else if (isFolder && name != "tmp") {
                readFolder(path, stretch.part(done, count));
            }
            ++done;
        }
    }

    /// The names in a folder; nothing when it cannot be read, which is told.
    std::optional<FolderListing> list(const std::string& folder) {
        std::optional<FolderListing> listing;
        tellingProblems(folder, [&] { listing.emplace(folder); });
        return listing;
    }

    static std::string below(const std::string& folder, std::string_view name) {
        std::string path = folder;
        if (!path.ends_with('/')) path += '/';
        return path.append(name);
    }

    void readFile(const std::string& path, FileKind kind, Stretch stretch) {
        if (isExcluded(path)) return;
        tellingProblems(path, [&] {
            const auto stream = unpacked(open(path));
            MboxReader reader(*stream, options_.maxMessageSize, kind == FileKind::either);
            while (auto message = reader.next()) {
                if (message->tooLarge) {
                    onProblem_(placeOf(path, message->index, reader.isMailbox()),
                               "the message is larger than --max-message-size allows");
                    continue;
                }
                onMessage_({.source = path,
                            .index = message->index,
                            .inMailbox = reader.isMailbox(),
                            .bytes = std::move(message->bytes),
                            .progress = stretch.begin + stretch.size * stream->fractionRead()});
            }
        });
    }

    const SourceOptions& options_;
    const OnMessage& onMessage_;
    const OnProblem& onProblem_;
    std::vector<struct stat> excluded_;
};

}  // namespace

std::string placeOf(std::string_view source, std::uint64_t index, bool inMailbox) {
    std::string place(source);
    if (inMailbox) place.append(":").append(std::to_string(index));
    return place;
}

void readSources(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem) {
    SourceReader(options, onMessage, onProblem).readAll();
}

}  // namespace bouncecheck
