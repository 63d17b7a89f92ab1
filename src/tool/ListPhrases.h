#pragma once

#include <iosfwd>

namespace bouncecheck {

/// Prints every row of every table as a JSON object a line.
void listPhrases(std::ostream& out);

}  // namespace bouncecheck
