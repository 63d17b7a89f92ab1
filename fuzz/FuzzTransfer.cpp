// Transfer encodings: anything is decoded, and what was encoded comes back.

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/LineEnds.h"
#include "mime/TransferEncoding.h"

namespace bouncecheck::fuzz {
namespace {

std::string inBase64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::string_view group = bytes.substr(i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8 | (k < group.size() ? static_cast<unsigned char>(group[k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            out += k <= group.size() ? digits[bits >> (18 - 6 * k) & 0x3F] : '=';
        }
        if (i % 57 == 54) out += crLf;
    }
    return out;
}

std::string inQuotedPrintable(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += {'=', digits[byte >> 4], digits[byte & 15]};
        if (byte % 16 == 0) out.append("=").append(crLf);
    }
    return out;
}

std::string inUuencode(std::string_view bytes) {
    std::string out = "begin 644 x\r\n";
    const auto digit = [](unsigned value) { return static_cast<char>(0x20 + (value & 0x3F)); };
    for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(45, bytes.size()))) {
        const std::string_view line = bytes.substr(0, 45);
        out += digit(static_cast<unsigned>(line.size()));
        for (std::size_t i = 0; i < line.size(); i += 3) {
            unsigned bits = 0;
            for (std::size_t k = i; k < i + 3; ++k) {
                bits = bits << 8 | (k < line.size() ? static_cast<unsigned char>(line[k]) : 0U);
            }
            for (const unsigned shift : {18U, 12U, 6U, 0U}) out += digit(bits >> shift);
        }
        out += crLf;
    }
    return out + "`\r\nend\r\n";
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const ExactBytes exact(Input(data, size).rest());
    const std::string_view bytes = exact.view();
    std::string roomy(bytes);
    roomy.reserve(2 * bytes.size());
    require(copyWithCrLf(bytes) == withCrLf(std::move(roomy)),
            "line ends are completed the same in a copy and in place");
    for (const auto encoding : {TransferEncoding::identity, TransferEncoding::quotedPrintable,
                                TransferEncoding::base64, TransferEncoding::uuencode}) {
        const ExactBytes text(withCrLf(std::string(bytes)));
        require(decodeTransfer(text.view(), encoding).size() <= text.view().size(),
                "decoding makes no text longer");
    }
    require(decodeBase64(inBase64(bytes)) == bytes, "base64 comes back");
    require(decodeTransfer(inQuotedPrintable(bytes), TransferEncoding::quotedPrintable) == bytes,
            "quoted-printable comes back");
    require(decodeTransfer(inUuencode(bytes), TransferEncoding::uuencode) == bytes,
            "uuencode comes back");
    transferEncoding(bytes);
    return 0;
}
