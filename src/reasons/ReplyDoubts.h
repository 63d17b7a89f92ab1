#pragma once

#include <string_view>

#include "reasons/PhraseReasons.h"
#include "reasons/ReasonFinding.h"
#include "reasons/ReplyReading.h"

/// Whether what was found of a reply may be believed: the questions that its own text, its codes
/// and its notice answer.
namespace bouncecheck {

// --- Questions of clear words, which a definite status answers as well ------------------

/// What the clear words of `text`, of which `matches` are known, give. It is unsure where they are
/// about something that belongs to a mailbox ("License for user not found"), only suppose it ("if
/// the mailbox was deleted"), go on to say less ("disabled at the moment"), or where those beside
/// them name another cause ("user unknown or access denied") or why a mailbox is not known ("user
/// not found: LDAP timeout").
ReasonFinding judgedClearWords(const PhraseMatches& matches, std::string_view text,
                               bool isTransient);

/// The same of a notice of several paragraphs, of which those around the words count.
ReasonFinding judgedClearWordsOfNotice(const PhraseMatches& matches, std::string_view notice,
                                       bool isTransient);

/// Whether `front`, the part of a reply in front of an advice, is about the sender as much as about
/// the mailbox: "Unknown user or sender refused. If you think ..."
bool mayBeAboutSender(std::string_view front);

// --- Questions of all findings -----------------------------------------------------------

/// `finding` after all questions that need nothing but the reply: unsure, or about something else.
ReasonFinding doubted(ReasonFinding finding, const ReplyReading& reading);

}  // namespace bouncecheck
