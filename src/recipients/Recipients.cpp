#include "recipients/Recipients.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "mime/ReportBodies.h"
#include "mime/TextBudget.h"
#include "recipients/AddressSpans.h"
#include "recipients/AdviceFor.h"
#include "recipients/Bystanders.h"
#include "recipients/Notice.h"
#include "recipients/Origin.h"
#include "recipients/ReplyCodes.h"
#include "recipients/ReportRecipients.h"
#include "recipients/ReturnedMail.h"
#include "recipients/TextRecipients.h"
#include "recipients/Verp.h"
#include "recipients/tables/Origins.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// A bounce may carry another bounce; one that carries more of them is made up.
constexpr int mostBouncesInside = 1;

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

/// Whether an outcome has a reason.
bool isTrouble(Outcome outcome) {
    return outcome == Outcome::failed || outcome == Outcome::delayed || outcome == Outcome::unknown;
}

/// Collects the recipients of one message.
class Collector {
public:
    Collector(const Entity& message, std::span<const VerpPattern> verp, int depth)
        : message_(message), verp_(verp), depth_(depth) {}

    std::vector<Recipient> collect() {
        readReport();
        readHeader();
        if (needsText()) readText();
        if (all_.empty()) readSubject();
        if (all_.empty()) readReturned();
        readVerp();
        for (std::size_t i = 0; i < all_.size(); ++i) findReason(i);
        return std::move(all_);
    }

private:
    // --- Sources ---------------------------------------------------------------

    void readReport() {
        const std::string_view status = bodyOf(message_, ReportKind::delivery);
        // In a letter it is what somebody passes on.
        if (!status.empty() && isBySystem()) addStatus(status);
        const std::string_view complaint = bodyOf(message_, ReportKind::complaint);
        if (!complaint.empty()) addComplaint(complaint);
        const std::string_view receipt = bodyOf(message_, ReportKind::receipt);
        if (!receipt.empty()) addReceipt(receipt);
    }

    void addStatus(std::string_view text) {
        for (ReportedRecipient& reported : readDeliveryStatus(text, budget_)) {
            isReport_ = true;
            const bool hasOriginal = !reported.original.empty();
            std::string& address = hasOriginal ? reported.original : reported.final;
            Recipient* recipient = add(address, RecipientSource::report);
            if (!recipient) continue;
            if (hasOriginal && !ascii::equalsNoCase(address, reported.final)) {
                recipient->finalAddress = std::move(reported.final);
                finals_.try_emplace(ascii::lowerCase(recipient->finalAddress),
                                    static_cast<std::size_t>(recipient - all_.data()));
            }
            const Outcome outcome = outcomeOf(reported);
            // Of two groups for one address the one that failed counts.
            const bool isNews =
                recipient->outcome == Outcome::unknown || outcome == Outcome::failed;
            if (!isNews) continue;
            recipient->outcome = outcome;
            recipient->status = std::move(reported.status);
            recipient->diagnostic = std::move(reported.diagnostic);
            recipient->remoteMta = std::move(reported.remoteMta);
            recipient->lastAttempt = std::move(reported.lastAttempt);
            recipient->willRetryUntil = std::move(reported.willRetryUntil);
        }
    }

    void addComplaint(std::string_view text) {
        const HeaderFields fields = HeaderFields::ofReport(text, limits::reportFields);
        isComplaint_ = true;
        const HeaderField* type = fields.find("Feedback-Type");
        const std::string kind = type ? ascii::lowerCase(type->decoded()) : std::string();
        // A message that is no spam, or failed authentication, is no complaint of the recipient.
        isWithdrawn_ = kind == "not-spam" || kind.starts_with("auth-failure");
        for (const HeaderField& field : fields.all()) {
            if (ascii::equalsNoCase(field.name, "Original-Rcpt-To") ||
                ascii::equalsNoCase(field.name, "Removal-Recipient")) {
                addComplainer(field.isCut() ? std::string() : reportedAddress(field.decoded()),
                              RecipientSource::report);
            }
        }
        if (!all_.empty()) return;
        const ReturnedMail returned = attachedMail(message_);
        if (!returned.soleRecipient.empty()) {
            addComplainer(returned.soleRecipient, RecipientSource::returned);
        }
    }

