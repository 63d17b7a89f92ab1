#include "ledger/Entries.h"

namespace bouncecheck::ledger {

std::string_view bearingOf(Outcome outcome, Advice advice) noexcept {
    switch (advice) {
        case Advice::suppress: return "suppress";
        case Advice::unsubscribe: return "unsubscribe";
        // A delay ends in a failure or a delivery, which have a report of their own.
        case Advice::retry: return outcome == Outcome::failed ? "retry" : "";
        case Advice::fix: return "";
        case Advice::none: break;
    }
    // What was relayed or expanded went on to where it may still fail.
    const bool isSuccess = outcome == Outcome::delivered || outcome == Outcome::displayed;
    return isSuccess ? "success" : "";
}

}  // namespace bouncecheck::ledger
