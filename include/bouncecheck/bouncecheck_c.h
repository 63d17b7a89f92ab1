#pragma once

// C has neither "using" nor headers of C++. NOLINTBEGIN(modernize-*)
#include <stddef.h>

#include <bouncecheck/Export.h>
#include <bouncecheck/Version.h>

/// BounceCheck for C: what a returned or automatic e-mail means, for whom, and why. It is the
/// library of bouncecheck.h with functions, for C (C99 and later) and for languages that call C.
/// docs/c.md begins with a whole program.
///
/// **Handles.** A classifier holds what it found in the last message. Make one, classify any
/// number of messages with it, one after the other, and free it.
///
/// **Texts.** Everything that is handed out belongs to the library. Texts are valid until the
/// next `bouncecheck_classify` with their classifier, or until it is freed; other calls leave
/// them alone. Texts that need no classifier are constants. A text is never null: an absent one
/// is "". It is UTF-8 unless its charset was unknown, has its size in bytes, and a
/// NUL behind it that does not count. It may hold NUL and control characters.
///
/// **Errors.** Nothing in a message is an error. A wrong argument, such as a null pointer, is
/// answered by `BOUNCECHECK_BAD_ARGUMENT`, and memory that ran out by
/// `BOUNCECHECK_OUT_OF_MEMORY`. A structure that a failed call was to fill holds the texts ""
/// and the numbers of what is none, nowhere or unknown. The library prints nothing, never ends
/// the program, and opens no file, though the C library may load a table of its own for a rare
/// charset (iconv). Undefined are the use of a classifier or text that was freed, a classifier
/// that is freed twice, and pointers to less memory than is said.
///
/// **Structures** that are passed with their size (`sizeof verdict`) may become longer in
/// later versions, by members at their end. A program gets those that it was compiled with;
/// those that an older library does not know are 0.
///
/// **Numbers** of types, reasons and so on never change their meaning; there may be more of
/// them later.
///
/// **Threads.** A classifier serves one thread at a time, not always the same. Distinct
/// classifiers are independent, and the functions without one may be called at any time.

#ifdef __cplusplus
extern "C" {
#endif

/// The version of the library that the program runs with, as `BOUNCECHECK_VERSION` is that of
/// the headers which it was compiled with.
BOUNCECHECK_EXPORT const char* bouncecheck_version(void);

/// How a call ended.
enum bouncecheck_status {
    BOUNCECHECK_OK = 0,
    BOUNCECHECK_OUT_OF_MEMORY = 1,
    /// A null pointer, a size of 0 for a structure, a size that no object has, or unknown bits.
    BOUNCECHECK_BAD_ARGUMENT = 2,
    /// What was given is no VERP pattern.
    BOUNCECHECK_BAD_PATTERN = 3,
    /// There is nothing at this index.
    BOUNCECHECK_OUT_OF_RANGE = 4,
    /// No message was classified yet, or the last call of `bouncecheck_classify` failed.
    BOUNCECHECK_NO_RESULT = 5
};
/// A status in words, for logs; "" for a number that is none.
BOUNCECHECK_EXPORT const char* bouncecheck_status_text(int status);

/// Bytes with their count and a NUL behind them.
typedef struct bouncecheck_text {
    const char* bytes;
    size_t size;
} bouncecheck_text;

/// The position of something that does not occur in a text.
#define BOUNCECHECK_NOWHERE ((size_t)-1)

// --- Classifying -----------------------------------------------------------------------

/// A handle: what was found in the last message, and what messages are read with.
typedef struct bouncecheck_classifier bouncecheck_classifier;

/// Makes a classifier, which the caller frees. `*made` is null when that fails.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_classifier_new(
    bouncecheck_classifier** made);
/// Frees a classifier and all texts that it handed out; null is ignored.
BOUNCECHECK_EXPORT void bouncecheck_classifier_free(bouncecheck_classifier* classifier);

