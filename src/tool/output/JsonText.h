#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {

/// Appends `text` to `json` as a string of JSON (RFC 8259). Bytes that are not UTF-8 become
/// U+FFFD; control characters (text/Controls.h) are escapes, those above U+007F too.
void appendJsonString(std::string& json, std::string_view text);

/// Makes JSON (RFC 8259) value by value, without whitespace. Bytes that are not UTF-8 become
/// U+FFFD; control characters are escapes.
class JsonText {
public:
    JsonText() = default;
    virtual ~JsonText() = default;
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

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

    /// What was made.
    std::string take() { return std::move(text_); }

protected:
    /// Hears that a string was added to, every few KB.
    virtual void grown() {}

    /// What was made and not handed on yet.
    std::string text_;
    bool needsComma_ = false;

private:
    void begin(char bracket);
    void end(char bracket);
    void literal(std::string_view text);
    void separate();
};

}  // namespace bouncecheck
