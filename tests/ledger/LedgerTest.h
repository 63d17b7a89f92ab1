#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "ledger/Checking.h"
#include "ledger/Decisions.h"
#include "ledger/History.h"
#include "ledger/Listing.h"
#include "ledger/Protection.h"
#include "ledger/Recorder.h"
#include "ledger/RuleSettings.h"
#include "support/TestFolder.h"

namespace bouncecheck::ledger {

/// A folder with a ledger, for each test.
class LedgerTest : public testing::Test {
protected:
    ~LedgerTest() override { std::filesystem::remove_all(folder_); }

    std::string path(std::string_view name = "ledger") const { return (folder_ / name).string(); }
    Ledger open(std::string_view name = "ledger") {
        return Ledger(path(name), Ledger::Missing::create, Ledger::Durability::last);
    }

    /// What a ledger finds wrong in itself, a line each.
    static std::string faultsOf(Ledger& ledger) {
        std::string faults;
        check(ledger, [&](std::string_view fault) { faults.append(fault).append("\n"); });
        return faults;
    }

    /// "suppress unknown-mailbox @3", with the day since which it holds.
    static std::string stateOf(Ledger& ledger, std::string_view address) {
        const auto history = historyOf(ledger, address);
        if (!history) return "unknown";
        const AddressState& state = history->state;
        std::string text = state.isSuppressed ? "suppressed" : "active";
        for (const std::string_view part : {nameOf(state.cause), std::string_view(state.reason)}) {
            if (!part.empty()) text.append(" ").append(part);
        }
        return state.since ? text + " @" + std::to_string(*state.since / secondsPerDay) : text;
    }

    const std::filesystem::path folder_ = makeTestFolder();
};

/// A message of its own that says `report` on a day.
inline MessageEntry messageOn(Time day, Report report) {
    static std::uint64_t count = 0;
    MessageEntry entry;
    ++count;
    std::memcpy(entry.digest.data(), &count, sizeof count);
    entry.seen = day * secondsPerDay;
    entry.verdict = "hard";
    entry.reports.push_back(std::move(report));
    return entry;
}

inline Report report(std::string_view kind, std::string_view address = "ann@example.org") {
    Report report;
    report.address = address;
    report.isMailbox = true;
    report.outcome = Outcome::failed;
    if (kind == "gone") {
        report.reason = Reason::unknownMailbox;
        report.advice = Advice::suppress;
    } else if (kind == "full") {
        report.reason = Reason::mailboxFull;
        report.advice = Advice::retry;
    } else if (kind == "late") {
        report.outcome = Outcome::delayed;
        report.advice = Advice::retry;
    } else if (kind == "complaint") {
        report.outcome = Outcome::complained;
        report.advice = Advice::unsubscribe;
    } else if (kind == "spam") {
        report.reason = Reason::content;
        report.advice = Advice::fix;
    } else if (kind == "delivered") {
        report.outcome = Outcome::delivered;
    } else {
        report.outcome = Outcome::relayed;
    }
    return report;
}

}  // namespace bouncecheck::ledger
