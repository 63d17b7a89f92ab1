#include "ledger/Sqlite.h"

#include <sqlite3.h>

#include <new>
#include <thread>

#include "ledger/LedgerError.h"

namespace bouncecheck::ledger {
namespace {

LedgerError::Kind kindOf(int code) noexcept {
    switch (code & 0xFF) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_FORMAT: return LedgerError::Kind::damaged;
        default: return LedgerError::Kind::unavailable;
    }
}

std::string problemOf(int code, const char* words) {
    switch (code & 0xFF) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB: return std::string("is damaged: ") + words;
        case SQLITE_FULL: return "could not be written: the disk is full";
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return "is locked by another process";
        case SQLITE_READONLY: return "cannot be written to";
        case SQLITE_CANTOPEN:
            return "cannot be opened, or what was recorded last is in a log beside it that takes "
                   "writing there";
        case SQLITE_IOERR: return "could not be read or written";
        default: return words;
    }
}

/// Looks again every other millisecond: who writes transaction after transaction pauses between
/// them for little longer.
int waitForOthers(void* most, int count) {
    constexpr std::chrono::milliseconds pause(2);
    if (count * pause >= *static_cast<const std::chrono::milliseconds*>(most)) return 0;
    std::this_thread::sleep_for(pause);
    return 1;
}

/// Counting memory takes a lock for each allocation, and nobody asks.
bool withoutMemoryCounts() noexcept {
    return ::sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK;
}

/// Called behind each commit, in place of what SQLite does by itself: that finds out how much of
/// the log was moved only within one process, and would let the log of many short ones grow.
int moveLongLog(void* most, sqlite3* connection, const char* name, int pages) {
    // Whoever opens the ledger next reads it all.
    constexpr int mostPages = 200;
    if (pages < mostPages) return SQLITE_OK;
    // Where others read or write, it moves another time.
    ::sqlite3_busy_handler(connection, nullptr, nullptr);
    ::sqlite3_wal_checkpoint_v2(connection, name, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    ::sqlite3_busy_handler(connection, waitForOthers, most);
    return SQLITE_OK;
}

/// The name of the file at `path`: else ":memory:" would be none, and "file:x" an address of one.
std::string fileName(const std::string& path) { return path.starts_with('/') ? path : "./" + path; }

/// A name by which SQLite looks for no log and takes no locks.
std::string stillUri(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    // Else what stands behind two slashes would be a host.
    std::string uri = path.starts_with('/') ? "file://" : "file:";
    for (const char c : fileName(path)) {
        if (c == '%' || c == '?' || c == '#') {
            const auto byte = static_cast<unsigned char>(c);
            uri.append(1, '%').append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
        } else {
            uri += c;
        }
    }
    return uri + "?immutable=1";
}

void rollBack(Database& database) noexcept {
    try {
        database.run("ROLLBACK");
    } catch (...) {
        // SQLite has rolled it back by itself, or does so when the connection closes.
    }
}

}  // namespace

Database::Database(const std::string& path, Use use)
    : path_(path), mostWaiting_(std::make_unique<std::chrono::milliseconds>(30'000)) {
    // It takes effect before the first connection only.
    [[maybe_unused]] static const bool isConfigured = withoutMemoryCounts();
    sqlite3* connection = nullptr;
    const bool isStill = use == Use::still;
    const int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int code = ::sqlite3_open_v2(
        isStill ? stillUri(path).c_str() : fileName(path).c_str(), &connection,
        flags | (isStill ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI : SQLITE_OPEN_READWRITE),
        nullptr);
    connection_.reset(connection);
    if (code != SQLITE_OK) fail(code);
    ::sqlite3_busy_handler(connection, waitForOthers, mostWaiting_.get());
    ::sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    ::sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

void Database::Close::operator()(sqlite3* connection) const noexcept {
    ::sqlite3_close_v2(connection);
}

void Database::fail(int code) const {
    if ((code & 0xFF) == SQLITE_NOMEM || !connection_) throw std::bad_alloc();
    const char* words = ::sqlite3_errmsg(connection_.get());
    throw LedgerError(kindOf(code), path_ + ": " + problemOf(code, words));
}

void Database::run(const char* sql) {
    const int code = ::sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) fail(code);
}

std::int64_t Database::changes() const noexcept { return ::sqlite3_changes64(connection_.get()); }

std::int64_t Database::lastRow() const noexcept {
    return ::sqlite3_last_insert_rowid(connection_.get());
}

void Database::waitForLocks(std::chrono::milliseconds most) noexcept { *mostWaiting_ = most; }

void Database::leaveLog() {
    ::sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    ::sqlite3_wal_hook(connection_.get(), moveLongLog, mostWaiting_.get());
}

void Statement::prepare() {
    if (statement_) return;
    sqlite3_stmt* statement = nullptr;
    const int code = ::sqlite3_prepare_v3(database_.connection_.get(), sql_, -1,
                                          SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    statement_.reset(statement);
    if (code != SQLITE_OK) database_.fail(code);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    ::sqlite3_finalize(statement);
}

bool Statement::step() {
    prepare();
    const int code = ::sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    database_.fail(code);
}

void Statement::reset() noexcept { ::sqlite3_reset(statement_.get()); }

void Statement::bind(int place, std::int64_t value) {
    const int code = ::sqlite3_bind_int64(statement_.get(), place, value);
    if (code != SQLITE_OK) database_.fail(code);
}

void Statement::bind(int place, std::optional<std::int64_t> value) {
    if (value) return bind(place, *value);
    const int code = ::sqlite3_bind_null(statement_.get(), place);
    if (code != SQLITE_OK) database_.fail(code);
}

void Statement::bind(int place, std::string_view text) {
    // SQLite reads a null pointer as NULL.
    const int code = ::sqlite3_bind_text64(statement_.get(), place, text.data(), text.size(),
                                           SQLITE_STATIC, SQLITE_UTF8);
    if (code != SQLITE_OK) database_.fail(code);
}

void Statement::bind(int place, std::span<const std::byte> bytes) {
    const int code =
        ::sqlite3_bind_blob64(statement_.get(), place, bytes.data(), bytes.size(), SQLITE_STATIC);
    if (code != SQLITE_OK) database_.fail(code);
}

bool Statement::isNull(int column) const noexcept {
    return ::sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::int64_t Statement::number(int column) const noexcept {
    return ::sqlite3_column_int64(statement_.get(), column);
}

std::optional<std::int64_t> Statement::optionalNumber(int column) const noexcept {
    if (isNull(column)) return std::nullopt;
    return number(column);
}

std::string_view Statement::text(int column) const noexcept {
    const auto* text = ::sqlite3_column_text(statement_.get(), column);
    const auto size = static_cast<std::size_t>(::sqlite3_column_bytes(statement_.get(), column));
    return text ? std::string_view(reinterpret_cast<const char*>(text), size) : std::string_view();
}

Transaction::~Transaction() {
    if (database_) rollBack(*database_);
}

void Transaction::commit() {
    database_->run("COMMIT");
    database_ = nullptr;
}

Snapshot::~Snapshot() { rollBack(database_); }

std::string_view orNull(std::string_view text) noexcept {
    return text.empty() ? std::string_view() : text;
}

}  // namespace bouncecheck::ledger
