#include "tool/sources/Archive.h"

#include <array>
#include <climits>
#include <span>

#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {

/// The file that an archive has come to.
class MemberStream final : public InputStream {
public:
    explicit MemberStream(Archive& archive) : archive_(archive) {}

    std::size_t read(std::span<char> room) override {
        if (archive_.isEncrypted_) throw ReadError("is encrypted");
        return archive_.reader_.read(room);
    }
    double fractionRead() const override { return archive_.packed_.fractionRead(); }
    std::uint64_t bytesRead() const override { return archive_.packed_.bytesRead(); }

private:
    Archive& archive_;
};

namespace {

LibarchiveReader::Support supportOf(FileContent::Kind format) {
    const Libarchive& library = Libarchive::get();
    return format == FileContent::Kind::tar ? library.supportTar : library.supportZip;
}

}  // namespace

Archive::Archive(InputStream& packed, FileContent::Kind format, UnpackedSize& size)
    : packed_(packed), reader_(packed, std::array{supportOf(format)}, size) {}

bool Archive::next() {
    const Libarchive& library = Libarchive::get();
    while (archive_entry* entry = reader_.nextEntry()) {
        const bool isLink = library.entryHardlink(entry) != nullptr;
        if (isLink || library.entryFiletype(entry) != AE_IFREG) continue;
        const char* name = library.entryPathnameUtf8(entry);
        if (!name) name = library.entryPathname(entry);
        // Every message in it has the name, which could be a megabyte.
        name_ = wholeCharacters(ascii::viewOf(name), PATH_MAX);
        if (name_.starts_with("./")) name_.erase(0, 2);
        isEncrypted_ = library.entryIsEncrypted(entry) > 0;
        return true;
    }
    return false;
}

std::unique_ptr<InputStream> Archive::content() { return std::make_unique<MemberStream>(*this); }

}  // namespace bouncecheck
