#include "ledger/Ledger.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/FdStream.h"
#include "files/Paths.h"
#include "files/TemporaryFile.h"
#include "files/UniqueFd.h"
#include "ledger/LedgerError.h"
#include "ledger/Schema.h"

namespace bouncecheck::ledger {
namespace {

using Kind = LedgerError::Kind;

[[noreturn]] void failToOpen(const std::string& path) {
    throw LedgerError(errno == ENOENT ? Kind::missing : Kind::unavailable,
                      path + ": " + std::strerror(errno));
}

bool exists(const std::string& path) noexcept {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

bool isLink(const std::string& path) noexcept {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

void create(const std::string& path) {
    // What SQLite would read into any database of that name.
    const std::string log = path + "-wal";
    if (exists(log) && !exists(path)) {
        throw LedgerError(Kind::refused, path + ": is not there, but " + log +
                                             " is: put the ledger back, or remove that");
    }
    if (isLink(path)) {
        throw LedgerError(Kind::refused, path +
                                             ": is a symbolic link to what is not there: name "
                                             "the file itself, or remove the link");
    }
    const std::vector<std::byte> empty = emptyLedger();
    // It says who got what mail.
    constexpr mode_t mode = 0640;
    TemporaryFile file;
    const bool isMade =
        file.createBeside(path, mode) &&
        writeAll(file.fd(), reinterpret_cast<const char*>(empty.data()), empty.size()) &&
        (file.linkTo(path) || errno == EEXIST);  // another process was first
    if (!isMade) failToOpen(path);
    syncFolderOf(path);
}

/// Throws unless the file begins like a ledger that this version reads.
void checkHeader(const std::string& path, int fd) {
    std::array<char, fileHeaderSize> bytes{};
    const ssize_t size = ::pread(fd, bytes.data(), bytes.size(), 0);
    if (size < 0) failToOpen(path);
    // Whether it was meant to be one cannot be known, and another process may be about to fill it.
    if (size == 0) {
        throw LedgerError(Kind::refused,
                          path + ": is empty: remove it, and a ledger is made in its place");
    }
    const FileHeader header =
        readFileHeader(std::string_view(bytes.data(), static_cast<std::size_t>(size)));
    // A ledger has a schema from its first moment.
    if (!header.isDatabase || header.applicationId != applicationId || header.version == 0) {
        throw LedgerError(Kind::refused, path + ": is no ledger");
    }
    if (header.version > schemaVersion()) {
        throw LedgerError(Kind::refused, path + ": was written by a later version of bouncecheck");
    }
}

/// Returns when a ledger is there.
void makeSure(const std::string& path, Ledger::Missing missing) {
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
    int fd = ::open(path.c_str(), flags);
    if (fd < 0 && errno == ENOENT && missing == Ledger::Missing::create) {
        create(path);
        fd = ::open(path.c_str(), flags);
    }
    const UniqueFd file(fd);
    if (!file) {
        if (errno == ENOENT) throw LedgerError(Kind::missing, path + ": there is no such ledger");
        failToOpen(path);
    }
    checkHeader(path, file.get());
}

/// Whether nothing but the file has to be read: no log stands beside it, nor what other processes
/// share while they use it, and we can make none.
bool isAlone(const std::string& path) {
    const auto [file, log, shared] = filesOf(path);
    if (exists(log) || exists(shared)) return false;
    const std::string folder = file.substr(0, file.find_last_of('/') + 1);
    return ::access(folder.empty() ? "." : folder.c_str(), W_OK) != 0;
}

Database openDatabase(const std::string& path, Ledger::Missing missing) {
    makeSure(path, missing);
    const bool isOnlyRead = missing == Ledger::Missing::refuse;
    return Database(path, isOnlyRead && isAlone(path) ? Database::Use::still : Database::Use::any);
}

}  // namespace

std::array<std::string, 3> filesOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    const std::string file = error ? path : target.string();
    return {file, file + "-wal", file + "-shm"};
}

Ledger::Ledger(std::string path, Missing missing, Durability durability)
    : path_(std::move(path)), database_(openDatabase(path_, missing)) {
    // What enforces keys looks up two rows for each report, and what enforces lists of words makes
    // a table of each list. Nothing is ever removed, the words are ours, and `check` looks at both.
    database_.run(
        "PRAGMA foreign_keys = OFF; PRAGMA ignore_check_constraints = ON; "
        "PRAGMA cell_size_check = ON;");
    // Digests come in no order, so each transaction of many messages changes pages all over the
    // file: they stay in memory (128 MB), and wait in the log until there are many (as much).
    database_.run(durability == Durability::each
                      ? "PRAGMA synchronous = FULL"
                      : "PRAGMA synchronous = NORMAL; PRAGMA cache_size = -131072; "
                        "PRAGMA wal_autocheckpoint = 32768");
    migrate(database_);
}

}  // namespace bouncecheck::ledger
