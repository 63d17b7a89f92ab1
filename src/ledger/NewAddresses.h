#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ledger/AddressStates.h"

namespace bouncecheck::ledger {

/// Addresses that the ledger gets within one transaction. All reports on them are at hand, so each
/// is written once, with the state that follows, and nothing is read again.
class NewAddresses {
public:
    /// For addresses whose ids are `nextId` and those behind it.
    explicit NewAddresses(std::int64_t nextId) : firstId_(nextId) {}

    std::optional<std::int64_t> idOf(const std::string& key) const;
    std::int64_t add(std::string key, std::string_view address, bool isMailbox);
    /// False when the id is none of these. The texts of `fact` have to live on.
    bool addReport(std::int64_t id, const ReportedFact& fact);

    void write(AddressStates& states);

private:
    struct Entry {
        NewAddress address;
        std::vector<ReportedFact> reports;
    };

    std::int64_t firstId_;
    /// In the order of their ids.
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::int64_t> ids_;
};

}  // namespace bouncecheck::ledger
