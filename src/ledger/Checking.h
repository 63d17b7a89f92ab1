#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// What a ledger holds.
struct Contents {
    std::int64_t messages = 0;
    std::int64_t events = 0;
    std::int64_t addresses = 0;
    std::int64_t suppressed = 0;
};

/// Takes a line about something that is wrong.
using OnFault = std::function<void(std::string_view fault)>;

/// Checks the file, and that every state follows from the reports and decisions, which it computes
/// from all of them in their order. Changes nothing.
Contents check(Ledger& ledger, const OnFault& onFault);

}  // namespace bouncecheck::ledger
