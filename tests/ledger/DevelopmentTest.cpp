#include "ledger/Development.h"

#include <sstream>

#include "ledger/LedgerTest.h"

namespace bouncecheck::ledger {
namespace {

struct Row {
    /// What comes on which day: reports as `report` knows them, and "allow" and "deny".
    const char* told;
    /// On each day with changes, how often a suppression began and ended.
    const char* changes;
};

constexpr Row rows[] = {
    {"spam 1", ""},
    {"gone 3", "3: +1-0 "},
    {"gone 5 gone 3 delivered 7", "3: +1-0 "},
    {"full 1 full 2 full 3 full 4 full 5 delivered 6", "5: +1-0 6: +0-1 "},
    {"full 1 full 2 full 3 full 4 full 5 delivered 6 gone 8", "5: +1-0 6: +0-1 8: +1-0 "},
    {"full 1 full 2 full 3 full 4 full 5 gone 6 delivered 7", "5: +1-0 "},
    {"full 1 full 2 full 3 full 4 full 5 delivered 5", "5: +1-1 "},
    {"full 1 full 2 delivered 3 full 4 full 5 full 6 full 7 full 8 full 9", "8: +1-0 "},
    {"gone 3 allow 5", "3: +1-0 5: +0-1 "},
    {"gone 3 allow 5 complaint 7 deny 9", "3: +1-0 5: +0-1 9: +1-0 "},
    {"allow 2 gone 3", ""},
    // What lasts for no second is no change.
    {"deny 4 gone 2 allow 9 deny 9", "2: +1-0 "},
    // The clock went back.
    {"deny 9 allow 4", ""},
    {"deny 9 allow 4 deny 11", "11: +1-0 "},
};

void tell(Ledger& ledger, const char* told) {
    std::istringstream words(told);
    std::string kind;
    for (Time day = 0; words >> kind >> day;) {
        if (kind == "allow" || kind == "deny") {
            decide(ledger, kind == "allow" ? Decision::allow : Decision::deny, {"ann@example.org"},
                   "", day * secondsPerDay);
        } else {
            const MessageEntry message = messageOn(day, report(kind));
            Recorder(ledger).record({&message, 1}, 1 << 30);
        }
    }
}

TEST_F(LedgerTest, TellsWhenSuppressionsBeganAndEnded) {
    for (const Row& row : rows) {
        Ledger ledger = open(std::to_string(&row - rows));
        tell(ledger, row.told);
        std::string changes;
        std::int64_t left = 0;
        for (const DayOfChanges& one : developmentOf(ledger).changes) {
            changes += std::to_string(one.day) + ": +" + std::to_string(one.begun) + "-" +
                       std::to_string(one.ended) + " ";
            left += one.begun - one.ended;
        }
        EXPECT_EQ(changes, row.changes) << row.told;
        EXPECT_EQ(left == 1, stateOf(ledger, "ann@example.org").starts_with("supp")) << row.told;
    }
}

TEST_F(LedgerTest, CountsReportsByDayAndLeavesOutWhatIsProtected) {
    Ledger ledger = open();
    Report nobody = report("gone", "some host");
    nobody.isMailbox = false;
    Report tagged = report("gone", "");
    for (const Report& one : {report("gone", "b@example.org"), report("gone"), nobody, tagged,
                              report("complaint", "c@example.org"), report("spam")}) {
        const MessageEntry message = messageOn(one.outcome == Outcome::complained ? 4 : 3, one);
        Recorder(ledger).record({&message, 1}, 1 << 30);
    }
    protect(ledger, {"b@example.org"}, 1 << 30);
    const Development development = developmentOf(ledger);
    EXPECT_EQ(development.messages, 6);
    EXPECT_EQ(development.addresses, 4);
    ASSERT_EQ(development.changes.size(), 2U);
    EXPECT_EQ(development.changes[0].begun, 1);
    EXPECT_EQ(development.changes[1].begun, 1);
    std::string reports;
    for (const DayOfReports& one : development.reports) {
        reports += std::to_string(one.day) + " " + one.outcome + "," + one.reason + "," +
                   one.advice + " " + std::to_string(one.count) + "\n";
    }
    EXPECT_EQ(reports,
              "3 failed,content,fix 1\n3 failed,unknown-mailbox,suppress 4\n"
              "4 complained,,unsubscribe 1\n");
}

}  // namespace
}  // namespace bouncecheck::ledger
