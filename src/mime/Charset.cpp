#include "mime/Charset.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <utility>
#include <variant>

#include <bouncecheck/Limits.h>
#include "mime/CharsetNames.h"
#include "mime/Iconv.h"
#include "mime/SingleByteCharset.h"
#include "mime/tables/WesternCharsets.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// The charset that a text is in whose byte order a mark at its start states; the mark is
/// removed from `bytes`. Asked for the charset itself, iconv goes by the mark of its first
/// text for ever. What has no mark is mostly little-endian.
const Charset* withByteOrder(const Charset* charset, std::string_view& bytes) {
    struct Marked {
        std::string_view charset;
        std::string_view bigEndian;
        std::string_view bigEndianMark;
        std::string_view littleEndian;
        std::string_view littleEndianMark;
    };
    using namespace std::string_view_literals;
    constexpr std::array<Marked, 2> all = {
        {{"UTF-16", "utf-16be", "\xFE\xFF", "utf-16le", "\xFF\xFE"},
         {"UTF-32", "utf-32be", "\0\0\xFE\xFF"sv, "utf-32le", "\xFF\xFE\0\0"sv}}};
    for (const Marked& marked : all) {
        if (charset->iconvName != marked.charset) continue;
        const bool isBig = bytes.starts_with(marked.bigEndianMark);
        if (isBig || bytes.starts_with(marked.littleEndianMark)) {
            bytes.remove_prefix(marked.bigEndianMark.size());
        }
        return charsetOf(isBig ? marked.bigEndian : marked.littleEndian);
    }
    return charset;
}

/// How a charset that the C library knows is read: by a table, if that can be.
using Conversion = std::variant<UpperHalf, ByteMeanings, Iconv>;

Conversion cheapest(Iconv opened) {
    const auto meanings = opened.byteMeanings();
    if (!meanings) return opened;
    constexpr std::size_t half = std::tuple_size_v<UpperHalf>;
    for (std::uint32_t byte = 0; byte < half; ++byte) {
        if ((*meanings)[byte] != byte) return *meanings;
    }
    UpperHalf upper;
    std::copy(meanings->begin() + half, meanings->end(), upper.begin());
    return upper;
}

/// That of a charset, or null when the library does not know it. This thread keeps
/// it: opening one takes longer than most texts do, a hundred times as long when the
/// library has to load the charset. It keeps no more than the table has.
Conversion* conversionOf(const Charset& charset) {
    thread_local std::array<std::unique_ptr<Conversion>, std::size(charsets)> kept;
    std::unique_ptr<Conversion>& conversion = kept[static_cast<std::size_t>(&charset - charsets)];
    if (conversion) return conversion.get();
    Iconv opened(charset.iconvName);
    if (!opened.isOpen()) return nullptr;
    conversion = std::make_unique<Conversion>(cheapest(std::move(opened)));
    return conversion.get();
}

}  // namespace

std::optional<std::string> convertedToUtf8(std::string_view bytes, std::string_view charset) {
    if (charset.empty()) return std::nullopt;
    const std::string name = canonicalCharsetName(charset);
    const bool hasEightBit = asciiPrefix(bytes) < bytes.size();
    if (name == "utf-8" || name == "utf8") {
        if (!hasEightBit || isUtf8(bytes)) return std::nullopt;
        std::string out;
        appendWellFormed(out, bytes, limits::charsetGrowth);
        return out;
    }
    const auto western = std::ranges::find(westernCharsets, name, &WesternCharset::name);
    if (western != std::end(westernCharsets)) {
        if (!hasEightBit || isUtf8(bytes)) return std::nullopt;
        return decodeSingleBytes(bytes, western->upper);
    }
    const Charset* known = charsetOf(name);
    if (!known || (known->unit == 1 && hasEightBit && isUtf8(bytes))) return std::nullopt;
    known = withByteOrder(known, bytes);
    Conversion* const conversion = conversionOf(*known);
    if (!conversion) return std::nullopt;
    if (auto* iconv = std::get_if<Iconv>(conversion)) return iconv->convert(bytes, known->unit);
    if (const auto* meanings = std::get_if<ByteMeanings>(conversion)) {
        return decodeSingleBytes(bytes, *meanings);
    }
    if (!hasEightBit) return std::nullopt;
    return decodeSingleBytes(bytes, std::get<UpperHalf>(*conversion));
}

std::string toUtf8(std::string bytes, std::string_view charset) {
    std::optional<std::string> converted = convertedToUtf8(bytes, charset);
    return std::move(converted).value_or(std::move(bytes));
}

std::string undeclaredToUtf8(std::string bytes) {
    if (!isUtf8(bytes)) bytes = decodeSingleBytes(bytes, windows1252);
    return bytes;
}

}  // namespace bouncecheck
