#include "text/Search.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

#include "text/ByteBlock.h"
#include "text/NextByte.h"

namespace bouncecheck {
namespace {

using ascii::toLower;

/// Knuth, Morris and Pratt: no skipping, but never a byte looked at twice.
std::size_t findNoCaseByAutomaton(std::string_view text, std::string_view needle,
                                  std::size_t from) {
    std::vector<std::size_t> border(needle.size(), 0);
    for (std::size_t i = 1, k = 0; i < needle.size(); ++i) {
        while (k > 0 && toLower(needle[i]) != toLower(needle[k])) k = border[k - 1];
        if (toLower(needle[i]) == toLower(needle[k])) ++k;
        border[i] = k;
    }
    for (std::size_t i = from, k = 0; i < text.size(); ++i) {
        while (k > 0 && toLower(text[i]) != toLower(needle[k])) k = border[k - 1];
        if (toLower(text[i]) == toLower(needle[k])) ++k;
        if (k == needle.size()) return i + 1 - k;
    }
    return npos;
}

}  // namespace

std::size_t findBytes(std::string_view text, std::string_view needle, std::size_t from) noexcept {
    if (from > text.size() || needle.size() > text.size() - from) return npos;
    if (needle.empty()) return from;
#ifdef _WIN32
    return text.find(needle, from);  // its C library has no other
#else
    // The two-way search of the C library is linear; string_view::find is so for few bytes only,
    // of the one or the other, and much faster then.
    constexpr std::size_t few = 4;
    constexpr std::size_t shortText = 128;
    if (needle.size() <= few || text.size() - from <= shortText) return text.find(needle, from);
    const void* found =
        memmem(text.data() + from, text.size() - from, needle.data(), needle.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : npos;
#endif
}

std::size_t findPair(std::string_view text, char first, char second, std::size_t from) noexcept {
    for (; from < text.size() && text.size() - from > maskedBytes; from += maskedBytes) {
        const char* const bytes = text.data() + from;
        const std::uint64_t pairs = maskOf(bytes, first) & maskOf(bytes + 1, second);
        if (pairs != 0) return from + static_cast<std::size_t>(std::countr_zero(pairs));
    }
    for (std::size_t at = from; (at = text.find(first, at)) != npos && at + 1 < text.size(); ++at) {
        if (text[at + 1] == second) return at;
    }
    return npos;
}

std::size_t findBytesNoCase(std::string_view text, std::string_view needle, std::size_t from) {
    if (from > text.size() || needle.size() > text.size() - from) return npos;
    if (needle.empty()) return from;

    // Places of the first letter are checked one by one. A hostile text makes
    // every check fail late, so the checks live on a budget per text byte; once
    // it is spent, the automaton, slower on mail but always linear, goes on.
    NextByte small(text, toLower(needle.front()));
    NextByte capital(text, ascii::toUpper(needle.front()));
    const std::size_t last = text.size() - needle.size();
    std::size_t spent = 0;
    for (std::size_t at = from; at <= last; ++at) {
        at = std::min(small.atOrAfter(at), capital.atOrAfter(at));
        if (at > last) return npos;  // npos included
        std::size_t same = 1;
        while (same < needle.size() && toLower(text[at + same]) == toLower(needle[same])) ++same;
        if (same == needle.size()) return at;
        spent += same;
        if (spent > 4 * (at - from) + 256) return findNoCaseByAutomaton(text, needle, at + 1);
    }
    return npos;
}

}  // namespace bouncecheck
