#pragma once

#include <string>
#include <vector>

#include <bouncecheck/Export.h>

namespace bouncecheck {

class Message;

/// A field of a report, its name as written.
struct ReportField {
    std::string name;
    /// Unfolded, with encoded words (RFC 2047) decoded; "" when it is longer than
    /// `limits::fieldValue`.
    std::string value;

    bool operator==(const ReportField&) const = default;
};

/// What identifies the message that came back: fields of its header, decoded.
struct ReturnedMessage {
    std::string messageId;
    std::string from;
    std::string to;
    std::string subject;
    std::string date;
    std::string listId;
    /// The address that the message was to come back to.
    std::string returnPath;

    bool operator==(const ReturnedMessage&) const = default;
};

/// What a message states about a delivery in standard fields. What it does not
/// state is empty. All texts are UTF-8.
struct Facts {
    /// Without its type: the name in "dns; mx.example.org".
    std::string reportingMta;
    /// All fields of a complaint (RFC 5965) or a receipt (RFC 8098).
    std::vector<ReportField> report;
    ReturnedMessage returned;

    bool operator==(const Facts&) const = default;
};

/// Reads the facts of `message`: of its first delivery status, of its first complaint or receipt,
/// and of the header of the message that came back, attached or in the text. Linear in the size
/// of the message. See Limits.h for how many fields are stored, and how many bytes in all: what is
/// beyond reads as absent, never as part of a value.
BOUNCECHECK_EXPORT Facts factsOf(const Message& message);

}  // namespace bouncecheck
