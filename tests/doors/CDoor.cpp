#include <bouncecheck/bouncecheck_c.h>

#include <memory>
#include <stdexcept>

#include "doors/Doors.h"

namespace bouncecheck {
namespace {

using Json = nlohmann::json;

std::string_view viewOf(bouncecheck_text text) { return {text.bytes, text.size}; }
std::string_view viewOf(const char* text) { return text; }

template <class Text>
void addKnown(Json& to, const char* key, Text text) {
    if (!viewOf(text).empty()) to[key] = viewOf(text);
}

void check(bouncecheck_status status) {
    if (status != BOUNCECHECK_OK) throw std::runtime_error(bouncecheck_status_text(status));
}

Json jsonOf(const bouncecheck_recipient& recipient) {
    Json json = {{"address", viewOf(recipient.address)},
                 {"outcome", bouncecheck_outcome_name(recipient.outcome)},
                 {"advice", bouncecheck_advice_name(recipient.advice)},
                 {"evidence", {{"found_in", bouncecheck_source_name(recipient.source)}}}};
    addKnown(json, "final_address", recipient.final_address);
    addKnown(json, "tag", recipient.tag);
    addKnown(json, "reason", bouncecheck_reason_name(recipient.reason));
    addKnown(json, "status", recipient.status);
    addKnown(json, "reply_code", recipient.reply_code);
    addKnown(json, "diagnostic", recipient.diagnostic);
    addKnown(json, "remote_mta", recipient.remote_mta);
    addKnown(json, "last_attempt", recipient.last_attempt);
    addKnown(json, "will_retry_until", recipient.will_retry_until);
    addKnown(json["evidence"], "reason_from", bouncecheck_basis_name(recipient.basis));
    addKnown(json["evidence"], "row", recipient.row);
    addKnown(json["evidence"], "quote", recipient.quote);
    return json;
}

void addFacts(Json& json, const bouncecheck_classifier* from) {
    bouncecheck_facts facts;
    check(bouncecheck_get_facts(from, &facts, sizeof facts));
    Json& report = json["report"] = Json::object();
    addKnown(report, "reporting_mta", facts.reporting_mta);
    for (std::size_t i = 0; i < bouncecheck_report_field_count(from); ++i) {
        bouncecheck_report_field field;
        check(bouncecheck_get_report_field(from, i, &field, sizeof field));
        report["fields"].push_back({{"name", viewOf(field.name)}, {"value", viewOf(field.value)}});
    }
    Json& returned = json["returned"] = Json::object();
    addKnown(returned, "message_id", facts.returned_message_id);
    addKnown(returned, "from", facts.returned_from);
    addKnown(returned, "to", facts.returned_to);
    addKnown(returned, "subject", facts.returned_subject);
    addKnown(returned, "date", facts.returned_date);
    addKnown(returned, "list_id", facts.returned_list_id);
    addKnown(returned, "return_path", facts.returned_return_path);
}

}  // namespace

Json resultByC(std::string_view mail) {
    bouncecheck_classifier* made = nullptr;
    check(bouncecheck_classifier_new(&made));
    const std::unique_ptr<bouncecheck_classifier, decltype(&bouncecheck_classifier_free)>
        classifier(made, bouncecheck_classifier_free);
    check(bouncecheck_classify(made, mail.data(), mail.size(),
                               BOUNCECHECK_RECIPIENTS | BOUNCECHECK_FACTS | BOUNCECHECK_TRACE));
    bouncecheck_verdict verdict;
    check(bouncecheck_get_verdict(made, &verdict, sizeof verdict));
    bouncecheck_evidence evidence;
    check(bouncecheck_get_evidence(made, &evidence, sizeof evidence));
    bouncecheck_text trace;
    check(bouncecheck_get_trace(made, &trace));
    Json json = {{"type", verdict.type},
                 {"name", bouncecheck_type_name(verdict.type)},
                 {"label", verdict.label.size > 0 ? Json(viewOf(verdict.label)) : Json()},
                 {"address", viewOf(verdict.address)},
                 {"recipients", Json::array()},
                 {"data", viewOf(evidence.data)},
                 {"trace", viewOf(trace)}};
    for (std::size_t i = 0; i < bouncecheck_recipient_count(made); ++i) {
        bouncecheck_recipient recipient;
        check(bouncecheck_get_recipient(made, i, &recipient, sizeof recipient));
        json["recipients"].push_back(jsonOf(recipient));
    }
    addFacts(json, made);
    return json;
}

}  // namespace bouncecheck
