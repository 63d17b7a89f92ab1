#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/BounceType.h>
#include <bouncecheck/Rule.h>
#include <bouncecheck/TraceTree.h>
#include "text/Utf8.h"
#include "tool/output/Excerpt.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

constexpr std::string_view margin = "  ";
constexpr std::string_view emphasis = "1;7";

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

/// `text` with blanks for each tab, which would be an escape.
std::string withBlanks(std::string_view text) {
    constexpr std::string_view tab = "    ";
    std::string blank;
    for (const char c : text) blank.append(c == '\t' ? tab : std::string_view(&c, 1));
    return blank;
}

class ExplainOutput final : public Output {
public:
    ExplainOutput(std::ostream& out, Style style) : out_(out), style_(style) {}

    Wanted wanted() const override {
        return {.recipients = true, .facts = true, .header = true, .data = true, .trace = true};
    }

    void show(const Classified& message) override {
        if (!isFirst_) out_ << '\n';
        isFirst_ = false;
        const Rule* rule = message.rule;
        const VerdictType* type = verdictTypeOf(message.type);

        out_ << style_.paint(printable(message.place.text()), "1") << '\n';
        showFact("Subject", message.subject);
        showFact("From", message.from);
        showFact("Verdict", verdictOf(message, type, rule), colorOf(message.type));
        showFact("Address", message.address.empty() ? "none" : message.address);
        showFact("Rule", ruleOf(message, rule));
        showFact("Phrase", phraseWithPlace(message.match));
        showFact("Do", adviceFor(message.type, rule));
        showList("Recipient", message.recipients, recipientText);
        showFacts(message.facts);
        showSteps(message);
        showText(message);
    }

private:
    static std::string verdictOf(const Classified& message, const VerdictType* type,
                                 const Rule* rule) {
        std::string text = bounceTypeName(message.type);
        text.append(" (").append(std::to_string(message.type)).append("): ");
        if (rule) return text.append(rule->meaning);
        return text.append(type ? type->meaning : std::string_view());
    }

    static std::string ruleOf(const Classified& message, const Rule* rule) {
        if (rule) return std::string(rule->label()).append(": ").append(rule->looksFor);
        if (message.type == BOUNCE_NONE) return "none held";
        return "a row of the table of last resort, which has no label";
    }

    void showFacts(const Facts& facts) {
        showFact("Reported by", facts.reportingMta);
        showList("Report", facts.report,
                 [](const ReportField& field) { return field.name + ": " + field.value; });
        const ReturnedMessage& returned = facts.returned;
        const bool hasBoth = !returned.messageId.empty() && !returned.to.empty();
        showFact("Returned", returned.messageId + (hasBoth ? " to " : "") + returned.to);
    }

    /// "user@example.net, failed: unknown-mailbox; suppress (550 5.1.1, "user unknown")"
    static std::string recipientText(const Recipient& recipient) {
        std::string text = recipient.address.empty() ? recipient.tag : recipient.address;
        if (!recipient.finalAddress.empty()) text.append(" -> ").append(recipient.finalAddress);
        text.append(", ").append(nameOf(recipient.outcome));
        if (recipient.reason != Reason::none) text.append(": ").append(nameOf(recipient.reason));
        if (recipient.advice != Advice::none) text.append("; ").append(nameOf(recipient.advice));
        std::string evidence;
        for (const std::string_view code : {recipient.replyCode, recipient.status}) {
            if (!code.empty()) evidence.append(evidence.empty() ? "" : " ").append(code);
        }
        if (!recipient.quote.empty()) {
            evidence.append(evidence.empty() ? "\"" : ", \"").append(recipient.quote) += '"';
        }
        if (!evidence.empty()) text.append(" (").append(evidence).append(")");
        return text;
    }