/// Adds a form of the addresses that mail comes back to, one for each recipient (variable
/// envelope return paths): "bounces+{local}={domain}@lists.example.org" or
/// "bounces-{tag}@example.org". `pattern` has `size` bytes, which are copied. The messages that
/// follow are read with all that were added; `BOUNCECHECK_BAD_PATTERN` adds none.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_add_verp(bouncecheck_classifier* classifier,
                                                                const char* pattern, size_t size);

/// What to find out besides the verdict.
enum bouncecheck_what {
    /// For `bouncecheck_get_recipient`.
    BOUNCECHECK_RECIPIENTS = 1,
    /// For `bouncecheck_get_facts` and `bouncecheck_get_report_field`.
    BOUNCECHECK_FACTS = 2,
    /// For `bouncecheck_get_trace`.
    BOUNCECHECK_TRACE = 4
};

/// Classifies one message: `size` bytes as a mail server delivers them (RFC 5322), with LF or
/// CRLF line ends. Any bytes do, none included, then `bytes` may be null. They are copied, and
/// may be a text that this classifier handed out. `what` is a sum of `bouncecheck_what`, or 0.
/// Time and memory are linear in the size of the message. What was found in the message before
/// is gone, also when the call fails.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_classify(bouncecheck_classifier* classifier,
                                                                const void* bytes, size_t size,
                                                                unsigned int what);

// --- The verdict -----------------------------------------------------------------------

/// What a message means. 4, 8 and 13 are not used.
enum bouncecheck_type {
    /// Not a bounce, or no verdict.
    BOUNCECHECK_TYPE_NONE = 0,
    /// Permanent failure: unknown user, invalid address.
    BOUNCECHECK_TYPE_HARD = 1,
    /// Temporary failure: mailbox full, network trouble.
    BOUNCECHECK_TYPE_SOFT = 2,
    /// A bounce that does not name the address that failed.
    BOUNCECHECK_TYPE_NO_RECIPIENT = 3,
    /// Refused by a filter, or because of its sender.
    BOUNCECHECK_TYPE_BLOCKED = 5,
    /// An automatic or out-of-office reply.
    BOUNCECHECK_TYPE_AUTO_REPLY = 6,
    /// Delayed and still being tried, or a report of success.
    BOUNCECHECK_TYPE_TRANSIENT = 7,
    /// A request to be unsubscribed.
    BOUNCECHECK_TYPE_UNSUBSCRIBE = 9,
    /// A notice of a virus or content scanner.
    BOUNCECHECK_TYPE_VIRUS = 10,
    /// Looks like a bounce, but no rule knows its kind.
    BOUNCECHECK_TYPE_UNCLASSIFIED = 11,
    /// A challenge: the recipient's filter wants the sender to confirm.
    BOUNCECHECK_TYPE_CHALLENGE = 12,
    /// A receipt: the message was displayed.
    BOUNCECHECK_TYPE_DISPOSITION = 14,
    /// A complaint about abuse.
    BOUNCECHECK_TYPE_ABUSE = 15
};
/// "hard"; "" for a number that is no type.
BOUNCECHECK_EXPORT const char* bouncecheck_type_name(int type);

/// Which text of a message a phrase was found in.
enum bouncecheck_found_in {
    BOUNCECHECK_IN_NOTHING = 0,
    BOUNCECHECK_IN_SUBJECT = 1,
    BOUNCECHECK_IN_SENDER_ADDRESS = 2,
    BOUNCECHECK_IN_SENDER_NAME = 3,
    /// The text that most checks decide upon: that of `bouncecheck_get_evidence`.
    BOUNCECHECK_IN_DATA = 4,
    /// The body as a reader sees it.
    BOUNCECHECK_IN_BODY = 5,
    /// The delivery status of a report (RFC 3464), or its Diagnostic-Code.
    BOUNCECHECK_IN_REPORT = 6
};

/// A phrase that was found: the row of a table, and which text it stands in. If nothing was
/// found, every member is empty.
typedef struct bouncecheck_match {
    /// The name of the table, as `bouncecheck --list-phrases` prints it.
    bouncecheck_text table;
    /// The row in it, from 0.
    size_t row;
    /// As it stands in the table.
    bouncecheck_text phrase;
    /// One of `bouncecheck_found_in`.
    int found_in;
} bouncecheck_match;

