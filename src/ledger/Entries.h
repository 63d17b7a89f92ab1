#pragma once

#include <bouncecheck/Advice.h>
#include <bouncecheck/Outcome.h>
#include <bouncecheck/Reason.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ledger/MessageDigest.h"

namespace bouncecheck::ledger {

/// Seconds since 1970-01-01 00:00 UTC.
using Time = std::int64_t;
inline constexpr Time secondsPerDay = 86'400;

/// What a message says about one recipient.
struct Report {
    /// As the message has it, any bytes; "" where only a tag is known.
    std::string address;
    /// Whether mail can be sent to it. Nothing else is ever suppressed by reports.
    bool isMailbox = false;
    std::string tag;
    Outcome outcome = Outcome::unknown;
    Reason reason = Reason::none;
    Advice advice = Advice::none;
    std::string status;
    std::string replyCode;
    std::string diagnostic;
    /// The words or the code that gave the reason.
    std::string evidence;
};

/// One message as it is written into a ledger.
struct MessageEntry {
    Digest digest{};
    /// When it happened. A later time than that of recording is that of recording.
    Time seen = 0;
    /// The name of the verdict, "hard", and the label of its rule; empty where there is none.
    std::string_view verdict;
    std::string_view rule;
    std::string messageId;
    /// Where it was read.
    std::string place;
    /// Why nothing is known of it; "" when it was classified.
    std::string problem;
    std::vector<Report> reports;
};

}  // namespace bouncecheck::ledger
