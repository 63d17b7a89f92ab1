#include "mime/LineEnds.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include <bouncecheck/Limits.h>
#include "text/Search.h"

namespace bouncecheck {
namespace {

struct LineEndCounts {
    std::size_t cr = 0;
    std::size_t lf = 0;
    /// An LF right behind a CR.
    std::size_t pairs = 0;

    /// How many bytes longer the text is once they are complete.
    std::size_t missing() const noexcept { return cr + lf - 2 * pairs; }
    bool hasBareCr() const noexcept { return cr > pairs; }
};

// Small counters in short blocks are what compilers make vectors of.
constexpr std::size_t block = 128;

std::size_t countLf(std::string_view text) noexcept {
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(std::min(block, text.size()))) {
        unsigned char inBlock = 0;
        for (const char c : text.substr(0, block)) {
            inBlock = static_cast<unsigned char>(inBlock + (c == '\n'));
        }
        count += inBlock;
    }
    return count;
}

LineEndCounts countLineEnds(std::string_view text) noexcept {
    LineEndCounts counts;
    if (text.find('\r') == npos) return {.lf = countLf(text)};
    if (text.starts_with('\n')) ++counts.lf;
    if (text.ends_with('\r')) ++counts.cr;
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

/// Counts the line ends of `text`, which is cut before the one that is too many.
LineEndCounts countWithinLimit(std::string_view& text) noexcept {
    const LineEndCounts counts = countLineEnds(text);
    if (counts.missing() <= limits::lineEnds) return counts;
    std::size_t left = limits::lineEnds;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isBareLf = text[i] == '\n' && (i == 0 || text[i - 1] != '\r');
        const bool isBareCr = text[i] == '\r' && !text.substr(i + 1).starts_with('\n');
        if ((isBareLf || isBareCr) && left-- == 0) text = text.substr(0, i);
    }
    return countLineEnds(text);
}

/// Copies the bytes of one line, and nothing behind them.
char* copyExactly(const char* from, std::size_t count, char* out) noexcept {
    return std::copy_n(from, count, out);
}

/// The same piece by piece, which takes no decision for most lines. What is behind the line is
/// copied too, up to the end of a piece: as many bytes have to follow on both sides.
constexpr std::size_t piece = 64;
char* copyInPieces(const char* from, std::size_t count, char* out) noexcept {
    for (std::size_t done = 0; done <= count; done += piece) {
        std::memcpy(out + done, from + done, piece);
    }
    return out + count;
}

/// Writes the lines of a text without a bare CR, as most files have it, with a CR before each LF,
/// as long as `left` bytes of it remain behind a line. Takes them off the text; the end of what is
/// written.
template <class CopyLine>
char* writeLines(std::string_view& text, std::size_t left, char* out, CopyLine copyLine) noexcept {
    for (std::size_t end; (end = text.find('\n')) != npos; text.remove_prefix(end + 1)) {
        if (text.size() - end < left) break;
        const bool isComplete = end > 0 && text[end - 1] == '\r';
        out = copyLine(text.data(), end - (isComplete ? 1 : 0), out);
        out = std::copy_n(crLf.data(), crLf.size(), out);
    }
    return out;
}

/// The same to the end of the text. `out` may lie before the text in the same storage: what is
/// written does not pass what is read when the room between them is what the text lacks.
void writeCompleted(std::string_view text, char* out) {
    out = writeLines(text, 0, out, copyExactly);
    std::copy_n(text.data(), text.size(), out);
}

/// The same for any text.
void writeCompletedBareCr(std::string_view text, char* out) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\n' && c != '\r') {
            *out++ = c;
        } else {
            if (c == '\r' && text.substr(i + 1).starts_with('\n')) ++i;
            out = std::copy_n(crLf.data(), crLf.size(), out);
        }
    }
}

/// Completes the line ends in the text's own storage: the text moves to the end of it, and from
/// there line by line to its place.
void completeInPlace(std::string& text, const LineEndCounts& counts) {
    const std::size_t missing = counts.missing();
    if (missing == 0) return;
    text.insert(0, missing, '\0');
    const std::string_view moved = std::string_view(text).substr(missing);
    if (counts.hasBareCr()) {
        writeCompletedBareCr(moved, text.data());
    } else {
        writeCompleted(moved, text.data());
    }
}

/// The same into new storage, for a text without a bare CR.
std::string completedCopy(std::string_view text, std::size_t missing) {
    std::string result(text.size() + missing, '\0');
    char* const end = writeLines(text, piece + 1, result.data(), copyInPieces);
    writeCompleted(text, end);
    return result;
}

}  // namespace

std::string withCrLf(std::string text) {
    std::string_view read = text;
    const LineEndCounts counts = countWithinLimit(read);
    text.resize(read.size());
    const bool hasRoom = text.capacity() - text.size() >= counts.missing();
    if (!hasRoom && !counts.hasBareCr()) return completedCopy(text, counts.missing());
    completeInPlace(text, counts);
    return text;
}

std::string copyWithCrLf(std::string_view text) {
    const LineEndCounts counts = countWithinLimit(text);
    if (counts.missing() == 0) return std::string(text);
    if (!counts.hasBareCr()) return completedCopy(text, counts.missing());
    std::string copy;
    copy.reserve(text.size() + counts.missing());
    copy = text;
    completeInPlace(copy, counts);
    return copy;
}

}  // namespace bouncecheck
