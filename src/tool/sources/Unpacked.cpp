#include <archive.h>
#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/sources/InputStream.h"

namespace bouncecheck {
namespace {

/// The functions of libarchive. It is loaded when a packed file is met, because
/// what it depends upon would triple the time that the tool needs to start.
struct Libarchive {
    decltype(&::archive_read_new) readNew;
    decltype(&::archive_read_support_filter_gzip) supportGzip;
    decltype(&::archive_read_support_filter_xz) supportXz;
    decltype(&::archive_read_support_filter_zstd) supportZstd;
    decltype(&::archive_read_support_format_raw) supportRaw;
    decltype(&::archive_read_support_format_empty) supportEmpty;
    decltype(&::archive_read_open) open;
    decltype(&::archive_read_next_header) nextHeader;
    decltype(&::archive_read_data) readData;
    decltype(&::archive_read_free) readFree;
    decltype(&::archive_filter_code) filterCode;
    decltype(&::archive_error_string) errorString;

    static const Libarchive& get() {
        static const Libarchive library;
        return library;
    }

private:
    Libarchive() {
        constexpr const char* name = "libarchive.so.13";
        void* library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL);
        if (!library) throw ReadError("is compressed, which takes libarchive (libarchive.so.13)");
        const auto find = [&]<class Function>(Function& function, const char* symbol) {
            function = reinterpret_cast<Function>(::dlsym(library, symbol));
            if (!function) throw ReadError(std::string("libarchive lacks ") + symbol);
        };
        find(readNew, "archive_read_new");
        find(supportGzip, "archive_read_support_filter_gzip");
        find(supportXz, "archive_read_support_filter_xz");
        find(supportZstd, "archive_read_support_filter_zstd");
        find(supportRaw, "archive_read_support_format_raw");
        find(supportEmpty, "archive_read_support_format_empty");
        find(open, "archive_read_open");
        find(nextHeader, "archive_read_next_header");
        find(readData, "archive_read_data");
        find(readFree, "archive_read_free");
        find(filterCode, "archive_filter_code");
        find(errorString, "archive_error_string");
    }
};

/// A stream whose first bytes were looked at already.
class PeekedStream final : public InputStream {
public:
    explicit PeekedStream(std::unique_ptr<InputStream> stream) : stream_(std::move(stream)) {
        while (size_ < first_.size()) {
            const std::size_t count = stream_->read(std::span(first_).subspan(size_));
            if (count == 0) break;
            size_ += count;
        }
    }

    std::string_view firstBytes() const noexcept { return {first_.data(), size_}; }

    std::size_t read(std::span<char> room) override {
        if (read_ == size_) return stream_->read(room);
        const std::size_t count = std::min(room.size(), size_ - read_);
        std::memcpy(room.data(), first_.data() + read_, count);
        read_ += count;
        return count;
    }
    std::optional<std::uint64_t> sizeLeft() const override {
        const auto left = stream_->sizeLeft();
        return left ? std::optional(*left + size_ - read_) : std::nullopt;
    }
    double fractionRead() const override { return stream_->fractionRead(); }

private:
    std::unique_ptr<InputStream> stream_;
    std::array<char, 6> first_;
    std::size_t size_ = 0;
    std::size_t read_ = 0;
};

class UnpackedStream final : public InputStream {
public:
    explicit UnpackedStream(std::unique_ptr<InputStream> packed)
        : packed_(std::move(packed)), archive_(library_.readNew()), buffer_(1 << 16) {
        if (!archive_) throw ReadError("not enough memory");
        library_.supportGzip(archive_.get());
        library_.supportXz(archive_.get());
        library_.supportZstd(archive_.get());
        library_.supportRaw(archive_.get());
        library_.supportEmpty(archive_.get());
        check(library_.open(archive_.get(), this, nullptr, &readPacked, nullptr));
        archive_entry* entry = nullptr;
        const int status = library_.nextHeader(archive_.get(), &entry);
        isEmpty_ = status == ARCHIVE_EOF;
        if (!isEmpty_) check(status);
        if (library_.filterCode(archive_.get(), 0) == ARCHIVE_FILTER_NONE) {
            throw ReadError("damaged compression: no valid header");
        }
    }

    std::size_t read(std::span<char> room) override {
        if (isEmpty_) return 0;
        const la_ssize_t count = library_.readData(archive_.get(), room.data(), room.size());
        if (count < 0) check(static_cast<int>(count));
        return static_cast<std::size_t>(count);
    }
    double fractionRead() const override { return packed_->fractionRead(); }

private:
    struct Free {
        void operator()(archive* a) const noexcept { Libarchive::get().readFree(a); }
    };

    /// Hands libarchive the packed bytes. No exception may pass through it.
    static la_ssize_t readPacked(archive*, void* self, const void** bytes) {
        auto& stream = *static_cast<UnpackedStream*>(self);
        try {
            *bytes = stream.buffer_.data();
            return static_cast<la_ssize_t>(stream.packed_->read(stream.buffer_));
        } catch (...) {
            stream.failure_ = std::current_exception();
            return ARCHIVE_FATAL;
        }
    }

    void check(int status) {
        if (failure_) std::rethrow_exception(failure_);
        if (status == ARCHIVE_OK || status == ARCHIVE_WARN) return;
        const char* reason = library_.errorString(archive_.get());
        throw ReadError(reason ? std::string("damaged compression: ") + reason
                               : std::string("damaged compression"));
    }

    const Libarchive& library_ = Libarchive::get();
    std::unique_ptr<InputStream> packed_;
    std::unique_ptr<archive, Free> archive_;
    std::vector<char> buffer_;
    std::exception_ptr failure_;
    bool isEmpty_ = false;
};

bool isPacked(std::string_view firstBytes) noexcept {
    constexpr std::array<std::string_view, 3> signatures = {
        "\x1F\x8B",                              // gzip, RFC 1952
        std::string_view("\xFD\x37zXZ\x00", 6),  // xz
        "\x28\xB5\x2F\xFD",                      // zstd, RFC 8878
    };
    return std::ranges::any_of(signatures,
                               [&](std::string_view s) { return firstBytes.starts_with(s); });
}

}  // namespace

std::unique_ptr<InputStream> unpacked(std::unique_ptr<InputStream> stream) {
    auto peeked = std::make_unique<PeekedStream>(std::move(stream));
    if (!isPacked(peeked->firstBytes())) return peeked;
    return std::make_unique<UnpackedStream>(std::move(peeked));
}

}  // namespace bouncecheck
