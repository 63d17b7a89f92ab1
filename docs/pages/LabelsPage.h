#pragma once

#include <string>

namespace bouncecheck {

/// docs/labels.md as the tables of the code have it: every verdict and label with
/// its meaning, what it looks for and what to do about it. Markdown in UTF-8.
std::string labelsPage();

}  // namespace bouncecheck
