#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bouncecheck {

/// Writes JSON (RFC 8259) value by value into a text, without whitespace and without a
/// tree in memory. Bytes that are not UTF-8 become U+FFFD. That names and values
/// alternate, and that what begins is ended, is up to the caller.
class JsonWriter {
public:
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    void name(std::string_view text);
    void string(std::string_view text);
    void number(std::uint64_t value) { literal(std::to_string(value)); }
    void null() { literal("null"); }

    void member(std::string_view key, std::string_view text) {
        name(key);
        string(text);
    }

    /// All that was written.
    const std::string& text() const noexcept { return text_; }
    /// Begins anew, in the memory that is there.
    void clear() noexcept;

private:
    void begin(char bracket);
    void end(char bracket);
    void literal(std::string_view text);
    void separate();

    std::string text_;
    bool needsComma_ = false;
};

}  // namespace bouncecheck
