#pragma once

#include <bouncecheck/Reason.h>

namespace bouncecheck {

/// In the order of the enumeration.
inline constexpr ReasonMeaning reasonMeanings[] = {
    {Reason::none, "", "", ""},
    {Reason::unknownMailbox, "unknown-mailbox", "The domain exists, but has no such mailbox.", "Stop mailing the address."},
    {Reason::inactiveMailbox, "inactive-mailbox", "The mailbox exists, but is disabled, suspended or no longer used.", "Stop mailing the address when it keeps failing; at once when the reply says that the account is closed for good."},
    {Reason::unknownDomain, "unknown-domain", "The domain does not exist, or takes no mail.", "Stop mailing the address; look for a mistyped domain first."},
    {Reason::mailboxFull, "mailbox-full", "The mailbox has no room left.", "Keep the address; stop mailing it when it stays full for weeks."},
    {Reason::messageTooLarge, "message-too-large", "The message is larger than the recipient's system accepts.", "Send a smaller message."},
    {Reason::content, "content", "The message was taken for spam, holds a virus or an attachment that is not allowed, or is malformed.", "Look into what was sent, its links and attachments."},
    {Reason::authentication, "authentication", "SPF, DKIM or DMARC does not allow the message.", "Correct the DNS records and signatures of the sending domain."},
    {Reason::reputation, "reputation", "The sending host or network has a bad name: it is on a block list, or lacks a reverse name.", "Look up the sending address in the list that the reply names, and ask for removal once the cause is gone."},
    {Reason::policy, "policy", "A rule of the receiver refuses the message: relaying is denied, the list is closed, the sender is not accepted.", "Read the reply: the sender, the way of sending or the recipient's permission has to change."},
    {Reason::rateLimit, "rate-limit", "Too many messages or connections in too short a time.", "Send more slowly."},
    {Reason::unreachable, "unreachable", "The recipient's mail system could not be reached: the network, the name service or the host did not answer.", "Try again later; stop when it keeps failing."},
    {Reason::expired, "expired", "The message was not delivered in the time that the sending system tries.", "Try again later; stop when it keeps failing."},
    {Reason::system, "system", "The recipient's or your own mail system has a fault.", "Try again later; look into your own system if the reply comes from it."},
    {Reason::other, "other", "It failed, and nothing says why.", "Read the reply; try again later, and stop when it keeps failing."},
};

}  // namespace bouncecheck
