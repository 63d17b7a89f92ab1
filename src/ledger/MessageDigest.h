#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace bouncecheck::ledger {

/// SHA-256 of what makes a message the one it is.
using Digest = std::array<std::byte, 32>;

/// Who the message with these bytes is: the same for all deliveries and copies of it.
///
/// Made of the fields Message-ID, From, To, Subject, Date and Content-Type as they stand,
/// unfolded, and of the body. Servers and mail programs add other fields, line ends differ by
/// where a message is stored, and mailbox files put an envelope line in front, ">" before
/// "From " and blank lines at the end: none of these count. Only where there is neither Message-ID
/// nor Date, all fields do, since nothing else may tell one message from another. Linear in the
/// size of the message.
Digest digestOf(std::string_view message);

/// The same of a message of which only the beginning was read: by its fields alone.
Digest digestOfHeader(std::string_view beginning);

}  // namespace bouncecheck::ledger
