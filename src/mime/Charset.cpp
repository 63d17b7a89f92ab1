#include "mime/Charset.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>

#include "mime/Limits.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr std::uint32_t none = 0xFFFD;

/// The characters of bytes 0x80 to 0x9F in Windows-1252; elsewhere it is
/// ISO-8859-1.
constexpr std::array<std::uint32_t, 32> windows1252Controls = {
    0x20AC, none,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, none,   0x017D, none,   none,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, none,   0x017E, 0x0178};

/// What the byte 0x80 + index means.
using UpperHalf = std::array<std::uint32_t, 128>;

constexpr UpperHalf latin1 = [] {
    UpperHalf half{};
    for (std::uint32_t i = 0; i < half.size(); ++i) half[i] = 0x80 + i;
    return half;
}();

constexpr UpperHalf usAscii = [] {
    UpperHalf half{};
    half.fill(none);
    return half;
}();

constexpr UpperHalf latin9 = [] {
    UpperHalf half = latin1;
    half[0x24] = 0x20AC;
    half[0x26] = 0x0160;
    half[0x28] = 0x0161;
    half[0x34] = 0x017D;
    half[0x38] = 0x017E;
    half[0x3C] = 0x0152;
    half[0x3D] = 0x0153;
    half[0x3E] = 0x0178;
    return half;
}();

constexpr UpperHalf windows1252 = [] {
    UpperHalf half = latin1;
    std::ranges::copy(windows1252Controls, half.begin());
    return half;
}();

struct WesternCharset {
    std::string_view name;
    const UpperHalf& upper;
};

/// The charsets decoded here, by the names that mail gives them.
constexpr WesternCharset westernCharsets[] = {
    {"us-ascii", usAscii},   {"ascii", usAscii},          {"ansi_x3.4-1968", usAscii},
    {"iso646-us", usAscii},  {"iso-8859-1", latin1},      {"iso8859-1", latin1},
    {"iso_8859-1", latin1},  {"iso_8859-1:1987", latin1}, {"latin1", latin1},
    {"l1", latin1},          {"iso-8859-15", latin9},     {"iso8859-15", latin9},
    {"iso_8859-15", latin9}, {"latin-9", latin9},         {"windows-1252", windows1252},
    {"cp1252", windows1252}, {"cp-1252", windows1252},    {"x-cp1252", windows1252},
};

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

std::string decodeBytes(std::string_view bytes, const UpperHalf& upper) {
    const auto meant = [&](char c) { return upper[static_cast<unsigned char>(c) & 0x7Fu]; };
    std::size_t growth = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (ascii::isAscii(bytes[i])) continue;
        const std::size_t more = meant(bytes[i]) < 0x800 ? 1 : 2;
        if (growth + more > limits::charsetGrowth) {
            bytes = bytes.substr(0, i);
            break;
        }
        growth += more;
    }
    std::string out;
    out.reserve(bytes.size() + growth);
    while (!bytes.empty()) {
        const std::size_t plain = asciiPrefix(bytes);
        out.append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        for (; !bytes.empty() && !ascii::isAscii(bytes.front()); bytes.remove_prefix(1)) {
            appendUtf8(out, meant(bytes.front()));
        }
    }
    return out;
}

/// A conversion of the C library, from one charset to UTF-8.
class Iconv {
public:
    explicit Iconv(std::string charset)
        : charset_(std::move(charset)), handle_(iconv_open("UTF-8", charset_.c_str())) {}
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    ~Iconv() {
        if (isOpen()) iconv_close(handle_);
    }

    /// The conversion that this thread used last, or another in its place: opening
    /// one takes longer than most texts do. Not for charsets with a byte order mark:
    /// a conversion goes by the mark of its first text for ever.
    static Iconv& of(const std::string& charset) {
        thread_local std::optional<Iconv> last;
        if (!last || last->charset_ != charset) last.emplace(charset);
        return *last;
    }

    bool isOpen() const noexcept { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// Where nothing can be decoded, `unit` bytes are passed over.
    std::string convert(std::string_view bytes, std::size_t unit) {
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);  // forgets the text before
        std::string out;
        constexpr std::size_t longest = 3;  // UTF-8 for one byte
        const std::size_t most = bytes.size() + limits::charsetGrowth;
        out.reserve(std::min(longest * bytes.size(), most));
        std::array<char, 8192> chunk;
        char* in = const_cast<char*>(bytes.data());  // iconv reads it only
        std::size_t left = bytes.size();
        const auto step = [&](char** from, std::size_t* fromLeft) {
            char* to = chunk.data();
            std::size_t room = chunk.size();
            const std::size_t result = iconv(handle_, from, fromLeft, &to, &room);
            const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
            out.append(chunk.data(), chunk.size() - room);
            return error;
        };
        while (left > 0 && out.size() + left < most) {
            const int error = step(&in, &left);
            if (error == 0 || error == E2BIG) continue;
            out += replacementCharacter;
            const std::size_t skip = std::min(unit, left);
            in += skip;
            left -= skip;
        }
        step(nullptr, nullptr);
        return out;
    }

private:
    std::string charset_;
    iconv_t handle_;
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
        return decodeBytes(bytes, western->upper);
    }
    const std::string known = iconvName(name);
    if (known.empty()) return std::nullopt;
    const std::size_t unit = unitSize(known);
    if (unit == 1 && hasEightBit && isUtf8(bytes)) return std::nullopt;
    std::optional<Iconv> ownConversion;
    Iconv& conversion = unit == 1 ? Iconv::of(known) : ownConversion.emplace(known);
    if (!conversion.isOpen()) return std::nullopt;
    return conversion.convert(bytes, unit);
}

std::string toUtf8(std::string bytes, std::string_view charset) {
    std::optional<std::string> converted = convertedToUtf8(bytes, charset);
    return std::move(converted).value_or(std::move(bytes));
}

std::string undeclaredToUtf8(std::string bytes) {
    if (!isUtf8(bytes)) bytes = decodeBytes(bytes, windows1252);
    return bytes;
}

}  // namespace bouncecheck
