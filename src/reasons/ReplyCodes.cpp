#include "reasons/ReplyCodes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "reasons/CodeShapes.h"
#include "reasons/tables/CodeWords.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"

namespace bouncecheck {
namespace {

constexpr std::size_t npos = std::string_view::npos;

template <std::size_t Count>
bool holds(const std::array<std::string_view, Count>& words, std::string_view word) noexcept {
    return std::ranges::any_of(
        words, [&](std::string_view one) { return ascii::equalsNoCase(word, one); });
}

constexpr std::size_t longestWord = 12;

/// Of the codes of success and failure.
constexpr ByteSet firstDigits("245");

/// The first place from `at` on where a code may begin; the size of the text without one.
std::size_t firstDigitFrom(std::string_view text, std::size_t at) noexcept {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    for (std::uint64_t bytes = 0; at < text.size(); at += sizeof bytes) {
        if (at + sizeof bytes <= text.size()) {
            // Eight bytes at once show whether one of them is from "0" to "7".
            std::memcpy(&bytes, text.data() + at, sizeof bytes);
            bytes = (bytes & ones * 0xF8) ^ ones * 0x30;
            if (((bytes - ones) & ~bytes & ones * 0x80) == 0) continue;
        }
        const std::string_view part = text.substr(at, sizeof bytes);
        const std::size_t length = lengthBefore(firstDigits, part);
        if (length < part.size()) return at + length;
    }
    return text.size();
}

/// The word that ends at `end`; only its end when it is longer than all that are asked for.
std::string_view wordBefore(std::string_view text, std::size_t end) noexcept {
    std::size_t begin = end;
    while (begin > 0 && end - begin <= longestWord && ascii::isAlpha(text[begin - 1])) --begin;
    return text.substr(begin, end - begin);
}

std::string_view wordAfter(std::string_view text, std::size_t begin) noexcept {
    std::size_t end = begin;
    while (end < text.size() && end - begin <= longestWord && ascii::isAlpha(text[end])) ++end;
    return text.substr(begin, end - begin);
}

/// The end of what stands before `at` without blanks.
std::size_t endBefore(std::string_view text, std::size_t at) noexcept {
    while (at > 0 && ascii::isBlank(text[at - 1])) --at;
    return at;
}

/// Whether a code may begin at `at`, by the byte in front of it.
bool mayBegin(std::string_view text, std::size_t at) noexcept {
    if (at == 0) return true;
    const char before = text[at - 1];
    if (before == '-') {
        // "550-5.1.1"; not a part of a name or a date.
        return at >= 4 && replyCodeLength(text, at - 4) != 0 &&
               (at == 4 || !ascii::isAlnum(text[at - 5]));
    }
    if (before == ':' && at >= 2) return !ascii::isDigit(text[at - 2]) && text[at - 2] != ']';
    return !ascii::isAlnum(before) && !ascii::isOneOf(before, "./\\@_+%$&~") &&
           ascii::isAscii(before);
}

bool isStatusInContext(std::string_view text, std::size_t at) noexcept {
    const std::string_view word = wordBefore(text, endBefore(text, at));
    return word.empty() || !holds(versionWords, word);
}

/// Whether the number at `at` is a reply code by what stands around it.
bool isReplyInContext(std::string_view text, std::size_t at) noexcept {
    const std::size_t after = at + 3;
    if (after < text.size() && ascii::isBlank(text[after]) &&
        holds(units, wordAfter(text, after + 1))) {
        return false;
    }
    const std::size_t before = endBefore(text, at);
    if (before == 0) return true;
    const char last = text[before - 1];
    if (ascii::isOneOf(last, "\r\n;:(\"'[#>,|<*=-")) return true;
    return holds(replyWords, wordBefore(text, before));
}

/// The status that stands right behind the reply code at `at`; its place.
std::size_t statusBehind(std::string_view text, std::size_t at) noexcept {
    std::size_t next = at + 3;
    constexpr std::size_t most = 4;  // "550 (#5.1.1)"
    while (next < text.size() && next - at < 3 + most && ascii::isOneOf(text[next], " -#(:'\"[<")) {
        ++next;
    }
    const bool follows = next > at + 3 && statusLength(text, next) != 0 && text[next] == text[at];
    return follows ? next : npos;
}

/// The first code of each rank; a smaller rank is better.
class Best {
public:
    void offer(std::string_view code, int rank) noexcept {
        if (rank >= rank_) return;
        rank_ = rank;
        code_ = code;
    }
    std::string_view code() const noexcept { return code_; }

private:
    int rank_ = 9;
    std::string_view code_;
};

}  // namespace

ReplyCodes codesIn(std::string_view text) noexcept {
    Best reply;
    Best status;
    for (std::size_t at = 0;; ++at) {
        at = firstDigitFrom(text, at);
        if (at >= text.size()) break;
        if (!mayBegin(text, at)) continue;
        const bool isSuccess = text[at] == '2';
        if (const std::size_t length = statusLength(text, at); length != 0) {
            // Versions begin with 2 as often as codes of success do, so a number alone is none.
            if (!isSuccess && isStatusInContext(text, at)) status.offer(text.substr(at, length), 1);
            at += length - 1;
        } else if (replyCodeLength(text, at) != 0) {
            // Of the codes of success only these are about a recipient or a message.
            if (isSuccess && text[at + 1] != '5') continue;
            const std::size_t behind = statusBehind(text, at);
            if (behind != npos) {
                status.offer(text.substr(behind, statusLength(text, behind)), isSuccess ? 2 : 0);
            } else if (!isReplyInContext(text, at)) {
                continue;
            }
            reply.offer(text.substr(at, 3), isSuccess ? 2 : 0);
        }
    }
    return {reply.code(), status.code()};
}

bool isFirstLineOnly(std::string_view reply) noexcept {
    const std::string_view text = ascii::trim(reply);
    if (replyCodeLength(text, 0) == 0 || text.size() < 4 || text[3] != '-') return false;
    const std::array<char, 4> last = {text[0], text[1], text[2], ' '};
    return text.find(std::string_view(last.data(), last.size())) == npos;
}

}  // namespace bouncecheck
