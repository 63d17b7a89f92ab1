#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ledger/AddressStates.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

enum class Decision { allow, deny };

constexpr std::string_view nameOf(Decision decision) noexcept {
    return decision == Decision::allow ? "allow" : "deny";
}

/// Decides by hand that addresses may be mailed, or may not, whatever is reported of them until
/// the other is decided. `text` says why. Returns the addresses that stay protected from a deny.
std::vector<SparedAddress> decide(Ledger& ledger, Decision decision,
                                  const std::vector<std::string>& addresses, std::string_view text,
                                  Time now);

}  // namespace bouncecheck::ledger