    template <class Item, class Text>
    void showList(std::string_view name, const std::vector<Item>& items, Text textOf) {
        constexpr std::size_t mostItems = 5;
        const std::size_t shown = std::min(items.size(), mostItems);
        for (std::size_t i = 0; i < shown; ++i) showFact(name, textOf(items[i]));
        if (shown == items.size()) return;
        showFact("", "... and " + std::to_string(items.size() - shown) + " more");
    }

    void showFact(std::string_view name, std::string_view value, std::string_view color = "") {
        constexpr std::size_t nameWidth = 13;
        if (value.empty()) return;
        std::string text = printable(value);
        out_ << margin << style_.paint(name, "1") << std::string(nameWidth - name.size(), ' ');
        const std::size_t used = margin.size() + nameWidth;
        if (style_.width <= used + 20) {
            out_ << style_.paint(text, color) << '\n';
            return;
        }
        // Broken between words, where there are any, and below each other.
        const std::size_t room = style_.width - used;
        std::string_view rest = text;
        for (;;) {
            const std::size_t fits = bytesWithin(rest, room);
            if (fits == rest.size()) break;
            const std::size_t blank = rest.rfind(' ', fits);
            const bool hasNoBreak = blank == std::string_view::npos || blank == 0;
            const std::size_t end = hasNoBreak ? fits : blank;
            out_ << style_.paint(rest.substr(0, end), color) << '\n' << std::string(used, ' ');
            rest.remove_prefix(hasNoBreak ? end : end + 1);
        }
        out_ << style_.paint(rest, color) << '\n';
    }

    void showSteps(const Classified& message) {
        out_ << '\n' << margin << style_.paint("Steps", "1") << '\n';
        std::string tree;
        appendWellFormed(tree, traceTree(message.trace, {.margin = "    ",
                                                         .markedEvent = message.decidingEvent,
                                                         .mark = "   <== decides",
                                                         .maxValueBytes = 120}));
        for (const std::string_view line : linesOf(tree)) {
            const bool decides = line.ends_with("<== decides");
            out_ << style_.paint(inWidth(line), decides ? emphasis : std::string_view()) << '\n';
        }
    }

    std::string inWidth(std::string_view line) const {
        return style_.width > 0 ? fitted(line, style_.width) : std::string(line);
    }

    void showText(const Classified& message) {
        const std::vector<ExcerptLine> lines = excerptOf(message);
        if (lines.empty()) return;
        out_ << '\n' << margin << style_.paint("Text", "1") << '\n';
        for (const ExcerptLine& line : lines) {
            if (line.isGap) {
                out_ << "    ...\n";
            } else {
                showLine(line);
            }
        }
    }

    void showLine(const ExcerptLine& whole) {
        constexpr std::string_view before = "    | ";
        const std::size_t longestLine =
            style_.width > 2 * before.size() ? style_.width - before.size() : 300;
        const ExcerptLine line = cutLine(whole, longestLine);
        // What is marked is emphasized, or has carets below it where nothing can be.
        std::string shown;
        std::string carets;
        std::size_t end = 0;
        const auto addUpTo = [&](std::size_t to, bool isMarked) {
            std::string piece = printable(withBlanks(line.text.substr(end, to - end)));
            if (style_.width > 0) piece = fitted(piece, longestLine - carets.size());
            end = to;
            shown += style_.paint(piece, isMarked ? emphasis : std::string_view());
            carets.append(columns(piece), isMarked ? '^' : ' ');
        };
        for (const Mark& mark : line.marks) {
            addUpTo(mark.begin, false);
            addUpTo(mark.begin + mark.size, true);
        }
        addUpTo(line.text.size(), false);
        out_ << before << shown << '\n';
        carets.resize(carets.rfind('^') + 1);
        if (!style_.color && !carets.empty()) out_ << before << carets << '\n';
    }

    std::ostream& out_;
    Style style_;
    bool isFirst_ = true;
};

}  // namespace

std::unique_ptr<Output> makeExplainOutput(std::ostream& out, Style style) {
    return std::make_unique<ExplainOutput>(out, style);
}

}  // namespace bouncecheck
