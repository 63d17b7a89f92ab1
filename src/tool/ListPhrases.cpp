#include "tool/ListPhrases.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include <bouncecheck/BounceRule.h>
#include <bouncecheck/PhraseList.h>
#include "tool/output/JsonWriter.h"

namespace bouncecheck {

namespace {

std::string beginLine(std::string_view table, std::size_t row, std::string_view phrase) {
    std::string line = "{\"table\":";
    appendJsonString(line, table);
    line.append(",\"row\":").append(std::to_string(row)).append(",\"phrase\":");
    appendJsonString(line, phrase);
    return line;
}

}  // namespace

void listPhrases(std::ostream& out) {
    for (const PhraseList& list : allPhraseLists()) {
        for (std::size_t row = 0; row < list.rows.size(); ++row) {
            out << beginLine(list.name, row, list.rows[row]) << "}\n";
        }
    }
    const auto rules = lastResortRules();
    for (std::size_t row = 0; row < rules.size(); ++row) {
        const BounceRule& rule = rules[row];
        out << beginLine("BounceRules", row, rule.phrase) << ",\"source\":" << rule.source
            << ",\"mode\":" << rule.mode << ",\"type\":" << rule.bounceType << "}\n";
    }
}

}  // namespace bouncecheck
