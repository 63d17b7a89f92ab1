#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck::bench {

/// Every literal that the tables of the classifier are made of, each once
/// whatever its letter case, in the order of the tables: phrases, the pieces of
/// wildcard patterns, the contexts and texts of markers, the phrases of rules.
/// Those too short for a pass, which the classifier searches only where their
/// context stands, are left out.
std::vector<std::string> tableLiterals();

/// For each literal one that looks like it and stands in no mail: its letters
/// moved on by 13.
std::vector<std::string> rotatedLiterals(const std::vector<std::string>& literals);

std::vector<std::string_view> viewsOf(const std::vector<std::string>& strings);

}  // namespace bouncecheck::bench
