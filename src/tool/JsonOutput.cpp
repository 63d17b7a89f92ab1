#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <utility>

#include "bounce/BounceType.h"
#include "tool/Output.h"

namespace bouncecheck {
namespace {

using Json = nlohmann::ordered_json;

Json toJson(const LogTrace::Event& event) {
    switch (event.kind) {
        case LogTrace::Kind::enter: return {{"enter", event.text}};
        case LogTrace::Kind::leave: return {{"leave", event.text}};
        case LogTrace::Kind::info: return {{"info", event.text}};
        case LogTrace::Kind::data: break;
    }
    return {{"tag", event.text}, {"value", event.value}};
}

/// Adds a text under `key`, unless there is none.
void add(Json& object, const char* key, const std::string& text) {
    if (!text.empty()) object[key] = text;
}

Json recipientsOf(const Facts& facts) {
    Json all = Json::array();
    for (const RecipientFacts& recipient : facts.recipients) {
        Json& one = all.emplace_back(Json::object());
        add(one, "original_recipient", recipient.originalRecipient);
        add(one, "final_recipient", recipient.finalRecipient);
        add(one, "action", recipient.action);
        add(one, "status", recipient.status);
        add(one, "diagnostic_code", recipient.diagnosticCode);
        add(one, "remote_mta", recipient.remoteMta);
    }
    return all;
}

Json reportOf(const Facts& facts) {
    Json report = Json::object();
    add(report, "reporting_mta", facts.reportingMta);
    if (!facts.failedRecipients.empty()) report["failed_recipients"] = facts.failedRecipients;
    if (!facts.report.empty()) {
        // A list, since fields may be repeated and their order may matter.
        Json& fields = report["fields"] = Json::array();
        for (const ReportField& field : facts.report) {
            fields.push_back({{"name", field.name}, {"value", field.value}});
        }
    }
    return report;
}

Json returnedOf(const ReturnedMessage& message) {
    Json returned = Json::object();
    add(returned, "message_id", message.messageId);
    add(returned, "to", message.to);
    add(returned, "subject", message.subject);
    add(returned, "date", message.date);
    add(returned, "list_id", message.listId);
    return returned;
}

Json chosenOf(const std::vector<const Field*>& fields, const Classified& message) {
    Json line = Json::object();
    for (const Field* field : fields) {
        const std::string value = field->read(message);
        Json& entry = line[std::string(field->name)] = value;
        if (field->isNumber) entry = std::stoull(value);
    }
    return line;
}

Json everythingOf(const Classified& message) {
    return {{"source", message.source},
            {"index", message.index},
            {"type", message.type},
            {"name", bounceTypeName(message.type)},
            {"label", message.label.empty() ? Json(nullptr) : Json(message.label)},
            {"address", message.address},
            {"recipients", recipientsOf(message.facts)},
            {"report", reportOf(message.facts)},
            {"returned", returnedOf(message.facts.returned)}};
}

class JsonOutput final : public Output {
public:
    JsonOutput(std::ostream& out, OutputParts parts) : out_(out), parts_(std::move(parts)) {}

    Wanted wanted() const override {
        Wanted wanted = {
            .facts = parts_.fields.empty(), .data = parts_.data, .trace = parts_.trace};
        addWanted(parts_.fields, wanted);
        return wanted;
    }

    void show(const Classified& message) override {
        Json line =
            parts_.fields.empty() ? everythingOf(message) : chosenOf(parts_.fields, message);
        if (parts_.data) line["data"] = message.data;
        if (parts_.trace) {
            Json& trace = line["trace"] = Json::array();
            for (const LogTrace::Event& event : message.trace) trace.push_back(toJson(event));
        }
        out_ << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    }

private:
    std::ostream& out_;
    OutputParts parts_;
};

}  // namespace

std::unique_ptr<Output> makeJsonOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<JsonOutput>(out, std::move(parts));
}

}  // namespace bouncecheck
