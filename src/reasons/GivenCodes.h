#pragma once

#include <string_view>

#include "reasons/ReasonRow.h"
#include "reasons/ReplyCodes.h"

namespace bouncecheck {

struct Reply;

/// The codes that came with a reply, in its text or in the fields of a report, and what they say
/// together. Those of the text are the server's own. Refers to the reply.
class GivenCodes {
public:
    explicit GivenCodes(const Reply& reply);

    /// Those of the text.
    const ReplyCodes& textCodes() const noexcept { return inText_; }
    /// The reply code, of the text where that has one; may be empty.
    std::string_view reply() const noexcept { return reply_; }
    /// Whether a report states a status.
    bool hasField() const noexcept { return !field_.empty(); }
    /// The row of the text's status; null without one.
    const StatusRow* textStatus() const noexcept { return ofText_; }

    /// Whether no reply code and no status stands beside the words.
    bool areMissing() const noexcept { return reply_.empty() && inText_.status.empty(); }
    bool areTemporary() const noexcept;
    /// The status that is definite; null where none is.
    const StatusRow* definite() const noexcept;
    /// A status that says something at all; null where none does.
    const StatusRow* any() const noexcept;
    /// Whether `row` is that of a field which only restates the reply code, as sendmail fills it
    /// for replies without a status: what follows "550" need not be about the mailbox.
    bool isRestated(const StatusRow* row) const noexcept;

    /// Whether `vague`, a status of theirs, says more than a hint at another reason.
    bool sayMore(const StatusRow& vague, const PhraseRow& hint) const noexcept;
    /// Whether a code for something else contradicts a reason that is about the mailbox: one that
    /// is definite, or that of a command that was not understood.
    bool areAboutElse(Reason reason) const noexcept;
    /// Whether the client was refused since it did not authenticate (RFC 4954, section 6).
    bool areAboutLogin() const noexcept;
    /// The address of the sender is wrong, whatever the words call unknown (RFC 3463, section 3.2).
    bool areAboutSender() const noexcept;

private:
    bool fieldRestatesReply() const noexcept;

    ReplyCodes inText_;
    std::string_view reply_;
    std::string_view field_;
    const StatusRow* ofText_;
    const StatusRow* ofField_;
};

}  // namespace bouncecheck
