#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string_view>

#include "ledger/Listing.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {

/// How `list` shows addresses.
enum class ListForm { table, json, csv, tsv };

/// Shows one address after the other. What comes from messages is escaped as the form of that
/// name does it for messages.
std::function<void(const ledger::ListedAddress& address)> makeList(ListForm form, std::ostream& out,
                                                                   const Style& style);

}  // namespace bouncecheck
