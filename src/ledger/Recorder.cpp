#include "ledger/Recorder.h"

#include <algorithm>
#include <optional>

#include "text/Utf8.h"

namespace bouncecheck::ledger {
namespace {

/// Bytes of a text that comes from a message. People read them, and a stranger chose them.
constexpr std::size_t longestText = 1'000;

std::string_view cut(std::string_view text) noexcept {
    return orNull(wholeCharacters(text, longestText));
}

Time happened(const MessageEntry& message, Time now) noexcept {
    return std::clamp<Time>(message.seen, 0, now);
}

}  // namespace

Recorder::Recorder(Ledger& ledger)
    : ledger_(ledger),
      addMessage_(
          ledger.database(),
          "INSERT INTO messages (digest, seen, recorded, verdict, rule, message_id, place, "
          "problem) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8) ON CONFLICT (digest) DO NOTHING"),
      addEvent_(ledger.database(),
                "INSERT INTO events (message, address, seen, bearing, outcome, reason, advice, "
                "status, reply_code, diagnostic, evidence, tag) "
                "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)") {}

Recorded Recorder::record(std::span<const MessageEntry> messages, Time now) {
    Recorded recorded;
    Transaction transaction(ledger_.database());
    AddressStates states(ledger_, now);
    touched_.clear();
    for (const MessageEntry& message : messages) {
        if (!addMessage(message, now)) continue;
        ++recorded.fresh;
        const std::int64_t id = ledger_.database().lastRow();
        for (const Report& report : message.reports) {
            addReport(report, id, happened(message, now), states);
        }
    }
    for (const auto& [address, more] : touched_) states.update(address, more);
    transaction.commit();
    recorded.spared = states.spared();
    return recorded;
}

bool Recorder::addMessage(const MessageEntry& message, Time now) {
    addMessage_
        .with(message.digest, happened(message, now), now, message.verdict, orNull(message.rule),
              cut(message.messageId), orNull(message.place), orNull(message.problem))
        .run();
    return ledger_.database().changes() > 0;
}

void Recorder::addReport(const Report& report, std::int64_t message, Time seen,
                         AddressStates& states) {
    std::optional<std::int64_t> address;
    if (!report.address.empty()) address = states.idOf(report.address, report.isMailbox);
    const std::string_view bearing = bearingOf(report.outcome, report.advice);
    addEvent_
        .with(message, address, seen, orNull(bearing), nameOf(report.outcome),
              orNull(nameOf(report.reason)), nameOf(report.advice), cut(report.status),
              cut(report.replyCode), cut(report.diagnostic), cut(report.evidence), cut(report.tag))
        .run();
    if (!address || bearing.empty()) return;
    Counted& more = touched_[*address];
    if (bearing != "success") more.add(seen);
}

}  // namespace bouncecheck::ledger
