#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace bouncecheck {

/// The host that the reply `text` says was not found, with its domain: "name=relay.example". Refers
/// to the text; "" for none.
std::string_view unknownHostIn(std::string_view text);

/// The names of hosts, with their domains, that stand in the line of the words at the byte `at` of
/// `text`, near them and behind any code: "lookup relay.example: no such host". No addresses and no
/// links.
std::vector<std::string_view> hostsBeside(std::string_view text, std::size_t at,
                                          std::size_t length);

}  // namespace bouncecheck
