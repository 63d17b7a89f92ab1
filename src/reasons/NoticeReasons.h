#pragma once

#include <optional>

#include "reasons/PhraseReasons.h"
#include "reasons/ReasonFinding.h"
#include "reasons/ReplyReading.h"

namespace bouncecheck {

/// What the notice says of why a reply that does not explain itself failed. It may speak of other
/// recipients, or in general.
///
/// `isTransient` is whether the reply says that a later try may succeed. What the notice adds to
/// that counts even where nothing else is found.
class NoticeReasons {
public:
    /// Of a reading that outlives it.
    explicit NoticeReasons(const ReplyReading& reading) noexcept : reading_(reading) {}

    /// By the phrases that say why, where the notice has the code of a reply that it quotes.
    ReasonFinding ofQuotedReply(bool isTransient) const;
    /// By the same phrases, whether or not there is such a code.
    ReasonFinding ofExplanation(bool isTransient) const;
    /// By all that there is: the phrases and the definite status in their order, and then hints.
    ReasonFinding ofAll(bool isTransient) const;

private:
    ReasonFinding ofStatus(bool isTransient) const;
    ReasonFinding ofHint(bool isTransient) const;
    ReasonFinding onlyNews(ReasonFinding finding) const;
    bool saysTemporary() const;
    bool isOfRecipient() const;
    bool countsBeside(const PhraseRow& hint) const;

    const ReplyCodes& codes() const;
    const PhraseMatches& matches() const;

    const ReplyReading& reading_;
    /// Of the notice, read when they are first asked for.
    mutable std::optional<ReplyCodes> codes_;
    mutable std::optional<PhraseMatches> matches_;
};

}  // namespace bouncecheck
