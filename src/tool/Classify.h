#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/bouncecheck.h>

#include "tool/sources/Sources.h"

namespace bouncecheck {

/// Everything that the outputs show of one message: the verdict, and what identifies the
/// message, which is known from the beginning, so that a problem can be reported whatever
/// fails.
struct Classified : Verdict {
    MessagePlace place;
    std::string subject;
    std::string from;
    std::string date;
    std::string messageId;
    std::vector<Recipient> recipients;
    Facts facts;
    /// Empty unless it was asked for.
    std::vector<LogTrace::Event> trace;
    /// The index of the last event of the trace that names what decided; the number of
    /// events when there is none.
    std::size_t decidingEvent = 0;
    /// The bytes of the message; empty once it is classified, unless they were asked for.
    std::string bytes;
    double progress = 0;
    /// Why there is no verdict, as a literal; "" when there is one.
    std::string_view problem;
    std::size_t size = 0;
};

/// What is known of a message before it is classified.
Classified asRead(SourceMessage message) noexcept;

/// What to put into `Classified` beyond the verdict; each costs time.
struct Wanted {
    bool recipients = false;
    bool facts = false;
    /// The fields of the message's own header.
    bool header = false;
    /// Of these, when it was sent and its Message-ID; all of them bring these as well.
    bool identity = false;
    /// The text decided upon.
    bool data = false;
    bool trace = false;
    bool bytes = false;

    /// What either asks for.
    constexpr Wanted operator|(const Wanted& o) const noexcept {
        return {recipients || o.recipients,
                facts || o.facts,
                header || o.header,
                identity || o.identity,
                data || o.data,
                trace || o.trace,
                bytes || o.bytes};
    }
};

/// Classifies messages, one at a time, and finds what is wanted of them.
class ToolClassifier {
public:
    /// `verp` has the forms of the addresses that the mail came back to, and must outlive the
    /// classifier.
    explicit ToolClassifier(Wanted wanted, std::span<const VerpPattern> verp = {})
        : wanted_(wanted), verp_(verp) {}

    /// Completes `message`, which has its bytes. A failure becomes its problem.
    void classify(Classified& message) noexcept;

private:
    void decide(std::string bytes, Classified& result);

    Wanted wanted_;
    std::span<const VerpPattern> verp_;
    Classifier classifier_;
};

}  // namespace bouncecheck
