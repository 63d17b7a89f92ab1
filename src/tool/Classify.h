#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bounce/BounceCheck.h"
#include "facts/Facts.h"
#include "log/LogTrace.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {

/// Everything that the outputs show of one classified message.
struct Classified {
    std::string source;
    std::uint64_t index = 1;
    bool inMailbox = false;
    int type = 0;
    /// The label of the deciding rule; "" when it has none.
    std::string label;
    std::string address;
    std::string data;
    /// The phrase that the deciding rule says it found; "" when it says none.
    std::string phrase;
    std::string subject;
    std::string from;
    std::string date;
    std::string messageId;
    Facts facts;
    /// Empty unless it was asked for.
    std::vector<LogTrace::Event> trace;
    /// The bytes of the message; empty unless they were asked for.
    std::string bytes;
    double progress = 0;
    /// Why there is no verdict; "" when there is one.
    std::string problem;
    std::size_t size = 0;
};

/// The index of the last event that names the deciding rule: its label, or the
/// type that the rule table gave. The number of events when there is none.
std::size_t decidingEvent(std::span<const LogTrace::Event> events) noexcept;

/// What to put into `Classified` beyond the verdict; each costs time.
struct Wanted {
    bool facts = false;
    /// The fields of the message's own header.
    bool header = false;
    bool data = false;
    bool trace = false;
    bool bytes = false;

    /// What either asks for.
    constexpr Wanted operator|(const Wanted& o) const noexcept {
        return {facts || o.facts, header || o.header, data || o.data, trace || o.trace,
                bytes || o.bytes};
    }
};

/// Classifies messages, one at a time.
class Classifier {
public:
    explicit Classifier(Wanted wanted) noexcept : wanted_(wanted) {}

    Classified classify(SourceMessage message);

private:
    void decide(std::string bytes, Classified& result);

    Wanted wanted_;
    BounceCheck check_;
};

}  // namespace bouncecheck
