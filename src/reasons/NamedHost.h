#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// Whether the word at `at` of a reply, of `length` bytes, is said of a host by its IP address:
/// "Mail from 192.0.2.1 is blocked", "blocked: [2001:db8::1]".
bool isSaidOfHost(std::string_view text, std::size_t at, std::size_t length);

/// Whether `text` has `host`, or one within it, as a word of its own, and not as the domain of an
/// address.
bool isHostNamed(std::string_view text, std::string_view host);

}  // namespace bouncecheck
