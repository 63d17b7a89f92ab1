#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// How notices speak of several recipients of whom not all have to have failed.
inline constexpr auto partialWords = std::to_array<std::string_view>(
    {"one or more", "at least one", "some of", "some recipients", "some addresses", "some users", "some destination"});

}  // namespace bouncecheck
