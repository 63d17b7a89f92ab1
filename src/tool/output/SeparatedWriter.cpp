#include "tool/output/SeparatedWriter.h"

#include <cstdint>
#include <ostream>

#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// Appends `text` with each `mark` twice.
void appendDoubled(std::string& out, std::string_view text, char mark) {
    for (std::size_t end; (end = text.find(mark)) != std::string_view::npos;) {
        out.append(text, 0, end + 1) += mark;
        text.remove_prefix(end + 1);
    }
    out += text;
}

void appendCsv(std::string& out, std::string_view text) {
    splitAtControls(
        text, [&](std::string_view plain) { appendDoubled(out, plain, '"'); },
        [&](std::uint32_t code, std::string_view bytes) {
            const bool isSpace = code == '\t' || code == '\r' || code == '\n';
            out += isSpace ? bytes : replacementCharacter;
        });
}

void appendTsv(std::string& out, std::string_view text) {
    splitAtControls(
        text, [&](std::string_view plain) { appendDoubled(out, plain, '\\'); },
        [&](std::uint32_t code, std::string_view bytes) {
            switch (code) {
                case '\t': out += "\\t"; break;
                case '\n': out += "\\n"; break;
                case '\r': out += "\\r"; break;
                default:
                    for (const char c : bytes) {
                        appendHex(out, "\\x", static_cast<unsigned char>(c), 2);
                    }
            }
        });
}

/// Whether a spreadsheet takes a value that begins so for a formula.
constexpr bool startsFormula(std::string_view value) noexcept {
    return !value.empty() && ascii::isOneOf(value.front(), "=+-@\t\r\n");
}

struct Rules {
    char separator;
    std::string_view lineEnd;
    /// Characters that put a value in quotes.
    std::string_view quoted;
    /// Appends `text`, which is UTF-8, as it stands in a value.
    void (*append)(std::string& out, std::string_view text);
};

constexpr Rules csv = {',', "\r\n", "\", \t\r\n", appendCsv};
constexpr Rules tsv = {'\t', "\n", "", appendTsv};

const Rules& rulesOf(Dialect dialect) noexcept { return dialect == Dialect::csv ? csv : tsv; }

}  // namespace

void SeparatedWriter::value(std::string_view value) {
    constexpr std::size_t mostInMemory = 65536;
    const Rules& rules = rulesOf(dialect_);
    if (!isFirst_) line_ += rules.separator;
    isFirst_ = false;
    const std::string_view quote =
        value.find_first_of(rules.quoted) != std::string_view::npos ? "\"" : "";
    line_ += quote;
    if (isCsvSafe_ && startsFormula(value)) line_ += '\'';
    takeWellFormed(value, [&](std::string_view piece) {
        rules.append(line_, piece);
        if (line_.size() < mostInMemory) return;
        out_ << line_;
        isPartlyOut_ = true;
        line_.clear();
    });
    line_ += quote;
}

void SeparatedWriter::endLine() {
    out_ << line_.append(rulesOf(dialect_).lineEnd);
    line_.clear();
    isFirst_ = true;
    isPartlyOut_ = false;
}

void SeparatedWriter::abandonLine() {
    line_.clear();
    if (isPartlyOut_) out_ << rulesOf(dialect_).lineEnd;
    isFirst_ = true;
    isPartlyOut_ = false;
}

}  // namespace bouncecheck
