#include <algorithm>
#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <bouncecheck/BounceType.h>
#include <bouncecheck/TraceTree.h>
#include "text/Ascii.h"
#include "text/Utf8.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

std::string headingOf(const Field& field) {
    if (field.name == "name") return "VERDICT";
    if (field.name == "label") return "RULE";
    if (field.name == "location") return "SOURCE";
    std::string heading(field.name);
    for (char& c : heading) c = ascii::toUpper(c);
    return heading;
}

/// The columns' widths in a terminal, so that they fill `total` with a blank
/// between them.
std::vector<std::size_t> widthsWithin(const std::vector<const Field*>& fields, std::size_t total) {
    constexpr std::size_t narrowest = 4;
    std::vector<std::size_t> widths;
    std::size_t sum = fields.size() - 1;
    for (const Field* field : fields) {
        widths.push_back(std::max(field->width, headingOf(*field).size()));
        sum += widths.back();
    }
    while (sum > total) {
        const auto widest = std::ranges::max_element(widths);
        if (*widest <= narrowest) break;
        --*widest;
        --sum;
    }
    if (sum < total) widths.back() += total - sum;
    return widths;
}

class TableOutput final : public Output {
public:
    TableOutput(std::ostream& out, OutputParts parts, Style style)
        : out_(out), parts_(std::move(parts)), rows_(parts_.rows), style_(style) {
        if (parts_.fields.empty()) {
            parts_.fields = parseFields("name,label,reason,about,location");
        }
        if (style_.width > 0) {
            widths_ = widthsWithin(parts_.fields, style_.width);
        } else {
            for (const Field* field : parts_.fields) widths_.push_back(field->width);
        }
    }

    Wanted wanted() const override {
        Wanted wanted = {
            .recipients = rows_.areOfRecipients(), .data = parts_.data, .trace = parts_.trace};
        addWanted(parts_.fields, wanted);
        return wanted;
    }

    void show(const Classified& message) override {
        if (counts_.empty()) {
            std::string row;
            for (std::size_t i = 0; i < widths_.size(); ++i) {
                row += cell(headingOf(*parts_.fields[i]), i);
            }
            out_ << style_.paint(row, "1") << '\n';
        }
        ++counts_[message.type];
        rows_.of(message, [this](const Shown& shown) { showRow(shown); });
        if (parts_.trace) showTrace(message);
        if (parts_.data) showData(message.text.view());
    }

    void finish() override {
        constexpr std::size_t nameWidth = 13;
        if (counts_.empty()) return;
        std::size_t total = 0;
        const auto showCount = [&](std::string_view name, std::size_t count,
                                   std::string_view color) {
            out_ << style_.paint(name, color) << std::string(nameWidth - name.size(), ' ') << count
                 << '\n';
        };
        out_ << '\n';
        for (const auto& [type, count] : counts_) {
            showCount(bounceTypeName(type), count, colorOf(type));
            total += count;
        }
        showCount("messages", total, "");
    }

private:
    void showRow(const Shown& shown) {
        std::string scratch;
        for (std::size_t i = 0; i < widths_.size(); ++i) {
            const Field& field = *parts_.fields[i];
            const std::string_view value = field.read(shown, scratch);
            if (style_.width == 0 && value.size() > longValue) {
                writePrintable(out_, value);
                if (i + 1 < widths_.size()) out_ << ' ';
                continue;
            }
            const bool isVerdict = field.name == "name" || field.name == "type";
            out_ << style_.paint(cell(value, i),
                                 isVerdict ? colorOf(shown.message.type) : std::string_view());
        }
        out_ << '\n';
    }

    /// One value, and what divides it from the next. In a pipe a longer value
    /// pushes the rest of its line to the right; in a terminal it is cut.
    std::string cell(std::string_view value, std::size_t column) const {
        const bool isLast = column + 1 == widths_.size();
        const std::size_t width = widths_[column];
        const Cut cut = parts_.fields[column]->cut;
        // Columns enough for any terminal; what takes none has to end somewhere too.
        if (cut == Cut::front)
            value = value.substr(value.size() - std::min(value.size(), longValue));
        std::string text = value.empty() ? "-" : printable(wholeCharacters(value, longValue));
        if (style_.width > 0) text = fitted(text, width, cut);
        if (isLast) return text;
        const std::size_t used = columns(text);
        return text.append(used < width ? width - used + 1 : 1, ' ');
    }

    void showTrace(const Classified& message) {
        std::string tree;
        appendWellFormed(tree, traceTree(message.trace, {.margin = "    ",
                                                         .markedEvent = message.decidingEvent,
                                                         .mark = "   <== decides",
                                                         .maxValueBytes = 300}));
        out_ << tree;
    }

    void showData(std::string_view data) {
        while (!data.empty()) {
            const std::size_t end = data.find("\r\n");
            out_ << "    | ";
            writePrintable(out_, data.substr(0, end));
            out_ << '\n';
            data.remove_prefix(end == std::string_view::npos ? data.size() : end + 2);
        }
    }

    /// Values of more bytes are never in memory as they are printed.
    static constexpr std::size_t longValue = 65536;

    std::ostream& out_;
    OutputParts parts_;
    Rows rows_;
    Style style_;
    std::vector<std::size_t> widths_;
    std::map<int, std::size_t> counts_;
};

}  // namespace

std::unique_ptr<Output> makeTableOutput(std::ostream& out, OutputParts parts, Style style) {
    return std::make_unique<TableOutput>(out, std::move(parts), style);
}

}  // namespace bouncecheck
