#include <bouncecheck/classes/CString.h>

#include <cstring>

#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Wildcard.h"

namespace bouncecheck {
namespace {

const char* orEmpty(const char* s) noexcept { return s ? s : ""; }

}  // namespace

const char* bxStrChr(const char* s, int c) noexcept { return std::strchr(orEmpty(s), c); }
const char* bxStrrChr(const char* s, int c) noexcept { return std::strrchr(orEmpty(s), c); }
const char* bxStrStr(const char* s, const char* t) noexcept {
    return std::strstr(orEmpty(s), orEmpty(t));
}

bool wildcardMatch(const char* text, const char* pattern, bool ignoreCase) {
    return wildcardMatch(ascii::viewOf(text), ascii::viewOf(pattern), letterCase(ignoreCase));
}

}  // namespace bouncecheck
