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

}  // namespace

std::string withCrLf(std::string text) {
    std::size_t added = 0;
    forEachLineEnd(text, [&](std::size_t, std::size_t length) { added += 2 - length; });
    if (added == 0) return text;

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
