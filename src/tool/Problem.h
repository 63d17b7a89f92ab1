#pragma once

#include <iosfwd>
#include <string_view>

#include "tool/sources/MessagePlace.h"

namespace bouncecheck {

/// Prints "bouncecheck: PROBLEM", one line. A problem may name what comes from others: it is
/// made printable, also when there is no memory for escapes.
void reportProblem(std::ostream& err, std::string_view problem);

/// The same about a source, as "bouncecheck: SOURCE: PROBLEM", or about a message, with its place
/// in a mailbox behind the source.
void reportProblem(std::ostream& err, std::string_view source, std::string_view problem);
void reportProblem(std::ostream& err, const MessagePlace& place, std::string_view problem);

}  // namespace bouncecheck
