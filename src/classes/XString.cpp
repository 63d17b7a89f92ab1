#include <bouncecheck/classes/XString.h>

#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {

bool XString::beginsWithUtf8(const char* prefix, bool ignoreCase) const noexcept {
    return startsWith(view(), ascii::viewOf(prefix), letterCase(ignoreCase));
}

bool XString::replaceFirstOccuranceUtf8(const char* from, const char* to, bool ignoreCase) {
    return utf8_.replaceFirstOccurance(from, to, ignoreCase);
}

}  // namespace bouncecheck
