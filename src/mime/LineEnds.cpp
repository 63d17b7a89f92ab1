#include "mime/LineEnds.h"

#include <algorithm>
#include <array>
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

/// Writes a text with its line ends completed in blocks of `maskedBytes` bytes, without branches
/// that depend on the length of a line.
class BlockWriter {
public:
    /// What a block takes of the room at `out`, and of the bytes it is read from: behind a line end
    /// as many bytes are written as a block has.
    static constexpr std::size_t room = 3 * maskedBytes;
    static constexpr std::size_t read = 2 * maskedBytes;

    /// Writes the block at `bytes`, which goes on behind the last one; returns the end of what is
    /// written.
    char* write(const char* bytes, char* out) noexcept {
        const std::uint64_t lf = maskOf(bytes, '\n');
        const std::uint64_t cr = maskOf(bytes, '\r');
        const std::uint64_t bareLf = lf & ~(cr << 1 | std::uint64_t{followsCr_});
        const std::uint64_t bareCr =
            cr & ~(lf >> 1 | std::uint64_t{bytes[maskedBytes] == '\n'} << (maskedBytes - 1));
        followsCr_ = bytes[maskedBytes - 1] == '\r';
        std::memcpy(out, bytes, maskedBytes);
        for (std::uint64_t ends = bareLf | bareCr; ends != 0; ends &= ends - 1) {
            const auto end = static_cast<std::size_t>(std::countr_zero(ends));
            const bool isCr = (bareCr >> end & 1) != 0;
            const std::size_t at = end + (isCr ? 1 : 0);
            out[at] = isCr ? '\n' : '\r';
            ++out;
            std::memcpy(out + at, bytes + at, maskedBytes);
        }
        return out + maskedBytes;
    }

private:
    bool followsCr_ = false;
};

/// The same byte by byte. `out` may lie before the text in the same storage: what is written does
/// not pass what is read when the room between them is what the text lacks.
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

/// Completes the line ends in the text's own storage: the text moves to the end of it, and from
/// there to its place.
void completeInPlace(std::string& text, const LineEndCounts& counts) {
    const std::size_t missing = counts.missing();
    if (missing == 0) return;
    text.insert(0, missing, '\0');
    const std::string_view moved = std::string_view(text).substr(missing);
    if (counts.hasBareCr()) {
        writeBytes(moved, text.data());
    } else {
        writeLines(moved, text.data());
    }
}

/// A copy with complete line ends, which is about `missing` bytes longer than the text. What it
/// lacks beyond that is counted when it turns out.
std::string completedCopy(std::string_view text, std::size_t missing) {
    std::string result(text.size() + missing + BlockWriter::room, '\0');
    std::size_t length = 0;
    BlockWriter writer;
    const auto write = [&](const char* bytes, std::string_view rest) {
        if (result.size() - length < BlockWriter::room) {
            const std::size_t more = rest.size() + countLineEnds(rest).missing();
            result.resize(length + more + BlockWriter::room);
        }
        char* const out = result.data() + length;
        length += static_cast<std::size_t>(writer.write(bytes, out) - out);
    };
    for (; text.size() >= BlockWriter::read; text.remove_prefix(maskedBytes)) {
        write(text.data(), text);
    }
    // The rest with NULs behind it, so that whole blocks can be read.
    std::array<char, 2 * BlockWriter::read> last{};
    std::copy_n(text.data(), text.size(), last.data());
    std::size_t written = 0;
    for (; written < text.size(); written += maskedBytes) {
        write(last.data() + written, text.substr(written));
    }
    result.resize(length - (written - text.size()));
    return result;
}

}  // namespace

std::string withCrLf(std::string text) {
    if (text.size() <= limits::lineEnds) return copyWithCrLf(text);
    std::string_view read = text;
    const LineEndCounts counts = countWithinLimit(read);
    text.resize(read.size());
    const bool hasRoom = text.capacity() - text.size() >= counts.missing();
    if (!hasRoom) return completedCopy(text, counts.missing());
    completeInPlace(text, counts);
    return text;
}

std::string copyWithCrLf(std::string_view text) {
    if (text.size() > limits::lineEnds) {
        const LineEndCounts counts = countWithinLimit(text);
        return completedCopy(text, counts.missing());
    }
    // Lines are longer than this, mostly.
    constexpr std::size_t usualLine = 16;
    return completedCopy(text, text.size() / usualLine);
}

}  // namespace bouncecheck
