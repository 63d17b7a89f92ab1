#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tool/sources/MessagePlace.h"

namespace bouncecheck {

/// One message as it was found.
struct SourceMessage {
    MessagePlace place;
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
    /// Each file is one message, and standard input too, whatever they look like.
    bool single = false;
    /// Larger messages are a problem; in bytes.
    std::size_t maxMessageSize = std::size_t{64} << 20;
    /// Folders and files that are skipped wherever they are met, such as those that are
    /// written meanwhile.
    std::vector<std::string> excluded = {};
    /// Files that the run writes to or replaces. One that is met and holds output of
    /// before, of which `holdsOutput` is asked, is skipped; others hold mail.
    std::vector<std::string> written = {};
    /// Takes the beginning of a file.
    std::function<bool(std::string_view)> holdsOutput = {};
};

/// Thrown when a file that holds mail is one that the run writes to.
class SourceIsOutput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using OnMessage = std::function<void(SourceMessage message)>;
/// Takes the name of what could not be read, and why.
using OnProblem = std::function<void(std::string_view source, std::string_view reason)>;

/// The problem of what there was no memory for.
inline constexpr std::string_view outOfMemory = "not enough memory";

/// Reads the messages that the paths name, in order: "-" is standard input; a file
/// is a message or a mailbox, or an archive of such, packed or not; a Maildir is the
/// messages in `cur` and `new`; a folder, all below it in the order of their names.
/// Symbolic links to folders inside a folder are not followed, nor are more than 100 folders
/// inside each other. What cannot be read, or
/// is certainly no mail, is reported and skipped. Memory: one message, the names in one
/// folder, and what unpacking takes.
///
/// Throws SourceIsOutput before a byte of such a file is handed on, whatever its name.
///
/// When memory runs out, what was to be read is a problem, and the rest goes on. What
/// `onMessage` and `onProblem` throw ends the reading, but neither may throw
/// std::bad_alloc.
void readSources(const SourceOptions& options, const OnMessage& onMessage,
                 const OnProblem& onProblem);

}  // namespace bouncecheck
