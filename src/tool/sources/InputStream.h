#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tool/sources/FileIdentity.h"

namespace bouncecheck {

/// What could not be read, in words for people.
class ReadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Nothing has the name: it never existed, or was removed or renamed.
class NoSuchFile : public ReadError {
public:
    using ReadError::ReadError;
};

/// Bytes in order, from a file, a pipe or what unpacks one.
class InputStream {
public:
    InputStream() = default;
    InputStream(const InputStream&) = delete;
    InputStream& operator=(const InputStream&) = delete;
    virtual ~InputStream() = default;

    /// Fills the front of `room` and returns how many bytes; 0 at the end. Throws
    /// ReadError.
    virtual std::size_t read(std::span<char> room) = 0;
    /// How many bytes are left; nothing when that is not known.
    virtual std::optional<std::uint64_t> sizeLeft() const { return std::nullopt; }
    /// The file that is read; nothing when that is none.
    virtual std::optional<FileIdentity> identity() const { return std::nullopt; }
    /// How much of the whole was read, from 0 to 1; 0 when that is not known.
    virtual double fractionRead() const { return 0; }
    /// How many bytes of the file or pipe were read for it, before any unpacking.
    virtual std::uint64_t bytesRead() const { return 0; }
};

/// Opens a regular file, or a pipe by way of /dev/fd. Others are no mail and
/// could block for ever: ReadError says what they are. Throws NoSuchFile, too.
std::unique_ptr<InputStream> openFile(const std::string& path);

/// The same for a name in a folder, of which a file descriptor is given, that was a regular file
/// when the folder was listed: neither the way there nor the file is looked up first.
std::unique_ptr<InputStream> openListedFile(int folder, const char* name);

std::unique_ptr<InputStream> openStandardInput();

}  // namespace bouncecheck
