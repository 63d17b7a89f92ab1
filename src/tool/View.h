#pragma once

#include <iosfwd>
#include <memory>

#include "tool/output/Output.h"

namespace bouncecheck {

/// What is printed: one form of output, or the tables in place of messages.
enum class View {
    table,
    json,
    csv,
    tsv,
    summary,
    jsonSummary,
    addresses,
    explanations,
    phrases,
};

/// Whether it prints a row for each message, and so shows how far the work is.
constexpr bool growsByMessage(View view) noexcept {
    return view != View::summary && view != View::jsonSummary && view != View::addresses;
}

/// The output of a view, null for one that shows no messages. `parts` is for those that have
/// columns, `ofFailures` for addresses.
std::unique_ptr<Output> makeOutput(View view, std::ostream& out, OutputParts parts, bool ofFailures,
                                   Style style);

}  // namespace bouncecheck
