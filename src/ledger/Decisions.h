#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ledger/AddressStates.h"
#include "ledger/Decision.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// Decides by hand that addresses may be mailed, or may not, whatever is reported of them until
/// the other is decided. `text` says why. Returns the addresses that stay protected from a deny.
std::vector<SparedAddress> decide(Ledger& ledger, Decision decision,
                                  const std::vector<std::string>& addresses, std::string_view text,
                                  Time now);

}  // namespace bouncecheck::ledger
