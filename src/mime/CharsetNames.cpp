#include "mime/CharsetNames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// One of the names of a charset, by where it stands in the row.
struct CharsetName {
    std::uint16_t charset = 0;
    std::uint16_t at = 0;
    std::uint16_t length = 0;

    constexpr std::string_view text() const noexcept {
        return charsets[charset].names.substr(at, length);
    }
};

/// Calls `take` with each name of the table.
constexpr void forEachName(auto take) {
    for (std::size_t i = 0; i < std::size(charsets); ++i) {
        const std::string_view names = charsets[i].names;
        for (std::size_t at = 0; at < names.size();) {
            const std::size_t end = std::min(names.find(' ', at), names.size());
            take(CharsetName{static_cast<std::uint16_t>(i), static_cast<std::uint16_t>(at),
                             static_cast<std::uint16_t>(end - at)});
            at = end + 1;
        }
    }
}

constexpr std::size_t nameCount = [] {
    std::size_t count = 0;
    forEachName([&](CharsetName) { ++count; });
    return count;
}();

/// All names, sorted by the compiler.
constexpr auto names = [] {
    std::array<CharsetName, nameCount> all;
    std::size_t count = 0;
    forEachName([&](CharsetName name) { all[count++] = name; });
    std::ranges::sort(all, {}, &CharsetName::text);
    return all;
}();

}  // namespace

std::string canonicalCharsetName(std::string_view name) {
    constexpr std::size_t longest = 64;
    std::string canonical;
    for (const char c : ascii::trim(name)) {
        if (canonical.size() >= longest) return {};
        if (ascii::isAlnum(c) || ascii::isOneOf(c, "-_.:")) {
            canonical += ascii::toLower(c);
        } else if (!ascii::isOneOf(c, "()+")) {
            return {};
        }
    }
    return canonical;
}

const Charset* charsetOf(std::string_view canonicalName) {
    const auto found = std::ranges::lower_bound(names, canonicalName, {}, &CharsetName::text);
    const bool isName = found != names.end() && found->text() == canonicalName;
    return isName ? &charsets[found->charset] : nullptr;
}

}  // namespace bouncecheck