/// Where the address of a verdict was found.
enum bouncecheck_address_source {
    BOUNCECHECK_ADDRESS_NONE = 0,
    /// The field From: whoever sent the message.
    BOUNCECHECK_ADDRESS_SENDER = 1,
    BOUNCECHECK_ADDRESS_SUBJECT = 2,
    /// A field of the message's own header.
    BOUNCECHECK_ADDRESS_HEADER = 3,
    /// A field of a report.
    BOUNCECHECK_ADDRESS_REPORT = 4,
    /// The text; behind a marker, if there is one.
    BOUNCECHECK_ADDRESS_TEXT = 5,
    /// A recipient of the message that came back.
    BOUNCECHECK_ADDRESS_RETURNED = 6
};

/// What a message means, and what that was decided by.
typedef struct bouncecheck_verdict {
    /// One of `bouncecheck_type`.
    int type;
    /// One of `bouncecheck_address_source`.
    int address_source;
    /// The address that failed or answered. Usually a bare address, but whatever the message
    /// has in its place otherwise: check the form before use.
    bouncecheck_text address;
    /// The label of the rule that decided, such as "1.10"; "" when none did, or a row of the
    /// table of last resort, which `match` then names.
    bouncecheck_text label;
    /// What the verdict says about the message, and what to do about it.
    bouncecheck_text meaning;
    bouncecheck_text advice;
    /// The phrase that decided.
    bouncecheck_match match;
    /// The pattern of the subject or the sender for which the text was read.
    bouncecheck_match pattern;
    /// What the address stands behind in the text.
    bouncecheck_match marker;
} bouncecheck_verdict;

/// The verdict on the last message. `verdict_size` is `sizeof *verdict`.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_verdict(
    const bouncecheck_classifier* classifier, bouncecheck_verdict* verdict, size_t verdict_size);

/// The text that the verdict was decided upon, and what it was decided by there.
typedef struct bouncecheck_evidence {
    /// Decoded, with CRLF line ends unless it was no text.
    bouncecheck_text data;
    /// Where in `data` the phrase that decided stands first, in bytes; `BOUNCECHECK_NOWHERE` when
    /// it stands in another text of the message, such as the subject.
    size_t phrase_place;
    /// Where in `data` the address stands; `BOUNCECHECK_NOWHERE` when it does not.
    size_t address_place;
} bouncecheck_evidence;

/// Searches the text for them: linear in its size.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_evidence(
    const bouncecheck_classifier* classifier, bouncecheck_evidence* evidence, size_t evidence_size);

/// The steps that led to the verdict, as a tree: one line each with LF behind it, two blanks a
/// level, control characters as escapes. "" without `BOUNCECHECK_TRACE`. When memory runs out,
/// steps may be missing in it, as a log never keeps a message from being classified.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_trace(
    const bouncecheck_classifier* classifier, bouncecheck_text* trace);

// --- Recipients ------------------------------------------------------------------------

/// What a message says happened to the original mail at a recipient. Most are actions of a
/// delivery report (RFC 3464, section 2.3.3).
enum bouncecheck_outcome {
    BOUNCECHECK_OUTCOME_FAILED = 0,
    /// Still being tried.
    BOUNCECHECK_OUTCOME_DELAYED = 1,
    BOUNCECHECK_OUTCOME_DELIVERED = 2,
    /// Handed to a system that sends no reports.
    BOUNCECHECK_OUTCOME_RELAYED = 3,
    /// Delivered to an alias or a list, which sends it on.
    BOUNCECHECK_OUTCOME_EXPANDED = 4,
    /// The recipient complained, or wants no more mail (RFC 5965).
    BOUNCECHECK_OUTCOME_COMPLAINED = 5,
    /// The recipient's program displayed or handled it (RFC 8098).
    BOUNCECHECK_OUTCOME_DISPLAYED = 6,
    /// Something was reported of the recipient, but not what.
    BOUNCECHECK_OUTCOME_UNKNOWN = 7
};
/// "failed"; "" for a number that is no outcome.
BOUNCECHECK_EXPORT const char* bouncecheck_outcome_name(int outcome);

