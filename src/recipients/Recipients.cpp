#include "recipients/Recipients.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <bouncecheck/Limits.h>
#include "mime/AddressSpans.h"
#include "mime/Entity.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "reasons/ReplyCodes.h"
#include "recipients/Bystanders.h"
#include "recipients/LinesAround.h"
#include "recipients/MessageReading.h"
#include "recipients/Origin.h"
#include "recipients/RecipientList.h"
#include "recipients/RecipientReasons.h"
#include "recipients/RemovalRequest.h"
#include "recipients/ReportSource.h"
#include "recipients/TextRecipients.h"
#include "recipients/Verp.h"
#include "recipients/tables/Origins.h"
#include "text/Ascii.h"
#include "text/Lines.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// A bounce may carry another bounce; one that carries more of them is made up.
constexpr int mostBouncesInside = 1;

bool saysPermanent(std::string_view said) {
    const ReplyCodes codes = codesIn(said);
    return codes.reply.starts_with('5') || codes.status.starts_with('5');
}

bool quotesFailure(std::string_view notice) {
    // Any number may look like the code of a reply.
    const std::string_view status = codesIn(notice).status;
    return status.starts_with('4') || status.starts_with('5');
}

/// Whether the only reply in `said` is that of a success, and no words are about a failure.
bool saysDelivered(std::string_view said) {
    return codesIn(said).status.starts_with('2') &&
           reasonOf({.text = said}).basis == ReasonBasis::none;
}

/// Whether a text that names addresses names that of `recipient`.
bool mayBeOf(const Recipient& recipient, std::string_view text) {
    const std::vector<AddressSpan> spans = findAddresses(text);
    return spans.empty() || std::ranges::any_of(spans, [&](const AddressSpan& span) {
               const std::string_view address = span.in(text);
               return ascii::equalsNoCase(address, recipient.address) ||
                      ascii::equalsNoCase(address, recipient.finalAddress);
           });
}

/// Whether `reply`, a paragraph of `notice`, can be nothing but that to the only recipient: it
/// looks like one, nobody else stands in it or in the line in front, and there is no other status.
bool isReplyTo(const Recipient& recipient, std::string_view notice, std::string_view reply) {
    const std::string_view status = codesIn(reply).status;
    if (status.empty() && !explains(reply)) return false;
    const std::string_view own = status.empty() ? reply : status;
    const auto begin = static_cast<std::size_t>(own.data() - notice.data());
    const auto isOther = [&](std::string_view text) {
        const std::string_view other = codesIn(text).status;
        return !other.empty() && other != status;
    };
    if (isOther(notice.substr(0, begin))) return false;
    if (isOther(notice.substr(begin + own.size()))) return false;
    const auto at = static_cast<std::size_t>(reply.data() - notice.data());
    const std::string_view front = ascii::trimRight(notice.substr(0, at));
    return mayBeOf(recipient, reply) && mayBeOf(recipient, lineAt(front, front.size()));
}

/// Collects the recipients of one message from its sources, the surest first.
class Collector {
public:
    Collector(const MessageReading& reading, std::span<const VerpPattern> verp, int depth)
        : reading_(reading), message_(reading.message()), verp_(verp), depth_(depth) {}

