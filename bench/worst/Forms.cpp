#include "bench/worst/Forms.h"

#include <string>

namespace bouncecheck::bench {
namespace {

std::vector<const Field*> everyField() {
    std::vector<const Field*> all;
    for (const Field& field : allFields()) all.push_back(&field);
    return all;
}

using Made = std::unique_ptr<Output>;

constexpr Form allForms[] = {
    {"table",
     [](std::ostream& out) -> Made {
         return makeTableOutput(out, {.fields = everyField(), .data = true, .trace = true}, {});
     }},
    {"json",
     [](std::ostream& out) -> Made {
         return makeJsonOutput(out, {.fields = {}, .data = true, .trace = true});
     }},
    {"csv",
     [](std::ostream& out) -> Made {
         return makeCsvOutput(out, {.fields = everyField(), .isCsvSafe = true});
     }},
    {"tsv", [](std::ostream& out) -> Made { return makeTsvOutput(out, {.fields = everyField()}); }},
    {"explain", [](std::ostream& out) -> Made { return makeExplainOutput(out, {}); }},
    {"html", [](std::ostream& out) -> Made { return makeHtmlOutput(out); }},
    {"addresses", [](std::ostream& out) -> Made { return makeAddressOutput(out, false); }},
    {"summary",
     [](std::ostream& out) -> Made { return makeSummaryOutput(out, SummaryForm::json, {}); }},
};

}  // namespace

std::span<const Form> forms() noexcept { return allForms; }

}  // namespace bouncecheck::bench