/// Why a recipient did not get the mail; docs/reasons.md explains each.
enum bouncecheck_reason {
    BOUNCECHECK_REASON_NONE = 0,
    BOUNCECHECK_REASON_UNKNOWN_MAILBOX = 1,
    BOUNCECHECK_REASON_INACTIVE_MAILBOX = 2,
    BOUNCECHECK_REASON_UNKNOWN_DOMAIN = 3,
    BOUNCECHECK_REASON_MAILBOX_FULL = 4,
    BOUNCECHECK_REASON_MESSAGE_TOO_LARGE = 5,
    BOUNCECHECK_REASON_CONTENT = 6,
    BOUNCECHECK_REASON_AUTHENTICATION = 7,
    BOUNCECHECK_REASON_REPUTATION = 8,
    BOUNCECHECK_REASON_POLICY = 9,
    BOUNCECHECK_REASON_RATE_LIMIT = 10,
    BOUNCECHECK_REASON_UNREACHABLE = 11,
    BOUNCECHECK_REASON_EXPIRED = 12,
    BOUNCECHECK_REASON_SYSTEM = 13,
    /// It failed, and nothing says why.
    BOUNCECHECK_REASON_OTHER = 14
};
/// "unknown-mailbox"; "" for `BOUNCECHECK_REASON_NONE` and for a number that is no reason.
BOUNCECHECK_EXPORT const char* bouncecheck_reason_name(int reason);
/// What a reason means to the sender, and what to do about it; "" for the same numbers.
BOUNCECHECK_EXPORT const char* bouncecheck_reason_meaning(int reason);
BOUNCECHECK_EXPORT const char* bouncecheck_reason_action(int reason);

/// What a sender should do about a recipient.
enum bouncecheck_advice {
    BOUNCECHECK_ADVICE_NONE = 0,
    /// Stop mailing the address: the mailbox or the domain does not exist, or the mailbox was
    /// closed.
    BOUNCECHECK_ADVICE_SUPPRESS = 1,
    /// Take the address off the list: its owner complained, or asked for it.
    BOUNCECHECK_ADVICE_UNSUBSCRIBE = 2,
    /// It may work later. Stop when it keeps failing.
    BOUNCECHECK_ADVICE_RETRY = 3,
    /// The mailbox works: what was sent, or who sent it, was refused.
    BOUNCECHECK_ADVICE_FIX = 4
};
/// "suppress"; "" for a number that is no advice.
BOUNCECHECK_EXPORT const char* bouncecheck_advice_name(int advice);
/// What an advice means to the sender; "" for a number that is none.
BOUNCECHECK_EXPORT const char* bouncecheck_advice_meaning(int advice);

/// Where a message names a recipient, the surest first.
enum bouncecheck_source {
    /// The address that the mail came back to was made for one recipient (VERP).
    BOUNCECHECK_SOURCE_VERP = 0,
    /// A delivery status, a complaint or a receipt.
    BOUNCECHECK_SOURCE_REPORT = 1,
    /// A field of the header, such as X-Failed-Recipients.
    BOUNCECHECK_SOURCE_HEADER = 2,
    /// The text that people read.
    BOUNCECHECK_SOURCE_TEXT = 3,
    /// The header of the message that came back.
    BOUNCECHECK_SOURCE_RETURNED = 4
};
/// "report"; "" for a number that is no source.
BOUNCECHECK_EXPORT const char* bouncecheck_source_name(int source);

/// What gave a reason.
enum bouncecheck_basis {
    BOUNCECHECK_BASIS_NONE = 0,
    /// A row of the phrases of replies.
    BOUNCECHECK_BASIS_PHRASE = 1,
    /// An enhanced status code.
    BOUNCECHECK_BASIS_STATUS = 2,
    /// The reply code of SMTP.
    BOUNCECHECK_BASIS_REPLY_CODE = 3
};
/// "phrase"; "" for `BOUNCECHECK_BASIS_NONE` and for a number that is no basis.
BOUNCECHECK_EXPORT const char* bouncecheck_basis_name(int basis);

