#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ledger/Entries.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// How many reports of one day (UTC) say the same. The days count from 1970-01-01.
struct DayOfReports {
    std::int64_t day = 0;
    std::string outcome, reason, advice;
    std::int64_t count = 0;
};

/// How many addresses began or ceased to be suppressed on a day.
struct DayOfChanges {
    std::int64_t day = 0;
    std::int64_t begun = 0;
    std::int64_t ended = 0;
};

/// What happened from day to day, in the order of the days. It follows from what the ledger knows
/// now and from the rules and protections that it has now: a report that was recorded late counts
/// on the day on which it happened. So the changes together leave suppressed what is suppressed
/// now.
struct Development {
    std::vector<DayOfReports> reports;
    std::vector<DayOfChanges> changes;
    std::int64_t messages = 0;
    std::int64_t addresses = 0;
};

/// Reads all reports twice. What it keeps in memory grows with the days, and for one address at a
/// time with its reports.
Development developmentOf(Ledger& ledger);

}  // namespace bouncecheck::ledger
