#include "recipients/DrawnRule.h"

#include <algorithm>

#include "recipients/tables/RuleWords.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// What rules are drawn with, and what stands beside that.
constexpr std::string_view strokes = "-=_*~#+";
constexpr std::string_view decorations = "-=_*~#+<>|8: ";

}  // namespace

bool isRule(std::string_view line) {
    return line.size() >= 2 && line[1] == line[0] && ascii::isOneOf(line[0], strokes);
}

bool isRuleOfReturned(std::string_view line) {
    if (!isRule(line)) return false;
    const std::size_t begin = line.find_first_not_of(decorations);
    if (begin == npos) return false;
    const std::string_view words = line.substr(begin);
    return std::ranges::any_of(
        ruleWords, [&](std::string_view known) { return ascii::startsWithNoCase(words, known); });
}

}  // namespace bouncecheck
