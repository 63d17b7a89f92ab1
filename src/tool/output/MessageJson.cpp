#include "tool/output/MessageJson.h"

#include <string>
#include <string_view>

namespace bouncecheck {
namespace {

/// Writes a member, unless its text is empty.
void addText(JsonText& json, std::string_view name, std::string_view text) {
    if (!text.empty()) json.member(name, text);
}

void addEvent(JsonText& json, const LogTrace::Event& event) {
    json.beginObject();
    switch (event.kind) {
        case LogTrace::Kind::enter: json.member("enter", event.text); break;
        case LogTrace::Kind::leave: json.member("leave", event.text); break;
        case LogTrace::Kind::info: json.member("info", event.text); break;
        case LogTrace::Kind::data:
            json.member("tag", event.text);
            json.member("value", event.value.view());
            break;
    }
    json.endObject();
}

void addRecipient(JsonText& json, const Recipient& recipient) {
    json.beginObject();
    json.member("address", recipient.address);
    addText(json, "final_address", recipient.finalAddress);
    addText(json, "tag", recipient.tag);
    json.member("outcome", nameOf(recipient.outcome));
    addText(json, "reason", nameOf(recipient.reason));
    json.member("advice", nameOf(recipient.advice));
    addText(json, "status", recipient.status);
    addText(json, "reply_code", recipient.replyCode);
    addText(json, "diagnostic", recipient.diagnostic);
    addText(json, "remote_mta", recipient.remoteMta);
    addText(json, "last_attempt", recipient.lastAttempt);
    addText(json, "will_retry_until", recipient.willRetryUntil);
    json.name("evidence");
    json.beginObject();
    json.member("found_in", nameOf(recipient.source));
    addText(json, "reason_from", nameOf(recipient.basis));
    addText(json, "row", recipient.row);
    addText(json, "quote", recipient.quote);
    json.endObject();
    json.endObject();
}

void addReport(JsonText& json, const Facts& facts) {
    json.name("report");
    json.beginObject();
    addText(json, "reporting_mta", facts.reportingMta);
    if (!facts.report.empty()) {
        // A list, since fields may be repeated and their order may matter.
        json.name("fields");
        json.beginArray();
        for (const ReportField& field : facts.report) {
            json.beginObject();
            json.member("name", field.name);
            json.member("value", field.value);
            json.endObject();
        }
        json.endArray();
    }
    json.endObject();
}

void addReturned(JsonText& json, const ReturnedMessage& message) {
    json.name("returned");
    json.beginObject();
    addText(json, "message_id", message.messageId);
    addText(json, "from", message.from);
    addText(json, "to", message.to);
    addText(json, "subject", message.subject);
    addText(json, "date", message.date);
    addText(json, "list_id", message.listId);
    addText(json, "return_path", message.returnPath);
    json.endObject();
}

void addVerdict(JsonText& json, const Verdict& verdict) {
    json.name("type");
    json.number(std::to_string(static_cast<int>(verdict.type)));
    json.member("name", bounceTypeName(verdict.type));
    if (verdict.label().empty()) {
        json.name("label");
        json.null();
    } else {
        json.member("label", verdict.label());
    }
    json.member("address", verdict.address);
}

}  // namespace

void addFindings(JsonText& json, const Verdict& verdict, std::span<const Recipient> recipients,
                 const Facts& facts) {
    addVerdict(json, verdict);
    json.name("recipients");
    json.beginArray();
    for (const Recipient& recipient : recipients) addRecipient(json, recipient);
    json.endArray();
    addReport(json, facts);
    addReturned(json, facts.returned);
}

void addTrace(JsonText& json, std::span<const LogTrace::Event> events) {
    json.name("trace");
    json.beginArray();
    for (const LogTrace::Event& event : events) addEvent(json, event);
    json.endArray();
}

}  // namespace bouncecheck
