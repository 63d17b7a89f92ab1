#pragma once

#include <string_view>

namespace bouncecheck {

/// Whether all that a server refuses, by the notes beside its replies or the dialogue that `text`
/// quotes, is the sender, before any recipient was named: replies of failure follow commands that
/// name the sender, and no others. Linear in the text.
bool refusesSender(std::string_view text);

}  // namespace bouncecheck
