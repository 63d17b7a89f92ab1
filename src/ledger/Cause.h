#pragma once

#include <cstdint>
#include <string_view>

namespace bouncecheck::ledger {

/// What a state follows from: what was reported, what was decided by hand, or a protection from
/// what would follow otherwise. The names are those of the table `addresses`; "" for none.
enum class Cause : std::uint8_t {
    none,
    suppress,
    unsubscribe,
    retry,
    deny,
    allow,
    /// Named "protected".
    protection,
};

std::string_view nameOf(Cause cause) noexcept;
/// None for any other name.
Cause causeNamed(std::string_view name) noexcept;

}  // namespace bouncecheck::ledger
