#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ledger/Entries.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// The patterns of addresses that are never suppressed, as they are when it is made.
class Protection {
public:
    explicit Protection(Ledger& ledger);

    /// The pattern that protects the address with this key; "" when none does.
    std::string_view patternFor(std::string_view key) const noexcept;
    const std::vector<std::string>& patterns() const noexcept { return patterns_; }

private:
    std::vector<std::string> patterns_;
};

/// The pattern that `text` means: "*" stands for any run of characters, and a domain
/// ("example.org",
/// "@example.org") for all of its addresses. "" when it would protect everything, or nothing.
std::string patternOf(std::string_view text);

/// Adds and removes patterns, which `patternOf` has made, and frees or suppresses whom they
/// concern. Returns how many were not there when they are removed.
void protect(Ledger& ledger, const std::vector<std::string>& patterns, Time now);
std::vector<std::string> unprotect(Ledger& ledger, const std::vector<std::string>& patterns,
                                   Time now);

}  // namespace bouncecheck::ledger
