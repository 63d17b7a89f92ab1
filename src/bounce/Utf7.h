#pragma once

#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

/// Gives an address that passed through UTF-7 (RFC 2152) its '@' and '_' back.
inline void decodeUtf7Signs(StringBuffer& address) {
    address.replaceAllWithUchar("+AEA-", '@');
    address.replaceAllWithUchar("+AF8-", '_');
}

}  // namespace bouncecheck
