#include "ledger/Recorder.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "ledger/AddressKey.h"
#include "ledger/NewAddresses.h"
#include "text/Utf8.h"

namespace bouncecheck::ledger {
namespace {

/// Bytes of a text that comes from a message. People read them, and a stranger chose them. Longer
/// addresses are none: those that mail can be sent to have 254 (RFC 5321, section 4.5.3.1.3).
constexpr std::size_t longestText = 1'000;

std::string_view cut(std::string_view text) noexcept {
    return orNull(wholeCharacters(text, longestText));
}

Time happened(const MessageEntry& message, Time now) noexcept {
    return std::clamp<Time>(message.seen, 0, now);
}

}  // namespace

/// Those of one transaction.
struct Recorder::Addresses {
    Addresses(Ledger& ledger, Time now) : states(ledger, now), fresh(states.nextId()) {}

    std::int64_t idOf(const Report& report) {
        std::string key = keyOf(report.address);
        if (const auto id = fresh.idOf(key)) return *id;
        if (const auto id = states.find(key)) return *id;
        return fresh.add(std::move(key), report.address, report.isMailbox);
    }
    void addReport(std::int64_t id, const ReportedFact& fact) {
        if (fact.bearing == Bearing::none || fresh.addReport(id, fact)) return;
        Counted& more = known[id];
        if (fact.bearing != Bearing::success) more.add(fact.seen);
    }
    void write() {
        fresh.write(states);
        for (const auto& [id, more] : known) states.update(id, more);
    }

    AddressStates states;
    NewAddresses fresh;
    /// Whose states may have changed, with the reports against them that are new.
    std::map<std::int64_t, Counted> known{};
};

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

Recording::Recording(Recorder& recorder)
    : recorder_(&recorder),
      transaction_(std::make_unique<Transaction>(recorder.ledger_.database())) {}

Recorded Recording::add(std::span<const MessageEntry> messages, Time now) {
    return recorder_->add(messages, now);
}

Recorded Recorder::record(std::span<const MessageEntry> messages, Time now) {
    Recording recording = begin();
    Recorded recorded = recording.add(messages, now);
    recording.commit();
    return recorded;
}

Recorded Recorder::add(std::span<const MessageEntry> messages, Time now) {
    Recorded recorded;
    Addresses addresses(ledger_, now);
    for (const MessageEntry& message : messages) {
        if (!addMessage(message, now)) continue;
        ++recorded.fresh;
        const std::int64_t id = ledger_.database().lastRow();
        for (const Report& report : message.reports) {
            addReport(report, id, happened(message, now), addresses);
        }
    }
    addresses.write();
    recorded.spared = addresses.states.spared();
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
                         Addresses& addresses) {
    std::optional<std::int64_t> address;
    const bool isKept = !report.address.empty() && report.address.size() <= longestText;
    if (isKept) address = addresses.idOf(report);
    const Bearing bearing = bearingOf(report.outcome, report.advice);
    const std::string_view reason = nameOf(report.reason);
    addEvent_
        .with(message, address, seen, orNull(nameOf(bearing)), nameOf(report.outcome),
              orNull(reason), nameOf(report.advice), cut(report.status), cut(report.replyCode),
              cut(report.diagnostic), cut(report.evidence), cut(report.tag))
        .run();
    if (address) addresses.addReport(*address, {seen, bearing, reason});
}

std::size_t messageCount(Ledger& ledger) {
    Statement last(ledger.database(), "SELECT max(id) FROM messages");
    return last.step() ? static_cast<std::size_t>(last.number(0)) : 0;
}

}  // namespace bouncecheck::ledger
