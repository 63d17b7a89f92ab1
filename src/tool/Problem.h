#pragma once

#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace bouncecheck {

/// Prints "bouncecheck: PROBLEM", one line. A problem may name what comes from others: it is
/// made printable, also when there is no memory for escapes.
void reportProblem(std::ostream& err, std::string_view problem);

/// The same about a source, as "bouncecheck: SOURCE: PROBLEM". `index` is the place in a
/// mailbox, from 1, or 0.
void reportProblem(std::ostream& err, std::string_view source, std::uint64_t index,
                   std::string_view problem);

}  // namespace bouncecheck
