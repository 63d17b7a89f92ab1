#include <bouncecheck/TraceTree.h>

#include "text/Controls.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

std::string quoted(std::string_view value, std::size_t maxBytes) {
    const std::string_view kept = wholeCharacters(value, maxBytes);
    const bool cut = kept.size() < value.size();
    std::string out = "\"";
    out += escapeControls(kept);
    out += cut ? "\" ... (" + std::to_string(value.size()) + " bytes)" : "\"";
    return out;
}

}  // namespace

std::string traceTree(std::span<const LogTrace::Event> events, const TreeStyle& style) {
    using Kind = LogTrace::Kind;
    std::string out;
    std::size_t level = 0;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const LogTrace::Event& event = events[i];
        if (event.kind == Kind::leave) {
            if (level > 0) --level;  // its context began before these events
            continue;
        }
        out.append(style.margin).append(2 * level, ' ').append(escapeControls(event.text));
        if (event.kind == Kind::enter) {
            out += ':';
            ++level;
        } else if (event.kind == Kind::data) {
            out.append(": ").append(quoted(event.value.view(), style.maxValueBytes));
        }
        if (i == style.markedEvent) out.append(style.mark);
        out += '\n';
    }
    return out;
}

}  // namespace bouncecheck
