#include <ostream>
#include <string>
#include <string_view>

#include <bouncecheck/Advice.h>
#include <bouncecheck/BounceType.h>
#include <bouncecheck/Reason.h>
#include <bouncecheck/Rule.h>
#include "tool/output/JsonWriter.h"
#include "tool/output/Output.h"
#include "tool/output/PageBlock.h"
#include "tool/output/PageText.h"

namespace bouncecheck {
namespace {

/// What the page says about types, rules, reasons and advices.
std::string helpJson() {
    std::string help = "{\"types\":[";
    const auto addText = [&](std::string_view before, std::string_view text) {
        help += before;
        appendJsonString(help, text);
    };
    std::string_view comma;
    for (const VerdictType& type : allVerdictTypes()) {
        help.append(comma).append("{\"type\":").append(std::to_string(type.type));
        addText(",\"name\":", type.name);
        addText(",\"meaning\":", type.meaning);
        addText(",\"advice\":", type.advice);
        help += '}';
        comma = ",";
    }
    help += "],\"rules\":{";
    comma = "";
    for (const Rule& rule : allRules()) {
        addText(comma, rule.label());
        addText(":{\"meaning\":", rule.meaning);
        addText(",\"looksFor\":", rule.looksFor);
        if (!rule.advice.empty()) addText(",\"advice\":", rule.advice);
        help += '}';
        comma = ",";
    }
    help += "},\"reasons\":{";
    comma = "";
    for (const ReasonMeaning& reason : allReasons()) {
        addText(comma, reason.name);
        addText(":{\"meaning\":", reason.meaning);
        addText(",\"action\":", reason.action);
        help += '}';
        comma = ",";
    }
    help += "},\"advices\":{";
    comma = "";
    for (const AdviceMeaning& advice : allAdvices()) {
        addText(comma, advice.name);
        addText(":", advice.meaning);
        comma = ",";
    }
    return help.append("}}");
}

class HtmlOutput final : public Output {
public:
    explicit HtmlOutput(std::ostream& out) : out_(out) {
        out_ << messagesPage.beforeData;
        writeJsonBlock(out_, "help", helpJson());
    }

    Wanted wanted() const override {
        return {.recipients = true, .facts = true, .header = true, .data = true, .trace = true};
    }

    void show(const Classified& message) override {
        block_.add(message);
        if (block_.isFull()) writeBlock();
    }

    void finish() override {
        if (!block_.isEmpty()) writeBlock();
        out_ << messagesPage.behindData;
    }

private:
    void writeBlock() { block_.write(out_); }

    std::ostream& out_;
    PageBlock block_;
};

}  // namespace

std::unique_ptr<Output> makeHtmlOutput(std::ostream& out) {
    return std::make_unique<HtmlOutput>(out);
}

}  // namespace bouncecheck
