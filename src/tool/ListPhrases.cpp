#include "tool/ListPhrases.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "bounce/PhraseTables.h"

namespace bouncecheck {

void listPhrases(std::ostream& out) {
    using Json = nlohmann::ordered_json;
    for (const PhraseTable& table : phraseTables()) {
        for (std::size_t row = 0; row < table.phrases.size(); ++row) {
            const Json line = {{"table", table.name}, {"row", row}, {"phrase", table.phrases[row]}};
            out << line.dump() << '\n';
        }
    }
    const auto rules = ruleTable();
    for (std::size_t row = 0; row < rules.size(); ++row) {
        const BounceRule& rule = rules[row];
        const Json line = {{"table", "BounceRules"}, {"row", row},
                           {"phrase", rule.phrase},  {"source", rule.source},
                           {"mode", rule.mode},      {"type", rule.bounceType}};
        out << line.dump() << '\n';
    }
}

}  // namespace bouncecheck
