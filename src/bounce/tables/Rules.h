#pragma once

#include <bouncecheck/Rule.h>

namespace bouncecheck {

inline constexpr Rule ruleTable[] = {
    // Reports
    {BOUNCE_VIRUS, "Bounce type 10.3", "a provider reports a virus", "a feedback report of the type virus", ""},
    {BOUNCE_ABUSE, "Bounce type 15.1", "a reader complained to the provider", "a feedback report of the type abuse or fraud", ""},
    {BOUNCE_TRANSIENT, "Bounce type 7.11", "a provider's report that is no complaint", "a feedback report of another type than virus, abuse and fraud", ""},
    {BOUNCE_BLOCKED, "Bounce type 5.1a", "the server refused the sender or the content", "a delivery report whose fields hold a phrase of refused senders", "", {"SenderBlockedIndicators"}},
    {BOUNCE_SOFT, "Bounce type 2.4", "the mailbox is full or the server had trouble", "a delivery report whose diagnostic code holds a phrase of full mailboxes or temporary failures", "", {"MailboxFullIndicators", "SoftBounceIndicators"}},
    {BOUNCE_SOFT, "Bounce type 2.41", "the mailbox is full", "a delivery report whose text holds a phrase of full mailboxes", "", {"MailboxFullIndicators"}},
    {BOUNCE_TRANSIENT, "Bounce type 7.6a", "not delivered yet, or delivered", "a delivery report with the action delayed, relayed or delivered", ""},
    {BOUNCE_HARD, "Bounce type 1.mri", "the delivery failed for good", "a delivery report with the action failed", ""},
    {BOUNCE_DISPOSITION, "Bounce type 14.3b", "the message was displayed", "a receipt whose disposition ends in \"displayed\"", ""},
    {BOUNCE_HARD, "Bounce type 1.AVG", "a report that a virus gateway wrapped", "a wrapped delivery report whose fields decide nothing", ""},
    {BOUNCE_SOFT, "Bounce type 2.6", "a report without an action; the text is about a full mailbox or the network", "a delivery report that nothing else decided, with a phrase of full mailboxes or network problems in its text", "", {"MailboxFullIndicators", "NetworkProblems"}},
    {BOUNCE_HARD, "Bounce type 1.8", "a report without an action", "a delivery report that nothing else decided", "Stop mailing the address if this happens again."},
    // Special cases, first set
    {BOUNCE_AUTO_REPLY, "Bounce type 6.15", "an autoresponder", "the header field X-Autoreply: yes, or \"Autoresponder\" in the sender's name", ""},
    {BOUNCE_BLOCKED, "Bounce type 5.AOL", "AOL refused the sender or the content", "AOL's mailer daemon, a local part behind the last colon, and a phrase of refused senders", "", {"SenderBlockedIndicators"}},
    {BOUNCE_HARD, "Bounce type 1.AOL", "AOL does not know the address", "AOL's mailer daemon, and a local part behind the last colon", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.6", "a challenge-response service asks for a confirmation", "the service's domain, with an address as the sender's name", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.8", "a challenge-response service verifies its own user", "the service's Errors-To, and \"(verification)\" in the subject", "Nothing, unless you have an account there."},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.1", "other mail of a challenge-response service", "the service's Errors-To", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.11", "a challenge-response filter asks for a confirmation", "a phrase of such a filter in sender, subject or text", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.13", "an out-of-office reply", "the subject \"Out of office\", \"Auto-reply\" in the sender's name, or \"We will get back to you within\" in the text", ""},
    // Special subjects
    {BOUNCE_HARD, "Bounce type 1.1", "unknown user", "the subject \"Returned mail: User unknown:\" with an address in brackets", ""},
    {BOUNCE_HARD, "Bounce type 1.2", "the delivery failed", "the subject \"Delivery failure (\" with an address", ""},
    {BOUNCE_HARD, "Bounce type 1.3", "the delivery failed", "the subject \"Unable to deliver to \" with an address", ""},
    {BOUNCE_HARD, "Bounce type 1.4", "unknown user", "the subject \"DELIVERY FAILURE: User \" with an address", ""},
    {BOUNCE_HARD, "Bounce type 1.5", "invalid address", "the subject \"Invalid E-Mail Address\", and the header field Original-Recipient", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.1", "a whitelist asks for a confirmation", "\"confirmation\" in the subject, and the header field X-WhiteList-Confirmation", ""},
    // Special cases, second set
    {BOUNCE_AUTO_REPLY, "Bounce type 6.14", "an autoresponder", "the header field X-Autoreply: yes", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.2", "a filter wants the sender to register", "the header field X-ChoiceMail-Registration-Request", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.3", "a webmaster's filter asks for a confirmation", "a Reply-To of \"webmaster-confirm\"", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.2", "an autoresponder", "the header field Delivered-To: autoresponder", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.3", "an automatic reply", "\"this is an auto response\" or \"This is an automatic reply\" in the body", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.12", "a challenge-response service asks for a confirmation", "the web host of the service in the body", ""},
    // Special cases, third set
    {BOUNCE_UNSUBSCRIBE, "Bounce type 9.01", "a mail program unsubscribes its user", "the header field X-Apple-Unsubscribe", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.4", "sent by a program", "the header field Auto-Submitted, whatever its value", ""},
    {BOUNCE_CHALLENGE, "Bounce type 12.9", "a filter asks for a confirmation", "the header field Precedence: auto_reply, and \"one-time inconvenience\" in the text", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.5", "an automatic reply", "the header field Precedence: auto_reply", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.6", "the reply of a challenge system", "a Reply-To of \"challengereply\"", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.7", "an autoresponder", "a sender of \"autoresponder\"", ""},
    // The text
    {BOUNCE_AUTO_REPLY, "Bounce type 6.8a", "an autoresponder of somebody who has left", "an address before \"is no longer a valid email address\"", "Stop mailing the address, which is given up; the text may name a new one."},
    {BOUNCE_VIRUS, "Bounce type 10.1", "a scanner stopped the message", "a marker of bounces, and a scanner's phrase in the text", "", {"VirusIndicators"}},
    {BOUNCE_BLOCKED, "Bounce type 5.3", "the server refused the sender or the content", "a marker of bounces, and a phrase of refused senders in the text", "", {"SenderBlockedIndicators"}},
    {BOUNCE_SOFT, "Bounce type 2.3", "the mailbox is full or the server had trouble", "a marker of bounces, and a phrase of full mailboxes or temporary failures in the text", "", {"MailboxFullIndicators", "SoftBounceIndicators"}},
    {BOUNCE_VIRUS, "Bounce type 10.1.1", "a scanner stopped the message", "a marker of bounces in the text, and a scanner's phrase in the subject", "", {"VirusIndicators"}},
    {BOUNCE_CHALLENGE, "Bounce type 12.10", "a filter asks for a confirmation", "a marker of bounces, a phrase of automatic replies, and \"Please confirm\" in the subject", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.8", "an automatic reply", "a marker of bounces, and a phrase of automatic replies in text or subject", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {BOUNCE_SOFT, "Bounce type 2.1", "the network or the server had trouble", "an address behind a marker of bounces, and a phrase of full mailboxes, temporary failures or network problems", "", {"MailboxFullIndicators", "SoftBounceIndicators", "NetworkProblems"}},
    {BOUNCE_BLOCKED, "Bounce type 5.1", "the server refused the sender or the content", "an address behind a marker of bounces, and a phrase of refused senders", "", {"SenderBlockedIndicators"}},
    {BOUNCE_TRANSIENT, "Bounce type 7.2", "the delivery is late and goes on", "an address behind a marker of bounces, and a phrase of delay notices", "", {"TransientIndicators"}},
    {BOUNCE_CHALLENGE, "Bounce type 12.4", "a filter asks for a confirmation", "an address behind a marker of bounces, and a phrase of challenges", "", {"SpamFilterIndicators"}},
    {BOUNCE_HARD, "Bounce type 1.10", "the delivery failed", "an address behind a marker of bounces, and no phrase that makes it less", ""},
    {BOUNCE_VIRUS, "Bounce type 10.2", "a scanner stopped the message", "a scanner's phrase in text or subject, and no address", "", {"VirusIndicators"}},
    {BOUNCE_NO_RECIPIENT, "Bounce type 3.2", "a bounce of a kind that names no recipient", "a phrase of such bounces", "", {"CannotDetermineRecipientStrings"}},
    {BOUNCE_CHALLENGE, "Bounce type 12.7", "a server verifies the sender's address", "a phrase of automatic replies, and \"Sender Address Verification\"", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {BOUNCE_HARD, "Bounce type 1.9049", "an automatic reply: the account is inactive", "a phrase of automatic replies, and \"account is inactive\"", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {BOUNCE_AUTO_REPLY, "Bounce type 6.9", "an automatic reply", "a phrase of automatic replies in text, subject or sender", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {BOUNCE_UNSUBSCRIBE, "Bounce type 9.1", "somebody wants to be unsubscribed", "a phrase of unsubscribe messages in text or subject", "", {"UnsubscribeBodyIndicators", "UnsubscribeSubjectIndicators"}},
    {BOUNCE_TRANSIENT, "Bounce type 7.1", "the delivery is late and goes on", "a phrase of delay notices, and no address", "", {"TransientIndicators"}},
    {BOUNCE_SOFT, "Bounce type 2.5", "the server had trouble", "a phrase of temporary failures, and no address", "", {"SoftBounceIndicators"}},
    {BOUNCE_HARD, "Bounce type 1.11", "unknown user", "\"- no such user here.\" and an address in a short text", "", {"ScanIndicators"}},
    {BOUNCE_CHALLENGE, "Bounce type 12.5", "a filter asks for a confirmation", "a phrase of challenges, and no address", "", {"SpamFilterIndicators"}},
    {BOUNCE_SOFT, "Bounce type 2.2", "the mailbox is full, the network has trouble, or the sender was refused", "a returned message that names its recipient, and a phrase of full mailboxes, network problems or refused senders", "", {"MailboxFullIndicators", "SenderBlockedIndicators", "NetworkProblems"}},
    {BOUNCE_ABUSE, "Bounce type 15.2", "somebody complains about the attached message", "a returned message that names its recipient, and a phrase of complaints in the subject", "", {"AbuseIndicators"}},
    {BOUNCE_TRANSIENT, "Bounce type 7.10", "the delivery is late and goes on", "a returned message that names its recipient, and \"delay\" in the subject", ""},
    {BOUNCE_SOFT, "Bounce type 2.14", "the server had trouble with the recipient", "a returned message that names its recipient, and \"452 4.1.1\" in the text", ""},
    {BOUNCE_HARD, "Bounce type 1.14", "the message came back", "a returned message that names its recipient, and no phrase that makes it less", ""},
    {BOUNCE_UNCLASSIFIED, "Bounce type 11.1", "the subject or sender of bounces, and nothing more", "a subject or sender of bounces, and no phrase that is known", ""},
    // Afterwards
    {BOUNCE_AUTO_REPLY, "Bounce type: 6.481", "an out-of-office reply", "\"I am out of the office\" or \"I will be out of the office\" in a text that no check decided", ""},
    {BOUNCE_AUTO_REPLY, "Bounce type: 6.482", "an autoresponder", "the header field X-Autoreply-From in a message that looks like a bounce", ""},
};

}  // namespace bouncecheck
