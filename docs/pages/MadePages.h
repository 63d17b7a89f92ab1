#pragma once

#include <string>
#include <vector>

namespace bouncecheck {

/// A file below `docs` that is made from the code's tables.
struct MadePage {
    std::string file;
    std::string text;
};

std::vector<MadePage> madePages();

}  // namespace bouncecheck
