#include "tool/sources/Sources.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <new>
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

enum class FileKind { messageOrMailbox, message };

class SourceReader {
public:
    SourceReader(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem)
        : options_(options), onMessage_(onMessage), onProblem_(onProblem) {
        hasExcluded_ = !options.excludedFolder.empty() &&
                       ::stat(options.excludedFolder.c_str(), &excluded_) == 0;
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
        std::ifstream file;
        if (name != "-") file.open(name);
        std::istream& list = name == "-" ? std::cin : file;
        if (!list) {
            onProblem_(name, std::strerror(errno));
            return;
        }
        for (std::string path; std::getline(list, path, options_.nulSeparated ? '\0' : '\n');) {
            if (!path.empty()) readPath(path, {0, 0});
        }
        if (list.bad()) onProblem_(name, "could not be read to its end");
    }

    void readPath(const std::string& path, Stretch stretch) {
        struct stat status;
        if (path != "-" && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
            readFolder(path, stretch);
        } else {
            readFile(path, FileKind::messageOrMailbox, stretch);
        }
    }

    bool isExcluded(const std::string& folder) const {
        struct stat status;
        return hasExcluded_ && ::stat(folder.c_str(), &status) == 0 &&
               status.st_dev == excluded_.st_dev && status.st_ino == excluded_.st_ino;
    }

    void readFolder(const std::string& folder, Stretch stretch) {
        if (isExcluded(folder)) return;
        tellingProblems(folder, [&] {
            const FolderListing listing(folder);
            const bool isMaildir = listing.hasFolder("cur") && listing.hasFolder("new");
            for (std::size_t i = 0; i < listing.size(); ++i) {
                const std::string_view name = listing.name(i);
                const std::string path = below(folder, name);
                const Stretch part = stretch.part(i, listing.size());
                const auto kind = listing.kind(i);
                if (kind == FolderListing::Kind::folder) {
                    const bool holdsMessages = name == "cur" || name == "new";
                    if (isMaildir && holdsMessages) {
                        readMessages(path, part);
                    } else if (!isMaildir || name != "tmp") {
                        readFolder(path, part);
                    }
                } else if (kind == FolderListing::Kind::file && !isMaildir) {
                    // What else lies in a Maildir are the notes of mail servers.
                    readFile(path, FileKind::messageOrMailbox, part);
                }
            }
        });
    }

    /// Reads `cur` or `new` of a Maildir.
    void readMessages(const std::string& folder, Stretch stretch) {
        tellingProblems(folder, [&] {
            const FolderListing listing(folder);
            for (std::size_t i = 0; i < listing.size(); ++i) {
                if (listing.kind(i) != FolderListing::Kind::file) continue;
                readFile(below(folder, listing.name(i)), FileKind::message,
                         stretch.part(i, listing.size()));
            }
        });
    }

    static std::string below(const std::string& folder, std::string_view name) {
        std::string path = folder;
        if (!path.ends_with('/')) path += '/';
        return path.append(name);
    }

    void readFile(const std::string& path, FileKind kind, Stretch stretch) {
        tellingProblems(path, [&] {
            const auto stream = unpacked(path == "-" ? openStandardInput() : openFile(path));
            MboxReader reader(*stream, options_.maxMessageSize, kind == FileKind::messageOrMailbox);
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
    struct stat excluded_ = {};
    bool hasExcluded_ = false;
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
