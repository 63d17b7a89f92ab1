#pragma once

#include <string_view>

namespace bouncecheck {

/// The host that the reply `text` says was not found, with its domain: "name=relay.example". Refers
/// to the text; "" for none.
std::string_view unknownHostIn(std::string_view text);

/// Whether `host` is `domain`, in it, or what it is in; the case of ASCII letters is ignored.
bool isOfDomain(std::string_view host, std::string_view domain);

}  // namespace bouncecheck
