#include <bouncecheck/classes/ParseEngine.h>

#include <algorithm>

#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/Search.h"

namespace bouncecheck {

std::string_view ParseEngine::rest() const noexcept {
    const std::string_view text = m_sbText.view();
    return text.substr(std::min(m_pos, text.size()));
}

char ParseEngine::current() const noexcept {
    const std::string_view ahead = rest();
    return ahead.empty() ? '\0' : ahead.front();
}

void ParseEngine::advance(std::size_t n) noexcept { m_pos += std::min(n, rest().size()); }

bool ParseEngine::seekAndSkip(const char* s) noexcept { return seekAndSkip(ascii::viewOf(s)); }

bool ParseEngine::seekAndSkip(std::string_view s) noexcept {
    const std::size_t at = findBytes(rest(), s);
    if (at == npos) return false;
    advance(at + s.size());
    return true;
}

void ParseEngine::skipUntilNotChar4(char a, char b, char c, char d) noexcept {
    const char set[] = {a, b, c, d};
    advance(rest().find_first_not_of(std::string_view(set, sizeof set)));
}

void ParseEngine::skipUntilChar(char c) noexcept { advance(rest().find(c)); }

void ParseEngine::captureToNext(const char* stopSet, StringBuffer& out) {
    const std::string_view ahead = rest();
    const std::size_t stop = lengthBefore(ByteSet(ascii::viewOf(stopSet)), ahead);
    out.append(ahead.substr(0, stop));
    advance(stop);
}

}  // namespace bouncecheck
