#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bounce/BounceType.h"
#include "tool/output/JsonWriter.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

/// `fields`, each once, as the names in an object have to be.
std::vector<const Field*> eachOnce(const std::vector<const Field*>& fields) {
    std::vector<const Field*> all;
    for (const Field* field : fields) {
        if (std::ranges::find(all, field) == all.end()) all.push_back(field);
    }
    return all;
}

/// Writes a member, unless its text is empty.
void addText(JsonWriter& json, std::string_view name, std::string_view text) {
    if (!text.empty()) json.member(name, text);
}

void addEvent(JsonWriter& json, const LogTrace::Event& event) {
    json.beginObject();
    switch (event.kind) {
        case LogTrace::Kind::enter: json.member("enter", event.text); break;
        case LogTrace::Kind::leave: json.member("leave", event.text); break;
        case LogTrace::Kind::info: json.member("info", event.text); break;
        case LogTrace::Kind::data:
            json.member("tag", event.text);
            json.member("value", event.value);
            break;
    }
    json.endObject();
}

void addRecipients(JsonWriter& json, const Facts& facts) {
    json.name("recipients");
    json.beginArray();
    for (const RecipientFacts& recipient : facts.recipients) {
        json.beginObject();
        addText(json, "original_recipient", recipient.originalRecipient);
        addText(json, "final_recipient", recipient.finalRecipient);
        addText(json, "action", recipient.action);
        addText(json, "status", recipient.status);
        addText(json, "diagnostic_code", recipient.diagnosticCode);
        addText(json, "remote_mta", recipient.remoteMta);
        json.endObject();
    }
    json.endArray();
}

void addReport(JsonWriter& json, const Facts& facts) {
    json.name("report");
    json.beginObject();
    addText(json, "reporting_mta", facts.reportingMta);
    if (!facts.failedRecipients.empty()) {
        json.name("failed_recipients");
        json.beginArray();
        for (const std::string& address : facts.failedRecipients) json.string(address);
        json.endArray();
    }
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

void addReturned(JsonWriter& json, const ReturnedMessage& message) {
    json.name("returned");
    json.beginObject();
    addText(json, "message_id", message.messageId);
    addText(json, "to", message.to);
    addText(json, "subject", message.subject);
    addText(json, "date", message.date);
    addText(json, "list_id", message.listId);
    json.endObject();
}

void addNumber(JsonWriter& json, std::string_view name, std::uint64_t value) {
    json.name(name);
    json.number(value);
}

void addChosen(JsonWriter& json, const std::vector<const Field*>& fields,
               const Classified& message) {
    for (const Field* field : fields) {
        const std::string value = field->read(message);
        if (field->isNumber) {
            addNumber(json, field->name, std::stoull(value));
        } else {
            json.member(field->name, value);
        }
    }
}

void addEverything(JsonWriter& json, const Classified& message) {
    json.member("source", message.source);
    addNumber(json, "index", message.index);
    addNumber(json, "type", static_cast<std::uint64_t>(message.type));
    json.member("name", bounceTypeName(message.type));
    if (message.label.empty()) {
        json.name("label");
        json.null();
    } else {
        json.member("label", message.label);
    }
    json.member("address", message.address);
    addRecipients(json, message.facts);
    addReport(json, message.facts);
    addReturned(json, message.facts.returned);
}

class JsonOutput final : public Output {
public:
    JsonOutput(std::ostream& out, OutputParts parts) : out_(out), parts_(std::move(parts)) {
        std::vector<const Field*>& fields = parts_.fields;
        if (fields.empty()) return;
        if (std::exchange(parts_.data, false)) fields.push_back(parseFields("data").front());
        fields = eachOnce(fields);
    }

    Wanted wanted() const override {
        Wanted wanted = {
            .facts = parts_.fields.empty(), .data = parts_.data, .trace = parts_.trace};
        addWanted(parts_.fields, wanted);
        return wanted;
    }

    void show(const Classified& message) override {
        json_.clear();
        json_.beginObject();
        if (parts_.fields.empty()) {
            addEverything(json_, message);
        } else {
            addChosen(json_, parts_.fields, message);
        }
        if (parts_.data) json_.member("data", message.data);
        if (parts_.trace) {
            json_.name("trace");
            json_.beginArray();
            for (const LogTrace::Event& event : message.trace) addEvent(json_, event);
            json_.endArray();
        }
        json_.endObject();
        out_ << json_.text() << '\n';
    }

private:
    std::ostream& out_;
    OutputParts parts_;
    JsonWriter json_;
};

}  // namespace

std::unique_ptr<Output> makeJsonOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<JsonOutput>(out, std::move(parts));
}

}  // namespace bouncecheck
