#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "mime/SingleByteCharset.h"

/// The charsets of most mail, which are known without asking the C library.
namespace bouncecheck {

inline constexpr UpperHalf latin1 = [] {
    UpperHalf half{};
    for (std::uint32_t i = 0; i < half.size(); ++i) half[i] = 0x80 + i;
    return half;
}();

inline constexpr UpperHalf usAscii = [] {
    UpperHalf half{};
    half.fill(noCharacter);
    return half;
}();

inline constexpr UpperHalf latin9 = [] {
    UpperHalf half = latin1;
    half[0x24] = 0x20AC;
    half[0x26] = 0x0160;
    half[0x28] = 0x0161;
    half[0x34] = 0x017D;
    half[0x38] = 0x017E;
    half[0x3C] = 0x0152;
    half[0x3D] = 0x0153;
    half[0x3E] = 0x0178;
    return half;
}();

inline constexpr UpperHalf windows1252 = [] {
    constexpr std::uint32_t none = noCharacter;
    constexpr std::array<std::uint32_t, 32> insteadOfControls = {
        0x20AC, none,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, none,   0x017D, none,   none,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, none,   0x017E, 0x0178};
    UpperHalf half = latin1;
    std::ranges::copy(insteadOfControls, half.begin());
    return half;
}();

struct WesternCharset {
    std::string_view name;
    const UpperHalf& upper;
};

/// By the names that mail gives them.
inline constexpr WesternCharset westernCharsets[] = {
    {"us-ascii", usAscii},   {"ascii", usAscii},          {"ansi_x3.4-1968", usAscii},
    {"iso646-us", usAscii},  {"iso-8859-1", latin1},      {"iso8859-1", latin1},
    {"iso_8859-1", latin1},  {"iso_8859-1:1987", latin1}, {"latin1", latin1},
    {"l1", latin1},          {"iso-8859-15", latin9},     {"iso8859-15", latin9},
    {"iso_8859-15", latin9}, {"latin-9", latin9},         {"windows-1252", windows1252},
    {"cp1252", windows1252}, {"cp-1252", windows1252},    {"x-cp1252", windows1252},
};

}  // namespace bouncecheck
