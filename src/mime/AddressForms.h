#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// What stands in front of the last '@' of `address`; all of it without one.
constexpr std::string_view localPartOf(std::string_view address) noexcept {
    return address.substr(0, address.rfind('@'));
}
/// What stands behind it; "" without one.
constexpr std::string_view domainOf(std::string_view address) noexcept {
    const std::size_t at = address.rfind('@');
    return at == std::string_view::npos ? std::string_view() : address.substr(at + 1);
}

/// Whether `host` is `domain`, in it, or what it is in, and neither is empty; the case of ASCII
/// letters is ignored.
bool isOfDomain(std::string_view host, std::string_view domain);

/// `address` with the two bytes that xtext has to encode in printable ASCII, "+2B" and "+3D",
/// decoded (RFC 3461, section 4). Others stay: a '+' with two digits behind it is a common
/// part of addresses, and reports carry many that were never encoded.
std::string decodeXtext(std::string_view address);

/// `address`, of the type "utf-8", with "\x{1F600}" decoded (RFC 6533, section 3).
/// What is no such form stays as it is.
std::string decodeUtf8Address(std::string_view address);

/// The address that a sender's rewriting of `address` is made from: without the "prvs=" tag of
/// BATV, and the original one in "SRS0=..." and "SRS1=..." forms. Any other stays as it is.
std::string withoutRewriting(std::string_view address);

}  // namespace bouncecheck
