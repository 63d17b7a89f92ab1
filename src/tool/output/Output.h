#pragma once

#include <iosfwd>
#include <memory>
#include <vector>

#include "tool/Classify.h"
#include "tool/output/Fields.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {

/// What messages are shown as, one after the other as they are classified. Texts of a
/// message are written a few KB at a time, never copied as a whole.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    /// What it needs to know of a message.
    virtual Wanted wanted() const = 0;
    virtual void show(const Classified& message) = 0;
    /// Called once, after the last message.
    virtual void finish() {}
};

struct OutputParts {
    /// Empty for the usual ones.
    std::vector<const Field*> fields;
    bool data = false;
    bool trace = false;
    RowChoice rows = {};
    /// Of CSV and TSV: a line of names above the values.
    bool headings = true;
    /// Of CSV: put an apostrophe before values that spreadsheets take for formulas.
    bool isCsvSafe = false;
};

/// Columns for people, and a count by verdict at the end. Nothing from a
/// message can steer the terminal.
std::unique_ptr<Output> makeTableOutput(std::ostream& out, OutputParts parts, Style style);

/// One JSON object a line. Bytes that are not UTF-8 appear as U+FFFD, control characters
/// (text/Controls.h) as escapes.
std::unique_ptr<Output> makeJsonOutput(std::ostream& out, OutputParts parts);

/// CSV (RFC 4180, CRLF line ends) under a line of names. Line breaks and tabs
/// stand in quotes; other control characters (text/Controls.h), which it has no place
/// for, and bytes that are not UTF-8 appear as U+FFFD. Values are exact unless
/// `isCsvSafe` is set: an address may begin with '+' or '='.
std::unique_ptr<Output> makeCsvOutput(std::ostream& out, OutputParts parts);

/// Values between tabs under a line of names; control characters and the
/// backslash as \t, \n, \r, \xNN for each byte and \\, which databases read back.
std::unique_ptr<Output> makeTsvOutput(std::ostream& out, OutputParts parts);

/// The distinct addresses that failed, sorted, one a line, domains in lower case:
/// that of the verdict, without punctuation around it, every recipient that a delivery
/// report says failed, and those of X-Failed-Recipients. With `ofFailures`, verdicts that
/// are no failure add no address of their own. Only addresses are listed (RFC 5321,
/// section 4.1.2, and RFC 6531), and no mailer daemon or postmaster that the sender of
/// the message is.
std::unique_ptr<Output> makeAddressOutput(std::ostream& out, bool ofFailures);

enum class SummaryForm { text, json };

/// Counts and shares by verdict, and the most frequent labels, domains and
/// phrases.
std::unique_ptr<Output> makeSummaryOutput(std::ostream& out, SummaryForm form, Style style);

/// All about each message: what it is, by which rule and why, what to do, the
/// steps as a tree and the text with what was found in it.
std::unique_ptr<Output> makeExplainOutput(std::ostream& out, Style style);

/// One HTML page with all the above for a browser, and nothing it would fetch from
/// elsewhere. Written as messages come: what it keeps does not grow with their
/// number. `out` has to outlive it.
std::unique_ptr<Output> makeHtmlOutput(std::ostream& out);

}  // namespace bouncecheck
