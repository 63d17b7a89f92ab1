#pragma once

#include <string_view>

#include "reasons/PhraseReasons.h"
#include "reasons/ReasonFinding.h"
#include "reasons/ReplyReading.h"

/// Whether what was found of a reply may be believed: the questions that its own text, its codes
/// and its notice answer.
namespace bouncecheck {

// --- Questions of clear words, which a definite status answers as well ------------------

/// Whether words about a mailbox are about something that belongs to one ("License for user not
/// found"), only suppose it ("if the mailbox was deleted"), or go on to say less ("disabled at the
/// moment"). `text` is what they stand in.
bool isQualified(const ReasonFinding& finding, std::string_view text);

/// Whether the words of a reply beside those about a mailbox name another cause ("user unknown or
/// access denied"), or why it is not known ("user not found: LDAP timeout").
bool namesOtherCause(const ReasonFinding& finding, std::string_view text,
                     const PhraseMatches& matches);

/// Whether `front`, the words in front of an advice, are about the sender as much as about the
/// mailbox: "Unknown user or sender refused. If you think ..."
bool mayBeAboutSender(const PhraseMatches& front);

// --- Questions of all findings -----------------------------------------------------------

/// `finding` after all questions that need nothing but the reply: unsure, or about something else.
ReasonFinding doubted(ReasonFinding finding, const ReplyReading& reading);

}  // namespace bouncecheck
