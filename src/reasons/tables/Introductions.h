#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// What systems put in front of any reply of another one, which says more; in any letter case.
inline constexpr auto introductions = std::to_array<std::string_view>(
    {"unknown address error", "other mail system problem", "a smtp communication problem with",
     "remote smtp server has rejected address", "rejected by the server for the recipient domain",
     "rejected by a remote mail server", "rejected by the recipient domain", "does not like recipient"});

}  // namespace bouncecheck
