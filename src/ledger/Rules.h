#pragma once

#include <cstdint>

namespace bouncecheck::ledger {

/// When an address that keeps failing is suppressed: mail to it failed on `after` distinct
/// days (UTC) of `within` days in a row.
struct Rules {
    std::int64_t after = 5;
    std::int64_t within = 30;

    bool operator==(const Rules&) const = default;
};

inline constexpr std::int64_t mostAfter = 1'000;
inline constexpr std::int64_t mostWithin = 10'000;

}  // namespace bouncecheck::ledger
