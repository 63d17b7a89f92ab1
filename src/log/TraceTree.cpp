#include "log/TraceTree.h"

#include "text/Ascii.h"
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

std::string escapeControls(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto byte = static_cast<unsigned char>(text[i]);
        // Terminals obey the controls U+0080 to U+009F too.
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0u;
        const bool isHighControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        if (!ascii::isControl(text[i]) && !isHighControl) {
            out += text[i];
        } else if (byte == '\n') {
            out += "\\n";
        } else if (byte == '\r') {
            out += "\\r";
        } else if (byte == '\t') {
            out += "\\t";
        } else {
            if (isHighControl) byte = static_cast<unsigned char>(text[++i]);
            out += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return out;
}

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
            out.append(": ").append(quoted(event.value, style.maxValueBytes));
        }
        if (i == style.markedEvent) out.append(style.mark);
        out += '\n';
    }
    return out;
}

}  // namespace bouncecheck
