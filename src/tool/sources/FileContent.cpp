#include "tool/sources/FileContent.h"

#include <algorithm>

#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "tool/sources/SignatureTable.h"

namespace bouncecheck {
namespace {

/// Whether a header field may begin `text` (RFC 5322, section 2.2).
bool beginsWithField(std::string_view text) noexcept {
    const auto end =
        std::ranges::find_if(text, [](char c) { return c <= ' ' || c > '~' || c == ':'; });
    const std::string_view behind(end, text.end());
    const std::size_t colon = behind.find_first_not_of(" \t");
    return end != text.begin() && colon != std::string_view::npos && behind[colon] == ':';
}

/// Whether `text` may be that of a message: behind the letters of a signature, a size or a
/// checksum can look like the colon of a field.
bool isText(std::string_view text) noexcept {
    return std::ranges::none_of(
        text, [](char c) { return ascii::isControl(c) && !ascii::isOneOf(c, "\t\r\n"); });
}

/// The number that octal digits in the field of a tar header mean; leading blanks are
/// passed over.
unsigned octal(std::string_view digits) noexcept {
    unsigned number = 0;
    for (const char c : ascii::trimLeft(digits)) {
        if (c < '0' || c > '7') break;
        number = number * 8 + static_cast<unsigned>(c - '0');
    }
    return number;
}

constexpr ByteSet lineEndBytes("\r\n");

/// Whether `first` is the header of a tar archive's first member: its checksum is right,
/// and its name holds no line end, which the first line of a message nearly always does.
bool isTar(std::string_view first) noexcept {
    constexpr std::size_t nameSize = 100;
    constexpr std::size_t checksumAt = 148;
    constexpr std::size_t checksumSize = 8;
    if (first.size() < decisiveBytes || first.front() == '\0') return false;
    const std::string_view name = first.substr(0, nameSize);
    if (lengthBefore(lineEndBytes, name) < name.size()) return false;
    const std::string_view checksum = first.substr(checksumAt, checksumSize);
    unsigned sum = 0;
    for (const char c : first.substr(0, decisiveBytes)) sum += static_cast<unsigned char>(c);
    for (const char c : checksum) sum -= static_cast<unsigned char>(c);
    return sum + checksumSize * ' ' == octal(checksum);
}

}  // namespace

FileContent contentOf(std::string_view first) noexcept {
    for (const Signature& one : signature::table) {
        // Most differ in the first byte, which takes no call to see.
        if (first.empty() || first.front() != one.front.front()) continue;
        if (!first.starts_with(one.front) || first.size() < one.at) continue;
        if (!first.substr(one.at).starts_with(one.bytes)) continue;
        return isText(first) && beginsWithField(first) ? FileContent{} : one.content;
    }
    if (isTar(first)) return {FileContent::Kind::tar, "a tar archive"};
    return {};
}

}  // namespace bouncecheck
