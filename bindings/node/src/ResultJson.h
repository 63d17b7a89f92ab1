#pragma once

#include <bouncecheck/bouncecheck.h>

#include <span>
#include <string>
#include <vector>

namespace bouncecheck {

/// Everything that is told of one message.
struct Result {
    Verdict verdict;
    std::vector<Recipient> recipients;
    Facts facts;
    /// Null where no trace was asked for.
    const LogTrace* trace = nullptr;
    /// Whether the text that was decided upon is told too.
    bool hasData = false;
};

/// `result` as one object of JSON (RFC 8259) in UTF-8, with the keys of docs/result.schema.json
/// but `source` and `index`, which a message in memory does not have.
std::string resultJson(const Result& result);

}  // namespace bouncecheck
