#include "bounce/VerdictLabel.h"

#include "text/Ascii.h"

namespace bouncecheck {

std::string_view verdictLabel(std::string_view line) noexcept {
    constexpr std::string_view words = "Bounce type";
    if (!line.starts_with(words)) return {};
    line.remove_prefix(words.size());
    if (line.starts_with(':')) line.remove_prefix(1);
    if (!line.starts_with(' ')) return {};
    line.remove_prefix(1);
    // "Bounce type determined after ..." is a sentence.
    return !line.empty() && ascii::isDigit(line.front()) ? line : std::string_view();
}

std::string_view lastVerdictLabel(std::span<const LogTrace::Event> events) noexcept {
    for (std::size_t i = events.size(); i-- > 0;) {
        if (events[i].kind != LogTrace::Kind::info) continue;
        const std::string_view label = verdictLabel(events[i].text);
        if (!label.empty()) return label;
    }
    return {};
}

}  // namespace bouncecheck
