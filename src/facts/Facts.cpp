#include "facts/Facts.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "mime/Email2.h"
#include "mime/HeaderFields.h"
#include "mime/Limits.h"
#include "mime/LineEnds.h"
#include "mime/Mailbox.h"
#include "text/Ascii.h"
#include "text/DataBuffer.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

using Types = std::initializer_list<std::string_view>;

/// The first part in document order of one of `types`, or null.
const Email2* firstOf(const Email2& entity, Types types) {
    for (const std::string_view type : types) {
        if (entity.contentType() == type) return &entity;
    }
    for (int i = 0; i < entity.getNumParts(); ++i) {
        if (const Email2* found = firstOf(*entity.getPart(i), types)) return found;
    }
    return nullptr;
}

std::string_view bodyOf(const Email2* part) {
    const DataBuffer* body = part ? part->getNonMultipartBody3() : nullptr;
    return body ? body->view() : std::string_view();
}

std::string_view firstWord(std::string_view text) {
    return text.substr(0, text.find_first_of(" \t("));
}

/// `value` without the type before its first ';' (RFC 3464, section 2.1.2).
std::string_view withoutType(std::string_view value) {
    const std::size_t end = value.find(';');
    const std::string_view type = ascii::trim(value.substr(0, end));
    // A ';' behind an '@' or a blank belongs to a value without a type.
    if (end == npos || type.find_first_of("@ \t<\"") != npos) return value;
    return ascii::trim(value.substr(end + 1));
}

std::string_view withoutBrackets(std::string_view address) {
    const bool inBrackets = address.starts_with('<') && address.ends_with('>');
    return inBrackets ? ascii::trim(address.substr(1, address.size() - 2)) : address;
}

std::string addressIn(std::string_view value) {
    return std::string(withoutBrackets(withoutType(value)));
}
std::string nameIn(std::string_view value) { return std::string(withoutType(value)); }
std::string actionIn(std::string_view value) { return ascii::lowerCase(firstWord(value)); }
std::string codeIn(std::string_view value) { return std::string(firstWord(value)); }
std::string wholeOf(std::string_view value) { return std::string(value); }

struct RecipientField {
    std::string_view name;
    std::string RecipientFacts::*member;
    std::string (*read)(std::string_view);
};

constexpr std::array<RecipientField, 6> recipientFields = {{
    {"Original-Recipient", &RecipientFacts::originalRecipient, addressIn},
    {"Final-Recipient", &RecipientFacts::finalRecipient, addressIn},
    {"Action", &RecipientFacts::action, actionIn},
    {"Status", &RecipientFacts::status, codeIn},
    {"Diagnostic-Code", &RecipientFacts::diagnosticCode, wholeOf},
    {"Remote-MTA", &RecipientFacts::remoteMta, nameIn},
}};

const RecipientField* recipientField(std::string_view name) {
    for (const RecipientField& field : recipientFields) {
        if (ascii::equalsNoCase(field.name, name)) return &field;
    }
    return nullptr;
}

/// Collects the recipients of a delivery status, group by group.
class RecipientReader {
public:
    explicit RecipientReader(Facts& facts) : facts_(facts) {}

    /// Reads the fields between two blank lines; false when no more are kept.
    bool readGroup(std::string_view text) {
        inGroup_ = false;
        const HeaderFields fields = HeaderFields::ofReport(text);
        for (const HeaderField& field : fields.all()) {
            if (facts_.reportingMta.empty() && ascii::equalsNoCase(field.name, "Reporting-MTA")) {
                facts_.reportingMta = nameIn(field.decoded());
            } else if (const RecipientField* known = recipientField(field.name)) {
                if (!take(*known, field)) return false;
            }
        }
        return true;
    }

private:
    bool take(const RecipientField& known, const HeaderField& field) {
        const bool namesRecipient = known.member == &RecipientFacts::originalRecipient ||
                                    known.member == &RecipientFacts::finalRecipient;
        const auto isGiven = [&](auto member) { return !(recipient().*member).empty(); };
        const bool hasRecipient =
            !facts_.recipients.empty() && (isGiven(&RecipientFacts::originalRecipient) ||
                                           isGiven(&RecipientFacts::finalRecipient));
        const bool isNext = facts_.recipients.empty() || (namesRecipient && hasRecipient &&
                                                          (!inGroup_ || isGiven(known.member)));
        if (isNext) {
            if (facts_.recipients.size() >= limits::recipients) return false;
            facts_.recipients.emplace_back();
        }
        inGroup_ = true;
        if (!isGiven(known.member)) recipient().*known.member = known.read(field.decoded());
        return true;
    }

    RecipientFacts& recipient() { return facts_.recipients.back(); }

    Facts& facts_;
    /// Whether the last recipient has fields of the group that is being read.
    bool inGroup_ = false;
};

void readDeliveryStatus(std::string_view text, Facts& facts) {
    constexpr std::string_view blankLine = "\r\n\r\n";
    RecipientReader reader(facts);
    while (!text.empty()) {
        const std::size_t end = findBytes(text, blankLine);
        const std::size_t length = end == npos ? text.size() : end + crLf.size();
        if (!reader.readGroup(text.substr(0, length))) return;
        text.remove_prefix(length);
        while (text.starts_with(crLf)) text.remove_prefix(crLf.size());
    }
}

std::vector<ReportField> reportFieldsIn(std::string_view text) {
    std::vector<ReportField> fields;
    const HeaderFields read = HeaderFields::ofReport(text);
    const auto all = read.all();
    for (const HeaderField& field : all.first(std::min(all.size(), limits::reportFields))) {
        fields.push_back({std::string(field.name), field.decoded()});
    }
    return fields;
}

std::vector<std::string> failedRecipientsIn(const HeaderFields& header) {
    std::vector<std::string> addresses;
    for (const HeaderField& field : header.all()) {
        if (!ascii::equalsNoCase(field.name, "X-Failed-Recipients")) continue;
        const std::size_t left = limits::recipients - addresses.size();
        for (Mailbox& mailbox : parseMailboxes(field.unfolded(), left)) {
            if (!mailbox.address.empty()) addresses.push_back(std::move(mailbox.address));
        }
    }
    return addresses;
}

ReturnedMessage returnedIn(std::string_view text) {
    const HeaderFields header = HeaderFields::ofMessage(text.substr(HeaderFields::startIn(text)));
    const auto read = [&](std::string_view name) {
        const HeaderField* field = header.find(name);
        return field ? field->decoded() : std::string();
    };
    return {.messageId = read("Message-ID"),
            .to = read("To"),
            .subject = read("Subject"),
            .date = read("Date"),
            .listId = read("List-Id")};
}

}  // namespace

Facts factsOf(const Email2& email) {
    Facts facts;
    facts.failedRecipients = failedRecipientsIn(email.header());
    readDeliveryStatus(
        bodyOf(firstOf(email, {"message/delivery-status", "message/global-delivery-status"})),
        facts);
    facts.report = reportFieldsIn(
        bodyOf(firstOf(email, {"message/feedback-report", "message/disposition-notification",
                               "message/global-disposition-notification"})));
    facts.returned =
        returnedIn(bodyOf(firstOf(email, {"message/rfc822", "message/global", "message/news",
                                          "text/rfc822-headers", "message/global-headers"})));
    return facts;
}

}  // namespace bouncecheck
