#include <nlohmann/json.hpp>
#include <ostream>

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

class JsonOutput final : public Output {
public:
    JsonOutput(std::ostream& out, OutputParts parts) : out_(out), parts_(parts) {}

    void show(const Classified& message) override {
        Json line = {{"source", message.source},
                     {"type", message.type},
                     {"name", bounceTypeName(message.type)},
                     {"label", message.label.empty() ? Json(nullptr) : Json(message.label)},
                     {"address", message.address}};
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
    return std::make_unique<JsonOutput>(out, parts);
}

}  // namespace bouncecheck
