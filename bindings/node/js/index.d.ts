/** What a message is. */
export type VerdictName =
    | 'none' | 'hard' | 'soft' | 'no-recipient' | 'blocked' | 'auto-reply' | 'transient'
    | 'unsubscribe' | 'virus' | 'unclassified' | 'challenge' | 'disposition' | 'abuse';

/** What happened to the mail at a recipient. */
export type Outcome =
    | 'failed' | 'delayed' | 'delivered' | 'relayed' | 'expanded' | 'complained' | 'displayed'
    | 'unknown';

/** Why a recipient did not get the mail. */
export type Reason =
    | 'unknown-mailbox' | 'inactive-mailbox' | 'unknown-domain' | 'mailbox-full'
    | 'message-too-large' | 'content' | 'authentication' | 'reputation' | 'policy' | 'rate-limit'
    | 'unreachable' | 'expired' | 'system' | 'other';

/** What a sender should do about a recipient. */
export type Advice = 'none' | 'suppress' | 'unsubscribe' | 'retry' | 'fix';

/** Where a recipient and the reason were found. */
export interface Evidence {
    /** In an address made for one recipient, a report, a field, the text, the returned mail. */
    found_in: 'verp' | 'report' | 'header' | 'text' | 'returned';
    reason_from?: 'phrase' | 'status' | 'reply-code';
    /** The row of the table that matched. */
    row?: string;
    /** The words of the message that matched it. */
    quote?: string;
}

/** Somebody whom a message says something about. What it does not say is left out. */
export interface Recipient {
    /** The address that the sender of the original mail knows; '' when only a tag is known. */
    address: string;
    /** The address that the mail was sent on to, where the message names another. */
    final_address?: string;
    /** What the address that the mail came back to carries, by `verp`. */
    tag?: string;
    outcome: Outcome;
    reason?: Reason;
    advice: Advice;
    /** The enhanced status code (RFC 3463); a report may hold what is none. */
    status?: string;
    /** The reply code of SMTP (RFC 5321, section 4.2). */
    reply_code?: string;
    /** What the mail system said, without its type. */
    diagnostic?: string;
    /** The host that said it. */
    remote_mta?: string;
    /** Dates as the report writes them (RFC 3464, sections 2.3.7 and 2.3.9). */
    last_attempt?: string;
    will_retry_until?: string;
    evidence: Evidence;
}

/** What a report states besides its recipients. */
export interface Report {
    reporting_mta?: string;
    /** All fields of a complaint (RFC 5965) or a receipt (RFC 8098), in their order. */
    fields?: { name: string; value: string }[];
}

/** Fields of the header of the message that came back, decoded. */
export interface ReturnedMessage {
    message_id?: string;
    from?: string;
    to?: string;
    subject?: string;
    date?: string;
    list_id?: string;
    return_path?: string;
}

/** A step on the way to the verdict: a check begins or ends, a line, a value. */
export type Step =
    | { enter: string } | { leave: string } | { info: string } | { tag: string; value: string };

/**
 * What a message means: an object of docs/result.schema.json without `source` and `index`, which
 * a message in memory does not have.
 */
export interface Result {
    /** The number of the verdict. */
    type: number;
    name: VerdictName;
    /** The label of the rule; null when no rule decided. */
    label: string | null;
    /** What the message has as the address; it need not have the form of one. '' for none. */
    address: string;
    /** Each once, in the order of the message. */
    recipients: Recipient[];
    report: Report;
    returned: ReturnedMessage;
    /** With `data`: the text that was decided upon. */
    data?: string;
    /** With `trace`: the steps. */
    trace?: Step[];
}

export interface Options {
    /**
     * The forms of the addresses that mail comes back to, such as
     * 'bounces+{local}={domain}@lists.example.org' or 'bounces-{tag}@example.org'.
     */
    verp?: string | readonly string[];
    /** Whether to tell each step on the way to the verdict. */
    trace?: boolean;
    /** Whether to tell the text that was decided upon. */
    data?: boolean;
}

/**
 * Tells what a message (RFC 5322) means.
 *
 * Any bytes do: nothing in a message is an error, and the time it takes is linear in its size.
 * A string is taken as its UTF-8, so give bytes where mail may be in another charset. The result
 * belongs to the caller.
 *
 * Throws a TypeError when an argument has another type, a RangeError when `verp` is no such form,
 * and an Error when memory runs out; the next call works again.
 */
export function classify(message: Uint8Array | string, options?: Options): Result;

/**
 * Loads the classifier. In Node this is not needed: the first `classify` does it. Awaited first,
 * it is done without stopping the event loop.
 */
export function init(): Promise<void>;
