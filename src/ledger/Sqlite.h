#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// SQLite as the ledger uses it. What fails throws LedgerError, or std::bad_alloc.
namespace bouncecheck::ledger {

/// A connection to a database file that is there. One thread at a time.
class Database {
public:
    /// A still file is one that nobody writes while it is read, and that stands in a folder where
    /// nothing can be written.
    enum class Use { any, still };

    explicit Database(const std::string& path, Use use = Use::any);

    /// Runs statements that give no rows, one after the other.
    void run(const char* sql);
    /// The number of rows that the last insertion, update or deletion changed.
    std::int64_t changes() const noexcept;
    std::int64_t lastRow() const noexcept;
    /// How long to wait for another process that writes; half a minute if nothing is said.
    void waitForLocks(std::chrono::milliseconds most) noexcept;
    /// Leaves the write-ahead log beside the file when the connection closes, rather than move it
    /// into the file, which waits for the disk twice. It moves when it has grown.
    void leaveLog();

private:
    friend class Statement;
    struct Close {
        void operator()(sqlite3* connection) const noexcept;
    };
    [[noreturn]] void fail(int code) const;

    std::string path_;
    /// At a place of its own, which the connection knows. Scans hold the lock for moments; whoever
    /// waits longer than this waits for something else.
    std::unique_ptr<std::chrono::milliseconds> mostWaiting_;
    std::unique_ptr<sqlite3, Close> connection_;
};

/// A statement that is prepared with its first use, and run any number of times. The texts that are
/// bound have to live until the next `reset`.
class Statement {
public:
    /// `database` and `sql` have to outlive it.
    Statement(Database& database, const char* sql) noexcept : database_(database), sql_(sql) {}

    /// Begins again, with these values for ?1, ?2, ...
    template <class... Values>
    Statement& with(const Values&... values) {
        prepare();
        reset();
        int place = 0;
        (bind(++place, values), ...);
        return *this;
    }
    /// Runs it to its next row; false at the end.
    bool step();
    /// Runs it to its end.
    void run() {
        while (step()) {
        }
        reset();
    }
    void reset() noexcept;

    // --- The values of a row, valid until the next step ---------------------

    bool isNull(int column) const noexcept;
    std::int64_t number(int column) const noexcept;
    std::optional<std::int64_t> optionalNumber(int column) const noexcept;
    /// "" for NULL.
    std::string_view text(int column) const noexcept;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    void prepare();
    void bind(int place, std::int64_t value);
    void bind(int place, std::optional<std::int64_t> value);
    void bind(int place, std::string_view text);
    void bind(int place, std::span<const std::byte> bytes);

    Database& database_;
    const char* sql_;
    /// Null before it is used.
    std::unique_ptr<sqlite3_stmt, Finalize> statement_{};
};

/// Either all of its changes are in the database or none. Other processes that want to write
/// wait from the beginning, so that what is read within stays true.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(&database) {
        database.run("BEGIN IMMEDIATE");
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

private:
    /// Null once it is committed.
    Database* database_;
};

/// While it lasts, everything is read as it was at the first of the statements, whoever writes
/// meanwhile.
class Snapshot {
public:
    explicit Snapshot(Database& database) : database_(database) { database.run("BEGIN"); }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;
    /// Statements that are still within their rows have to be gone.
    ~Snapshot();

private:
    Database& database_;
};

/// A text that is NULL where it is empty.
std::string_view orNull(std::string_view text) noexcept;

}  // namespace bouncecheck::ledger
