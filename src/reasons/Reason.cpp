#include <bouncecheck/Reason.h>

#include <algorithm>

#include "reasons/tables/Reasons.h"
#include "text/Ascii.h"

namespace bouncecheck {

static_assert(std::ranges::is_sorted(reasonMeanings, {}, &ReasonMeaning::reason) &&
              std::size(reasonMeanings) == static_cast<std::size_t>(Reason::other) + 1);

std::span<const ReasonMeaning> allReasons() noexcept { return reasonMeanings; }

std::string_view nameOf(Reason reason) noexcept {
    const auto row = static_cast<std::size_t>(reason);
    return row < std::size(reasonMeanings) ? reasonMeanings[row].name : std::string_view();
}

std::optional<Reason> reasonNamed(std::string_view name) noexcept {
    for (const ReasonMeaning& row : reasonMeanings) {
        if (!row.name.empty() && ascii::equalsNoCase(name, row.name)) return row.reason;
    }
    return std::nullopt;
}

}  // namespace bouncecheck
