#include "reasons/HintParty.h"

#include <algorithm>
#include <cstddef>

#include "mime/AddressForms.h"
#include "reasons/ClauseEnd.h"
#include "reasons/NamedHost.h"
#include "reasons/Said.h"
#include "reasons/TopicWords.h"
#include "reasons/tables/PartyNames.h"
#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Where the word ends that goes on at the byte `at`.
std::size_t endOfWord(std::string_view text, std::size_t at) noexcept {
    while (at < text.size() && (ascii::isAlpha(text[at]) || !ascii::isAscii(text[at]))) ++at;
    return at;
}

/// Whether the words themselves speak of a mailbox: "no user ".
bool namesMailbox(const PhraseRow& hint) {
    return std::ranges::any_of(mailboxNames,
                               [&](std::string_view name) { return contains(hint.phrase, name); });
}

/// Whether the words say that something is not there, or is closed for good.
bool saysGone(const PhraseRow& hint) {
    if (hint.reason != Reason::inactiveMailbox) return isAboutMailbox(hint.reason);
    return std::ranges::none_of(
        passingWords, [&](std::string_view words) { return contains(hint.phrase, words); });
}

}  // namespace

bool beginsWithMailbox(std::string_view phrase) {
    return phrase.starts_with('@') || std::ranges::any_of(mailboxNames, [&](std::string_view name) {
               return phrase.starts_with(name);
           });
}

Party partyOf(const PhraseRow& hint, std::string_view text, TextPart place,
              std::string_view recipient) {
    if (hint.reason == Reason::policy) {
        return isSaidOfHost(text, place.at, place.length) ? Party::host : Party::unnamed;
    }
    const std::string_view domain = domainOf(recipient);
    const std::string_view mailbox = localPartOf(recipient);
    if (!saysGone(hint) || domain.empty()) return Party::unnamed;
    const Said said(text, place.at);
    const std::size_t end = place.at + place.length;
    const bool endsThere = !goesOnOtherwise(text, end) && endsClause(text, endOfWord(text, end));
    if (hint.reason != Reason::unknownDomain && endsThere &&
        (said.isOfKind(mailboxSubjects) || said.isOfNamedKind(mailbox, mailboxSubjects) ||
         said.isOfNamedKind(recipient, mailboxSubjects))) {
        return Party::mailbox;
    }
    // "Invalid" may be said of a key, or a password, of theirs.
    if (contains(hint.phrase, "invalid")) return Party::unnamed;
    if (endsThere && said.isOf(domain, domainNames)) {
        // "The SPF of domain x.example": its records may be missing, too.
        return topicOf(text) ? Party::unnamed : Party::domain;
    }
    const bool isMailbox =
        (endsThere &&
         (said.isOf(mailbox, mailboxNames) || said.isOf(recipient, mailboxNames) ||
          said.isOf(recipient, addressNames) || said.isOfOwned(mailbox, mailboxNames) ||
          said.isOfOwned(recipient, mailboxNames))) ||
        (isFollowedBy(text, end, mailbox) &&
         (namesMailbox(hint) || said.isOfNothingElse(mailboxNames)));
    return isMailbox ? Party::mailbox : Party::unnamed;
}

}  // namespace bouncecheck
