#include "tool/output/Fields.h"

#include <algorithm>
#include <iterator>

#include <bouncecheck/BounceType.h>
#include "text/Ascii.h"
#include "tool/NameList.h"
#include "tool/output/Address.h"
#include "tool/output/Evidence.h"

namespace bouncecheck {
namespace {

template <auto member>
std::string_view own(const Shown& shown, std::string&) {
    return shown.message.*member;
}

template <std::string Recipient::*member>
std::string_view ofRecipient(const Shown& shown, std::string&) {
    return shown.recipient ? shown.recipient->*member : std::string_view();
}

/// The recipient, or else the address of the verdict: who answers, asks or complains.
std::string_view about(const Shown& shown, std::string&) {
    const bool isNamed = shown.recipient && !shown.recipient->address.empty();
    return isNamed ? shown.recipient->address : shown.message.address;
}

template <auto Recipient::*member>
std::string_view nameOfRecipients(const Shown& shown, std::string&) {
    return shown.recipient ? nameOf(shown.recipient->*member) : std::string_view();
}

template <std::string ReturnedMessage::*member>
std::string_view ofReturned(const Shown& shown, std::string&) {
    return shown.message.facts.returned.*member;
}

template <auto member>
std::string_view number(const Shown& shown, std::string& scratch) {
    return scratch = std::to_string(shown.message.*member);
}

void appendWord(std::string& all, std::string_view more) {
    if (!all.empty() && !more.empty()) all += ' ';
    all += more;
}

std::string_view recipients(const Shown& shown, std::string& scratch) {
    scratch.clear();
    for (const Recipient& recipient : shown.message.recipients) {
        appendWord(scratch, recipient.address);
    }
    return scratch;
}

std::string_view feedbackType(const Shown& shown, std::string&) {
    for (const ReportField& field : shown.message.facts.report) {
        if (ascii::equalsNoCase(field.name, "Feedback-Type")) return field.value;
    }
    return {};
}

std::string_view evidence(const Shown& shown, std::string&) {
    return shown.recipient ? evidenceOf(*shown.recipient) : std::string_view();
}

using Source = Field::Source;

constexpr Field fields[] = {
    {"source", Source::verdict, 40,
     [](const Shown& s, std::string&) -> std::string_view { return s.message.place.source; }, false,
     Cut::front},
    {"index", Source::verdict, 7,
     [](const Shown& s, std::string& scratch) -> std::string_view {
         return scratch = std::to_string(s.message.place.index);
     },
     true},
    {"location", Source::verdict, 40,
     [](const Shown& s, std::string& scratch) -> std::string_view {
         return scratch = s.message.place.text();
     },
     false, Cut::front},
    {"size", Source::verdict, 9, number<&Classified::size>, true},
    {"type", Source::verdict, 4, number<&Classified::type>, true},
    {"name", Source::verdict, 12,
     [](const Shown& s, std::string&) -> std::string_view {
         return bounceTypeName(s.message.type);
     }},
    {"label", Source::verdict, 7,
     [](const Shown& s, std::string&) -> std::string_view { return s.message.label(); }},
    {"address", Source::verdict, 37, own<&Classified::address>},
    {"phrase", Source::verdict, 24,
     [](const Shown& s, std::string&) -> std::string_view { return s.message.match.phrase; }},
    {"subject", Source::header, 40, own<&Classified::subject>},
    {"from", Source::header, 30, own<&Classified::from>},
    {"date", Source::header, 31, own<&Classified::date>},
    {"message-id", Source::header, 40, own<&Classified::messageId>},
    {"about", Source::recipients, 37, about},
    {"recipient", Source::recipients, 37, ofRecipient<&Recipient::address>},
    {"final-recipient", Source::recipients, 30, ofRecipient<&Recipient::finalAddress>},
    {"tag", Source::recipients, 16, ofRecipient<&Recipient::tag>},
    {"outcome", Source::recipients, 10, nameOfRecipients<&Recipient::outcome>},
    {"reason", Source::recipients, 17, nameOfRecipients<&Recipient::reason>},
    {"advice", Source::recipients, 11, nameOfRecipients<&Recipient::advice>},
    {"status", Source::recipients, 7, ofRecipient<&Recipient::status>},
    {"reply-code", Source::recipients, 10, ofRecipient<&Recipient::replyCode>},
    {"diagnostic", Source::recipients, 40, ofRecipient<&Recipient::diagnostic>},
    {"remote-mta", Source::recipients, 24, ofRecipient<&Recipient::remoteMta>},
    {"last-attempt", Source::recipients, 31, ofRecipient<&Recipient::lastAttempt>},
    {"will-retry-until", Source::recipients, 31, ofRecipient<&Recipient::willRetryUntil>},
    {"found-in", Source::recipients, 8, nameOfRecipients<&Recipient::source>},
    {"evidence", Source::recipients, 30, evidence},
    {"recipients", Source::recipients, 40, recipients},
    {"reporting-mta", Source::facts, 24,
     [](const Shown& s, std::string&) -> std::string_view { return s.message.facts.reportingMta; }},
    {"feedback-type", Source::facts, 13, feedbackType},
    {"returned-message-id", Source::facts, 40, ofReturned<&ReturnedMessage::messageId>},
    {"returned-from", Source::facts, 30, ofReturned<&ReturnedMessage::from>},
    {"returned-to", Source::facts, 30, ofReturned<&ReturnedMessage::to>},
    {"returned-subject", Source::facts, 40, ofReturned<&ReturnedMessage::subject>},
    {"returned-date", Source::facts, 31, ofReturned<&ReturnedMessage::date>},
    {"list-id", Source::facts, 24, ofReturned<&ReturnedMessage::listId>},
    {"data", Source::data, 60, [](const Shown& s, std::string&) { return s.message.text.view(); }},
};

}  // namespace

std::span<const Field> allFields() noexcept { return fields; }

std::vector<const Field*> parseFields(std::string_view names) {
    std::vector<const Field*> chosen;
    forEachName(names, "field", fields, [&](std::string_view name) {
        const auto field = std::ranges::find(fields, name, &Field::name);
        if (field == std::end(fields)) return false;
        chosen.push_back(&*field);
        return true;
    });
    return chosen;
}

void addWanted(std::span<const Field* const> chosen, Wanted& wanted) {
    for (const Field* field : chosen) {
        wanted.header |= field->source == Source::header;
        wanted.recipients |= field->source == Source::recipients;
        wanted.facts |= field->source == Source::facts;
        wanted.data |= field->source == Source::data;
    }
}

const Recipient* mainRecipient(const Classified& message) noexcept {
    const auto& all = message.recipients;
    if (all.empty()) return nullptr;
    const auto byAddress = std::ranges::find_if(all, [&](const Recipient& recipient) {
        return !message.address.empty() &&
               (ascii::equalsNoCase(recipient.address, message.address) ||
                ascii::equalsNoCase(recipient.finalAddress, message.address));
    });
    if (byAddress != all.end()) return &*byAddress;
    const auto failed = std::ranges::find(all, Outcome::failed, &Recipient::outcome);
    return failed != all.end() ? &*failed : &all.front();
}

bool Rows::isShown(const Recipient& recipient) {
    if (!choice_.onlyAddresses) return true;
    return isAddress(recipient.address) && seen_.insert(withLowerDomain(recipient.address)).second;
}

}  // namespace bouncecheck