    void addComplainer(const std::string& address, RecipientSource source) {
        Recipient* recipient = add(address, source);
        if (recipient) recipient->outcome = isWithdrawn_ ? Outcome::unknown : Outcome::complained;
    }

    void addReceipt(std::string_view text) {
        const HeaderFields fields = HeaderFields::ofReport(text, limits::reportFields);
        const auto addressOf = [&](std::string_view name) {
            const HeaderField* field = fields.find(name);
            return field && !field->isCut() ? reportedAddress(field->decoded()) : std::string();
        };
        std::string original = addressOf("Original-Recipient");
        std::string final = addressOf("Final-Recipient");
        isReport_ = true;
        Recipient* recipient = add(original.empty() ? final : original, RecipientSource::report);
        if (!recipient) return;
        recipient->outcome = Outcome::displayed;
        if (!ascii::equalsNoCase(recipient->address, final)) {
            recipient->finalAddress = std::move(final);
        }
    }

    void readHeader() {
        for (const HeaderField& field : message_.header().all()) {
            const bool namesFailed = std::ranges::any_of(
                failedRecipientFields,
                [&](std::string_view name) { return ascii::equalsNoCase(field.name, name); });
            if (!namesFailed) continue;
            std::vector<Mailbox> mailboxes =
                parseMailboxes(field.unfolded(), limits::recipients + 1);
            // The end of what is read of a field may cut an address.
            if (field.isCut() && !mailboxes.empty()) mailboxes.pop_back();
            for (const Mailbox& mailbox : mailboxes) {
                Recipient* recipient = add(mailbox.address, RecipientSource::header);
                if (!recipient) continue;
                if (recipient->outcome == Outcome::unknown) recipient->outcome = Outcome::failed;
            }
        }
    }

    /// Whether the text may add to what is known.
    bool needsText() {
        if (isComplaint_) return false;
        bool needs = all_.empty();
        for (const Recipient& recipient : all_) {
            const ReasonFinding& finding = findings_.emplace_back(reasonOf(replyOf(recipient)));
            needs = needs || (isTrouble(recipient.outcome) && !isExplained(finding));
        }
        return needs;
    }
    static bool isExplained(const ReasonFinding& finding) {
        return finding.basis == ReasonBasis::phrase || finding.isSure;
    }

    void readText() {
        notice_.emplace(message_);
        Bystanders others(message_);
        returned_ = returnedMailOf(message_, *notice_);
        others.addReturned(returned_.header);
        if (!isReport_ && isNotice()) readReportInText();
        const bool isKnown = !all_.empty();
        if (!isKnown && !(isNotice() && isAboutTrouble())) return;
        const Outcome outcome = outcomeOfText();
        std::vector<TextRecipient> all = recipientsNamedIn(*notice_, others);
        for (TextRecipient& named : all) {
            Recipient* recipient =
                isKnown ? find(named, all.size() == 1) : add(named.address, RecipientSource::text);
            if (!recipient) continue;
            if (recipient->finalAddress.empty()) {
                recipient->finalAddress = std::move(named.finalAddress);
            }
            if (recipient->outcome == Outcome::unknown) recipient->outcome = outcome;
            if (recipient->source == RecipientSource::text && saysDelivered(named.said)) {
                recipient->outcome = Outcome::delivered;
            } else if (recipient->source != RecipientSource::report &&
                       outcome == Outcome::delayed) {
                // A notice of delays may report a failure, too.
                const bool isFailure = saysPermanent(named.said);
                recipient->outcome = isFailure ? Outcome::failed : Outcome::delayed;
            }
            if (recipient->diagnostic.empty()) {
                recipient->diagnostic = budget_.keep(ascii::trim(named.said));
            } else {
                said_.emplace(recipient->address, std::move(named.said));
            }
        }
    }

    static bool saysPermanent(std::string_view said) {
        const ReplyCodes codes = codesIn(said);
        return codes.reply.starts_with('5') || codes.status.starts_with('5');
    }
    /// Whether the only reply in `said` is that of a success, and no words are about a failure.
    static bool saysDelivered(std::string_view said) {
        return codesIn(said).status.starts_with('2') &&
               reasonOf({.text = said}).basis == ReasonBasis::none;
    }