/// Somebody whom a message says something about.
typedef struct bouncecheck_recipient {
    /// The address that the sender of the original mail knows; "" when only a tag is known.
    bouncecheck_text address;
    /// The address that the mail was sent on to, where a report names another.
    bouncecheck_text final_address;
    /// What a VERP address carries for the caller's own records.
    bouncecheck_text tag;
    /// One of `bouncecheck_outcome`, `bouncecheck_reason` and `bouncecheck_advice`.
    int outcome;
    int reason;
    int advice;
    /// Where the recipient was found: one of `bouncecheck_source`.
    int source;
    /// What gave the reason: one of `bouncecheck_basis`.
    int basis;
    /// The enhanced status code (RFC 3463): "5.1.1".
    bouncecheck_text status;
    /// The reply code of SMTP (RFC 5321): "550".
    bouncecheck_text reply_code;
    /// What the mail system said, without its type, and the host that said it.
    bouncecheck_text diagnostic;
    bouncecheck_text remote_mta;
    /// Dates as the report writes them (RFC 3464, sections 2.3.7 and 2.3.9).
    bouncecheck_text last_attempt;
    bouncecheck_text will_retry_until;
    /// The phrase or code that gave the reason, as its table has it.
    bouncecheck_text row;
    /// The words of the message that matched the row; "" for a code.
    bouncecheck_text quote;
} bouncecheck_recipient;

/// How many recipients the message names: each once, in its order. 0 without a result or
/// without `BOUNCECHECK_RECIPIENTS`.
BOUNCECHECK_EXPORT size_t bouncecheck_recipient_count(const bouncecheck_classifier* classifier);
/// The recipient at `index` from 0.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_recipient(
    const bouncecheck_classifier* classifier, size_t index, bouncecheck_recipient* recipient,
    size_t recipient_size);

// --- What the message states besides ---------------------------------------------------

/// What a report states, and what identifies the message that came back: fields of its header,
/// decoded.
typedef struct bouncecheck_facts {
    /// Without its type: the name in "dns; mx.example.org".
    bouncecheck_text reporting_mta;
    bouncecheck_text returned_message_id;
    bouncecheck_text returned_from;
    bouncecheck_text returned_to;
    bouncecheck_text returned_subject;
    bouncecheck_text returned_date;
    bouncecheck_text returned_list_id;
    /// The address that the message was to come back to.
    bouncecheck_text returned_return_path;
} bouncecheck_facts;

/// All is "" without `BOUNCECHECK_FACTS`.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_facts(
    const bouncecheck_classifier* classifier, bouncecheck_facts* facts, size_t facts_size);

/// A field of a report, its name as written.
typedef struct bouncecheck_report_field {
    bouncecheck_text name;
    bouncecheck_text value;
} bouncecheck_report_field;

/// How many fields a complaint (RFC 5965) or a receipt (RFC 8098) has; 0 without
/// `BOUNCECHECK_FACTS`.
BOUNCECHECK_EXPORT size_t bouncecheck_report_field_count(const bouncecheck_classifier* classifier);
/// The field at `index` from 0.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_report_field(
    const bouncecheck_classifier* classifier, size_t index, bouncecheck_report_field* field,
    size_t field_size);

/// The first field of that name in the message's own header, in any letter case: unfolded,
/// trimmed, with encoded words (RFC 2047) decoded; "" when there is none. Its text stays as
/// long as the others; a second call for the same name takes no more memory.
BOUNCECHECK_EXPORT enum bouncecheck_status bouncecheck_get_field(bouncecheck_classifier* classifier,
                                                                 const char* name, size_t name_size,
                                                                 bouncecheck_text* value);

#ifdef __cplusplus
}
#endif
// NOLINTEND(modernize-*)
