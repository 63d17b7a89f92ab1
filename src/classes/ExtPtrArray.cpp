#include <bouncecheck/classes/ExtPtrArray.h>

#include "text/Ascii.h"

namespace bouncecheck {

// Here rather than beside the rest of the class, since only its callers have such arrays.
void StringBuffer::split(ExtPtrArraySb& out, char separator, bool exceptDoubleQuoted,
                         bool trimEach) const {
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= view().size(); ++i) {
        const bool atEnd = i == view().size();
        if (!atEnd && exceptDoubleQuoted && view()[i] == '"') quoted = !quoted;
        if (!atEnd && (quoted || view()[i] != separator)) continue;
        const std::string_view field = view().substr(start, i - start);
        out.appendSb(trimEach ? ascii::trim(field) : field);
        start = i + 1;
    }
}

}  // namespace bouncecheck
