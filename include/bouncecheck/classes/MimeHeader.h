#pragma once

#include <memory>

#include <bouncecheck/Export.h>

namespace bouncecheck {

class HeaderBlock;
class LogBase;
class StringBuffer;

/// A block of header lines on its own, such as a returned header.
class BOUNCECHECK_EXPORT MimeHeader {
public:
    MimeHeader();
    ~MimeHeader();
    MimeHeader(const MimeHeader&) = delete;
    MimeHeader& operator=(const MimeHeader&) = delete;

    /// Reads the header lines that the NUL-terminated `text` begins with, in
    /// place of those read before. `extra`, `flags` and `scratch` are reserved:
    /// null, 0 and any buffer.
    void loadMimeHeaderText(const char* text, const char* extra, int flags, StringBuffer& scratch,
                            LogBase& log);

    /// Appends the first field of that name (`nameLen` bytes), unfolded,
    /// trimmed, in UTF-8; nothing when there is none.
    void getMimeFieldUtf8_2(const char* name, unsigned int nameLen, StringBuffer& out,
                            LogBase& log) const;

private:
    /// Null before the first text.
    std::unique_ptr<const HeaderBlock> block_;
};

}  // namespace bouncecheck
