#pragma once

#include <bouncecheck/Advice.h>
#include <bouncecheck/Outcome.h>

#include <cstdint>
#include <string_view>

namespace bouncecheck::ledger {

/// What a report means to the state of its address. The names are those of the table `events`, and
/// the values are in their order; "" for none, which changes nothing.
enum class Bearing : std::uint8_t { none, retry, success, suppress, unsubscribe };

std::string_view nameOf(Bearing bearing) noexcept;
/// None for any other name.
Bearing bearingNamed(std::string_view name) noexcept;

Bearing bearingOf(Outcome outcome, Advice advice) noexcept;

}  // namespace bouncecheck::ledger
