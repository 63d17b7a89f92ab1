#include "recipients/ReportSource.h"

#include <utility>

#include <bouncecheck/Limits.h>
#include "mime/HeaderFields.h"
#include "mime/ReportBodies.h"
#include "reasons/Outcomes.h"
#include "recipients/ReportRecipients.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// That of the action, or of the class of the status where the action is missing or no word of
/// RFC 3464.
Outcome outcomeOf(const ReportedRecipient& reported) {
    for (const Outcome outcome : {Outcome::failed, Outcome::delayed, Outcome::delivered,
                                  Outcome::relayed, Outcome::expanded}) {
        if (reported.action == nameOf(outcome)) return outcome;
    }
    if (reported.action.starts_with("fail")) return Outcome::failed;
    if (reported.action.starts_with("delay")) return Outcome::delayed;
    if (reported.status.starts_with("5.")) return Outcome::failed;
    if (reported.status.starts_with("2.")) return Outcome::delivered;
    if (!reported.status.starts_with("4.")) return Outcome::unknown;
    return reported.willRetryUntil.empty() ? Outcome::failed : Outcome::delayed;
}

/// The address that `field`, if there is one, names to its end; else "".
std::string addressIn(const HeaderField* field) {
    return field && !field->isCut() ? reportedAddress(field->decoded()) : std::string();
}

}  // namespace

void ReportSource::read() {
    const Entity& message = reading_.message();
    const std::string_view status = bodyOf(message, ReportKind::delivery);
    const std::string_view complaint = bodyOf(message, ReportKind::complaint);
    const std::string_view receipt = bodyOf(message, ReportKind::receipt);
    const bool isReport = !status.empty() || !complaint.empty() || !receipt.empty();
    if (!isReport) return addForwarded();
    // In a letter it is what somebody passes on.
    if (!reading_.isBySystem()) return;
    if (!status.empty()) addStatus(status);
    if (!complaint.empty()) addComplaint(complaint);
    if (!receipt.empty()) addReceipt(receipt);
}

void ReportSource::addStatus(std::string_view text) {
    for (ReportedRecipient& reported : readDeliveryStatus(text, list_.budget())) {
        isFound_ = true;
        const bool hasOriginal = !reported.original.empty();
        std::string& address = hasOriginal ? reported.original : reported.final;
        Recipient* recipient = list_.add(address, RecipientSource::report);
        if (!recipient) continue;
        const Outcome outcome = outcomeOf(reported);
        // That the header names an address says no more than that it failed.
        const bool isReported = recipient->source == RecipientSource::report;
        const Outcome known = isReported ? recipient->outcome : Outcome::unknown;
        // The address is that of several, some of whom the mail reached, or may reach.
        const bool differs =
            isSuccess(known) != isSuccess(outcome) || reported.status != recipient->status;
        if (known != Outcome::unknown && differs) list_.doubt(*recipient);
        // Of the groups for one address the first that failed counts.
        const bool isNews =
            known == Outcome::unknown || (outcome == Outcome::failed && known != Outcome::failed);
        if (!isNews) continue;
        recipient->outcome = outcome;
        recipient->finalAddress.clear();
        if (hasOriginal && !ascii::equalsNoCase(recipient->address, reported.final)) {
            list_.setFinalAddress(*recipient, std::move(reported.final));
        }
        recipient->status = std::move(reported.status);
        recipient->diagnostic = std::move(reported.diagnostic);
        recipient->remoteMta = std::move(reported.remoteMta);
        recipient->lastAttempt = std::move(reported.lastAttempt);
        recipient->willRetryUntil = std::move(reported.willRetryUntil);
    }
}

void ReportSource::addComplaint(std::string_view text) {
    const HeaderFields fields = HeaderFields::ofReport(text, limits::reportFields);
    isComplaint_ = true;
    const HeaderField* type = fields.find("Feedback-Type");
    const std::string kind = type ? ascii::lowerCase(type->decoded()) : std::string();
    isWithdrawn_ = kind == "not-spam" || kind.starts_with("auth-failure");
    for (const HeaderField& field : fields.all()) {
        if (ascii::equalsNoCase(field.name, "Original-Rcpt-To") ||
            ascii::equalsNoCase(field.name, "Removal-Recipient")) {
            addComplainer(addressIn(&field), RecipientSource::report);
        }
    }
    if (list_.isEmpty()) {
        const std::string recipient = reading_.attached().soleRecipient();
        const Bystanders& others = reading_.bystanders();
        if (others.isOfSender(recipient) || others.isSystemOrList(recipient)) return;
        addComplainer(recipient, RecipientSource::returned);
    }
}

/// A complaint that has no report beside the message: the provider's server notes there for whom
/// it was. Nothing marks its sender, the provider's staff, as a system.
void ReportSource::addForwarded() {
    constexpr std::string_view subject = "complaint about message from ";
    if (!ascii::startsWithNoCase(ascii::trim(reading_.message().field("Subject")), subject)) return;
    const HeaderField* field = reading_.attached().header().find("X-HmXmrOriginalRecipient");
    if (!field) return;
    isComplaint_ = true;
    addComplainer(addressIn(field), RecipientSource::returned);
}

void ReportSource::addComplainer(const std::string& address, RecipientSource source) {
    Recipient* recipient = list_.add(address, source);
    if (recipient) recipient->outcome = isWithdrawn_ ? Outcome::unknown : Outcome::complained;
}

void ReportSource::addReceipt(std::string_view text) {
    const HeaderFields fields = HeaderFields::ofReport(text, limits::reportFields);
    const std::string original = addressIn(fields.find("Original-Recipient"));
    std::string final = addressIn(fields.find("Final-Recipient"));
    isFound_ = true;
    Recipient* recipient = list_.add(original.empty() ? final : original, RecipientSource::report);
    if (!recipient) return;
    recipient->outcome = Outcome::displayed;
    if (!ascii::equalsNoCase(recipient->address, final)) {
        recipient->finalAddress = std::move(final);
    }
}

}  // namespace bouncecheck
