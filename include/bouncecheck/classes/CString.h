#pragma once

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// Searches over NUL-terminated strings; a null string reads as "".

/// The first `c` in `s`, or null. As in C, c = 0 finds the terminator.
BOUNCECHECK_EXPORT const char* bxStrChr(const char* s, int c) noexcept;
/// The last `c` in `s`, or null.
BOUNCECHECK_EXPORT const char* bxStrrChr(const char* s, int c) noexcept;
/// The first `t` in `s`, or null. Linear in both.
BOUNCECHECK_EXPORT const char* bxStrStr(const char* s, const char* t) noexcept;

/// Whether the whole of `text` matches `pattern`, in which '*' stands for any
/// run of bytes, the empty one included, and every other byte for itself; letter case is
/// that of ASCII. Linear in both.
BOUNCECHECK_EXPORT bool wildcardMatch(const char* text, const char* pattern, bool ignoreCase);

}  // namespace bouncecheck
