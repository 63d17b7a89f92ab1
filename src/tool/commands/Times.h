#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ledger/Entries.h"

namespace bouncecheck {

/// The seconds of a duration such as "90m", "12h", "7d" or "4w". Throws std::invalid_argument for
/// any other text.
ledger::Time parseDuration(std::string_view text);

/// The time that is meant by a date ("2026-11-22", its beginning in UTC), a time of RFC 3339
/// ("2026-11-22T10:00:00Z"; seconds may have decimals, which do not count), or a duration before
/// `now`. Throws std::invalid_argument for any other text.
ledger::Time parseTime(std::string_view text, ledger::Time now);

/// "2026-11-22T10:00:00Z"; "" for no time.
std::string timeText(std::optional<ledger::Time> time);
/// "2026-11-22 10:00", and "2026-11-22".
std::string minuteText(ledger::Time time);
std::string dayText(ledger::Time time);

}  // namespace bouncecheck