    std::vector<Recipient> collect() {
        report_.read();
        readHeader();
        if (needsText()) readText();
        if (list_.isEmpty()) readSubject();
        if (list_.isEmpty()) readReturned();
        if (list_.isEmpty()) readRemovalRequest();
        readVerp();
        // What is no complaint has no reason.
        if (!report_.isWithdrawn()) reasons_.fill(isTextRead_ ? &reading_.notice() : nullptr);
        return std::move(list_.all());
    }

private:
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
                // "root (Cron Daemon)"
                if (mailbox.address.find('@') == npos) continue;
                Recipient* recipient = list_.add(mailbox.address, RecipientSource::header);
                if (!recipient) continue;
                if (recipient->outcome == Outcome::unknown) recipient->outcome = Outcome::failed;
            }
        }
    }

    /// Whether the text may add to what is known.
    bool needsText() {
        if (report_.isComplaint()) return false;
        return !reasons_.explainReported() || list_.isEmpty();
    }

    void readText() {
        isTextRead_ = true;
        if (!report_.isFound() && reading_.isNotice()) readReportInText();
        const bool isKnown = !list_.isEmpty();
        if (!isKnown && !(reading_.isNotice() && isAboutTrouble())) return;
        const Outcome outcome = outcomeOfText();
        std::vector<TextRecipient> all =
            recipientsNamedIn(reading_.notice(), reading_.bystanders());
        for (TextRecipient& named : all) {
            Recipient* recipient = isKnown ? list_.find(named, all.size() == 1)
                                           : list_.add(named.address, RecipientSource::text);
            if (!recipient) continue;
            // It may be whom to ask, or who wrote the notice; or one of several failed.
            if (!isKnown && (named.isLone || named.isAlias)) list_.doubt(*recipient);
            setOutcome(*recipient, named.said, outcome);
            addText(*recipient, std::move(named));
        }
        if (list_.all().size() == 1 && all.size() <= 1) addQuotedReply(list_.all().front());
    }

    /// "The response was:", "550 5.1.1 no such user": a reply that stands by itself is that to the
    /// only recipient.
    void addQuotedReply(Recipient& recipient) {
        std::string& diagnostic = recipient.diagnostic;
        if (recipient.source == RecipientSource::report || !codesIn(diagnostic).reply.empty()) {
            return;
        }
        const std::string_view notice = reading_.notice().text();
        const std::string_view reply = reading_.notice().quotedReply();
        if (reply.empty() || !isReplyTo(recipient, notice, reply)) return;
        const auto at = static_cast<std::size_t>(reply.data() - notice.data());
        const std::string lines = linesAround(notice, {at, reply.size()});
        // "Size: 222"
        if (!explains(diagnostic)) diagnostic.clear();
        if (!diagnostic.empty()) diagnostic += '\n';
        diagnostic = list_.budget().keep(diagnostic.append(ascii::trim(lines)));
    }

    /// `said` is what the text says of the recipient, and `outcome` what it says of all.
    static void setOutcome(Recipient& recipient, std::string_view said, Outcome outcome) {
        if (recipient.outcome == Outcome::unknown) recipient.outcome = outcome;
        if (recipient.source == RecipientSource::text && saysDelivered(said)) {
            recipient.outcome = Outcome::delivered;
        } else if (recipient.source != RecipientSource::report && outcome == Outcome::delayed) {
            // A notice of delays may report a failure, too.
            recipient.outcome = saysPermanent(said) ? Outcome::failed : Outcome::delayed;
        }
    }

    void addText(Recipient& recipient, TextRecipient&& named) {
        if (recipient.finalAddress.empty()) recipient.finalAddress = std::move(named.finalAddress);
        if (recipient.diagnostic.empty()) {
            recipient.diagnostic = list_.budget().keep(ascii::trim(named.said));
        } else {
            reasons_.addSaid(recipient.address, std::move(named.said));
        }
    }

    /// The fields of a delivery status that stand in the text.
    void readReportInText() {
        const std::vector<NoticeLine>& lines = reading_.notice().lines();
        const auto isStart = [](const NoticeLine& line) {
            return ascii::startsWithNoCase(line.text, "Final-Recipient:") ||
                   ascii::startsWithNoCase(line.text, "Original-Recipient:");
        };
        // Something stands in front of it.
        if (lines.empty()) return;
        const auto field = std::find_if(lines.begin() + 1, lines.end(), isStart);
        if (field == lines.end()) return;
        const std::string_view text = reading_.notice().text();
        const auto begin = static_cast<std::size_t>(field->text.data() - text.data());
        const std::size_t paragraph = text.substr(0, begin - 1).rfind("\r\n\r\n");
        report_.addStatus(text.substr(paragraph == npos ? 0 : paragraph));
    }

    /// "Delivery failure (user@example.net)"
    void readSubject() {
        if (!isTextRead_ || !reading_.isNotice() || !reading_.subjectSaysTrouble()) return;
        const Bystanders others(reading_, Bystanders::From::message);
        const std::string subject = message_.field("Subject");
        const std::vector<AddressSpan> spans = findAddresses(subject);
        if (spans.size() != 1) return;
        const std::string_view address = spans.front().in(subject);
        if (others.isOfSender(address) || others.isSystemOrList(address)) return;
        Recipient* recipient = list_.add(address, RecipientSource::header);
        if (!recipient) return;
        recipient->outcome = outcomeOfText();
        // The rest of the subject may be what the sender had written.
        list_.doubt(*recipient);
    }

    Outcome outcomeOfText() const {
        return reading_.notice().cues().has(Cue::delay) ? Outcome::delayed : Outcome::failed;
    }

    void readReturned() {
        if (!isTextRead_ || !reading_.isNotice()) return;
        const ReturnedMail& returned = reading_.returned();
        const bool isBounceOfNotice = returned.isNotice();
        if (!isBounceOfNotice && !isAboutTrouble()) return;
        if (depth_ < mostBouncesInside && isBounceOfNotice) {
            const Entity inner(returned.text());
            list_.replace(Collector(MessageReading(inner), {}, depth_ + 1).collect());
            if (!list_.isEmpty()) return;
        }
        const std::string sole = returned.soleRecipient();
        const Bystanders& others = reading_.bystanders();
        if (others.isOfSender(sole) || others.isSystemOrList(sole)) return;
        Recipient* recipient = list_.add(sole, RecipientSource::returned);
        if (!recipient) return;
        recipient->outcome = outcomeOfText();
    }

    void readRemovalRequest() {
        Recipient* author = list_.add(whoAsksForRemoval(message_), RecipientSource::header);
        if (author) author->advice = Advice::unsubscribe;
    }

    void readVerp() {
        if (verp_.empty()) return;
        const ReturnedMail& returned = isTextRead_ ? reading_.returned() : reading_.attached();
        const HeaderField* path = returned.header().find("Return-Path");
        const std::optional<VerpPattern::Match> match =
            matchVerp(message_, path ? path->unfolded() : std::string(), verp_);
        if (!match || isAnswerOf(match->address)) return;
        if (list_.isEmpty()) {
            if (!reading_.isBySystem()) return;
            Recipient& unnamed = list_.addUnnamed();
            if (isTextRead_ && isAboutTrouble()) unnamed.outcome = outcomeOfText();
        }
        if (match->address.empty()) {
            list_.setTag(match->tag);
        } else {
            list_.keepOnly(match->address);
            reasons_.forgetReported();
        }
    }

    /// Whether the message is what `recipient` answered, or their program, rather than a notice.
    bool isAnswerOf(std::string_view recipient) const {
        if (report_.isFound() || message_.hasField("X-Failed-Recipients")) return false;
        const std::string& author = message_.from().address;
        if (author.empty()) return false;
        if (ascii::equalsNoCase(author, recipient)) return true;
        return isAutomaticReply(message_) && !reading_.notice().cues().haveTrouble() &&
               !reading_.subjectSaysTrouble();
    }

    /// Whether the words of the message say that something was not delivered, or why; or, in
    /// whatever language, a mail system quotes the reply of another.
    bool isAboutTrouble() {
        return reading_.notice().cues().haveTrouble() || reading_.subjectSaysTrouble() ||
               reasons_.ofNotice().basis != ReasonBasis::none ||
               (reading_.author() == Author::system && quotesFailure(reading_.notice().text()));
    }

    const MessageReading& reading_;
    const Entity& message_;
    std::span<const VerpPattern> verp_;
    int depth_;
    RecipientList list_;
    ReportSource report_{reading_, list_};
    RecipientReasons reasons_{reading_, list_};
    bool isTextRead_ = false;
};

}  // namespace

std::vector<Recipient> recipientsOf(const MessageReading& reading,
                                    std::span<const VerpPattern> verp) {
    return Collector(reading, verp, 0).collect();
}

}  // namespace bouncecheck
