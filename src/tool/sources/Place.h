#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bouncecheck {

/// Where a message is, for people: the path, with its place in a mailbox file
/// behind a colon.
std::string placeOf(std::string_view source, std::uint64_t index, bool inMailbox);

}  // namespace bouncecheck
