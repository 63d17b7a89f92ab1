#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ledger/AddressState.h"
#include "ledger/Ledger.h"
#include "ledger/ReportedHistory.h"

namespace bouncecheck::ledger {

/// An address as the table `addresses` has it.
struct AddressRow {
    std::int64_t id = 0;
    std::string key;
    /// As it was first written.
    std::string written;
    bool isMailbox = false;
    AddressState state;
    Counted counted;
};

/// Reads addresses one after the other.
class AddressRows {
public:
    /// All of them, or those that a condition leaves, such as "WHERE id = ?1".
    explicit AddressRows(Ledger& ledger, const std::string& condition = "");
    AddressRows(const AddressRows&) = delete;
    AddressRows& operator=(const AddressRows&) = delete;

    std::optional<AddressRow> next();

    /// The only one with this value for ?1; nothing where there is none.
    template <class Value>
    std::optional<AddressRow> only(const Value& value) {
        statement_.with(value);
        std::optional<AddressRow> row = next();
        statement_.reset();
        return row;
    }

private:
    std::string sql_;
    Statement statement_;
};

}  // namespace bouncecheck::ledger
