#include "ArrowResults.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "Sha256.h"
#include "ledger/MessageIdentity.h"
#include "mime/MailDate.h"
#include "tool/output/Address.h"

namespace bouncecheck::python {
namespace {

using Kind = ArrowColumn::Kind;
enum class Null { never, possible };

ArrowColumn column(Kind kind, const char* name, Null null, std::vector<ArrowColumn> children = {}) {
    return {kind, name, null == Null::possible, std::move(children)};
}

ArrowColumn text(const char* name) { return column(Kind::text, name, Null::never); }
ArrowColumn textOrNull(const char* name) { return column(Kind::text, name, Null::possible); }

ArrowColumn listOf(const char* name, Null null, ArrowColumn item) {
    std::vector<ArrowColumn> items;
    items.push_back(std::move(item));
    return column(Kind::list, name, null, std::move(items));
}

ArrowColumn evidenceColumn() {
    return column(
        Kind::record, "evidence", Null::never,
        {text("found_in"), textOrNull("reason_from"), textOrNull("row"), textOrNull("quote")});
}

ArrowColumn recipientColumn() {
    return column(Kind::record, "item", Null::never,
                  {text("address"), textOrNull("final_address"), textOrNull("tag"), text("outcome"),
                   textOrNull("reason"), text("advice"), textOrNull("status"),
                   textOrNull("reply_code"), textOrNull("diagnostic"), textOrNull("remote_mta"),
                   textOrNull("last_attempt"), textOrNull("will_retry_until"), evidenceColumn()});
}

ArrowColumn reportColumn() {
    return column(Kind::record, "report", Null::possible,
                  {textOrNull("reporting_mta"), listOf("fields", Null::possible,
                                                       column(Kind::record, "item", Null::never,
                                                              {text("name"), text("value")}))});
}

ArrowColumn returnedColumn() {
    return column(
        Kind::record, "returned", Null::possible,
        {textOrNull("message_id"), textOrNull("from"), textOrNull("to"), textOrNull("subject"),
         textOrNull("date"), textOrNull("list_id"), textOrNull("return_path")});
}

ArrowColumn ledgerColumn() {
    return column(
        Kind::record, "ledger", Null::possible,
        {column(Kind::bytes, "digest", Null::possible), column(Kind::time, "date", Null::possible),
         textOrNull("message_id"),
         listOf("is_mailbox", Null::possible, column(Kind::boolean, "item", Null::never))});
}

/// Null in a row without a message, so each may be.
ArrowColumn resultColumns(bool withLedger) {
    std::vector<ArrowColumn> columns = {
        column(Kind::int32, "type", Null::possible),
        textOrNull("verdict"),
        textOrNull("rule"),
        textOrNull("address"),
        listOf("recipients", Null::possible, recipientColumn()),
        reportColumn(),
        returnedColumn(),
    };
    if (withLedger) columns.push_back(ledgerColumn());
    return column(Kind::record, "", Null::never, std::move(columns));
}

void appendEvidence(ArrowColumn& column, const Recipient& recipient) {
    RecordRow row(column);
    row.text(nameOf(recipient.source));
    row.textOrNull(nameOf(recipient.basis));
    row.textOrNull(recipient.row);
    row.textOrNull(recipient.quote);
    row.end();
}

void appendRecipient(ArrowColumn& column, const Recipient& recipient) {
    RecordRow row(column);
    row.text(recipient.address);
    row.textOrNull(recipient.finalAddress);
    row.textOrNull(recipient.tag);
    row.text(nameOf(recipient.outcome));
    row.textOrNull(nameOf(recipient.reason));
    row.text(nameOf(recipient.advice));
    row.textOrNull(recipient.status);
    row.textOrNull(recipient.replyCode);
    row.textOrNull(recipient.diagnostic);
    row.textOrNull(recipient.remoteMta);
    row.textOrNull(recipient.lastAttempt);
    row.textOrNull(recipient.willRetryUntil);
    appendEvidence(row.next(), recipient);
    row.end();
}

void appendReport(ArrowColumn& column, const Facts& facts) {
    RecordRow row(column);
    row.textOrNull(facts.reportingMta);
    ArrowColumn& fields = row.next();
    for (const ReportField& field : facts.report) {
        RecordRow item(fields.children().front());
        item.text(field.name);
        item.text(field.value);
        item.end();
    }
    if (facts.report.empty()) {
        fields.appendNull();
    } else {
        fields.appendList();
    }
    row.end();
}

void appendReturned(ArrowColumn& column, const ReturnedMessage& message) {
    RecordRow row(column);
    row.textOrNull(message.messageId);
    row.textOrNull(message.from);
    row.textOrNull(message.to);
    row.textOrNull(message.subject);
    row.textOrNull(message.date);
    row.textOrNull(message.listId);
    row.textOrNull(message.returnPath);
    row.end();
}

void appendDate(ArrowColumn& column, const std::string& field) {
    // From the year 1 to 9999, which is what others have dates for.
    constexpr std::int64_t first = -62'135'596'800;
    constexpr std::int64_t last = 253'402'300'799;
    if (const auto seconds = parseMailDate(field)) {
        column.appendNumber(std::clamp(*seconds, first, last) * 1'000'000);
    } else {
        column.appendNull();
    }
}

void appendLedger(ArrowColumn& column, std::string_view bytes, const Message& message,
                  std::span<const Recipient> recipients) {
    RecordRow row(column);
    Sha256 hash;
    ledger::addIdentity(hash, bytes);
    const Sha256::Digest digest = hash.result();
    row.next().appendBytes({reinterpret_cast<const char*>(digest.data()), digest.size()});
    appendDate(row.next(), message.field("Date"));
    row.textOrNull(message.field("Message-ID"));
    ArrowColumn& mailboxes = row.next();
    for (const Recipient& recipient : recipients) {
        mailboxes.children().front().appendBoolean(isAddress(recipient.address));
    }
    mailboxes.appendList();
    row.end();
}

}  // namespace

ArrowResults::ArrowResults(bool withLedger)
    : withLedger_(withLedger), columns_(resultColumns(withLedger)) {}

void ArrowResults::add(std::string_view bytes, std::span<const VerpPattern> verp,
                       Classifier& classifier) {
    const Message message(bytes);
    const Verdict verdict = classifier.classify(message);
    const std::vector<Recipient> recipients = recipientsOf(message, verp);
    const Facts facts = factsOf(message);

    RecordRow row(columns_);
    row.next().appendNumber(static_cast<int>(verdict.type));
    row.text(bounceTypeName(verdict.type));
    row.textOrNull(verdict.label());
    row.text(verdict.address);
    ArrowColumn& all = row.next();
    for (const Recipient& one : recipients) appendRecipient(all.children().front(), one);
    all.appendList();
    appendReport(row.next(), facts);
    appendReturned(row.next(), facts.returned);
    if (withLedger_) appendLedger(row.next(), bytes, message, recipients);
    row.end();
}

void ArrowResults::addNone() {
    for (ArrowColumn& each : columns_.children()) each.appendNull();
    columns_.appendRecord();
}

}  // namespace bouncecheck::python
