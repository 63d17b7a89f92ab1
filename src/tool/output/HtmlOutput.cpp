#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>
#include <string>

#include "bounce/BounceType.h"
#include "tool/RuleHelp.h"
#include "tool/output/Output.h"
#include "tool/output/PageBlock.h"
#include "tool/output/PageText.h"

namespace bouncecheck {
namespace {

/// What the page tells of types and rules.
std::string helpJson() {
    using Json = nlohmann::ordered_json;
    Json help = {{"types", Json::array()}, {"rules", Json::object()}};
    for (const TypeHelp& type : typeHelp()) {
        help["types"].push_back({{"type", type.type},
                                 {"name", bounceTypeName(type.type)},
                                 {"meaning", type.meaning},
                                 {"advice", type.advice}});
    }
    for (const RuleHelp& rule : ruleHelp()) {
        Json& row = help["rules"][std::string(rule.label)];
        row = {{"meaning", rule.meaning}, {"looksFor", rule.looksFor}};
        if (!rule.advice.empty()) row["advice"] = rule.advice;
    }
    return help.dump();
}

class HtmlOutput final : public Output {
public:
    explicit HtmlOutput(std::ostream& out) : out_(out) {
        out_ << pageBeforeData;
        writeJsonBlock(out_, "help", helpJson());
    }

    Wanted wanted() const override {
        return {.facts = true, .header = true, .data = true, .trace = true};
    }

    void show(const Classified& message) override {
        block_.add(message);
        if (block_.isFull()) writeBlock();
    }

    void finish() override {
        if (!block_.isEmpty()) writeBlock();
        out_ << pageBehindData;
    }

private:
    void writeBlock() {
        block_.write(out_);
        if (!out_) throw std::runtime_error("the page could not be written");
    }

    std::ostream& out_;
    PageBlock block_;
};

}  // namespace

std::unique_ptr<Output> makeHtmlOutput(std::ostream& out) {
    return std::make_unique<HtmlOutput>(out);
}

}  // namespace bouncecheck
