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

struct LineEndCounts {
    std::size_t cr = 0;
    std::size_t lf = 0;
    /// An LF right behind a CR.
    std::size_t pairs = 0;
};

LineEndCounts countLineEnds(std::string_view text) noexcept {
    LineEndCounts counts;
    if (text.starts_with('\n')) ++counts.lf;
    if (text.ends_with('\r')) ++counts.cr;
    // Small counters in short blocks are what compilers make vectors of.
    constexpr std::size_t block = 128;
    for (std::size_t start = 1; start < text.size(); start += block) {
        const std::size_t end = std::min(start + block, text.size());
        unsigned char cr = 0;
        unsigned char lf = 0;
        unsigned char pairs = 0;
        for (std::size_t i = start; i < end; ++i) {
            const bool isCr = text[i - 1] == '\r';
            const bool isLf = text[i] == '\n';
            cr = static_cast<unsigned char>(cr + isCr);
            lf = static_cast<unsigned char>(lf + isLf);
            pairs = static_cast<unsigned char>(pairs + (isCr & isLf));
        }
        counts.cr += cr;
        counts.lf += lf;
        counts.pairs += pairs;
    }
    return counts;
}

/// A text without CR, as most files have it.
std::string withCrBeforeLf(std::string_view text, std::size_t lineEnds) {
    std::string result(text.size() + lineEnds, '\0');
    char* out = result.data();
    for (std::size_t end; (end = text.find('\n')) != npos; text.remove_prefix(end + 1)) {
        out = std::copy_n(text.data(), end, out);
        out = std::copy_n(crLf.data(), crLf.size(), out);
    }
    std::copy_n(text.data(), text.size(), out);
    return result;
}

}  // namespace

std::string withCrLf(std::string text) {
    const LineEndCounts counts = countLineEnds(text);
    if (counts.cr == counts.pairs && counts.lf == counts.pairs) return text;
    if (counts.cr == 0) return withCrBeforeLf(text, counts.lf);

    const std::size_t added = counts.cr + counts.lf - 2 * counts.pairs;
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
