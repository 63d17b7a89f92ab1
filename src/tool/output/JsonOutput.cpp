#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <bouncecheck/BounceType.h>
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
            json.member("value", event.value.view());
            break;
    }
    json.endObject();
}

void addRecipient(JsonWriter& json, const Recipient& recipient) {
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

void addReport(JsonWriter& json, const Facts& facts) {
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

void addReturned(JsonWriter& json, const ReturnedMessage& message) {
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

void addNumber(JsonWriter& json, std::string_view name, std::uint64_t value) {
    json.name(name);
    json.number(std::to_string(value));
}

void addChosen(JsonWriter& json, const std::vector<const Field*>& fields, const Shown& shown) {
    std::string scratch;
    for (const Field* field : fields) {
        const std::string_view value = field->read(shown, scratch);
        if (field->isNumber) {
            json.name(field->name);
            json.number(value);
        } else {
            json.member(field->name, value);
        }
    }
}

void addEverything(JsonWriter& json, const Classified& message) {
    json.member("source", message.place.source);
    addNumber(json, "index", message.place.index);
    addNumber(json, "type", static_cast<std::uint64_t>(message.type));
    json.member("name", bounceTypeName(message.type));
    if (message.label().empty()) {
        json.name("label");
        json.null();
    } else {
        json.member("label", message.label());
    }
    json.member("address", message.address);
    json.name("recipients");
    json.beginArray();
    for (const Recipient& recipient : message.recipients) addRecipient(json, recipient);
    json.endArray();
    addReport(json, message.facts);
    addReturned(json, message.facts.returned);
}

class JsonOutput final : public Output {
public:
    JsonOutput(std::ostream& out, OutputParts parts)
        : parts_(std::move(parts)), rows_(parts_.rows), json_(out) {
        std::vector<const Field*>& fields = parts_.fields;
        if (fields.empty()) return;
        if (std::exchange(parts_.data, false)) fields.push_back(parseFields("data").front());
        fields = eachOnce(fields);
    }

    Wanted wanted() const override {
        Wanted wanted = {.recipients = parts_.fields.empty(),
                         .facts = parts_.fields.empty(),
                         .data = parts_.data,
                         .trace = parts_.trace};
        addWanted(parts_.fields, wanted);
        return wanted;
    }

    void show(const Classified& message) override {
        try {
            write(message);
        } catch (...) {
            json_.abandonLine();
            throw;
        }
    }

private:
    void write(const Classified& message) {
        if (!parts_.fields.empty()) {
            rows_.of(message, [&](const Shown& shown) {
                json_.beginObject();
                addChosen(json_, parts_.fields, shown);
                endLine(message);
            });
            return;
        }
        json_.beginObject();
        addEverything(json_, message);
        endLine(message);
    }

    void endLine(const Classified& message) {
        if (parts_.data) json_.member("data", message.text.view());
        if (parts_.trace) {
            json_.name("trace");
            json_.beginArray();
            for (const LogTrace::Event& event : message.trace) addEvent(json_, event);
            json_.endArray();
        }
        json_.endObject();
        json_.endLine();
    }

    OutputParts parts_;
    Rows rows_;
    JsonWriter json_;
};

}  // namespace

std::unique_ptr<Output> makeJsonOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<JsonOutput>(out, std::move(parts));
}

}  // namespace bouncecheck
