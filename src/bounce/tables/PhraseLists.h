#pragma once

#include <bouncecheck/PhraseList.h>
#include "bounce/tables/AbuseIndicators.h"
#include "bounce/tables/AutoReplyIndicators.h"
#include "bounce/tables/AutoReplySubjectIndicators.h"
#include "bounce/tables/BounceDataMarkers.h"
#include "bounce/tables/BounceFromAddrList.h"
#include "bounce/tables/BounceSubjectList.h"
#include "bounce/tables/CannotDetermineRecipientStrings.h"
#include "bounce/tables/MailboxFullIndicators.h"
#include "bounce/tables/NetworkProblems.h"
#include "bounce/tables/ScanIndicators.h"
#include "bounce/tables/SenderBlockedIndicators.h"
#include "bounce/tables/SoftBounceAndVirusIndicators.h"
#include "bounce/tables/SpamFilterIndicators.h"
#include "bounce/tables/TransientIndicators.h"
#include "bounce/tables/UnsubscribeBodyIndicators.h"
#include "bounce/tables/UnsubscribeSubjectIndicators.h"

namespace bouncecheck {

template <std::size_t Size>
constexpr std::span<const char* const> withoutTerminator(const char* const (&table)[Size]) {
    return {table, Size - 1};
}

inline constexpr std::span<const char* const> softBounceAndVirus =
    withoutTerminator(softBounceAndVirusPhrases);

/// The registry: a list that has no row here does not compile where a check asks for it.
inline constexpr PhraseList phraseLists[] = {
    {"SenderBlockedIndicators", withoutTerminator(SenderBlockedIndicators)},
    {"MailboxFullIndicators", withoutTerminator(MailboxFullIndicators)},
    {.name = "SoftBounceIndicators", .rows = softBounceAndVirus.first(softBouncePhraseCount), .runsOn = true},
    {"VirusIndicators", softBounceAndVirus.subspan(softBouncePhraseCount)},
    {"NetworkProblems", withoutTerminator(NetworkProblems)},
    {"TransientIndicators", withoutTerminator(TransientIndicators)},
    {"SpamFilterIndicators", withoutTerminator(SpamFilterIndicators)},
    {"UnsubscribeBodyIndicators", withoutTerminator(UnsubscribeBodyIndicators)},
    {"UnsubscribeSubjectIndicators", withoutTerminator(UnsubscribeSubjectIndicators)},
    {"ScanIndicators", withoutTerminator(ScanIndicators)},
    {"CannotDetermineRecipientStrings", withoutTerminator(CannotDetermineRecipientStrings)},
    {"AbuseIndicators", withoutTerminator(AbuseIndicators)},
    {.name = "AutoReplyIndicators", .rows = withoutTerminator(AutoReplyIndicators), .letters = LetterCase::exact},
    {"AutoReplySubjectIndicators", withoutTerminator(AutoReplySubjectIndicators)},
    {"BounceFromAddrList", withoutTerminator(BounceFromAddrList), ListKind::patterns},
    {"BounceSubjectList", withoutTerminator(BounceSubjectList), ListKind::patterns},
    {"BounceDataMarkers", withoutTerminator(BounceDataMarkers), ListKind::markers, LetterCase::exact},
};

}  // namespace bouncecheck