    /// The fields of a delivery status that stand in the text.
    void readReportInText() {
        const std::string_view text = notice_->text();
        const std::size_t begin = std::min(findBytesNoCase(text, "\nFinal-Recipient:"),
                                           findBytesNoCase(text, "\nOriginal-Recipient:"));
        if (begin == npos) return;
        const std::size_t paragraph = text.substr(0, begin).rfind("\r\n\r\n");
        addStatus(text.substr(paragraph == npos ? 0 : paragraph));
    }

    /// "Delivery failure (user@example.net)"
    void readSubject() {
        if (!notice_ || !isNotice() || !saysTrouble(message_.field("Subject"))) return;
        const Bystanders others(message_);
        const std::string subject = message_.field("Subject");
        const std::vector<AddressSpan> spans = findAddresses(subject);
        if (spans.size() != 1) return;
        const std::string_view address = spans.front().in(subject);
        if (others.isAddressee(address) || others.isOther(address)) return;
        Recipient* recipient = add(address, RecipientSource::header);
        if (recipient) recipient->outcome = outcomeOfText();
    }

    Outcome outcomeOfText() const {
        return notice_->cues().has(Cue::delay) ? Outcome::delayed : Outcome::failed;
    }

    void readReturned() {
        if (!notice_ || !isNotice() || !(isAboutTrouble() || returned_.isNotice)) return;
        if (depth_ < mostBouncesInside && returned_.isNotice) {
            const Entity inner(returned_.text);
            all_ = Collector(inner, {}, depth_ + 1).collect();
            if (!all_.empty()) return;
        }
        Recipient* recipient = add(returned_.soleRecipient, RecipientSource::returned);
        if (!recipient) return;
        recipient->outcome = outcomeOfText();
    }

    void readVerp() {
        if (verp_.empty()) return;
        if (!notice_) returned_ = attachedMail(message_);
        const HeaderField* path = returned_.header.find("Return-Path");
        const std::optional<VerpPattern::Match> match =
            matchVerp(message_, path ? path->unfolded() : std::string(), verp_);
        if (!match) return;
        if (all_.empty()) {
            if (!isBySystem()) return;
            Recipient& unnamed = all_.emplace_back();
            if (notice_ && isAboutTrouble()) unnamed.outcome = outcomeOfText();
        }
        if (match->address.empty()) {
            for (Recipient& recipient : all_) recipient.tag = match->tag;
            all_.front().source = RecipientSource::verp;
            return;
        }
        // The mail was for one recipient: another address is where it was sent on to.
        const auto own = std::ranges::find_if(all_, [&](const Recipient& recipient) {
            return ascii::equalsNoCase(recipient.address, match->address) ||
                   ascii::equalsNoCase(recipient.finalAddress, match->address);
        });
        const auto failed = std::ranges::find(all_, Outcome::failed, &Recipient::outcome);
        Recipient& best = failed == all_.end() ? all_.front() : *failed;
        Recipient recipient = std::move(own == all_.end() ? best : *own);
        if (!ascii::equalsNoCase(recipient.address, match->address)) {
            if (recipient.finalAddress.empty()) recipient.finalAddress = recipient.address;
            recipient.address = match->address;
        }
        recipient.source = RecipientSource::verp;
        all_.clear();
        all_.push_back(std::move(recipient));
        findings_.clear();
    }

    // --- What the message is ---------------------------------------------------

    bool isBySystem() {
        if (!isBySystem_) isBySystem_ = isWrittenBySystem(message_);
        return *isBySystem_;
    }

    /// Whether the message is about a delivery: a system wrote it, or its text holds the reply
    /// of one.
    bool isNotice() {
        return isBySystem() ||
               (codesIn(notice_->text()).reply.starts_with('5') && !isDiscussion(message_));
    }

    /// Whether the words of the message say that something was not delivered, or why.
    bool isAboutTrouble() {
        return notice_->cues().haveTrouble() || saysTrouble(message_.field("Subject")) ||
               reasonOfNotice().basis != ReasonBasis::none;
    }

    // --- The recipients --------------------------------------------------------

