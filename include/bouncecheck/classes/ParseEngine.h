#pragma once

#include <cstddef>
#include <string_view>

#include <bouncecheck/Export.h>
#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

/// A cursor that moves forward over a text of its own.
///
/// Text and position are open to callers, who may read at the position and
/// move it on; a position past the end acts as the end. Every operation starts
/// at the position and leaves it where it stopped, inside the text or at its
/// end.
class BOUNCECHECK_EXPORT ParseEngine {
public:
    StringBuffer m_sbText;
    /// A byte index into `m_sbText`.
    std::size_t m_pos = 0;

    /// Appends to the text; the position stays.
    void appendN(const char* p, unsigned n) { m_sbText.appendN(p, n); }
    void append(std::string_view text) { m_sbText.append(text); }

    /// What lies at and after the position.
    std::string_view rest() const noexcept;
    /// The byte at the position, 0 at the end.
    char current() const noexcept;

    /// Moves `n` bytes on, or to the end.
    void advance(std::size_t n) noexcept;
    /// Moves just past the next `s` and returns true; without one, stays.
    bool seekAndSkip(const char* s) noexcept;
    bool seekAndSkip(std::string_view s) noexcept;
    /// Moves on while the byte there is one of the four.
    void skipUntilNotChar4(char a, char b, char c, char d) noexcept;
    /// Moves onto the next `c`, or to the end.
    void skipUntilChar(char c) noexcept;
    /// Appends to `out` what lies before the next byte of `stopSet`, or before
    /// the end, and moves there.
    void captureToNext(const char* stopSet, StringBuffer& out);
};

}  // namespace bouncecheck
