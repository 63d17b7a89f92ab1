#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "text/Ascii.h"
#include "text/Utf8.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

std::string csvValue(std::string_view value) {
    std::string text;
    appendWellFormed(text, value);
    std::string out = "\"";
    bool needsQuotes = false;
    for (const char c : text) {
        needsQuotes |= c == '"' || c == ',' || c == '\r' || c == '\n' || c == ' ' || c == '\t';
        if (c == '"') out += '"';
        if (ascii::isControl(c) && c != '\r' && c != '\n' && c != '\t') {
            out += replacementCharacter;
        } else {
            out += c;
        }
    }
    out += '"';
    return needsQuotes ? out : out.substr(1, out.size() - 2);
}

std::string tsvValue(std::string_view value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    appendWellFormed(text, value);
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '\\': out += "\\\\"; break;
            case '\t': out += "\\t"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            default:
                if (ascii::isControl(c)) {
                    const auto byte = static_cast<unsigned char>(c);
                    out += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
                } else {
                    out += c;
                }
        }
    }
    return out;
}

struct Dialect {
    char separator;
    std::string_view lineEnd;
    std::string (*write)(std::string_view);
};

constexpr Dialect csv = {',', "\r\n", csvValue};
constexpr Dialect tsv = {'\t', "\n", tsvValue};

class SeparatedOutput final : public Output {
public:
    SeparatedOutput(std::ostream& out, OutputParts parts, const Dialect& dialect)
        : out_(out), fields_(std::move(parts.fields)), dialect_(dialect) {
        if (fields_.empty()) fields_ = parseFields("source,index,type,name,label,address");
        if (parts.data) fields_.push_back(parseFields("data").front());
        showLine([](const Field& field) { return std::string(field.name); });
    }

    Wanted wanted() const override {
        Wanted wanted;
        addWanted(fields_, wanted);
        return wanted;
    }

    void show(const Classified& message) override {
        showLine([&](const Field& field) { return dialect_.write(field.read(message)); });
    }

private:
    template <class Value>
    void showLine(Value value) {
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            if (i > 0) out_ << dialect_.separator;
            out_ << value(*fields_[i]);
        }
        out_ << dialect_.lineEnd;
    }

    std::ostream& out_;
    std::vector<const Field*> fields_;
    const Dialect& dialect_;
};

}  // namespace

std::unique_ptr<Output> makeCsvOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<SeparatedOutput>(out, std::move(parts), csv);
}

std::unique_ptr<Output> makeTsvOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<SeparatedOutput>(out, std::move(parts), tsv);
}

}  // namespace bouncecheck
