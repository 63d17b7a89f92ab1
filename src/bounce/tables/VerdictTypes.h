#pragma once

#include <bouncecheck/BounceType.h>

namespace bouncecheck {

inline constexpr VerdictType verdictTypes[] = {
    {BOUNCE_NONE, "none", "not a bounce, or nothing shows what it is", "Nothing; a person may have written it."},
    {BOUNCE_HARD, "hard", "permanent failure: the message was not delivered", "Look at the reason of each recipient, and stop mailing an address that does not exist."},
    {BOUNCE_SOFT, "soft", "temporary failure: the mailbox is full, or the network has trouble", "Keep the address; stop mailing it when it goes on failing for weeks."},
    {BOUNCE_NO_RECIPIENT, "no-recipient", "a bounce that does not name the address that failed", "Find the address by the returned message, if it names one."},
    {BOUNCE_BLOCKED, "blocked", "refused by a filter, or because of the sender", "Keep the address; look into the sending host's reputation, its DNS records and the content."},
    {BOUNCE_AUTO_REPLY, "auto-reply", "an automatic or out-of-office reply", "Nothing; the message arrived."},
    {BOUNCE_TRANSIENT, "transient", "delayed and still tried, or a report of success", "Nothing; a failure will be reported by itself."},
    {BOUNCE_UNSUBSCRIBE, "unsubscribe", "a request to be unsubscribed", "Take the address off the list."},
    {BOUNCE_VIRUS, "virus", "a notice of a virus or content scanner", "Nothing, unless the message was really yours: then scan what you send."},
    {BOUNCE_UNCLASSIFIED, "unclassified", "looks like a bounce, but no rule knows its kind", "Read it."},
    {BOUNCE_CHALLENGE, "challenge", "the recipient's filter wants the sender to confirm", "Confirm by hand if the recipient matters; an address that is not confirmed gets nothing."},
    {BOUNCE_DISPOSITION, "disposition", "a receipt: the message was displayed", "Nothing; it was read."},
    {BOUNCE_ABUSE, "abuse", "a complaint about abuse", "Take whoever complains off the list at once."},
};

}  // namespace bouncecheck
