#include "tool/Classify.h"

#include <new>
#include <span>
#include <utility>

namespace bouncecheck {
namespace {

/// The index of the last event that names what decided: the line of the rule, or the type
/// that a row of the table of last resort gave.
std::size_t decidingEventOf(std::span<const LogTrace::Event> events, const Verdict& verdict) {
    const bool isLastResort = verdict.match.table == "BounceRules";
    for (std::size_t i = events.size(); i-- > 0;) {
        const LogTrace::Event& event = events[i];
        const bool decides = verdict.rule ? event.text == verdict.rule->line
                                          : isLastResort && event.text == "BounceType";
        if (decides) return i;
    }
    return events.size();
}

}  // namespace

Classified asRead(SourceMessage message) noexcept {
    Classified result;
    result.place = std::move(message.place);
    result.progress = message.progress;
    result.size = message.bytes.size();
    result.bytes = std::move(message.bytes);
    return result;
}

void ToolClassifier::classify(Classified& message) noexcept {
    try {
        decide(wanted_.bytes ? message.bytes : std::exchange(message.bytes, {}), message);
    } catch (const std::bad_alloc&) {
        message.problem = outOfMemory;
    } catch (...) {
        message.problem = "could not be classified";
    }
}

void ToolClassifier::decide(std::string bytes, Classified& result) {
    const Message message(std::move(bytes));
    Verdict& verdict = result;
    if (wanted_.trace) {
        LogTrace trace;
        verdict = classifier_.classify(message, trace);
        result.trace = trace.takeEvents();
        result.decidingEvent = decidingEventOf(result.trace, verdict);
    } else {
        verdict = classifier_.classify(message);
    }
    if (!wanted_.data) verdict.text = {};
    if (wanted_.recipients) result.recipients = recipientsOf(message, verp_);
    if (wanted_.facts) result.facts = factsOf(message);
    if (wanted_.header) {
        result.subject = message.field("Subject");
        result.from = message.field("From");
    }
    if (wanted_.header || wanted_.identity) {
        result.date = message.field("Date");
        result.messageId = message.field("Message-ID");
    }
}

}  // namespace bouncecheck
