#include <bouncecheck/bouncecheck.h>

#include <string>

#include "doors/Doors.h"

namespace bouncecheck {
namespace {

using Json = nlohmann::json;

void addKnown(Json& to, const char* key, std::string_view text) {
    if (!text.empty()) to[key] = text;
}

Json jsonOf(const Recipient& recipient) {
    Json json = {{"address", recipient.address},
                 {"outcome", nameOf(recipient.outcome)},
                 {"advice", nameOf(recipient.advice)},
                 {"evidence", {{"found_in", nameOf(recipient.source)}}}};
    addKnown(json, "final_address", recipient.finalAddress);
    addKnown(json, "tag", recipient.tag);
    addKnown(json, "reason", nameOf(recipient.reason));
    addKnown(json, "status", recipient.status);
    addKnown(json, "reply_code", recipient.replyCode);
    addKnown(json, "diagnostic", recipient.diagnostic);
    addKnown(json, "remote_mta", recipient.remoteMta);
    addKnown(json, "last_attempt", recipient.lastAttempt);
    addKnown(json, "will_retry_until", recipient.willRetryUntil);
    addKnown(json["evidence"], "reason_from", nameOf(recipient.basis));
    addKnown(json["evidence"], "row", recipient.row);
    addKnown(json["evidence"], "quote", recipient.quote);
    return json;
}

void addFacts(Json& json, const Facts& facts) {
    Json& report = json["report"] = Json::object();
    addKnown(report, "reporting_mta", facts.reportingMta);
    for (const auto& [name, value] : facts.report) {
        report["fields"].push_back({{"name", name}, {"value", value}});
    }
    Json& returned = json["returned"] = Json::object();
    addKnown(returned, "message_id", facts.returned.messageId);
    addKnown(returned, "from", facts.returned.from);
    addKnown(returned, "to", facts.returned.to);
    addKnown(returned, "subject", facts.returned.subject);
    addKnown(returned, "date", facts.returned.date);
    addKnown(returned, "list_id", facts.returned.listId);
    addKnown(returned, "return_path", facts.returned.returnPath);
}

Json jsonOf(const LogTrace::Event& event) {
    switch (event.kind) {
        case LogTrace::Kind::enter: return {{"enter", event.text}};
        case LogTrace::Kind::leave: return {{"leave", event.text}};
        case LogTrace::Kind::info: return {{"info", event.text}};
        case LogTrace::Kind::data: break;
    }
    return {{"tag", event.text}, {"value", event.value.view()}};
}

}  // namespace

Json resultByCpp(std::string_view mail) {
    const Message message{std::string(mail)};
    LogTrace trace;
    const Verdict verdict = Classifier().classify(message, trace);
    Json json = {{"type", verdict.type},
                 {"name", bounceTypeName(verdict.type)},
                 {"label", verdict.rule ? Json(verdict.label()) : Json()},
                 {"address", verdict.address},
                 {"recipients", Json::array()},
                 {"data", verdict.text.view()},
                 {"trace", Json::array()}};
    for (const Recipient& one : recipientsOf(message)) json["recipients"].push_back(jsonOf(one));
    addFacts(json, factsOf(message));
    for (const LogTrace::Event& event : trace.events()) json["trace"].push_back(jsonOf(event));
    return json;
}

}  // namespace bouncecheck
