#pragma once

#include <vector>

#include "pages/MadePages.h"

namespace bouncecheck {

/// A manual page for each command, in mdoc(7), made from what the command line declares.
std::vector<MadePage> manPages();

}  // namespace bouncecheck
