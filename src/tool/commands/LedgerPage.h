#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "ledger/Development.h"
#include "ledger/Listing.h"
#include "ledger/Rules.h"
#include "tool/output/SharedTexts.h"

namespace bouncecheck {

/// What the page of a ledger says of it as a whole.
struct LedgerSummary {
    ledger::Development development;
    ledger::Rules rules;
    /// When it was read.
    ledger::Time now = 0;
};

/// Writes a ledger as a page for the browser: the development, and a row for each address. The
/// addresses are written in blocks as they come:
///
/// - "rows": what the table shows and the search finds, a column each; texts by their number;
/// - "details": what a row unfolds to besides, a list of texts each.
///
/// What an address adds is bounded.
class LedgerPage {
public:
    LedgerPage(std::ostream& out, const LedgerSummary& summary);

    void add(const ledger::ListedAddress& address, const ledger::DecidingReport& report);
    void finish();

private:
    void writeBlock();

    std::ostream& out_;
    std::size_t count_ = 0;
    SharedTexts rowTexts_, texts_;
    /// The elements of JSON arrays, in the order of `columnNames`.
    std::array<std::string, 9> columns_;
    static const std::array<std::string_view, 9> columnNames;
    std::string details_;
};

}  // namespace bouncecheck
