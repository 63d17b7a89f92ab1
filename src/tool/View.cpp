#include "tool/View.h"

#include <utility>

namespace bouncecheck {

std::unique_ptr<Output> makeOutput(View view, std::ostream& out, OutputParts parts, bool ofFailures,
                                   Style style) {
    switch (view) {
        case View::table: return makeTableOutput(out, std::move(parts), style);
        case View::json: return makeJsonOutput(out, std::move(parts));
        case View::csv: return makeCsvOutput(out, std::move(parts));
        case View::tsv: return makeTsvOutput(out, std::move(parts));
        case View::summary: return makeSummaryOutput(out, SummaryForm::text, style);
        case View::jsonSummary: return makeSummaryOutput(out, SummaryForm::json, style);
        case View::addresses: return makeAddressOutput(out, ofFailures);
        case View::explanations: return makeExplainOutput(out, style);
        case View::phrases: break;
    }
    return nullptr;
}

}  // namespace bouncecheck
