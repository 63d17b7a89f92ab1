#pragma once

#include <bouncecheck/Advice.h>
#include <bouncecheck/Export.h>
#include <bouncecheck/Outcome.h>
#include <bouncecheck/Reason.h>
#include <bouncecheck/VerpPattern.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck {

class Message;

/// Where a message names a recipient, the surest first.
enum class RecipientSource {
    /// The address that the mail came back to was made for one recipient (VERP).
    verp,
    /// A delivery status, a complaint or a receipt.
    report,
    /// A field of the header, such as X-Failed-Recipients.
    header,
    /// The text that people read.
    text,
    /// The header of the message that came back.
    returned,
};

/// The name in results: "report".
constexpr std::string_view nameOf(RecipientSource source) noexcept {
    switch (source) {
        case RecipientSource::verp: return "verp";
        case RecipientSource::report: return "report";
        case RecipientSource::header: return "header";
        case RecipientSource::text: return "text";
        case RecipientSource::returned: break;
    }
    return "returned";
}

/// Somebody whom a message says something about: whether the mail reached them, why not, and
/// what to do. All texts are UTF-8; what the message does not say is empty. Sections are those of
/// RFC 3464.
struct Recipient {
    /// The address that the sender of the original mail knows (section 2.3.1); "" when
    /// only a tag is known.
    std::string address{};
    /// The address that the mail was sent on to, where a report names another (section 2.3.2).
    std::string finalAddress{};
    /// What a VERP address carries for the caller's own records.
    std::string tag{};
    Outcome outcome = Outcome::unknown;
    Reason reason = Reason::none;
    Advice advice = Advice::none;
    /// The enhanced status code (RFC 3463): "5.1.1".
    std::string status{};
    /// The reply code of SMTP (RFC 5321): "550".
    std::string replyCode{};
    /// What the mail system said, without its type (section 2.3.6). Of a notice in free text, the
    /// lines about the recipient, or, where these have no code, those that gave the reason.
    std::string diagnostic{};
    /// The host that said it, without its type (section 2.3.5).
    std::string remoteMta{};
    /// Dates as the report writes them (sections 2.3.7 and 2.3.9).
    std::string lastAttempt{};
    std::string willRetryUntil{};

    // --- Evidence ----------------------------------------------------------

    RecipientSource source = RecipientSource::returned;
    /// What gave the reason.
    ReasonBasis basis = ReasonBasis::none;
    /// The phrase or code that matched: a row of a table, in static storage.
    std::string_view row{};
    /// The words of the message that matched the row; "" for a code.
    std::string quote{};

    bool operator==(const Recipient&) const = default;
};

/// Everybody whom `message` says something about: each once, in the order of the message, with
/// the best of what its parts say of them.
///
/// Its sources, the surest first: an address made for one recipient, if `verp` has the form of
/// it; the delivery status, complaint or receipt; header fields that name failed recipients; the
/// text that people read; and the message that came back, where it has one recipient and nobody
/// else is named. Of other mail only a request to be removed names somebody: its author.
///
/// Any bytes do. Linear in the size of the message; `limits::recipients` at most, of
/// `limits::facts` bytes in all: what is beyond reads as absent, never as part of a value.
BOUNCECHECK_EXPORT std::vector<Recipient> recipientsOf(const Message& message,
                                                       std::span<const VerpPattern> verp = {});

}  // namespace bouncecheck
