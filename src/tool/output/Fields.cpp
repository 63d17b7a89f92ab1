#include "tool/output/Fields.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "bounce/BounceType.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

template <std::string Classified::*member>
std::string own(const Classified& message) {
    return message.*member;
}

template <std::string RecipientFacts::*member>
std::string ofRecipient(const Classified& message) {
    const RecipientFacts* recipient = mainRecipient(message);
    return recipient ? recipient->*member : std::string();
}

template <std::string ReturnedMessage::*member>
std::string ofReturned(const Classified& message) {
    return message.facts.returned.*member;
}

std::string joined(std::string all, std::string_view more) {
    if (!all.empty() && !more.empty()) all += ' ';
    return all.append(more);
}

std::string recipients(const Classified& message) {
    std::string all;
    for (const RecipientFacts& recipient : message.facts.recipients) {
        all = joined(std::move(all), recipient.finalRecipient.empty() ? recipient.originalRecipient
                                                                      : recipient.finalRecipient);
    }
    return all;
}

std::string failedRecipients(const Classified& message) {
    std::string all;
    for (const std::string& address : message.facts.failedRecipients) {
        all = joined(std::move(all), address);
    }
    return all;
}

std::string feedbackType(const Classified& message) {
    for (const ReportField& field : message.facts.report) {
        if (ascii::equalsNoCase(field.name, "Feedback-Type")) return field.value;
    }
    return {};
}

using Source = Field::Source;

constexpr Field fields[] = {
    {"source", Source::verdict, 40, own<&Classified::source>, false, Cut::front},
    {"index", Source::verdict, 7, [](const Classified& m) { return std::to_string(m.index); },
     true},
    {"location", Source::verdict, 40,
     [](const Classified& m) { return placeOf(m.source, m.index, m.inMailbox); }, false,
     Cut::front},
    {"size", Source::verdict, 9, [](const Classified& m) { return std::to_string(m.size); }, true},
    {"type", Source::verdict, 4, [](const Classified& m) { return std::to_string(m.type); }, true},
    {"name", Source::verdict, 12,
     [](const Classified& m) { return std::string(bounceTypeName(m.type)); }},
    {"label", Source::verdict, 7, own<&Classified::label>},
    {"address", Source::verdict, 37, own<&Classified::address>},
    {"phrase", Source::verdict, 24, own<&Classified::phrase>},
    {"subject", Source::header, 40, own<&Classified::subject>},
    {"from", Source::header, 30, own<&Classified::from>},
    {"date", Source::header, 31, own<&Classified::date>},
    {"message-id", Source::header, 40, own<&Classified::messageId>},
    {"original-recipient", Source::facts, 30, ofRecipient<&RecipientFacts::originalRecipient>},
    {"final-recipient", Source::facts, 30, ofRecipient<&RecipientFacts::finalRecipient>},
    {"action", Source::facts, 9, ofRecipient<&RecipientFacts::action>},
    {"status", Source::facts, 7, ofRecipient<&RecipientFacts::status>},
    {"diagnostic", Source::facts, 40, ofRecipient<&RecipientFacts::diagnosticCode>},
    {"remote-mta", Source::facts, 24, ofRecipient<&RecipientFacts::remoteMta>},
    {"recipients", Source::facts, 40, recipients},
    {"failed-recipients", Source::facts, 40, failedRecipients},
    {"reporting-mta", Source::facts, 24, [](const Classified& m) { return m.facts.reportingMta; }},
    {"feedback-type", Source::facts, 13, feedbackType},
    {"returned-message-id", Source::facts, 40, ofReturned<&ReturnedMessage::messageId>},
    {"returned-to", Source::facts, 30, ofReturned<&ReturnedMessage::to>},
    {"returned-subject", Source::facts, 40, ofReturned<&ReturnedMessage::subject>},
    {"returned-date", Source::facts, 31, ofReturned<&ReturnedMessage::date>},
    {"list-id", Source::facts, 24, ofReturned<&ReturnedMessage::listId>},
    {"data", Source::data, 60, own<&Classified::data>},
};

}  // namespace

std::span<const Field> allFields() noexcept { return fields; }

std::vector<const Field*> parseFields(std::string_view names) {
    std::vector<const Field*> chosen;
    for (;;) {
        const std::size_t comma = names.find(',');
        const std::string_view name = ascii::trim(names.substr(0, comma));
        const auto field = std::ranges::find(fields, name, &Field::name);
        if (field == std::end(fields)) {
            std::string problem = "no field is named \"" + std::string(name) + "\"; there are";
            for (const Field& known : fields) problem.append(" ").append(known.name);
            throw std::invalid_argument(problem);
        }
        chosen.push_back(&*field);
        if (comma == std::string_view::npos) return chosen;
        names.remove_prefix(comma + 1);
    }
}

void addWanted(std::span<const Field* const> chosen, Wanted& wanted) {
    for (const Field* field : chosen) {
        wanted.header |= field->source == Source::header;
        wanted.facts |= field->source == Source::facts;
        wanted.data |= field->source == Source::data;
    }
}

const RecipientFacts* mainRecipient(const Classified& message) noexcept {
    const auto& all = message.facts.recipients;
    if (all.empty()) return nullptr;
    const auto byAddress = std::ranges::find_if(all, [&](const RecipientFacts& recipient) {
        return !message.address.empty() &&
               (ascii::equalsNoCase(recipient.finalRecipient, message.address) ||
                ascii::equalsNoCase(recipient.originalRecipient, message.address));
    });
    if (byAddress != all.end()) return &*byAddress;
    const auto failed = std::ranges::find(all, "failed", &RecipientFacts::action);
    return failed != all.end() ? &*failed : &all.front();
}

}  // namespace bouncecheck
