#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <bouncecheck/ByteStore.h>
#include <bouncecheck/Export.h>

namespace bouncecheck {

class DataBuffer;
class ExtPtrArraySb;

/// A growable string of bytes, UTF-8 by convention but never checked.
///
/// Positions and sizes are in bytes. The text may hold NUL bytes; a NUL always
/// stands behind it, so that `getString` can hand it to C code. A null
/// `const char*` reads as "". An argument may point into the buffer itself.
/// Nothing here fails: what is not found leaves the text as it was, what lies
/// outside reads as 0. Letter case is that of ASCII; white space is blank, tab,
/// CR, LF, VT and FF.
class BOUNCECHECK_EXPORT StringBuffer {
public:
    StringBuffer() = default;
    StringBuffer(const StringBuffer&) = delete;
    StringBuffer& operator=(const StringBuffer&) = delete;
    StringBuffer(StringBuffer&& other) noexcept = default;
    StringBuffer& operator=(StringBuffer&& other) noexcept = default;
    ~StringBuffer() = default;

    /// The text as a C string, never null. Valid until the buffer changes.
    const char* getString() const { return text_.terminated(); }
    /// The text with its length. Valid until the buffer changes.
    std::string_view view() const noexcept { return text_.view(); }
    /// Counts up to 4 GiB; `view().size()` counts on.
    unsigned getSize() const noexcept { return static_cast<unsigned>(view().size()); }
    bool isEmpty() const noexcept { return view().empty(); }

    void setString(const char* s);
    void setString(const StringBuffer& other);
    void setString(std::string_view s);
    void append(const char* s);
    void append(const StringBuffer& other);
    void append(const DataBuffer& bytes);
    void append(std::string_view s);
    /// Appends exactly `n` bytes from `p`, NUL bytes included.
    void appendN(const char* p, unsigned n);

    /// Makes room for a text of `size` bytes, which appending then need not move.
    void reserve(std::size_t size) { text_.reserve(size); }

    /// Gives `other` the text, without a copy where that keeps no longer text
    /// alive. Views become invalid.
    void handOut(StringBuffer& other);

    /// Hands the bytes out and leaves the text empty.
    ByteStore takeBytes() noexcept { return std::exchange(text_, {}); }

    /// Empties the text and gives its storage back.
    void clear() noexcept;
    /// Empties the text and keeps its storage for the next one.
    void weakClear() noexcept { text_.clear(); }

    bool equals(const char* s) const noexcept;
    bool equals(const StringBuffer& other) const noexcept { return view() == other.view(); }
    bool equalsIgnoreCase(const char* s) const noexcept;
    bool beginsWith(const char* prefix) const noexcept;
    bool beginsWithIgnoreCase(const char* prefix) const noexcept;
    /// The first `n` bytes equal those of `s`, letter case ignored; false when
    /// either is shorter than `n`.
    bool beginsWithIgnoreCaseN(const char* s, unsigned n) const noexcept;
    bool endsWith(const char* suffix) const noexcept;
    bool containsSubstring(const char* s) const noexcept;
    bool containsSubstringNoCase(const char* s) const;
    bool containsChar(char c) const noexcept;
    /// The position of the first `s`, or -1.
    int indexOf(const char* s) const noexcept;

    /// The byte at `i`, 0 outside the text.
    char charAt(unsigned i) const noexcept;
    /// The text from `i` on; the final NUL when `i` is past the end.
    const char* pCharAt(unsigned i) const;
    /// The last byte, 0 when the text is empty.
    char lastChar() const noexcept;
    unsigned countCharOccurances(char c) const noexcept;

    void removeCharOccurances(char c);
    /// Removes every byte that is one of `bytes`.
    void removeAnyOf(std::string_view bytes);
    /// Left to right; what was put in is not searched again.
    void replaceAllOccurances(const char* from, const char* to);
    /// True when something was replaced. `ignoreCase` applies to `from`.
    bool replaceFirstOccurance(const char* from, const char* to, bool ignoreCase);
    /// Replaces every `from` by the one byte `byte`.
    void replaceAllWithUchar(const char* from, unsigned byte);

    /// Removes the white space at both ends.
    void trim2();
    /// Appends the bytes from `p` up to the first white space or NUL.
    void captureNonWS(const char* p);
    /// Cuts the text at the first `c`, which goes too.
    void chopAtFirstChar(char c);
    /// Cuts the text at the first `s`, which goes too.
    void chopAtSubstr(const char* s, bool ignoreCase);
    /// Removes the last `n` bytes, or all when there are fewer.
    void shorten(unsigned n);

    /// Appends one new element to `out` for each field between separators,
    /// empty fields included. With `exceptDoubleQuoted` a separator between
    /// double quotes does not count; with `trimEach` the fields are trimmed.
    void split(ExtPtrArraySb& out, char separator, bool exceptDoubleQuoted, bool trimEach) const;

private:
    std::string& changing() { return text_.changing(); }
    BOUNCECHECK_HIDDEN void append(const ByteStore& bytes);
    BOUNCECHECK_HIDDEN void hold(const ByteStore& bytes);

    ByteStore text_;
};

}  // namespace bouncecheck
