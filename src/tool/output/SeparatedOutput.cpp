#include <string>
#include <string_view>
#include <utility>

#include "tool/output/Output.h"
#include "tool/output/SeparatedWriter.h"

namespace bouncecheck {
namespace {

/// What is shown when no fields are asked for, of messages and of recipients.
constexpr std::string_view messageFields = "source,index,type,name,label,address";
constexpr std::string_view recipientFields =
    "source,index,recipient,outcome,reason,advice,status,diagnostic";

class SeparatedOutput final : public Output {
public:
    SeparatedOutput(std::ostream& out, OutputParts parts, Dialect dialect)
        : writer_(out, dialect, parts.isCsvSafe),
          fields_(std::move(parts.fields)),
          rows_(parts.rows) {
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
        try {
            for (const Field* field : fields_) writer_.value(value(*field));
            writer_.endLine();
        } catch (...) {
            writer_.abandonLine();
            throw;
        }
    }

    SeparatedWriter writer_;
    std::vector<const Field*> fields_;
    Rows rows_;
};

}  // namespace

std::unique_ptr<Output> makeCsvOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<SeparatedOutput>(out, std::move(parts), Dialect::csv);
}

std::unique_ptr<Output> makeTsvOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<SeparatedOutput>(out, std::move(parts), Dialect::tsv);
}

}  // namespace bouncecheck
