#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include <bouncecheck/Export.h>
#include <bouncecheck/LogTrace.h>

namespace bouncecheck {

struct TreeStyle {
    /// Stands before every line.
    std::string_view margin = {};
    /// The event whose line ends in `mark`; none when there is no such event.
    std::size_t markedEvent = static_cast<std::size_t>(-1);
    std::string_view mark = {};
    /// Longer values are cut, and their size in bytes is printed.
    std::size_t maxValueBytes = static_cast<std::size_t>(-1);
};

/// The events as a tree: one line each, two blanks a level, contexts by their
/// name and a colon, tagged values as `tag: "value"`. Control characters are
/// written as escapes, so that no value breaks a line or steers a terminal.
BOUNCECHECK_EXPORT std::string traceTree(std::span<const LogTrace::Event> events,
                                         const TreeStyle& style = {});

}  // namespace bouncecheck