    /// The recipient with that address, added where there was none; null where it is no
    /// address, or where there is no room for another.
    Recipient* add(std::string_view address, RecipientSource source) {
        if (address.empty() || std::ranges::any_of(address, ascii::isControl)) return nullptr;
        const auto [place, isNew] = places_.try_emplace(ascii::lowerCase(address), all_.size());
        if (!isNew) return &all_[place->second];
        if (all_.size() >= limits::recipients || !budget_.spend(address.size())) {
            places_.erase(place);
            return nullptr;
        }
        all_.emplace_back();
        all_.back().address = address;
        all_.back().source = source;
        return &all_.back();
    }

    /// The known recipient whom the text names; the only one by any address, where the text
    /// names nobody else.
    Recipient* find(const TextRecipient& named, bool isOnly) {
        for (const std::string& address : {named.address, named.finalAddress}) {
            const auto place = places_.find(ascii::lowerCase(address));
            if (place != places_.end()) return &all_[place->second];
        }
        const auto byFinal = finals_.find(ascii::lowerCase(named.address));
        if (byFinal != finals_.end()) return &all_[byFinal->second];
        return isOnly && all_.size() == 1 ? &all_.front() : nullptr;
    }

    // --- Reasons ---------------------------------------------------------------

    static Reply replyOf(const Recipient& recipient) {
        return {.outcome = recipient.outcome,
                .status = recipient.status,
                .replyCode = recipient.replyCode,
                .text = recipient.diagnostic};
    }

    /// What the notice gives as a reason, looked for once for all recipients.
    const ReasonFinding& reasonOfNotice() {
        if (!noticeFinding_) noticeFinding_ = reasonOf({}, notice_->text());
        return *noticeFinding_;
    }

    void findReason(std::size_t index) {
        Recipient& recipient = all_[index];
        // An inner notice has found its own; what is no spam has none.
        if (recipient.reason != Reason::none || isWithdrawn_) return;
        const ReplyCodes codes = codesIn(recipient.diagnostic);
        if (recipient.replyCode.empty()) recipient.replyCode = codes.reply;
        if (recipient.status.empty()) recipient.status = codes.status;
        std::string_view weaker;
        const auto said = said_.find(recipient.address);
        if (said != said_.end()) {
            weaker = said->second;
        } else if (notice_ && all_.size() == 1) {
            weaker = notice_->text();
        }
        const bool isKnown = index < findings_.size() && isExplained(findings_[index]);
        ReasonFinding finding = isKnown ? findings_[index] : reasonOf(replyOf(recipient), weaker);
        const bool isSilent = finding.basis == ReasonBasis::none && recipient.diagnostic.empty();
        if (isSilent && notice_ && isTrouble(recipient.outcome)) {
            weaker = notice_->text();
            const bool isTransient = finding.isTransient;
            finding = reasonOfNotice();
            finding.isTransient = finding.isTransient || isTransient;
            // It may be said of another one.
            finding.isSure = finding.isSure && all_.size() == 1;
        }
        // People write such words about other things, too.
        finding.isSure = finding.isSure && isBySystem();
        recipient.reason = finding.reason;
        recipient.basis = finding.basis;
        recipient.row = finding.row;
        const std::string_view from = finding.inNotice ? weaker : recipient.diagnostic;
        if (finding.length > 0) {
            recipient.quote = budget_.keep(from.substr(finding.at, finding.length));
        }
        recipient.advice = adviceFor(recipient.outcome, finding);
    }

    const Entity& message_;
    std::span<const VerpPattern> verp_;
    int depth_;
    TextBudget budget_;
    std::vector<Recipient> all_;
    /// What the reports alone say of the first of them.
    std::vector<ReasonFinding> findings_;
    /// By address in lower case.
    std::unordered_map<std::string, std::size_t> places_;
    /// By final address, likewise.
    std::unordered_map<std::string, std::size_t> finals_;
    /// What the text says of recipients whose diagnostic the report gives.
    std::unordered_map<std::string, std::string> said_;
    std::optional<Notice> notice_;
    std::optional<ReasonFinding> noticeFinding_;
    ReturnedMail returned_;
    std::optional<bool> isBySystem_;
    bool isReport_ = false;
    bool isComplaint_ = false;
    bool isWithdrawn_ = false;
};

}  // namespace

std::vector<Recipient> recipientsOf(const Entity& message, std::span<const VerpPattern> verp) {
    return Collector(message, verp, 0).collect();
}

}  // namespace bouncecheck
