#pragma once

#include <cstdint>

namespace bouncecheck {

struct CharacterRange {
    std::uint32_t first;
    std::uint32_t last;
    std::uint8_t columns;
};

/// Characters that take no or two columns of a terminal (the blocks of Unicode
/// Standard Annex 11 that mail uses, roughly), in order; all others take one.
inline constexpr CharacterRange characterWidths[] = {
    {0x0300, 0x036F, 0},    // combining marks
    {0x0483, 0x0489, 0},
    {0x0591, 0x05BD, 0},
    {0x064B, 0x065F, 0},
    {0x1100, 0x115F, 2},    // Hangul
    {0x200B, 0x200F, 0},    // zero width, directions
    {0x202A, 0x202E, 0},
    {0x2060, 0x2064, 0},
    {0x20D0, 0x20FF, 0},
    {0x2E80, 0x303E, 2},    // CJK
    {0x3041, 0xA4CF, 2},
    {0xAC00, 0xD7A3, 2},
    {0xF900, 0xFAFF, 2},
    {0xFE00, 0xFE0F, 0},    // variation selectors
    {0xFE30, 0xFE6F, 2},
    {0xFEFF, 0xFEFF, 0},
    {0xFF00, 0xFF60, 2},    // full width forms
    {0xFFE0, 0xFFE6, 2},
    {0x1F300, 0x1F64F, 2},  // pictographs
    {0x1F680, 0x1F6FF, 2},
    {0x1F900, 0x1FAFF, 2},
    {0x20000, 0x3FFFD, 2},
};

}  // namespace bouncecheck
