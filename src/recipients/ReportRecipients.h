#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mime/TextBudget.h"

namespace bouncecheck {

/// What a delivery status says of one recipient (RFC 3464, section 2.3).
struct ReportedRecipient {
    /// Addresses without their type ("rfc822;", "utf-8;") and angle brackets, international and
    /// xtext forms decoded (RFC 6533, section 3; RFC 3461, section 4); "" where the field holds
    /// none.
    std::string original;
    std::string final;
    /// In lower case, without comments: "failed", "delayed", "delivered", ...
    std::string action;
    /// The code without comments: "5.1.1".
    std::string status;
    /// Without its type: "550 no such user".
    std::string diagnostic;
    /// The name without its type.
    std::string remoteMta;
    std::string lastAttempt;
    std::string willRetryUntil;
};

/// The recipients of a delivery status, `text`, in CRLF.
///
/// Groups of recipients are divided as servers write them: by blank lines, or by the next
/// Final-Recipient where those are missing; a field that a blank line has cut off belongs to
/// the recipient before it. Of a field given twice in a group the first counts. Linear in the
/// size of the text; what `budget` has no room for, and what is beyond `limits::recipients`,
/// reads as absent.
std::vector<ReportedRecipient> readDeliveryStatus(std::string_view text, TextBudget& budget);

/// The address that a field such as Final-Recipient holds, as above.
std::string reportedAddress(std::string_view value);

/// `value` without the type before its first ';' (RFC 3464, section 2.1.2).
std::string_view withoutType(std::string_view value);

}  // namespace bouncecheck
