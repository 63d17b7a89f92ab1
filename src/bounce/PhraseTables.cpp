#include "bounce/PhraseTables.h"

#include <cstddef>

#include "bounce/tables/AbuseIndicators.h"
#include "bounce/tables/AutoReplyIndicators.h"
#include "bounce/tables/AutoReplySubjectIndicators.h"
#include "bounce/tables/BounceDataMarkers.h"
#include "bounce/tables/BounceFromAddrList.h"
#include "bounce/tables/BounceRules.h"
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
namespace {

template <class Row, std::size_t Size>
constexpr std::span<const Row> withoutTerminator(const Row (&table)[Size]) noexcept {
    return {table, Size - 1};
}

constexpr std::span<const char* const> softBounceAndVirus =
    withoutTerminator(softBounceAndVirusPhrases);

constexpr PhraseTable tables[] = {
    {"SenderBlockedIndicators", withoutTerminator(SenderBlockedIndicators)},
    {"MailboxFullIndicators", withoutTerminator(MailboxFullIndicators)},
    {"SoftBounceIndicators", softBounceAndVirus.first(softBouncePhraseCount)},
    {"VirusIndicators", softBounceAndVirus.subspan(softBouncePhraseCount)},
    {"NetworkProblems", withoutTerminator(NetworkProblems)},
    {"TransientIndicators", withoutTerminator(TransientIndicators)},
    {"SpamFilterIndicators", withoutTerminator(SpamFilterIndicators)},
    {"UnsubscribeBodyIndicators", withoutTerminator(UnsubscribeBodyIndicators)},
    {"UnsubscribeSubjectIndicators", withoutTerminator(UnsubscribeSubjectIndicators)},
    {"ScanIndicators", withoutTerminator(ScanIndicators)},
    {"CannotDetermineRecipientStrings", withoutTerminator(CannotDetermineRecipientStrings)},
    {"AbuseIndicators", withoutTerminator(AbuseIndicators)},
    {"AutoReplyIndicators", withoutTerminator(AutoReplyIndicators)},
    {"AutoReplySubjectIndicators", withoutTerminator(AutoReplySubjectIndicators)},
    {"BounceFromAddrList", withoutTerminator(BounceFromAddrList)},
    {"BounceSubjectList", withoutTerminator(BounceSubjectList)},
    {"BounceDataMarkers", withoutTerminator(BounceDataMarkers)},
};

}  // namespace

std::span<const PhraseTable> phraseTables() noexcept { return tables; }

std::span<const BounceRule> ruleTable() noexcept { return withoutTerminator(BounceRules); }

}  // namespace bouncecheck
