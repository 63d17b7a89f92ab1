#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Utf8.h"
#include "tool/output/Output.h"

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

struct Dialect {
    char separator;
    std::string_view lineEnd;
    /// Characters that put a value in quotes.
    std::string_view quoted;
    /// Appends `text`, which is UTF-8, as it stands in a value.
    void (*append)(std::string& out, std::string_view text);
};

constexpr Dialect csv = {',', "\r\n", "\", \t\r\n", appendCsv};
constexpr Dialect tsv = {'\t', "\n", "", appendTsv};

/// What is shown when no fields are asked for, of messages and of recipients.
constexpr std::string_view messageFields = "source,index,type,name,label,address";
constexpr std::string_view recipientFields =
    "source,index,recipient,outcome,reason,advice,status,diagnostic";

class SeparatedOutput final : public Output {
public:
    SeparatedOutput(std::ostream& out, OutputParts parts, const Dialect& dialect)
        : out_(out),
          fields_(std::move(parts.fields)),
          rows_(parts.rows),
          dialect_(dialect),
          isCsvSafe_(parts.isCsvSafe) {
        if (fields_.empty())
            fields_ = parseFields(rows_.areOfRecipients() ? recipientFields : messageFields);
        if (parts.data) fields_.push_back(parseFields("data").front());
        if (parts.headings) writeLine([](const Field& field) { return field.name; });
    }

    Wanted wanted() const override {
        Wanted wanted = {.recipients = rows_.areOfRecipients()};
        addWanted(fields_, wanted);
        return wanted;
    }

    void show(const Classified& message) override {
        std::string scratch;
        rows_.of(message, [&](const Shown& shown) {
            writeLine([&](const Field& field) { return field.read(shown, scratch); });
        });
    }

private:
    template <class Value>
    void writeLine(Value value) {
        line_.clear();
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            if (i > 0) line_ += dialect_.separator;
            write(value(*fields_[i]));
        }
        out_ << line_.append(dialect_.lineEnd);
    }

    void write(std::string_view value) {
        constexpr std::size_t mostInMemory = 65536;
        const std::string_view quote =
            value.find_first_of(dialect_.quoted) != std::string_view::npos ? "\"" : "";
        line_ += quote;
        if (isCsvSafe_ && startsFormula(value)) line_ += '\'';
        takeWellFormed(value, [&](std::string_view piece) {
            dialect_.append(line_, piece);
            if (line_.size() < mostInMemory) return;
            out_ << line_;
            line_.clear();
        });
        line_ += quote;
    }

    std::ostream& out_;
    std::vector<const Field*> fields_;
    Rows rows_;
    const Dialect& dialect_;
    bool isCsvSafe_;
    /// What the stream does not have yet.
    std::string line_;
};

}  // namespace

std::unique_ptr<Output> makeCsvOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<SeparatedOutput>(out, std::move(parts), csv);
}

std::unique_ptr<Output> makeTsvOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<SeparatedOutput>(out, std::move(parts), tsv);
}

}  // namespace bouncecheck
