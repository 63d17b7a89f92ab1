#pragma once

#include <string>
#include <string_view>

/// What outputs make of the addresses of messages, which are as messages have them.
namespace bouncecheck {

/// `text` without what sentences leave around an address.
std::string_view bareAddress(std::string_view text) noexcept;

/// Whether `text` is an address that mail goes to (RFC 5321, section 4.1.2, and RFC 6531),
/// and no pipe to a program.
bool isAddress(std::string_view text) noexcept;

/// Whether `address` is that of a mail system, not of a person, which sent the message that
/// is `from` somebody.
bool isSystem(std::string_view address, std::string_view from);

std::string withLowerDomain(std::string_view address);

/// What is behind the last "@", in lower case, without what mail leaves there; as the page
/// counts it. "" where there is none.
std::string countedDomainOf(std::string_view address);

}  // namespace bouncecheck
