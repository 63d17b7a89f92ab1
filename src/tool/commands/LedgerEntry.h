#pragma once

#include <string>
#include <string_view>

#include "ledger/Entries.h"
#include "tool/Classify.h"

namespace bouncecheck {

/// What a ledger records of a message needs this of it.
inline constexpr Wanted wantedByLedger = {.recipients = true, .identity = true};

/// What a ledger records of a message, which is taken apart. Without a date of its own it happened
/// `now`. `place` is where it was read.
ledger::MessageEntry entryOf(Classified& message, const ledger::Digest& digest, std::string place,
                             ledger::Time now);

/// The same of a message that could not be read, for a reason in words.
ledger::MessageEntry unreadEntry(const ledger::Digest& digest, std::string problem,
                                 std::string place, ledger::Time now);

}  // namespace bouncecheck
