#include "ledger/NewAddresses.h"

#include <algorithm>
#include <utility>

namespace bouncecheck::ledger {

std::optional<std::int64_t> NewAddresses::idOf(const std::string& key) const {
    const auto found = ids_.find(key);
    return found == ids_.end() ? std::nullopt : std::optional(found->second);
}

std::int64_t NewAddresses::add(std::string key, std::string_view address, bool isMailbox) {
    const std::int64_t id = firstId_ + static_cast<std::int64_t>(entries_.size());
    entries_.push_back({{id, key, std::string(address), isMailbox}, {}});
    ids_.emplace(std::move(key), id);
    return id;
}

bool NewAddresses::addReport(std::int64_t id, const ReportedFact& fact) {
    if (id < firstId_) return false;
    entries_[static_cast<std::size_t>(id - firstId_)].reports.push_back(fact);
    return true;
}

void NewAddresses::write(AddressStates& states) {
    for (Entry& entry : entries_) {
        std::ranges::sort(entry.reports);
        states.insert(entry.address, entry.reports);
    }
}

}  // namespace bouncecheck::ledger
