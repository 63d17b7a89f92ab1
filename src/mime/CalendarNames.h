#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "text/Ascii.h"

namespace bouncecheck {

inline constexpr std::array<std::string_view, 7> weekdayNames = {
    "sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};
inline constexpr std::array<std::string_view, 12> monthNames = {
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};

/// The index of the name that `word` stands for, in any letter case: in full or its first
/// letters, three at least (RFC 5322, section 3.3, has three). -1 when it stands for none.
template <std::size_t Size>
constexpr int indexOfName(std::string_view word,
                          const std::array<std::string_view, Size>& names) noexcept {
    const auto isMeant = [&](std::string_view name) {
        return word.size() >= 3 && ascii::startsWithNoCase(name, word);
    };
    const auto found = std::ranges::find_if(names, isMeant);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

}  // namespace bouncecheck
