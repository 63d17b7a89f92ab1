#include "tool/commands/LedgerPage.h"

#include <functional>
#include <optional>
#include <ostream>

#include <bouncecheck/Advice.h>
#include <bouncecheck/Reason.h>
#include "tool/output/JsonWriter.h"
#include "tool/output/PageBlock.h"
#include "tool/output/PageText.h"

namespace bouncecheck {
namespace {

constexpr std::size_t mostBytesOfText = 400;
/// As of a `PageBlock`.
constexpr std::size_t mostAddresses = 4000;
constexpr std::size_t mostBytes = std::size_t{1} << 20;

void appendElement(std::string& list, std::string_view element) {
    if (!list.empty()) list += ',';
    list += element;
}

void appendNumber(std::string& list, std::optional<std::int64_t> number) {
    appendElement(list, number ? std::to_string(*number) : "null");
}

std::string member(std::string_view name, std::string_view json) {
    return "\"" + std::string(name) + "\":" + std::string(json);
}

std::string meaningsJson() {
    std::string reasons, advices;
    const auto add = [](std::string& list, std::string_view name, std::string_view text,
                        std::string_view usual = {}) {
        std::string element;
        appendJsonString(element, name);
        appendJsonString(element += ":[", text);
        appendJsonString(element += ',', usual);
        appendElement(list, element += ']');
    };
    for (const ReasonMeaning& reason : allReasons()) {
        add(reasons, reason.name, reason.meaning, reason.action);
    }
    for (const AdviceMeaning& advice : allAdvices()) add(advices, advice.name, advice.meaning);
    return member("reasons", "{" + reasons + "}") + "," + member("advices", "{" + advices + "}");
}

std::string aboutJson(const LedgerSummary& summary) {
    std::string numbers;
    for (const auto& [name, number] : {std::pair("messages", summary.development.messages),
                                       {"addresses", summary.development.addresses},
                                       {"after", summary.rules.after},
                                       {"within", summary.rules.within},
                                       {"now", summary.now}}) {
        numbers += member(name, std::to_string(number)) + ",";
    }
    return "{" + numbers + meaningsJson() + "}";
}

/// Columns of numbers, and of texts of which each stands once.
std::string developmentJson(const ledger::Development& development) {
    SharedTexts texts;
    std::array<std::string, 5> reports;
    for (const ledger::DayOfReports& one : development.reports) {
        appendNumber(reports[0], one.day);
        appendNumber(reports[4], one.count);
        std::size_t column = 1;
        for (const std::string* text : {&one.outcome, &one.reason, &one.advice}) {
            appendElement(reports[column++], std::to_string(texts.add(*text, mostBytesOfText)));
        }
    }
    std::array<std::string, 3> changes;
    for (const ledger::DayOfChanges& one : development.changes) {
        appendNumber(changes[0], one.day);
        appendNumber(changes[1], one.begun);
        appendNumber(changes[2], one.ended);
    }
    std::string json = "{\"texts\":[\"\"" + std::string(texts.json()) + "]";
    const auto add = [&](std::string_view name, const std::string& column) {
        json += "," + member(name, "[" + column + "]");
    };
    constexpr std::string_view names[] = {"reportDay", "outcome", "reason", "advice", "count"};
    for (std::size_t i = 0; i < reports.size(); ++i) add(names[i], reports[i]);
    add("changeDay", changes[0]);
    add("begun", changes[1]);
    add("ended", changes[2]);
    return json + "}";
}

}  // namespace

constexpr std::array<std::string_view, 9> LedgerPage::columnNames = {
    "address", "cause", "reason", "evidence", "since", "first", "last", "count", "changed"};

LedgerPage::LedgerPage(std::ostream& out, const LedgerSummary& summary) : out_(out) {
    out_ << ledgerPage.beforeData;
    writeJsonBlock(out_, "help", aboutJson(summary));
    writeJsonBlock(out_, "development", developmentJson(summary.development));
}

void LedgerPage::add(const ledger::ListedAddress& address, const ledger::DecidingReport& report) {
    std::size_t column = 0;
    for (const std::string_view text :
         {address.address, nameOf(address.cause), address.reason, address.evidence}) {
        appendElement(columns_[column++], std::to_string(rowTexts_.add(text, mostBytesOfText)));
    }
    for (const std::optional<std::int64_t> number :
         {address.since, address.firstSeen, address.lastSeen, std::optional(address.count),
          address.changed}) {
        appendNumber(columns_[column++], number);
    }
    std::string numbers;
    for (const std::string_view text : {report.outcome, report.status, report.replyCode,
                                        report.diagnostic, report.place, report.messageId}) {
        appendElement(numbers, std::to_string(texts_.add(text, mostBytesOfText)));
    }
    appendElement(details_, "[" + numbers + "]");
    ++count_;
    const std::size_t size = rowTexts_.bytes() + texts_.bytes() + details_.size();
    if (count_ >= mostAddresses || size >= mostBytes) writeBlock();
}

void LedgerPage::finish() {
    if (count_ > 0) writeBlock();
    out_ << ledgerPage.behindData;
}

void LedgerPage::writeBlock() {
    const auto textsOf = [](const SharedTexts& texts) {
        return "{\"texts\":[\"\"" + std::string(texts.json()) + "]";
    };
    std::string rows = textsOf(rowTexts_);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        rows += "," + member(columnNames[i], "[" + columns_[i] + "]");
        columns_[i].clear();
    }
    writeJsonBlock(out_, "rows", rows + "}");
    writeJsonBlock(out_, "details",
                   textsOf(texts_) + "," + member("rows", "[" + details_ + "]") + "}");
    rowTexts_.clear();
    texts_.clear();
    details_.clear();
    count_ = 0;
}

}  // namespace bouncecheck
