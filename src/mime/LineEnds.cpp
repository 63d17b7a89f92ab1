#include "mime/LineEnds.h"

#include <algorithm>
#include <string_view>

#include "text/NextByte.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Calls `onEnd` with the place and the length of each line end of a text.
template <class OnEnd>
void forEachLineEnd(std::string_view text, OnEnd onEnd) {
    NextByte lf(text, '\n');
    NextByte cr(text, '\r');
    std::size_t from = 0;
    for (;;) {
        const std::size_t at = std::min(lf.atOrAfter(from), cr.atOrAfter(from));
        if (at == npos) return;
        const bool isCrLf = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        const std::size_t length = isCrLf ? 2 : 1;
        onEnd(at, length);
        from = at + length;
    }
}

/// Whether CR and LF stand in pairs only.
bool hasOnlyCrLf(std::string_view text) noexcept {
    std::size_t pairs = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        pairs += static_cast<std::size_t>(text[i - 1] == '\r') & (text[i] == '\n');
    }
    const auto count = [&](char c) {
        return static_cast<std::size_t>(std::ranges::count(text, c));
    };
    return count('\r') == pairs && count('\n') == pairs;
}

/// A text without CR, as most files have it.
std::string withCrBeforeLf(std::string_view text, std::size_t lineEnds) {
    std::string result;
    result.reserve(text.size() + lineEnds);
    for (std::size_t end; (end = text.find('\n')) != npos; text.remove_prefix(end + 1)) {
        result.append(text.substr(0, end)).append(crLf);
    }
    return result.append(text);
}

}  // namespace

std::string withCrLf(std::string text) {
    if (text.find('\r') == npos) {
        const auto lineEnds = static_cast<std::size_t>(std::ranges::count(text, '\n'));
        return lineEnds == 0 ? text : withCrBeforeLf(text, lineEnds);
    }
    if (hasOnlyCrLf(text)) return text;

    std::size_t added = 0;
    forEachLineEnd(text, [&](std::size_t, std::size_t length) { added += 2 - length; });
    std::string result;
    result.reserve(text.size() + added);
    std::size_t start = 0;
    forEachLineEnd(text, [&](std::size_t at, std::size_t length) {
        result.append(text, start, at - start).append(crLf);
        start = at + length;
    });
    result.append(text, start);
    return result;
}

}  // namespace bouncecheck
