#pragma once

namespace bouncecheck {

/// Phrases of notices so short that the address is looked for among all words.
inline constexpr const char* const ScanIndicators[] = {
    "- no such user here.",
    "",
};

}  // namespace bouncecheck
