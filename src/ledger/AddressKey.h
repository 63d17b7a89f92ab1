#pragma once

#include <string>
#include <string_view>

namespace bouncecheck::ledger {

/// What tells addresses apart in a ledger: `address` with the ASCII letters in lower case.
/// Domains have no letter case (RFC 1035), and no mail system in use tells "Ann@" from "ann@",
/// though it might (RFC 5321, section 2.4). Any bytes are a key.
std::string keyOf(std::string_view address);

}  // namespace bouncecheck::ledger
