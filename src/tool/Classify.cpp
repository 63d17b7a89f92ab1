#include "tool/Classify.h"

#include <new>
#include <utility>

#include "bounce/VerdictLabel.h"
#include "log/LogBase.h"
#include "mime/Email2.h"
#include "text/Ascii.h"
#include "text/StringBuffer.h"

namespace bouncecheck {
namespace {

/// Keeps the label of the last verdict line, and the last phrase that was found.
struct LabelLog final : public LogBase {
    void LogInfo(const char* text) override {
        const std::string_view found = verdictLabel(ascii::viewOf(text));
        if (!found.empty()) label = found;
    }
    void LogWarning(const char*) override {}
    void LogError(const char*) override {}
    void EnterContext(const char*, bool) override {}
    void LeaveContext() override {}
    void LogData(const char* tag, const char* value) override {
        if (isPhraseTag(ascii::viewOf(tag))) phrase = ascii::viewOf(value);
    }

    static bool isPhraseTag(std::string_view tag) noexcept {
        return tag == "matchedIndicator" || tag == "MatchedUnsubscribeIndicator";
    }

    std::string label;
    std::string phrase;
};

std::string lastPhrase(std::span<const LogTrace::Event> events) {
    std::string phrase;
    for (const LogTrace::Event& event : events) {
        const bool isPhrase =
            event.kind == LogTrace::Kind::data && LabelLog::isPhraseTag(event.text);
        if (isPhrase) phrase = event.value;
    }
    return phrase;
}

std::string headerField(const Email2& email, std::string_view name) {
    const HeaderField* field = email.header().find(name);
    return field ? field->decoded() : std::string();
}

}  // namespace

std::size_t decidingEvent(std::span<const LogTrace::Event> events) noexcept {
    for (std::size_t i = events.size(); i-- > 0;) {
        const LogTrace::Event& event = events[i];
        const bool isLabel =
            event.kind == LogTrace::Kind::info && !verdictLabel(event.text).empty();
        const bool isRule = event.kind == LogTrace::Kind::data && event.text == "BounceType";
        if (isLabel || isRule) return i;
    }
    return events.size();
}

Classified Classifier::classify(SourceMessage message) {
    Classified result;
    result.source = std::move(message.source);
    result.index = message.index;
    result.inMailbox = message.inMailbox;
    result.progress = message.progress;
    result.size = message.bytes.size();
    try {
        if (wanted_.bytes) result.bytes = message.bytes;
        decide(std::move(message.bytes), result);
    } catch (const std::bad_alloc&) {
        result.problem = "not enough memory";
    }
    return result;
}

void Classifier::decide(std::string bytes, Classified& result) {
    Email2 email(std::move(bytes));
    StringBuffer address;
    StringBuffer data;
    if (wanted_.trace) {
        LogTrace log;
        result.type = check_.checkEmail(email, address, data, log);
        result.trace = log.takeEvents();
        result.label = lastVerdictLabel(result.trace);
        result.phrase = lastPhrase(result.trace);
    } else {
        LabelLog log;
        result.type = check_.checkEmail(email, address, data, log);
        result.label = std::move(log.label);
        result.phrase = std::move(log.phrase);
    }
    result.address = address.view();
    if (wanted_.data) result.data = data.view();
    if (wanted_.facts) result.facts = factsOf(email);
    if (wanted_.header) {
        result.subject = headerField(email, "Subject");
        result.from = headerField(email, "From");
        result.date = headerField(email, "Date");
        result.messageId = headerField(email, "Message-ID");
    }
}

}  // namespace bouncecheck
