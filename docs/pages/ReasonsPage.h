#pragma once

#include <string>

namespace bouncecheck {

/// docs/reasons.md as the tables of the code have it: every reason with its meaning, what to do
/// about it, and the codes and phrases of replies behind it. Markdown in UTF-8.
std::string reasonsPage();

}  // namespace bouncecheck
