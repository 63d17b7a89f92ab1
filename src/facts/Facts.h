#pragma once

#include <string>
#include <vector>

namespace bouncecheck {

class Email2;

/// What a delivery report says of one recipient (RFC 3464, section 2.3).
struct RecipientFacts {
    /// Addresses without their type ("rfc822;", "utf-8;") and angle brackets;
    /// xtext and UTF-8 forms stay as they are.
    std::string originalRecipient;
    std::string finalRecipient;
    /// In lower case, without comments: "failed", "delayed", "delivered", ...
    std::string action;
    /// The code without comments: "5.1.1".
    std::string status;
    /// With its type: "smtp; 550 no such user".
    std::string diagnosticCode;
    /// The name without its type.
    std::string remoteMta;

    bool operator==(const RecipientFacts&) const = default;
};

/// A field of a report, its name as written.
struct ReportField {
    std::string name;
    std::string value;

    bool operator==(const ReportField&) const = default;
};

/// What identifies the message that came back: fields of its header, decoded.
struct ReturnedMessage {
    std::string messageId;
    std::string to;
    std::string subject;
    std::string date;
    std::string listId;

    bool operator==(const ReturnedMessage&) const = default;
};

/// What a message states about a delivery in standard fields. What it does not
/// state is empty. All texts are UTF-8.
struct Facts {
    /// The recipients of the delivery status, in order.
    std::vector<RecipientFacts> recipients;
    /// The addresses of X-Failed-Recipients.
    std::vector<std::string> failedRecipients;
    /// Without its type: the name in "dns; mx.example.org".
    std::string reportingMta;
    /// All fields of a complaint (RFC 5965) or a receipt (RFC 8098).
    std::vector<ReportField> report;
    ReturnedMessage returned;
};

/// Reads the facts of `email`: of its header, of its first delivery status, of its
/// first complaint or receipt, and of the first message or header attached to it.
///
/// Groups of recipients are told apart as servers write them: by blank lines, or
/// by the next Final-Recipient where those are missing; a field that a blank line
/// has cut off belongs to the recipient before it. Of a field given twice in a
/// group the first counts. Linear in the size of the message; see
/// mime/Limits.h for how many recipients and fields are kept.
Facts factsOf(const Email2& email);

}  // namespace bouncecheck
