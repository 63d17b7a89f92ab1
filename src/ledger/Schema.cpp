#include "ledger/Schema.h"

#include <sqlite3.h>

#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "ledger/Sqlite.h"

namespace bouncecheck::ledger {
namespace {

/// What each version added to the one before. docs/ledger.md describes the result.
constexpr const char* migrations[] = {
    R"(
CREATE TABLE messages (
    id INTEGER PRIMARY KEY,
    digest BLOB NOT NULL UNIQUE,
    seen INTEGER NOT NULL,
    recorded INTEGER NOT NULL,
    verdict TEXT NOT NULL,
    rule TEXT,
    message_id TEXT,
    place TEXT,
    problem TEXT);
CREATE TABLE addresses (
    id INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE,
    written TEXT,
    is_mailbox INTEGER NOT NULL,
    state TEXT NOT NULL CHECK (state IN ('active', 'suppressed')),
    cause TEXT CHECK (cause IN ('suppress', 'unsubscribe', 'retry', 'deny', 'allow', 'protected')),
    reason TEXT,
    since INTEGER,
    first_seen INTEGER,
    last_seen INTEGER,
    count INTEGER NOT NULL,
    changed INTEGER);
CREATE INDEX addresses_by_change ON addresses (changed) WHERE changed IS NOT NULL;
CREATE INDEX addresses_protected ON addresses (key) WHERE cause = 'protected';
CREATE TABLE events (
    id INTEGER PRIMARY KEY,
    message INTEGER NOT NULL REFERENCES messages,
    address INTEGER REFERENCES addresses,
    seen INTEGER NOT NULL,
    bearing TEXT CHECK (bearing IN ('suppress', 'unsubscribe', 'retry', 'success')),
    outcome TEXT NOT NULL,
    reason TEXT,
    advice TEXT NOT NULL,
    status TEXT,
    reply_code TEXT,
    diagnostic TEXT,
    evidence TEXT,
    tag TEXT);
CREATE INDEX events_by_address ON events (address, bearing, seen, reason);
CREATE TABLE decisions (
    id INTEGER PRIMARY KEY,
    address INTEGER NOT NULL REFERENCES addresses,
    made INTEGER NOT NULL,
    decision TEXT NOT NULL CHECK (decision IN ('allow', 'deny')),
    text TEXT);
CREATE INDEX decisions_by_address ON decisions (address, id);
CREATE TABLE protections (
    pattern TEXT PRIMARY KEY,
    made INTEGER NOT NULL) WITHOUT ROWID;
CREATE TABLE settings (
    name TEXT PRIMARY KEY,
    value INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO settings VALUES ('after', 5), ('within', 30);

CREATE VIEW suppressed AS
    SELECT coalesce(written, key) AS address, cause, reason,
           datetime(since, 'unixepoch') AS since,
           datetime(first_seen, 'unixepoch') AS first_seen,
           datetime(last_seen, 'unixepoch') AS last_seen,
           count,
           CASE cause
               WHEN 'deny' THEN (SELECT text FROM decisions d WHERE d.address = a.id
                                 ORDER BY d.id DESC LIMIT 1)
               ELSE (SELECT coalesce(evidence, diagnostic) FROM events e
                     WHERE e.address = a.id AND e.bearing = a.cause
                     ORDER BY e.seen DESC, e.reason DESC LIMIT 1)
           END AS evidence,
           datetime(changed, 'unixepoch') AS changed
    FROM addresses a WHERE state = 'suppressed';
CREATE VIEW history AS
    SELECT coalesce(a.written, a.key) AS address, datetime(e.seen, 'unixepoch') AS time,
           e.outcome AS what, e.reason, e.advice, e.status, e.reply_code, e.diagnostic,
           e.evidence, e.tag, m.verdict, m.rule, m.message_id, m.place
    FROM events e JOIN messages m ON m.id = e.message LEFT JOIN addresses a ON a.id = e.address
    UNION ALL
    SELECT coalesce(a.written, a.key), datetime(d.made, 'unixepoch'), d.decision, NULL, NULL,
           NULL, NULL, NULL, d.text, NULL, NULL, NULL, NULL, NULL
    FROM decisions d JOIN addresses a ON a.id = d.address;
CREATE VIEW daily AS
    SELECT date(seen, 'unixepoch') AS day, count(*) AS reports,
           count(DISTINCT message) AS messages,
           sum(outcome = 'failed') AS failed,
           count(bearing) FILTER (WHERE bearing = 'suppress') AS suppress,
           count(bearing) FILTER (WHERE bearing = 'unsubscribe') AS unsubscribe,
           count(bearing) FILTER (WHERE bearing = 'retry') AS retry,
           count(bearing) FILTER (WHERE bearing = 'success') AS success,
           sum(advice = 'fix') AS fix
    FROM events GROUP BY 1;
)",
};

/// All that is behind `version`, with the number of the last.
std::string migrationsBehind(std::uint32_t version) {
    std::string sql;
    for (std::uint32_t i = version; i < schemaVersion(); ++i) sql += migrations[i];
    return sql + "PRAGMA user_version = " + std::to_string(schemaVersion()) + ";";
}

std::uint32_t bigEndian(std::string_view bytes) noexcept {
    std::uint32_t number = 0;
    for (const char c : bytes) number = number << 8 | static_cast<unsigned char>(c);
    return number;
}

struct CloseConnection {
    void operator()(sqlite3* connection) const noexcept { ::sqlite3_close(connection); }
};
struct FreeBytes {
    void operator()(unsigned char* bytes) const noexcept { ::sqlite3_free(bytes); }
};

}  // namespace

std::uint32_t schemaVersion() noexcept { return std::size(migrations); }

void migrate(Database& database) {
    const auto version = [&] {
        Statement statement(database, "PRAGMA user_version");
        return statement.step() ? static_cast<std::uint32_t>(statement.number(0)) : 0;
    };
    if (version() >= schemaVersion()) return;
    Transaction transaction(database);
    // Another process may have been faster.
    if (const std::uint32_t before = version(); before < schemaVersion()) {
        database.run(migrationsBehind(before).c_str());
    }
    transaction.commit();
}

std::vector<std::byte> emptyLedger() {
    sqlite3* opened = nullptr;
    const int code = ::sqlite3_open(":memory:", &opened);
    const std::unique_ptr<sqlite3, CloseConnection> connection(opened);
    const std::string sql =
        "PRAGMA application_id = " + std::to_string(applicationId) + ";" + migrationsBehind(0);
    if (code != SQLITE_OK ||
        ::sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::bad_alloc();
    }
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, FreeBytes> bytes(
        ::sqlite3_serialize(opened, "main", &size, 0));
    if (!bytes) throw std::bad_alloc();
    const auto* begin = reinterpret_cast<const std::byte*>(bytes.get());
    std::vector<std::byte> file(begin, begin + size);
    // The versions of the format for writing and reading: that with a write-ahead log.
    file[18] = file[19] = std::byte{2};
    return file;
}

FileHeader readFileHeader(std::string_view bytes) noexcept {
    // SQLite's file format, section 1.3.
    using namespace std::string_view_literals;
    constexpr std::string_view magic = "SQLite format 3\0"sv;
    if (bytes.size() < fileHeaderSize || !bytes.starts_with(magic)) return {};
    return {true, bigEndian(bytes.substr(68, 4)), bigEndian(bytes.substr(60, 4))};
}

}  // namespace bouncecheck::ledger
