#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// What a line calls a host of the mail system that reports, or of the one that it asked, rather than
/// that of a recipient's domain, in any letter case.
inline constexpr auto ownHostWords = std::to_array<std::string_view>({
    "database",
    "filter",
    "gateway",
    "ldap",
    "milter",
    "next hop",
    "next-hop",
    "nexthop",
    "policy server",
    "proxy",
    "relay host",
    "relay server",
    "relayhost",
    "smart host",
    "smart-host",
    "smarthost",
});

}  // namespace bouncecheck
