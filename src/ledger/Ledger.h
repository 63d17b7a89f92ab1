#pragma once

#include <array>
#include <string>

#include "ledger/Rules.h"
#include "ledger/Sqlite.h"

namespace bouncecheck::ledger {

/// The files of the ledger at `path`, whether they are there or not: itself, its log, and what
/// processes share while they use it. The last two stand beside what a symbolic link leads to.
std::array<std::string, 3> filesOf(const std::string& path);

/// What was reported of addresses, what was decided by hand, and what follows from both, in a
/// file of SQLite. Any number of processes read and write it side by side. What is done with
/// it stands in Recorder.h, Decisions.h, Listing.h, History.h and Checking.h.
///
/// One thread at a time; not before a fork.
class Ledger {
public:
    /// A ledger that is not created is read only: so it may be where nothing can be written.
    enum class Missing { refuse, create };
    /// What a loss of power may take with it: nothing, or the last transactions.
    enum class Durability { each, last };

    /// Opens the ledger at `path`. Throws LedgerError; a file that is no ledger is left
    /// as it is. A new ledger appears whole or not at all.
    Ledger(std::string path, Missing missing, Durability durability = Durability::each);

    Database& database() noexcept { return database_; }
    const std::string& path() const noexcept { return path_; }

private:
    std::string path_;
    Database database_;
};

}  // namespace bouncecheck::ledger
