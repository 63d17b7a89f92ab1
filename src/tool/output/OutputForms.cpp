#include "tool/output/OutputForms.h"

#include <algorithm>
#include <array>

#include "text/Ascii.h"
#include "tool/output/Address.h"
#include "tool/output/Fields.h"

namespace bouncecheck {
namespace {

/// Of a page, JSON lines, anything in colors, and a summary.
constexpr std::array<std::string_view, 4> beginnings = {"<!doctype html>", "{\"", "\x1b[",
                                                        "   COUNT   SHARE  "};

/// What --explain writes below the place of a message.
constexpr std::array<std::string_view, 3> secondLines = {"  Subject      ", "  From         ",
                                                         "  Verdict      "};

bool isUpperCaseOf(std::string_view text, std::string_view lower) noexcept {
    return std::ranges::equal(text, lower, {}, {}, ascii::toUpper);
}

/// Whether a table, CSV or TSV has this line of headings. Fields of a header have names
/// like them, but a colon.
bool isHeadings(std::string_view line) noexcept {
    if (line.find(':') != std::string_view::npos) return false;
    const auto first = [&](std::string_view ends) {
        return line.substr(0, line.find_first_of(ends));
    };
    const std::string_view inTable = first(" \r");
    if (inTable == "VERDICT" || inTable == "RULE") return true;
    return std::ranges::any_of(allFields(), [&](const Field& field) {
        return first(",\t\r") == field.name || isUpperCaseOf(inTable, field.name);
    });
}

/// Whether --addresses or --suppress can have written this line.
bool isAddressLine(std::string_view line) noexcept {
    return isAddress(line.substr(0, line.find('\t')));
}

}  // namespace

bool holdsOutput(std::string_view beginning) noexcept {
    const auto begins = [](std::string_view text) {
        return [text](std::string_view form) { return text.starts_with(form); };
    };
    if (beginning.empty() || std::ranges::any_of(beginnings, begins(beginning))) return true;
    const std::size_t end = beginning.find('\n');
    if (end == std::string_view::npos) return false;
    const std::string_view firstLine = beginning.substr(0, end);
    return isHeadings(firstLine) || isAddressLine(firstLine) ||
           std::ranges::any_of(secondLines, begins(beginning.substr(end + 1)));
}

}  // namespace bouncecheck
