#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace bouncecheck::ledger {

class Database;

/// What the header of a ledger's file has as `application_id`: "BNCE".
inline constexpr std::uint32_t applicationId = 0x424E4345;

/// The version of the schema that this program writes (`user_version`). Ledgers of earlier
/// ones are brought up to it, those of later ones are refused.
std::uint32_t schemaVersion() noexcept;

/// Brings the schema of `database` up to date, in a transaction of its own.
void migrate(Database& database);

/// The bytes of the file of a ledger with nothing in it.
std::vector<std::byte> emptyLedger();

/// What the beginning of a database file says of it.
struct FileHeader {
    bool isDatabase = false;
    std::uint32_t applicationId = 0;
    std::uint32_t version = 0;
};

/// How many bytes `readFileHeader` takes.
inline constexpr std::size_t fileHeaderSize = 100;

/// Shorter `bytes` are no database.
FileHeader readFileHeader(std::string_view bytes) noexcept;

}  // namespace bouncecheck::ledger
