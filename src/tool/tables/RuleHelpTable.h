#pragma once

#include "tool/RuleHelp.h"

namespace bouncecheck {

inline constexpr TypeHelp typeHelpTable[] = {
    {BOUNCE_NONE, "not a bounce, or nothing that tells", "Nothing; a person may have written it."},
    {BOUNCE_HARD, "permanent failure: the address does not work", "Stop mailing the address."},
    {BOUNCE_SOFT, "temporary failure: the mailbox is full, or the network has trouble", "Keep the address; stop mailing it when it goes on failing for weeks."},
    {BOUNCE_NO_RECIPIENT, "a bounce that does not tell whose address failed", "Find the address by the returned message, if it names one."},
    {BOUNCE_BLOCKED, "refused by a filter, or because of the sender", "Keep the address; look into the sending host's reputation, its DNS records and the content."},
    {BOUNCE_AUTO_REPLY, "an automatic or out-of-office reply", "Nothing; the message arrived."},
    {BOUNCE_TRANSIENT, "delayed and still tried, or a report of success", "Nothing; a failure will be reported by itself."},
    {BOUNCE_UNSUBSCRIBE, "a request to be unsubscribed", "Take the address off the list."},
    {BOUNCE_VIRUS, "a notice of a virus or content scanner", "Nothing, unless the message was really yours: then scan what you send."},
    {BOUNCE_UNCLASSIFIED, "looks like a bounce, but no rule tells its kind", "Read it."},
    {BOUNCE_CHALLENGE, "the recipient's filter wants the sender to confirm", "Confirm by hand if the recipient matters; an address that is not confirmed gets nothing."},
    {BOUNCE_DISPOSITION, "a receipt: the message was displayed", "Nothing; it was read."},
    {BOUNCE_ABUSE, "a complaint about abuse", "Take whoever complains off the list at once."},
};

// In the order of docs/verdicts.md.
inline constexpr RuleHelp ruleHelpTable[] = {
    // Reports
    {"10.3", BOUNCE_VIRUS, "a provider reports a virus", "a feedback report of the type virus", ""},
    {"15.1", BOUNCE_ABUSE, "a reader complained to the provider", "a feedback report of the type abuse or fraud", ""},
    {"7.11", BOUNCE_TRANSIENT, "a provider's report that is no complaint", "a feedback report of another type than virus, abuse and fraud", ""},
    {"5.1a", BOUNCE_BLOCKED, "the server refused the sender or the content", "a delivery report whose fields hold a phrase of refused senders", "", {"SenderBlockedIndicators"}},
    {"2.4", BOUNCE_SOFT, "the mailbox is full or the server had trouble", "a delivery report whose diagnostic code holds a phrase of full mailboxes or temporary failures", "", {"MailboxFullIndicators", "SoftBounceIndicators"}},
    {"2.41", BOUNCE_SOFT, "the mailbox is full", "a delivery report whose text holds a phrase of full mailboxes", "", {"MailboxFullIndicators"}},
    {"7.6a", BOUNCE_TRANSIENT, "not delivered yet, or delivered", "a delivery report with the action delayed, relayed or delivered", ""},
    {"1.mri", BOUNCE_HARD, "the delivery failed for good", "a delivery report with the action failed", ""},
    {"14.3b", BOUNCE_DISPOSITION, "the message was displayed", "a receipt whose disposition ends in \"displayed\"", ""},
    {"1.AVG", BOUNCE_HARD, "a report that a virus gateway wrapped", "a wrapped delivery report whose fields decide nothing", ""},
    {"2.6", BOUNCE_SOFT, "a report without an action; the text tells of a full mailbox or of the network", "a delivery report that nothing else decided, with a phrase of full mailboxes or network problems in its text", "", {"MailboxFullIndicators", "NetworkProblems"}},
    {"1.8", BOUNCE_HARD, "a report without an action", "a delivery report that nothing else decided", "Stop mailing the address if this happens again."},
    // Special cases, first set
    {"6.15", BOUNCE_AUTO_REPLY, "an autoresponder", "the header field X-Autoreply: yes, or \"Autoresponder\" in the sender's name", ""},
    {"5.AOL", BOUNCE_BLOCKED, "AOL refused the sender or the content", "AOL's mailer daemon, a local part behind the last colon, and a phrase of refused senders", "", {"SenderBlockedIndicators"}},
    {"1.AOL", BOUNCE_HARD, "AOL does not know the address", "AOL's mailer daemon, and a local part behind the last colon", ""},
    {"12.6", BOUNCE_CHALLENGE, "a challenge-response service asks for a confirmation", "the service's domain, with an address as the sender's name", ""},
    {"12.8", BOUNCE_CHALLENGE, "a challenge-response service verifies its own user", "the service's Errors-To, and \"(verification)\" in the subject", "Nothing, unless you have an account there."},
    {"6.1", BOUNCE_AUTO_REPLY, "other mail of a challenge-response service", "the service's Errors-To", ""},
    {"12.11", BOUNCE_CHALLENGE, "a challenge-response filter asks for a confirmation", "a phrase of such a filter in sender, subject or text", ""},
    {"6.13", BOUNCE_AUTO_REPLY, "an out-of-office reply", "the subject \"Out of office\", \"Auto-reply\" in the sender's name, or \"We will get back to you within\" in the text", ""},
    // Special subjects
    {"1.1", BOUNCE_HARD, "unknown user", "the subject \"Returned mail: User unknown:\" with an address in brackets", ""},
    {"1.2", BOUNCE_HARD, "the delivery failed", "the subject \"Delivery failure (\" with an address", ""},
    {"1.3", BOUNCE_HARD, "the delivery failed", "the subject \"Unable to deliver to \" with an address", ""},
    {"1.4", BOUNCE_HARD, "unknown user", "the subject \"DELIVERY FAILURE: User \" with an address", ""},
    {"1.5", BOUNCE_HARD, "invalid address", "the subject \"Invalid E-Mail Address\", and the header field Original-Recipient", ""},
    {"12.1", BOUNCE_CHALLENGE, "a whitelist asks for a confirmation", "\"confirmation\" in the subject, and the header field X-WhiteList-Confirmation", ""},
    // Special cases, second set
    {"6.14", BOUNCE_AUTO_REPLY, "an autoresponder", "the header field X-Autoreply: yes", ""},
    {"12.2", BOUNCE_CHALLENGE, "a filter wants the sender to register", "the header field X-ChoiceMail-Registration-Request", ""},
    {"12.3", BOUNCE_CHALLENGE, "a webmaster's filter asks for a confirmation", "a Reply-To of \"webmaster-confirm\"", ""},
    {"6.2", BOUNCE_AUTO_REPLY, "an autoresponder", "the header field Delivered-To: autoresponder", ""},
    {"6.3", BOUNCE_AUTO_REPLY, "an automatic reply", "\"this is an auto response\" or \"This is an automatic reply\" in the body", ""},
    {"12.12", BOUNCE_CHALLENGE, "a challenge-response service asks for a confirmation", "the web host of the service in the body", ""},
    // Special cases, third set
    {"9.01", BOUNCE_UNSUBSCRIBE, "a mail program unsubscribes its user", "the header field X-Apple-Unsubscribe", ""},
    {"6.4", BOUNCE_AUTO_REPLY, "sent by a program", "the header field Auto-Submitted, whatever its value", ""},
    {"12.9", BOUNCE_CHALLENGE, "a filter asks for a confirmation", "the header field Precedence: auto_reply, and \"one-time inconvenience\" in the text", ""},
    {"6.5", BOUNCE_AUTO_REPLY, "an automatic reply", "the header field Precedence: auto_reply", ""},
    {"6.6", BOUNCE_AUTO_REPLY, "the reply of a challenge system", "a Reply-To of \"challengereply\"", ""},
    {"6.7", BOUNCE_AUTO_REPLY, "an autoresponder", "a sender of \"autoresponder\"", ""},
    // The text
    {"6.8a", BOUNCE_AUTO_REPLY, "an autoresponder of somebody who has left", "an address before \"is no longer a valid email address\"", "Stop mailing the address, which is given up; the text may name a new one."},
    {"10.1", BOUNCE_VIRUS, "a scanner stopped the message", "a marker of bounces, and a scanner's phrase in the text", "", {"VirusIndicators"}},
    {"5.3", BOUNCE_BLOCKED, "the server refused the sender or the content", "a marker of bounces, and a phrase of refused senders in the text", "", {"SenderBlockedIndicators"}},
    {"2.3", BOUNCE_SOFT, "the mailbox is full or the server had trouble", "a marker of bounces, and a phrase of full mailboxes or temporary failures in the text", "", {"MailboxFullIndicators", "SoftBounceIndicators"}},
    {"10.1.1", BOUNCE_VIRUS, "a scanner stopped the message", "a marker of bounces in the text, and a scanner's phrase in the subject", "", {"VirusIndicators"}},
    {"12.10", BOUNCE_CHALLENGE, "a filter asks for a confirmation", "a marker of bounces, a phrase of automatic replies, and \"Please confirm\" in the subject", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {"6.8", BOUNCE_AUTO_REPLY, "an automatic reply", "a marker of bounces, and a phrase of automatic replies in text or subject", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {"2.1", BOUNCE_SOFT, "the network or the server had trouble", "an address behind a marker of bounces, and a phrase of full mailboxes, temporary failures or network problems", "", {"MailboxFullIndicators", "SoftBounceIndicators", "NetworkProblems"}},
    {"5.1", BOUNCE_BLOCKED, "the server refused the sender or the content", "an address behind a marker of bounces, and a phrase of refused senders", "", {"SenderBlockedIndicators"}},
    {"7.2", BOUNCE_TRANSIENT, "the delivery is late and goes on", "an address behind a marker of bounces, and a phrase of delay notices", "", {"TransientIndicators"}},
    {"12.4", BOUNCE_CHALLENGE, "a filter asks for a confirmation", "an address behind a marker of bounces, and a phrase of challenges", "", {"SpamFilterIndicators"}},
    {"1.10", BOUNCE_HARD, "the delivery failed", "an address behind a marker of bounces, and no phrase that makes it less", ""},
    {"10.2", BOUNCE_VIRUS, "a scanner stopped the message", "a scanner's phrase in text or subject, and no address", "", {"VirusIndicators"}},
    {"3.2", BOUNCE_NO_RECIPIENT, "a bounce of a kind that names no recipient", "a phrase of such bounces", "", {"CannotDetermineRecipientStrings"}},
    {"12.7", BOUNCE_CHALLENGE, "a server verifies the sender's address", "a phrase of automatic replies, and \"Sender Address Verification\"", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {"1.9049", BOUNCE_HARD, "an automatic reply: the account is inactive", "a phrase of automatic replies, and \"account is inactive\"", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {"6.9", BOUNCE_AUTO_REPLY, "an automatic reply", "a phrase of automatic replies in text, subject or sender", "", {"AutoReplyIndicators", "AutoReplySubjectIndicators"}},
    {"9.1", BOUNCE_UNSUBSCRIBE, "somebody wants to be unsubscribed", "a phrase of unsubscribe messages in text or subject", "", {"UnsubscribeBodyIndicators", "UnsubscribeSubjectIndicators"}},
    {"7.1", BOUNCE_TRANSIENT, "the delivery is late and goes on", "a phrase of delay notices, and no address", "", {"TransientIndicators"}},
    {"2.5", BOUNCE_SOFT, "the server had trouble", "a phrase of temporary failures, and no address", "", {"SoftBounceIndicators"}},
    {"1.11", BOUNCE_HARD, "unknown user", "\"- no such user here.\" and an address in a short text", "", {"ScanIndicators"}},
    {"12.5", BOUNCE_CHALLENGE, "a filter asks for a confirmation", "a phrase of challenges, and no address", "", {"SpamFilterIndicators"}},
    {"2.2", BOUNCE_SOFT, "the mailbox is full, the network has trouble, or the sender was refused", "a returned message that names its recipient, and a phrase of full mailboxes, network problems or refused senders", "", {"MailboxFullIndicators", "SenderBlockedIndicators", "NetworkProblems"}},
    {"15.2", BOUNCE_ABUSE, "somebody complains about the attached message", "a returned message that names its recipient, and a phrase of complaints in the subject", "", {"AbuseIndicators"}},
    {"7.10", BOUNCE_TRANSIENT, "the delivery is late and goes on", "a returned message that names its recipient, and \"delay\" in the subject", ""},
    {"2.14", BOUNCE_SOFT, "the server had trouble with the recipient", "a returned message that names its recipient, and \"452 4.1.1\" in the text", ""},
    {"1.14", BOUNCE_HARD, "the message came back", "a returned message that names its recipient, and no phrase that makes it less", ""},
    {"11.1", BOUNCE_UNCLASSIFIED, "the subject or sender of bounces, and nothing more", "a subject or sender of bounces, and no phrase that is known", ""},
    // Afterwards
    {"6.481", BOUNCE_AUTO_REPLY, "an out-of-office reply", "\"I am out of the office\" or \"I will be out of the office\" in a text that no check decided", ""},
    {"6.482", BOUNCE_AUTO_REPLY, "an autoresponder", "the header field X-Autoreply-From in a message that looks like a bounce", ""},
};

}  // namespace bouncecheck
