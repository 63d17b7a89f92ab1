#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ledger/AddressState.h"
#include "ledger/Bearing.h"
#include "ledger/Decision.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// Something that was reported of an address, or decided about it.
struct HistoryLine {
    Time time = 0;
    /// The outcome, or the decision.
    std::string what;
    /// Nothing for a report.
    std::optional<Decision> decision;
    Bearing bearing = Bearing::none;
    std::string reason;
    std::string advice;
    std::string status;
    std::string replyCode;
    std::string diagnostic;
    std::string evidence;
    std::string verdict;
    std::string rule;
    std::string messageId;
    std::string place;
};

/// All that a ledger knows of an address.
struct FullHistory {
    std::string address;
    AddressState state;
    bool isMailbox = false;
    std::int64_t count = 0;
    /// What protects it; "" for nothing.
    std::string protectedBy{};
    Rules rules{};
    /// By time.
    std::vector<HistoryLine> lines{};
};

/// Nothing where the ledger has nothing about `address`, in any letter case.
std::optional<FullHistory> historyOf(Ledger& ledger, std::string_view address);

}  // namespace bouncecheck::ledger
