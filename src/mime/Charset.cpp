#include "mime/Charset.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <unordered_map>
#include <utility>
#include <variant>

#include "mime/Iconv.h"
#include "mime/Limits.h"
#include "mime/SingleByteCharset.h"
#include "mime/tables/WesternCharsets.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

struct Alias {
    std::string_view inMail;
    std::string_view inIconv;
};

/// Names that mail uses and iconv lacks, or has for a smaller set of
/// characters than those who use the name in mail mean.
constexpr Alias aliases[] = {
    {"unicode", "utf-16"},        {"unicode-1-1-utf-7", "UTF-7"}, {"unicode-1-1-utf-8", "UTF-8"},
    {"x-sjis", "CP932"},          {"shift_jis", "CP932"},         {"shift-jis", "CP932"},
    {"gb2312", "GB18030"},        {"x-gbk", "GB18030"},           {"ks_c_5601-1987", "CP949"},
    {"x-euc-jp", "EUC-JP"},       {"iso-8859-8-i", "ISO-8859-8"}, {"x-windows-949", "CP949"},
    {"x-mac-roman", "MACINTOSH"}, {"csunicode", "utf-16"},
};

/// Whether iconv may be asked for the name, which comes from the message: what
/// follows a '/' would be instructions to it.
bool isCharsetName(std::string_view name) noexcept {
    const auto allowed = [](char c) {
        return ascii::isAlnum(c) || std::string_view("-_.:()+").find(c) != std::string_view::npos;
    };
    return !name.empty() && name.size() <= 64 && std::ranges::all_of(name, allowed);
}

/// The name that iconv knows a charset by; "" when it must not be asked.
std::string iconvName(const std::string& name) {
    // Charsets of the process rather than of mail.
    for (const std::string_view internal : {"wchar_t", "internal", "char"}) {
        if (name == internal) return {};
    }
    const auto alias = std::ranges::find(aliases, name, &Alias::inMail);
    if (alias != std::end(aliases)) return std::string(alias->inIconv);
    return isCharsetName(name) ? name : std::string();
}

/// How many bytes the smallest character of a charset takes.
std::size_t unitSize(std::string_view name) noexcept {
    const auto isOneOf = [&](std::initializer_list<std::string_view> stems) {
        return std::ranges::any_of(stems, [&](auto stem) { return name.starts_with(stem); });
    };
    if (isOneOf({"utf-16", "utf16", "ucs-2", "ucs2", "iso-10646-ucs-2"})) return 2;
    if (isOneOf({"utf-32", "utf32", "ucs-4", "ucs4", "iso-10646-ucs-4"})) return 4;
    return 1;
}

/// The name of a charset whose texts begin with a mark of their byte order, with that
/// order; the mark is taken off `bytes`. A conversion of iconv without it goes by the
/// mark of its first text for ever. What has no mark is mostly little-endian.
std::string withByteOrder(std::string name, std::string_view& bytes) {
    struct Wide {
        std::string_view name;
        std::string_view otherName;
        std::string_view bigEndianMark;
        std::string_view littleEndianMark;
    };
    using namespace std::string_view_literals;
    constexpr std::array<Wide, 2> wides = {
        {{"utf-16", "utf16", "\xFE\xFF", "\xFF\xFE"},
         {"utf-32", "utf32", "\0\0\xFE\xFF"sv, "\xFF\xFE\0\0"sv}}};
    for (const Wide& wide : wides) {
        if (name != wide.name && name != wide.otherName) continue;
        const bool isBig = bytes.starts_with(wide.bigEndianMark);
        if (isBig || bytes.starts_with(wide.littleEndianMark)) {
            bytes.remove_prefix(wide.bigEndianMark.size());
        }
        return std::string(wide.name).append(isBig ? "be" : "le");
    }
    return name;
}

/// How a charset that the C library knows is read: by a table, if that can be.
using Conversion = std::variant<UpperHalf, Iconv>;

/// That of a charset, or null when the library does not know it. This thread keeps
/// it: opening one takes longer than most texts do, a hundred times as long when the
/// library has to load the charset, and there are only so many.
Conversion* conversionOf(const std::string& charset) {
    thread_local std::unordered_map<std::string, Conversion> kept;
    if (const auto known = kept.find(charset); known != kept.end()) return &known->second;
    Iconv opened(charset);
    if (!opened.isOpen()) return nullptr;
    if (const auto upper = opened.upperHalf()) return &kept.emplace(charset, *upper).first->second;
    return &kept.emplace(charset, std::move(opened)).first->second;
}

}  // namespace

std::optional<std::string> convertedToUtf8(std::string_view bytes, std::string_view charset) {
    const std::string name = ascii::lowerCase(ascii::trim(charset));
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
    const std::string known = iconvName(name);
    if (known.empty()) return std::nullopt;
    const std::size_t unit = unitSize(known);
    if (unit == 1 && hasEightBit && isUtf8(bytes)) return std::nullopt;
    Conversion* const conversion = conversionOf(withByteOrder(known, bytes));
    if (!conversion) return std::nullopt;
    if (const auto* upper = std::get_if<UpperHalf>(conversion)) {
        if (!hasEightBit) return std::nullopt;
        return decodeSingleBytes(bytes, *upper);
    }
    return std::get<Iconv>(*conversion).convert(bytes, unit);
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
