#pragma once

namespace bouncecheck {

/// Searches over NUL-terminated strings; a null string reads as "".

/// The first `c` in `s`, or null. As in C, c = 0 finds the terminator.
const char* bxStrChr(const char* s, int c) noexcept;
/// The last `c` in `s`, or null.
const char* bxStrrChr(const char* s, int c) noexcept;
/// The first `t` in `s`, or null. Linear in both.
const char* bxStrStr(const char* s, const char* t) noexcept;

}  // namespace bouncecheck
