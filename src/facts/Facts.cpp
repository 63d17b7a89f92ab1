#include "facts/FactsOf.h"

#include <string_view>
#include <utility>

#include <bouncecheck/Limits.h>
#include "mime/HeaderFields.h"
#include "mime/ReportBodies.h"
#include "mime/TextBudget.h"
#include "recipients/MessageReading.h"
#include "recipients/ReportRecipients.h"

namespace bouncecheck {
namespace {

/// The value of `field`, or "" when it is too long to be read to its end.
std::string wholeValue(const HeaderField& field) {
    return field.isCut() ? std::string() : field.decoded();
}

std::vector<ReportField> reportFieldsIn(std::string_view text, TextBudget& budget) {
    std::vector<ReportField> fields;
    const HeaderFields read = HeaderFields::ofReport(text, limits::reportFields);
    for (const HeaderField& field : read.all()) {
        std::string name = budget.keep(field.name);
        if (!budget.spend(sizeof(ReportField))) break;
        fields.push_back({std::move(name), budget.keep(wholeValue(field))});
    }
    return fields;
}

std::string reportingMtaIn(std::string_view text, TextBudget& budget) {
    // It stands in the first group of fields (RFC 3464, section 2.2).
    const HeaderFields fields = HeaderFields::ofReport(text.substr(0, limits::notice));
    const HeaderField* field = fields.find("Reporting-MTA");
    return field ? budget.keep(withoutType(wholeValue(*field))) : std::string();
}

ReturnedMessage returnedIn(const HeaderFields& header, TextBudget& budget) {
    const auto read = [&](std::string_view name) {
        const HeaderField* field = header.find(name);
        return field ? budget.keep(wholeValue(*field)) : std::string();
    };
    return {.messageId = read("Message-ID"),
            .from = read("From"),
            .to = read("To"),
            .subject = read("Subject"),
            .date = read("Date"),
            .listId = read("List-Id"),
            .returnPath = read("Return-Path")};
}

}  // namespace

Facts factsOf(const MessageReading& reading) {
    const Entity& message = reading.message();
    Facts facts;
    TextBudget budget;
    facts.reportingMta = reportingMtaIn(bodyOf(message, ReportKind::delivery), budget);
    facts.report =
        reportFieldsIn(bodyOf(message, ReportKind::complaint, ReportKind::receipt), budget);
    facts.returned = returnedIn(reading.returned().header(), budget);
    return facts;
}

}  // namespace bouncecheck
