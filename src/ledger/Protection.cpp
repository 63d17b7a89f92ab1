#include "ledger/Protection.h"

#include <algorithm>

#include "ledger/AddressKey.h"
#include "ledger/AddressStates.h"
#include "text/Wildcard.h"

namespace bouncecheck::ledger {
namespace {

/// The addresses that are suppressed or kept from it, as of now.
std::vector<std::int64_t> concerned(Ledger& ledger) {
    Statement statement(
        ledger.database(),
        "SELECT id FROM addresses WHERE state = 'suppressed' OR cause = 'protected'");
    std::vector<std::int64_t> ids;
    while (statement.step()) ids.push_back(statement.number(0));
    return ids;
}

void updateConcerned(Ledger& ledger, Time now) {
    AddressStates states(ledger, now);
    for (const std::int64_t id : concerned(ledger)) states.update(id);
}

}  // namespace

Protection::Protection(Ledger& ledger) {
    Statement statement(ledger.database(), "SELECT pattern FROM protections ORDER BY pattern");
    while (statement.step()) patterns_.emplace_back(statement.text(0));
}

std::string_view Protection::patternFor(std::string_view key) const noexcept {
    const auto found = std::ranges::find_if(patterns_, [&](std::string_view pattern) {
        return wildcardMatch(key, pattern, LetterCase::exact);
    });
    return found == patterns_.end() ? std::string_view() : *found;
}

std::string patternOf(std::string_view text) {
    std::string pattern = keyOf(text);
    const bool isOdd = pattern.find_first_of(" \t\r\n<>,;:()") != std::string::npos ||
                       pattern.ends_with('.') || std::ranges::count(pattern, '@') > 1;
    if (isOdd || pattern.find_first_not_of("*@.") == std::string::npos) return "";
    // A name without a dot is no domain, and may have been meant as "name@*".
    if (pattern.find_first_of("@.*") == std::string::npos) return "";
    if (pattern.find('@') == std::string::npos) pattern.insert(0, "@");
    if (pattern.starts_with('@')) pattern.insert(0, "*");
    return pattern;
}

void protect(Ledger& ledger, const std::vector<std::string>& patterns, Time now) {
    Transaction transaction(ledger.database());
    Statement insert(ledger.database(), "INSERT OR IGNORE INTO protections VALUES (?1, ?2)");
    for (const std::string& pattern : patterns) insert.with(pattern, now).run();
    updateConcerned(ledger, now);
    transaction.commit();
}

std::vector<std::string> unprotect(Ledger& ledger, const std::vector<std::string>& patterns,
                                   Time now) {
    std::vector<std::string> unknown;
    Transaction transaction(ledger.database());
    Statement remove(ledger.database(), "DELETE FROM protections WHERE pattern = ?1");
    for (const std::string& pattern : patterns) {
        remove.with(pattern).run();
        if (ledger.database().changes() == 0) unknown.push_back(pattern);
    }
    updateConcerned(ledger, now);
    transaction.commit();
    return unknown;
}

}  // namespace bouncecheck::ledger
