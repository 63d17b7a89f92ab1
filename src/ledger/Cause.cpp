#include "ledger/Cause.h"

#include <array>
#include <cstddef>

#include "ledger/ValueNamed.h"

namespace bouncecheck::ledger {
namespace {

constexpr std::array<std::string_view, 7> names = {"",     "suppress", "unsubscribe", "retry",
                                                   "deny", "allow",    "protected"};

}  // namespace

std::string_view nameOf(Cause cause) noexcept { return names[static_cast<std::size_t>(cause)]; }

Cause causeNamed(std::string_view name) noexcept { return valueNamed<Cause>(names, name); }

}  // namespace bouncecheck::ledger
