#pragma once

#include <cstdint>
#include <string>

namespace bouncecheck {

/// Where a message was found.
struct MessagePlace {
    /// The path of its file, with that of the member behind it in an archive; "-" for
    /// standard input.
    std::string source;
    /// Its place in a mailbox file, from 1; 1 in a file of its own.
    std::uint64_t index = 1;
    bool inMailbox = false;

    /// For people: the path, with the place in a mailbox file behind a colon.
    std::string text() const;
};

}  // namespace bouncecheck
