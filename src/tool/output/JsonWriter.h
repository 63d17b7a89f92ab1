#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace bouncecheck {

/// Appends `text` to `json` as a string of JSON (RFC 8259). Bytes that are not UTF-8 become
/// U+FFFD; control characters (text/Controls.h) are escapes, those above U+007F too.
void appendJsonString(std::string& json, std::string_view text);

/// Writes JSON (RFC 8259) value by value to a stream, without whitespace and with a few
/// KB in memory. Bytes that are not UTF-8 become U+FFFD; control characters are escapes.
class JsonWriter {
public:
    /// `out` must outlive it.
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    void name(std::string_view text);
    void string(std::string_view text);
    /// `digits` as they are.
    void number(std::string_view digits) { literal(digits); }
    void null() { literal("null"); }

    void member(std::string_view key, std::string_view text) {
        name(key);
        string(text);
    }

    /// Ends a value that is a line of its own, and hands all to the stream.
    void endLine();
    /// Forgets a value that could not be completed. A line that is partly in the stream
    /// ends there, so that the next one can be read.
    void abandonLine();

private:
    void begin(char bracket);
    void end(char bracket);
    void literal(std::string_view text);
    void separate();
    void flush();

    std::ostream& out_;
    /// What the stream does not have yet.
    std::string text_;
    bool needsComma_ = false;
    /// Whether the stream has part of a line.
    bool isPartlyOut_ = false;
};

}  // namespace bouncecheck
