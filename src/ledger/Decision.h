#pragma once

#include <optional>
#include <string_view>

namespace bouncecheck::ledger {

/// Whether an address may be mailed, as somebody decided it by hand.
enum class Decision { allow, deny };

constexpr std::string_view nameOf(Decision decision) noexcept {
    return decision == Decision::allow ? "allow" : "deny";
}

/// Nothing for any other name.
constexpr std::optional<Decision> decisionNamed(std::string_view name) noexcept {
    for (const Decision decision : {Decision::allow, Decision::deny}) {
        if (name == nameOf(decision)) return decision;
    }
    return std::nullopt;
}

}  // namespace bouncecheck::ledger
