#include "ResultJson.h"

#include <string_view>

#include "tool/output/JsonWriter.h"

namespace bouncecheck {
namespace {

/// Writes objects and arrays into a text, with the commas between what is in them.
class Writer {
public:
    void begin(char bracket) {
        separate();
        text_ += bracket;
        needsComma_ = false;
    }
    void end(char bracket) {
        text_ += bracket;
        needsComma_ = true;
    }
    void name(std::string_view text) {
        string(text);
        text_ += ':';
        needsComma_ = false;
    }
    void begin(std::string_view key, char bracket) {
        name(key);
        begin(bracket);
    }
    void member(std::string_view key, std::string_view text) {
        name(key);
        string(text);
    }
    /// The same, unless the text is empty.
    void known(std::string_view key, std::string_view text) {
        if (!text.empty()) member(key, text);
    }
    /// A number or null.
    void literal(std::string_view key, std::string_view text) {
        name(key);
        text_ += text;
        needsComma_ = true;
    }

    std::string take() { return std::move(text_); }

private:
    void string(std::string_view text) {
        separate();
        appendJsonString(text_, text);
        needsComma_ = true;
    }
    void separate() {
        if (needsComma_) text_ += ',';
    }

    std::string text_;
    bool needsComma_ = false;
};

void addRecipient(Writer& json, const Recipient& recipient) {
    json.begin('{');
    json.member("address", recipient.address);
    json.known("final_address", recipient.finalAddress);
    json.known("tag", recipient.tag);
    json.member("outcome", nameOf(recipient.outcome));
    json.known("reason", nameOf(recipient.reason));
    json.member("advice", nameOf(recipient.advice));
    json.known("status", recipient.status);
    json.known("reply_code", recipient.replyCode);
    json.known("diagnostic", recipient.diagnostic);
    json.known("remote_mta", recipient.remoteMta);
    json.known("last_attempt", recipient.lastAttempt);
    json.known("will_retry_until", recipient.willRetryUntil);
    json.begin("evidence", '{');
    json.member("found_in", nameOf(recipient.source));
    json.known("reason_from", nameOf(recipient.basis));
    json.known("row", recipient.row);
    json.known("quote", recipient.quote);
    json.end('}');
    json.end('}');
}

void addReport(Writer& json, const Facts& facts) {
    json.begin("report", '{');
    json.known("reporting_mta", facts.reportingMta);
    if (!facts.report.empty()) {
        json.begin("fields", '[');
        for (const ReportField& field : facts.report) {
            json.begin('{');
            json.member("name", field.name);
            json.member("value", field.value);
            json.end('}');
        }
        json.end(']');
    }
    json.end('}');
}

void addReturned(Writer& json, const ReturnedMessage& message) {
    json.begin("returned", '{');
    json.known("message_id", message.messageId);
    json.known("from", message.from);
    json.known("to", message.to);
    json.known("subject", message.subject);
    json.known("date", message.date);
    json.known("list_id", message.listId);
    json.known("return_path", message.returnPath);
    json.end('}');
}

void addEvent(Writer& json, const LogTrace::Event& event) {
    json.begin('{');
    switch (event.kind) {
        case LogTrace::Kind::enter: json.member("enter", event.text); break;
        case LogTrace::Kind::leave: json.member("leave", event.text); break;
        case LogTrace::Kind::info: json.member("info", event.text); break;
        case LogTrace::Kind::data:
            json.member("tag", event.text);
            json.member("value", event.value.view());
            break;
    }
    json.end('}');
}

void addVerdict(Writer& json, const Verdict& verdict) {
    json.literal("type", std::to_string(static_cast<int>(verdict.type)));
    json.member("name", bounceTypeName(verdict.type));
    if (verdict.rule) {
        json.member("label", verdict.label());
    } else {
        json.literal("label", "null");
    }
    json.member("address", verdict.address);
}

}  // namespace

std::string resultJson(const Result& result) {
    Writer json;
    json.begin('{');
    addVerdict(json, result.verdict);
    json.begin("recipients", '[');
    for (const Recipient& recipient : result.recipients) addRecipient(json, recipient);
    json.end(']');
    addReport(json, result.facts);
    addReturned(json, result.facts.returned);
    if (result.hasData) json.member("data", result.verdict.text.view());
    if (result.trace) {
        json.begin("trace", '[');
        for (const LogTrace::Event& event : result.trace->events()) addEvent(json, event);
        json.end(']');
    }
    json.end('}');
    return json.take();
}

}  // namespace bouncecheck
