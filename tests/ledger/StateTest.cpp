#include <algorithm>
#include <sstream>

#include "ledger/LedgerTest.h"

namespace bouncecheck::ledger {
namespace {

/// What is recorded, as "KIND DAY, KIND DAY", and the state that follows.
struct Row {
    const char* reports;
    const char* state;
};

constexpr Row rows[] = {
    {"spam 1", "active"},
    {"gone 3", "suppressed suppress unknown-mailbox @3"},
    {"gone 5, gone 3", "suppressed suppress unknown-mailbox @3"},
    {"complaint 3", "suppressed unsubscribe @3"},
    // A wish is stronger than a mailbox that is gone, and neither is undone by a delivery.
    {"gone 3, complaint 4, delivered 5", "suppressed unsubscribe @4"},
    {"gone 3, delivered 5", "suppressed suppress unknown-mailbox @3"},
    {"full 1, full 2, full 3, full 4", "active"},
    {"full 1, full 2, full 3, full 4, full 5", "suppressed retry mailbox-full @5"},
    // Days count, not messages.
    {"full 1, full 1, full 1, full 2, full 3, full 4", "active"},
    {"full 1, full 8, full 15, full 22, full 30", "suppressed retry mailbox-full @30"},
    {"full 1, full 8, full 15, full 22, full 31", "active"},
    {"full 1, full 20, full 25, full 30, full 35, full 40", "suppressed retry mailbox-full @40"},
    {"full 1, full 2, full 3, full 4, delivered 4, full 5", "active"},
    {"full 1, full 2, full 3, full 4, full 5, delivered 6", "active"},
    {"delivered 1, full 2, full 3, full 4, full 5, full 6", "suppressed retry mailbox-full @6"},
    {"full 1, full 2, full 3, full 4, relayed 4, full 5", "suppressed retry mailbox-full @5"},
    {"full 1, full 2, full 3, full 4, late 5, late 6, spam 7", "active"},
    {"full 1, full 2, full 3, full 4, full 5, gone 9", "suppressed suppress unknown-mailbox @9"},
};

std::vector<MessageEntry> messagesOf(const char* reports) {
    std::vector<MessageEntry> messages;
    std::istringstream words(reports);
    std::string kind;
    for (std::string day; words >> kind >> day;) {
        messages.push_back(messageOn(std::stol(day), report(kind)));
    }
    return messages;
}

TEST_F(LedgerTest, StatesFollowFromReportsInAnyOrder) {
    for (const Row& row : rows) {
        std::vector<MessageEntry> messages = messagesOf(row.reports);
        for (int order = 0; order < 3; ++order) {
            std::filesystem::remove_all(folder_);
            std::filesystem::create_directories(folder_);
            Ledger ledger = open();
            Recorder recorder(ledger);
            // One by one, then all at once, then again, which is nothing new.
            if (order > 0) {
                for (const MessageEntry& message : messages)
                    recorder.record({&message, 1}, 1 << 30);
            }
            recorder.record(messages, 1 << 30);
            EXPECT_EQ(stateOf(ledger, "Ann@Example.ORG"), row.state) << row.reports;
            EXPECT_EQ(faultsOf(ledger), "") << row.reports;
            std::ranges::reverse(messages);
        }
    }
}

TEST_F(LedgerTest, RecordsAMessageOnce) {
    Ledger ledger = open();
    const MessageEntry message = messageOn(3, report("gone"));
    EXPECT_EQ(Recorder(ledger).record({&message, 1}, 1 << 30).fresh, 1U);
    EXPECT_EQ(Recorder(ledger).record({&message, 1}, 1 << 30).fresh, 0U);
    EXPECT_EQ(historyOf(ledger, "ann@example.org")->lines.size(), 1U);
    EXPECT_EQ(historyOf(ledger, "ann@example.org")->count, 1);
}

TEST_F(LedgerTest, KnowsNoFuture) {
    Ledger ledger = open();
    const MessageEntry messages[] = {messageOn(400'000, report("gone")),
                                     messageOn(-5, report("complaint"))};
    Recorder(ledger).record(messages, 50 * secondsPerDay);
    const auto lines = historyOf(ledger, "ann@example.org")->lines;
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].time, 0);
    EXPECT_EQ(lines[1].time, 50 * secondsPerDay);
}

TEST_F(LedgerTest, DecisionsWinUntilTheOther) {
    Ledger ledger = open();
    const std::string ann = "ann@example.org";
    const auto tell = [&](const char* kind) {
        const MessageEntry message = messageOn(9, report(kind));
        Recorder(ledger).record({&message, 1}, 1 << 30);
        return stateOf(ledger, ann);
    };
    const auto by = [&](Decision decision) {
        decide(ledger, decision, {ann}, "they called", 7 * secondsPerDay);
        return stateOf(ledger, ann);
    };
    EXPECT_EQ(tell("gone"), "suppressed suppress unknown-mailbox @9");
    EXPECT_EQ(by(Decision::allow), "active allow @7");
    EXPECT_EQ(tell("gone"), "active allow @7");
    EXPECT_EQ(by(Decision::deny), "suppressed deny @7");
    EXPECT_EQ(tell("delivered"), "suppressed deny @7");
    EXPECT_EQ(faultsOf(ledger), "");
    std::string evidence;
    forEachSuppressed(ledger, [&](const ListedAddress& one) { evidence = one.evidence; });
    EXPECT_EQ(evidence, "they called");
}

TEST_F(LedgerTest, ProtectsByPattern) {
    Ledger ledger = open();
    const MessageEntry messages[] = {messageOn(1, report("gone", "Postmaster@example.org")),
                                     messageOn(1, report("gone", "ann@example.org"))};
    Recorder(ledger).record(messages, 1 << 30);
    const auto suppressed = [&] {
        std::string all;
        forEachSuppressed(ledger,
                          [&](const ListedAddress& one) { all.append(one.address).append(" "); });
        return all;
    };
    EXPECT_EQ(suppressed(), "ann@example.org Postmaster@example.org ");
    protect(ledger, {patternOf("POSTMASTER@*")}, 1 << 30);
    EXPECT_EQ(suppressed(), "ann@example.org ");
    protect(ledger, {patternOf("Example.org")}, 1 << 30);
    EXPECT_EQ(suppressed(), "");
    EXPECT_EQ(stateOf(ledger, "ann@example.org"), "active protected unknown-mailbox @1");
    const MessageEntry again = messageOn(2, report("complaint"));
    const Recorded recorded = Recorder(ledger).record({&again, 1}, 1 << 30);
    ASSERT_EQ(recorded.spared.size(), 1U);
    EXPECT_EQ(recorded.spared[0].address, "ann@example.org");
    EXPECT_EQ(recorded.spared[0].pattern, "*@example.org");
    EXPECT_EQ(decide(ledger, Decision::deny, {"ann@example.org"}, "", 1 << 30).size(), 1U);
    EXPECT_EQ(faultsOf(ledger), "");
    EXPECT_EQ(unprotect(ledger, {"*@example.org", "nobody@*"}, 1 << 30).size(), 1U);
    EXPECT_EQ(suppressed(), "ann@example.org ");
    EXPECT_EQ(faultsOf(ledger), "");
    for (const char* none : {"*", "*@*", "@", "*.*", "", "<a@x.example>", "a@x.example ", "A a@x",
                             "mailto:a@x.example", "a@x.example,b@x.example", "x.example.",
                             "postmaster", "a@b@x.example"}) {
        EXPECT_EQ(patternOf(none), "") << none;
    }
}

TEST_F(LedgerTest, OtherRulesHoldForWhatIsThere) {
    Ledger ledger = open();
    Recorder(ledger).record(messagesOf("full 1, full 3"), 1 << 30);
    EXPECT_EQ(stateOf(ledger, "ann@example.org"), "active");
    changeRules(ledger, {.after = 2, .within = 3}, 1 << 30);
    EXPECT_EQ(stateOf(ledger, "ann@example.org"), "suppressed retry mailbox-full @3");
    changeRules(ledger, {.after = 2, .within = 2}, 1 << 30);
    EXPECT_EQ(stateOf(ledger, "ann@example.org"), "active");
    EXPECT_EQ(faultsOf(ledger), "");
    Ledger again = open();
    EXPECT_EQ(rulesOf(again), (Rules{.after = 2, .within = 2}));
}

TEST_F(LedgerTest, ListsEachChangeAtOrBehindATime) {
    Ledger ledger = open();
    const auto changedSince = [&](Time time) {
        std::string all;
        forEachChanged(ledger, time, [&](const ListedAddress& one) {
            all.append(one.address.substr(0, 1)).append(one.isSuppressed ? "+" : "-");
        });
        return all;
    };
    const auto tell = [&](const char* kind, const char* address, Time now) {
        const MessageEntry message = messageOn(1, report(kind, address));
        Recorder(ledger).record({&message, 1}, now);
    };
    tell("gone", "a@example.org", 200'000);
    tell("spam", "b@example.org", 200'001);
    tell("gone", "a@example.org", 200'002);  // no change
    tell("complaint", "c@example.org", 200'003);
    EXPECT_EQ(changedSince(0), "a+c+");
    EXPECT_EQ(changedSince(200'003), "c+");
    EXPECT_EQ(changedSince(200'004), "");
    // A clock that goes back hides nothing.
    decide(ledger, Decision::allow, {"a@example.org"}, "", 100'000);
    EXPECT_EQ(changedSince(200'003), "a-c+");
}

TEST_F(LedgerTest, TakesAnyBytesForAnAddress) {
    using namespace std::string_literals;
    Ledger ledger = open();
    const std::string addresses[] = {"x'); DROP TABLE events; --@example.org",
                                     "a\0b@example.org"s,
                                     "a\0c@example.org"s,
                                     "\xFF\xFE@example.org",
                                     "'",
                                     "%",
                                     "\"",
                                     std::string(900, 'x') + "@example.org"};
    for (const std::string& address : addresses) {
        Report gone = report("gone", address);
        gone.isMailbox = false;
        gone.diagnostic = std::string(10'000, 'x');
        const MessageEntry message = messageOn(1, gone);
        Recorder(ledger).record({&message, 1}, 1 << 30);
        const auto history = historyOf(ledger, address);
        ASSERT_TRUE(history) << address;
        EXPECT_EQ(history->address, address);
        ASSERT_EQ(history->lines.size(), 1U);
        EXPECT_LE(history->lines[0].diagnostic.size(), 1'000U);
        EXPECT_FALSE(history->state.isSuppressed) << "nobody can mail it";
    }
    const std::string endless = std::string(10'000, 'x') + "@example.org";
    const MessageEntry message = messageOn(1, report("gone", endless));
    EXPECT_EQ(Recorder(ledger).record({&message, 1}, 1 << 30).fresh, 1U);
    EXPECT_FALSE(historyOf(ledger, endless));
    EXPECT_EQ(faultsOf(ledger), "");
}

TEST_F(LedgerTest, ChecksThatStatesFollow) {
    constexpr const char* unknownBearing =
        "PRAGMA ignore_check_constraints = ON; UPDATE events SET bearing = 'other'; UPDATE "
        "addresses SET state = 'active', cause = NULL, reason = NULL, since = NULL, count = 0, "
        "first_seen = NULL, last_seen = NULL";
    const char* const damages[] = {
        "UPDATE addresses SET state = 'active', cause = NULL",
        "UPDATE addresses SET count = count + 1",
        "UPDATE addresses SET last_seen = 5",
        "DELETE FROM events",
        "DELETE FROM messages",
        unknownBearing,
    };
    int number = 0;
    for (const char* damage : damages) {
        Ledger ledger = open(std::to_string(++number));
        const MessageEntry message = messageOn(1, report("gone"));
        Recorder(ledger).record({&message, 1}, 1 << 30);
        EXPECT_EQ(faultsOf(ledger), "");
        ledger.database().run(damage);
        EXPECT_NE(faultsOf(ledger), "") << damage;
    }
}

}  // namespace
}  // namespace bouncecheck::ledger
