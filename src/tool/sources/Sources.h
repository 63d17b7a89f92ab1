#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck {

/// One message as it was found.
struct SourceMessage {
    /// The path of its file; "-" for standard input.
    std::string source;
    /// Its place in a mailbox file, from 1; 1 in a file of its own.
    std::uint64_t index = 1;
    bool inMailbox = false;
    std::string bytes;
    /// How much of all sources was read, from 0 to 1; 0 when that is not known.
    double progress = 0;
};

struct SourceOptions {
    std::vector<std::string> paths = {};
    /// A file with more paths, "-" for standard input: one a line, or with NUL
    /// behind each.
    std::optional<std::string> listFile = {};
    bool nulSeparated = false;
    /// Larger messages are a problem; in bytes.
    std::size_t maxMessageSize = std::size_t{64} << 20;
    /// Folders and files that are passed over wherever they are met, such as those that
    /// are written meanwhile.
    std::vector<std::string> excluded = {};
};

using OnMessage = std::function<void(SourceMessage message)>;
/// Takes the name of what could not be read, and why.
using OnProblem = std::function<void(const std::string& source, const std::string& reason)>;

/// Where a message is, for people: the path, with its place in a mailbox file
/// behind a colon.
std::string placeOf(std::string_view source, std::uint64_t index, bool inMailbox);

/// Reads the messages that the paths name, in order: "-" is standard input; a file
/// is a message or a mailbox, packed or not; a Maildir is the messages in `cur` and
/// `new`; a folder, all below it in the order of their names. Symbolic links to
/// folders inside a folder are not followed. What cannot be read is told and
/// passed over. Memory: one message, and the names in one folder.
///
/// What `onMessage` throws ends the reading, a failed allocation excepted.
void readSources(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem);

}  // namespace bouncecheck
