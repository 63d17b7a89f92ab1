#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/output/JsonWriter.h"
#include "tool/output/MessageJson.h"
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
        json_.member("source", message.place.source);
        json_.name("index");
        json_.number(std::to_string(message.place.index));
        addFindings(json_, message, message.recipients, message.facts);
        endLine(message);
    }

    void endLine(const Classified& message) {
        if (parts_.data) json_.member("data", message.text.view());
        if (parts_.trace) addTrace(json_, message.trace);
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
