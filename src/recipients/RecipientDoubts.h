#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "reasons/ReasonFinding.h"
#include "recipients/Explanation.h"
#include "recipients/MessageReading.h"
#include "recipients/RecipientList.h"

namespace bouncecheck {

/// Whether it may be believed why a recipient failed: the questions that take the whole message.
/// `reasons/ReplyDoubts.h` has those that a reply answers by itself.
class RecipientDoubts {
public:
    /// Of a message and a list that outlive it.
    RecipientDoubts(const MessageReading& reading, const RecipientList& list) noexcept
        : reading_(reading), list_(list) {}

    /// The finding after all questions: unsure where a filter or a person may have said it, or
    /// where it may be about another recipient; and about the sender where it is.
    ReasonFinding doubted(const Explanation& explanation) const;

private:
    // Their definitions, in the same order, have an example each.

    bool isAboutSender(const Explanation& explanation) const;
    bool namesDomainOfSender(const Explanation& explanation) const;
    bool namesSender(const Explanation& explanation) const;
    bool namesSenderIn(std::string_view text, std::optional<std::size_t> at,
                       const Explanation& explanation) const;
    bool isReplyToSender(const Explanation& explanation) const;
    bool mayBeAboutOthers(const Explanation& explanation) const;
    bool mayBeOfFilter(const Explanation& explanation) const;
    bool isReplyToData(const Recipient& recipient) const;
    bool isFromSystem(const Recipient& recipient) const;

    const MessageReading& reading_;
    const RecipientList& list_;
};

}  // namespace bouncecheck
