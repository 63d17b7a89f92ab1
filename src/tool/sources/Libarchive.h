#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "tool/sources/InputStream.h"
#include "tool/sources/UnpackedSize.h"

namespace bouncecheck {

/// The functions of libarchive. It is loaded when a file needs it, because what it
/// depends upon would triple the time that the tool needs to start. A static program has it
/// within.
struct Libarchive {
    decltype(&::archive_read_new) readNew;
    decltype(&::archive_read_support_filter_bzip2) supportBzip2;
    decltype(&::archive_read_support_filter_xz) supportXz;
    decltype(&::archive_read_support_filter_zstd) supportZstd;
    decltype(&::archive_read_support_format_raw) supportRaw;
    decltype(&::archive_read_support_format_empty) supportEmpty;
    decltype(&::archive_read_support_format_tar) supportTar;
    decltype(&::archive_read_support_format_zip_streamable) supportZip;
    decltype(&::archive_read_open) open;
    decltype(&::archive_read_next_header) nextHeader;
    decltype(&::archive_read_data_block) readDataBlock;
    decltype(&::archive_read_free) readFree;
    decltype(&::archive_filter_code) filterCode;
    decltype(&::archive_error_string) errorString;
    decltype(&::archive_entry_pathname_utf8) entryPathnameUtf8;
    decltype(&::archive_entry_pathname) entryPathname;
    decltype(&::archive_entry_filetype) entryFiletype;
    decltype(&::archive_entry_hardlink) entryHardlink;
    decltype(&::archive_entry_is_encrypted) entryIsEncrypted;

    /// Throws ReadError when the library has to be loaded and is not there.
    static const Libarchive& get();

private:
    static Libarchive load();
};

/// A stream as libarchive reads it. The stream has to live as long.
class LibarchiveReader {
public:
    using Support = int (*)(archive*);

    /// Knows the compressions and formats that `supported` adds. `size` counts what is
    /// unpacked, and has to live as long. Throws ReadError.
    LibarchiveReader(InputStream& packed, std::span<const Support> supported, UnpackedSize& size);
    LibarchiveReader(const LibarchiveReader&) = delete;
    LibarchiveReader& operator=(const LibarchiveReader&) = delete;

    /// The next entry, valid until the next call; null at the end. Throws ReadError
    /// when the rest cannot be read.
    archive_entry* nextEntry();
    /// Reads on in the entry, as `InputStream::read` does. The holes of a sparse file are
    /// left out.
    std::size_t read(std::span<char> room);
    /// Whether what is read is compressed.
    bool isCompressed() const noexcept;

private:
    struct Free {
        void operator()(archive* a) const noexcept { Libarchive::get().readFree(a); }
    };

    std::span<const char> nextPiece();
    static la_ssize_t readPacked(archive*, void* self, const void** bytes);
    void check(int status);
    ReadError damage() const;

    const Libarchive& library_ = Libarchive::get();
    InputStream& packed_;
    UnpackedSize& size_;
    std::vector<char> buffer_;
    std::exception_ptr failure_;
    /// What was unpacked and not read yet.
    std::span<const char> piece_;
    /// Thrown behind the last piece of an entry.
    std::optional<ReadError> damage_;
    bool isBroken_ = false;
    std::unique_ptr<archive, Free> archive_;
};

}  // namespace bouncecheck
