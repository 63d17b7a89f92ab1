#include "tool/sources/GzipStream.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace bouncecheck {
namespace {

constexpr std::array<Bytef, 2> signature = {0x1F, 0x8B};

}  // namespace

GzipStream::GzipStream(std::unique_ptr<InputStream> packed, UnpackedSize& size)
    : packed_(std::move(packed)), size_(size) {
    constexpr int gzipOnly = 16;
    if (inflateInit2(&zlib_, MAX_WBITS + gzipOnly) != Z_OK) throw ReadError("not enough memory");
}

GzipStream::~GzipStream() { inflateEnd(&zlib_); }

std::size_t GzipStream::read(std::span<char> room) {
    room = room.first(std::min<std::size_t>(room.size(), std::numeric_limits<uInt>::max()));
    std::size_t total = 0;
    while (!room.empty() && !atEnd_) {
        zlib_.next_out = reinterpret_cast<Bytef*>(room.data());
        zlib_.avail_out = static_cast<uInt>(room.size());
        const int status = inflate(&zlib_, Z_NO_FLUSH);
        if (const std::size_t count = room.size() - zlib_.avail_out; count > 0) {
            size_.add(count, *packed_);
            total += count;
            room = room.subspan(count);
            continue;
        }
        // Small members are handed out together. What comes before damage is handed out
        // first; zlib reports the damage again.
        const bool hasMember = status == Z_STREAM_END && zlib_.avail_in >= signature.size();
        if (total > 0 && !hasMember) return total;
        switch (status) {
            case Z_STREAM_END: atEnd_ = !beginMember(); break;
            case Z_OK:
            case Z_BUF_ERROR:
                if (!fill()) throw ReadError("damaged compression: it ends too early");
                break;
            case Z_MEM_ERROR: throw ReadError("not enough memory");
            default:
                throw ReadError(std::string("damaged compression: ") +
                                (zlib_.msg ? zlib_.msg : "invalid data"));
        }
    }
    return total;
}

/// Reads on behind the packed bytes that are left; false at the end.
bool GzipStream::fill() {
    auto* const front = reinterpret_cast<Bytef*>(buffer_.data());
    std::copy_n(zlib_.next_in, zlib_.avail_in, front);
    zlib_.next_in = front;
    const std::size_t count = packed_->read(std::span(buffer_).subspan(zlib_.avail_in));
    zlib_.avail_in += static_cast<uInt>(count);
    return count > 0;
}

/// Begins the member that follows; false when none does.
bool GzipStream::beginMember() {
    while (zlib_.avail_in < signature.size() && fill()) continue;
    // Half of a signature is a member that is cut short.
    const std::size_t size = std::min<std::size_t>(zlib_.avail_in, signature.size());
    return size > 0 && std::equal(zlib_.next_in, zlib_.next_in + size, signature.begin()) &&
           inflateReset(&zlib_) == Z_OK;
}

}  // namespace bouncecheck
