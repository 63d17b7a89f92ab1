#include "mime/CharsetNames.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

struct NamedCharset {
    std::string_view name;
    const Charset* charset = nullptr;
};

/// Calls `take` with each name of the table and its charset.
constexpr void forEachName(auto take) {
    for (const Charset& charset : charsets) {
        for (std::string_view rest = charset.names; !rest.empty();) {
            const std::string_view name = rest.substr(0, rest.find(' '));
            take(name, charset);
            rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        }
    }
}

constexpr std::size_t nameCount = [] {
    std::size_t count = 0;
    forEachName([&](std::string_view, const Charset&) { ++count; });
    return count;
}();

/// All names, sorted by the compiler.
constexpr auto names = [] {
    std::array<NamedCharset, nameCount> all;
    std::size_t count = 0;
    forEachName([&](std::string_view name, const Charset& charset) {
        all[count++] = {name, &charset};
    });
    std::ranges::sort(all, {}, &NamedCharset::name);
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
    const auto found = std::ranges::lower_bound(names, canonicalName, {}, &NamedCharset::name);
    return found != names.end() && found->name == canonicalName ? found->charset : nullptr;
}

}  // namespace bouncecheck
