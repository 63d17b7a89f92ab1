#pragma once

#include <string_view>

#include "reasons/HintParty.h"
#include "reasons/PhraseReasons.h"
#include "reasons/ReasonFinding.h"
#include "reasons/ReasonRow.h"

/// What single pieces of evidence give as the reason. `isTransient` is what else is known of
/// whether a later try may succeed.
namespace bouncecheck {

/// That of the first phrase of `kind` in a text; nothing is found without one. Sure, unless the
/// phrase only hints.
ReasonFinding phraseFinding(const PhraseMatches& matches, PhraseKind kind, bool isTransient);

/// That of the first phrase which hints at why, for what it says of `party`; sure where that is the
/// recipient's mailbox or domain.
ReasonFinding hintFinding(const PhraseMatches& matches, Party party, bool isTransient);

/// Those of codes, whose places are not known. A status may be less sure than its row, where it was
/// not the server that gave it.
ReasonFinding statusFinding(const StatusRow& row, bool isSure, bool isTransient);
ReasonFinding replyCodeFinding(const ReplyCodeRow& row, bool isTransient);

/// `finding` with the place of `code`, a part of `text`; the code may be empty.
ReasonFinding placed(ReasonFinding finding, std::string_view code, std::string_view text);

}  // namespace bouncecheck
