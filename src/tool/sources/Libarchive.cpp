#include "tool/sources/Libarchive.h"

#include <algorithm>
#include <string>

namespace bouncecheck {

const Libarchive& Libarchive::get() {
    static const Libarchive library = load();
    return library;
}

LibarchiveReader::LibarchiveReader(InputStream& packed, std::span<const Support> supported,
                                   UnpackedSize& size)
    : packed_(packed), size_(size), buffer_(std::size_t{1} << 16), archive_(library_.readNew()) {
    if (!archive_) throw ReadError("not enough memory");
    for (const Support support : supported) support(archive_.get());
    check(library_.open(archive_.get(), this, nullptr, &readPacked, nullptr));
}

archive_entry* LibarchiveReader::nextEntry() {
    if (isBroken_) throw ReadError("the rest of it cannot be read");
    piece_ = {};
    damage_.reset();
    archive_entry* entry = nullptr;
    const int status = library_.nextHeader(archive_.get(), &entry);
    if (status == ARCHIVE_EOF) return nullptr;
    check(status);
    return entry;
}

std::size_t LibarchiveReader::read(std::span<char> room) {
    if (piece_.empty()) piece_ = nextPiece();
    const std::size_t count = std::min(room.size(), piece_.size());
    std::copy_n(piece_.data(), count, room.data());
    piece_ = piece_.subspan(count);
    return count;
}

std::span<const char> LibarchiveReader::nextPiece() {
    for (;;) {
        if (damage_) throw ReadError(*damage_);
        const void* bytes = nullptr;
        std::size_t size = 0;
        la_int64_t offset = 0;
        const int status = library_.readDataBlock(archive_.get(), &bytes, &size, &offset);
        if (status == ARCHIVE_EOF) return {};
        check(status);
        // What a wrong checksum stands for comes out first.
        if (status == ARCHIVE_WARN) damage_ = damage();
        if (size == 0) continue;
        isBroken_ = true;
        size_.add(size, packed_);
        isBroken_ = false;
        return {static_cast<const char*>(bytes), size};
    }
}

bool LibarchiveReader::isCompressed() const noexcept {
    return library_.filterCode(archive_.get(), 0) != ARCHIVE_FILTER_NONE;
}

/// Hands libarchive the packed bytes. No exception may pass through it.
la_ssize_t LibarchiveReader::readPacked(archive*, void* self, const void** bytes) {
    auto& reader = *static_cast<LibarchiveReader*>(self);
    try {
        *bytes = reader.buffer_.data();
        return static_cast<la_ssize_t>(reader.packed_.read(reader.buffer_));
    } catch (...) {
        reader.failure_ = std::current_exception();
        return ARCHIVE_FATAL;
    }
}

void LibarchiveReader::check(int status) {
    if (failure_) std::rethrow_exception(failure_);
    if (status == ARCHIVE_OK || status == ARCHIVE_WARN) return;
    isBroken_ = status == ARCHIVE_FATAL;
    throw damage();
}

/// What the library says is wrong.
ReadError LibarchiveReader::damage() const {
    const char* reason = library_.errorString(archive_.get());
    return ReadError(reason ? "damaged: " + std::string(reason) : "damaged or cut short");
}

}  // namespace bouncecheck
