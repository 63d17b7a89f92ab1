#pragma once

#include <stdexcept>
#include <string>

namespace bouncecheck::ledger {

/// Why a ledger cannot be used, in words for people. Nothing of the transaction that was
/// going on is in the ledger.
class LedgerError : public std::runtime_error {
public:
    enum class Kind {
        /// There is no such file.
        missing,
        /// The file is no ledger, or one that a later version has written.
        refused,
        damaged,
        /// Worth another try: the disk is full, another process has it locked, ...
        unavailable,
    };

    LedgerError(Kind kind, const std::string& problem) : std::runtime_error(problem), kind_(kind) {}

    Kind kind() const noexcept { return kind_; }

private:
    Kind kind_;
};

}  // namespace bouncecheck::ledger
