#include "mime/LineEnds.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <bouncecheck/Limits.h>
#include "text/ByteBlock.h"
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
constexpr std::size_t block = 240;

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

/// Writes a text with its line ends completed, block by block, without branches that depend on the
/// length of a line. Removes from the text what it has written, which is all but its end, and
/// returns where that ends in `out`, which has room for the whole result and is not in the text.
char* writeBlocks(std::string_view& text, bool hasCr, char* out) noexcept {
    // Behind a line end as many bytes are written as a block has.
    constexpr std::size_t least = 2 * maskedBytes;
    bool followsCr = false;
    for (; text.size() >= least; text.remove_prefix(maskedBytes)) {
        const char* const bytes = text.data();
        std::uint64_t bareLf = maskOf(bytes, '\n');
        std::uint64_t bareCr = 0;
        if (hasCr) {
            const std::uint64_t lf = bareLf;
            const std::uint64_t cr = maskOf(bytes, '\r');
            bareLf &= ~(cr << 1 | std::uint64_t{followsCr});
            bareCr = cr & ~(lf >> 1 | std::uint64_t{bytes[maskedBytes] == '\n'} << 63);
            followsCr = bytes[maskedBytes - 1] == '\r';
        }
        std::memcpy(out, bytes, maskedBytes);
        for (std::uint64_t ends = bareLf | bareCr; ends != 0; ends &= ends - 1) {
            const auto end = static_cast<std::size_t>(std::countr_zero(ends));
            const bool isCr = (bareCr >> end & 1) != 0;
            const std::size_t at = end + (isCr ? 1 : 0);
            out[at] = isCr ? '\n' : '\r';
            ++out;
            std::memcpy(out + at, bytes + at, maskedBytes);
        }
        out += maskedBytes;
    }
    // The rest of a pair; the other half of a bare CR is there already.
    if (followsCr && text.starts_with('\n')) {
        *out++ = '\n';
        text.remove_prefix(1);
    }
    return out;
}

/// The same byte by byte, to the end. `out` may lie before the text in the same storage: what is
/// written does not pass what is read when the room between them is what the text lacks.
void writeBytes(std::string_view text, char* out) {
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

/// The same line by line, for a text without a bare CR, as most files have it.
void writeLines(std::string_view text, char* out) {
    for (std::size_t end; (end = text.find('\n')) != npos; text.remove_prefix(end + 1)) {
        const bool isComplete = end > 0 && text[end - 1] == '\r';
        out = std::copy_n(text.data(), end - (isComplete ? 1 : 0), out);
        out = std::copy_n(crLf.data(), crLf.size(), out);
    }
    std::copy_n(text.data(), text.size(), out);
}

void writeAll(std::string_view text, bool hasBareCr, char* out) {
    if (hasBareCr) {
        writeBytes(text, out);
    } else {
        writeLines(text, out);
    }
}

/// Completes the line ends in the text's own storage: the text moves to the end of it, and from
/// there to its place.
void completeInPlace(std::string& text, const LineEndCounts& counts) {
    const std::size_t missing = counts.missing();
    if (missing == 0) return;
    text.insert(0, missing, '\0');
    const std::string_view moved = std::string_view(text).substr(missing);
    writeAll(moved, counts.hasBareCr(), text.data());
}

std::string completedCopy(std::string_view text, const LineEndCounts& counts) {
    std::string result(text.size() + counts.missing(), '\0');
    char* const end = writeBlocks(text, counts.cr > 0, result.data());
    writeAll(text, counts.hasBareCr(), end);
    return result;
}

}  // namespace

std::string withCrLf(std::string text) {
    std::string_view read = text;
    const LineEndCounts counts = countWithinLimit(read);
    text.resize(read.size());
    const bool hasRoom = text.capacity() - text.size() >= counts.missing();
    if (!hasRoom) return completedCopy(text, counts);
    completeInPlace(text, counts);
    return text;
}

std::string copyWithCrLf(std::string_view text) {
    const LineEndCounts counts = countWithinLimit(text);
    return counts.missing() == 0 ? std::string(text) : completedCopy(text, counts);
}

}  // namespace bouncecheck
