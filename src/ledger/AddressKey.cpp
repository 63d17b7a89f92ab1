#include "ledger/AddressKey.h"

#include "text/Ascii.h"

namespace bouncecheck::ledger {

std::string keyOf(std::string_view address) { return ascii::lowerCase(address); }

}  // namespace bouncecheck::ledger
