#pragma once

#include <bouncecheck/bouncecheck.h>

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace bouncecheck::python {

/// All that is known of one message.
struct Answer {
    /// Without the text that was decided upon.
    Verdict verdict;
    std::vector<Recipient> recipients;
    Facts facts;
    /// Nothing unless it was asked for.
    std::optional<std::vector<LogTrace::Event>> trace;
};

/// The answers for `messages`, the bytes of one each, in their order. Calls nothing of Python.
/// Throws std::bad_alloc only.
std::vector<Answer> answersFor(std::span<const std::string_view> messages,
                               std::span<const VerpPattern> verp, bool withTrace);

}  // namespace bouncecheck::python
