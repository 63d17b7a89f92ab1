#include "ledger/Bearing.h"

#include <array>
#include <cstddef>

#include "ledger/ValueNamed.h"

namespace bouncecheck::ledger {
namespace {

constexpr std::array<std::string_view, 5> names = {"", "retry", "success", "suppress",
                                                   "unsubscribe"};

}  // namespace

std::string_view nameOf(Bearing bearing) noexcept {
    return names[static_cast<std::size_t>(bearing)];
}

Bearing bearingNamed(std::string_view name) noexcept { return valueNamed<Bearing>(names, name); }

Bearing bearingOf(Outcome outcome, Advice advice) noexcept {
    switch (advice) {
        case Advice::suppress: return Bearing::suppress;
        case Advice::unsubscribe: return Bearing::unsubscribe;
        // A delay ends in a failure or a delivery, which have a report of their own.
        case Advice::retry: return outcome == Outcome::failed ? Bearing::retry : Bearing::none;
        case Advice::fix: return Bearing::none;
        case Advice::none: break;
    }
    // What was relayed or expanded went on to where it may still fail.
    const bool isSuccess = outcome == Outcome::delivered || outcome == Outcome::displayed;
    return isSuccess ? Bearing::success : Bearing::none;
}

}  // namespace bouncecheck::ledger
