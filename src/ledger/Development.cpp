#include "ledger/Development.h"

#include <array>
#include <map>
#include <utility>

#include "ledger/Protection.h"
#include "ledger/RuleSettings.h"
#include "ledger/Timeline.h"

namespace bouncecheck::ledger {
namespace {

std::vector<DayOfReports> reportsByDay(Ledger& ledger) {
    Statement statement(ledger.database(), "SELECT seen, outcome, reason, advice FROM events");
    std::map<std::pair<std::int64_t, std::array<std::string, 3>>, std::int64_t> counts;
    std::pair<std::int64_t, std::array<std::string, 3>> key;
    while (statement.step()) {
        key.first = statement.number(0) / secondsPerDay;
        for (int i = 0; i < 3; ++i) key.second[static_cast<std::size_t>(i)] = statement.text(i + 1);
        ++counts[key];
    }
    std::vector<DayOfReports> days;
    days.reserve(counts.size());
    for (const auto& [of, count] : counts) {
        days.push_back({of.first, of.second[0], of.second[1], of.second[2], count});
    }
    return days;
}

/// Walks reports, decisions and addresses side by side, all in the order of the addresses.
class ChangeCounter {
public:
    explicit ChangeCounter(Ledger& ledger)
        : protection_(ledger),
          rules_(rulesOf(ledger)),
          addresses_(ledger.database(), "SELECT id, key, is_mailbox FROM addresses ORDER BY id"),
          reports_(ledger.database(),
                   "SELECT address, bearing, seen FROM events INDEXED BY events_by_address "
                   "WHERE address IS NOT NULL ORDER BY address, bearing, seen"),
          decisions_(ledger.database(),
                     "SELECT address, decision, made FROM decisions ORDER BY address, id") {}

    Development count() {
        Development development;
        bool hasReport = reports_.step();
        bool hasDecision = decisions_.step();
        while (addresses_.step()) {
            ++development.addresses;
            const std::int64_t id = addresses_.number(0);
            Timeline timeline(rules_, addresses_.number(2) != 0);
            for (; hasReport && reports_.number(0) == id; hasReport = reports_.step()) {
                timeline.addReport(bearingNamed(reports_.text(1)), reports_.number(2));
            }
            for (; hasDecision && decisions_.number(0) == id; hasDecision = decisions_.step()) {
                if (const auto decision = decisionNamed(decisions_.text(1))) {
                    timeline.addDecision(*decision, decisions_.number(2));
                }
            }
            if (protection_.patternFor(addresses_.text(1)).empty()) add(timeline.changes());
        }
        for (const auto& [day, counts] : days_) {
            development.changes.push_back({day, counts[0], counts[1]});
        }
        return development;
    }

private:
    void add(const std::vector<Time>& changes) {
        for (std::size_t i = 0; i < changes.size(); ++i) {
            ++days_[changes[i] / secondsPerDay][i % 2];
        }
    }

    Protection protection_;
    Rules rules_;
    Statement addresses_, reports_, decisions_;
    /// Begun and ended.
    std::map<std::int64_t, std::array<std::int64_t, 2>> days_;
};

}  // namespace

Development developmentOf(Ledger& ledger) {
    Development development = ChangeCounter(ledger).count();
    development.reports = reportsByDay(ledger);
    Statement messages(ledger.database(), "SELECT count(*) FROM messages");
    if (messages.step()) development.messages = messages.number(0);
    return development;
}

}  // namespace bouncecheck::ledger
