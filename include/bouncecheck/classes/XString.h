#pragma once

#include <string_view>

#include <bouncecheck/Export.h>
#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

/// Text that is handed out as UTF-8 or as ANSI, the text of the local code page.
///
/// The code page is UTF-8, so both views are the same bytes and phrases with
/// accented letters match either. Null arguments read as "".
class BOUNCECHECK_EXPORT XString {
public:
    void appendUtf8(const char* s) { utf8_.append(s); }
    void appendUtf8(std::string_view s) { utf8_.append(s); }
    void appendUtf8(const DataBuffer& s) { utf8_.append(s); }

    /// NUL-terminated, never null. Valid until the string changes.
    const char* getUtf8() const { return utf8_.getString(); }
    /// The text as a buffer that belongs to this string; for reading only.
    StringBuffer& getUtf8Sb() noexcept { return utf8_; }
    /// NUL-terminated, never null. Valid until the string changes.
    const char* getAnsi() const { return utf8_.getString(); }
    /// Either with its length, NUL bytes included.
    std::string_view view() const noexcept { return utf8_.view(); }

    bool beginsWithUtf8(const char* prefix, bool ignoreCase) const noexcept;
    bool isEmpty() const noexcept { return utf8_.isEmpty(); }
    bool replaceFirstOccuranceUtf8(const char* from, const char* to, bool ignoreCase);
    void trim2() { utf8_.trim2(); }
    void weakClear() noexcept { utf8_.weakClear(); }

private:
    StringBuffer utf8_;
};

}  // namespace bouncecheck
