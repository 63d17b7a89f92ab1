#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tool/sources/FileContent.h"
#include "tool/sources/InputStream.h"
#include "tool/sources/Libarchive.h"

namespace bouncecheck {

/// The files in a tar or zip archive, in their order, read as a stream.
class Archive {
public:
    /// `packed` is not compressed as a whole; `size` counts what is unpacked. Both have to
    /// live as long. Throws ReadError.
    Archive(InputStream& packed, FileContent::Kind format, UnpackedSize& size);

    /// Goes on to the next file; folders, links and devices are passed over. False at
    /// the end. Throws ReadError when the rest cannot be read.
    bool next();
    /// Its path in the archive, as UTF-8 where it is known to be, and cut where no file could
    /// have a longer one.
    const std::string& name() const noexcept { return name_; }
    /// What it holds. Valid until the next call of `next`.
    std::unique_ptr<InputStream> content();

private:
    friend class MemberStream;

    InputStream& packed_;
    LibarchiveReader reader_;
    std::string name_;
    bool isEncrypted_ = false;
};

}  // namespace bouncecheck
