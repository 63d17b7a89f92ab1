#include "tool/sources/Unpacked.h"

#include <array>
#include <utility>

#include "tool/sources/GzipStream.h"
#include "tool/sources/Libarchive.h"

namespace bouncecheck {
namespace {

/// What libarchive unpacks.
class LibarchiveStream final : public InputStream {
public:
    LibarchiveStream(std::unique_ptr<InputStream> packed, UnpackedSize& size)
        : packed_(std::move(packed)), reader_(*packed_, supported(), size) {
        isEmpty_ = reader_.nextEntry() == nullptr;
        if (!reader_.isCompressed()) throw ReadError("damaged: no valid header");
    }

    std::size_t read(std::span<char> room) override { return isEmpty_ ? 0 : reader_.read(room); }
    double fractionRead() const override { return packed_->fractionRead(); }
    std::uint64_t bytesRead() const override { return packed_->bytesRead(); }

private:
    static std::array<LibarchiveReader::Support, 5> supported() {
        const Libarchive& library = Libarchive::get();
        return {library.supportBzip2, library.supportXz, library.supportZstd, library.supportRaw,
                library.supportEmpty};
    }

    std::unique_ptr<InputStream> packed_;
    LibarchiveReader reader_;
    bool isEmpty_ = false;
};

}  // namespace

std::unique_ptr<PeekedStream> unpacked(std::unique_ptr<InputStream> stream, unsigned& layers,
                                       UnpackedSize& size) {
    auto peeked = std::make_unique<PeekedStream>(std::move(stream));
    for (;;) {
        const FileContent::Kind kind = peeked->content().kind;
        std::unique_ptr<InputStream> inner;
        if (kind == FileContent::Kind::gzip) {
            inner = std::make_unique<GzipStream>(std::move(peeked), size);
        } else if (kind == FileContent::Kind::compressed) {
            inner = std::make_unique<LibarchiveStream>(std::move(peeked), size);
        } else {
            return peeked;
        }
        addLayer(layers);
        peeked = std::make_unique<PeekedStream>(std::move(inner));
    }
}

void addLayer(unsigned& layers) {
    if (++layers > mostLayers) throw ReadError("is packed too many times, one in the other");
}

}  // namespace bouncecheck
