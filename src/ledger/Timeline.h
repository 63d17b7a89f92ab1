#pragma once

#include <vector>

#include "ledger/AddressState.h"
#include "ledger/Bearing.h"

namespace bouncecheck::ledger {

/// When an address began and ceased to be suppressed, told what is known of it.
class Timeline {
public:
    /// `isMailbox` as in `AddressHistory`.
    Timeline(const Rules& rules, bool isMailbox) : rules_(rules), isMailbox_(isMailbox) {}

    /// The reports of each bearing have to come in the order of their times.
    void addReport(Bearing bearing, Time seen);
    /// In the order in which they were made.
    void addDecision(Decision decision, Time made);

    /// The times at which it changed: the first is the beginning of a suppression, the next its
    /// end, and so on.
    std::vector<Time> changes() const;

private:
    void applyReports(std::vector<Time>& changes) const;
    void applyRetries(std::vector<Time>& changes) const;

    struct Decided {
        bool isSuppressed;
        Time made;
    };

    Rules rules_;
    bool isMailbox_;
    /// Of the first report that suppresses at once.
    std::optional<Time> gone_;
    std::vector<Time> retries_, successes_;
    std::vector<Decided> decisions_;
};

}  // namespace bouncecheck::ledger
