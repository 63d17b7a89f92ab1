#include <cstddef>
#include <map>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "bounce/BounceType.h"
#include "log/TraceTree.h"
#include "text/Utf8.h"
#include "tool/Output.h"

namespace bouncecheck {
namespace {

/// Wide enough for the longest verdict and label, and for most addresses; a
/// longer one pushes the rest of its line to the right.
constexpr std::size_t verdictWidth = 13;
constexpr std::size_t labelWidth = 8;
constexpr std::size_t addressWidth = 38;

std::string printable(std::string_view text) {
    std::string wellFormed;
    appendWellFormed(wellFormed, text);
    return escapeControls(wellFormed);
}

/// How many columns UTF-8 text takes, wide characters counted as one.
std::size_t columns(std::string_view text) noexcept {
    std::size_t count = 0;
    for (const char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return count;
}

std::string cell(std::string_view text, std::size_t width) {
    std::string out = text.empty() ? "-" : printable(text);
    const std::size_t used = columns(out);
    return out.append(used < width ? width - used : 1, ' ');
}

class TableOutput final : public Output {
public:
    TableOutput(std::ostream& out, OutputParts parts) : out_(out), parts_(parts) {}

    void show(const Classified& message) override {
        if (counts_.empty()) showRow("VERDICT", "RULE", "ADDRESS", "SOURCE");
        ++counts_[message.type];
        showRow(bounceTypeName(message.type), message.label, message.address, message.source);
        if (parts_.trace) showTrace(message.trace);
        if (parts_.data) showData(message.data);
    }

    void finish() override {
        if (counts_.empty()) return;
        std::size_t total = 0;
        out_ << '\n';
        for (const auto& [type, count] : counts_) {
            out_ << cell(bounceTypeName(type), verdictWidth) << count << '\n';
            total += count;
        }
        out_ << cell("messages", verdictWidth) << total << '\n';
    }

private:
    void showRow(std::string_view verdict, std::string_view label, std::string_view address,
                 std::string_view source) {
        out_ << cell(verdict, verdictWidth) << cell(label, labelWidth)
             << cell(address, addressWidth) << printable(source) << '\n';
    }

    void showTrace(std::span<const LogTrace::Event> trace) {
        std::string tree;
        appendWellFormed(tree, traceTree(trace, {.margin = "    ",
                                                 .markedEvent = decidingEvent(trace),
                                                 .mark = "   <== decides",
                                                 .maxValueBytes = 300}));
        out_ << tree;
    }

    void showData(std::string_view data) {
        while (!data.empty()) {
            const std::size_t end = data.find("\r\n");
            out_ << "    | " << printable(data.substr(0, end)) << '\n';
            data.remove_prefix(end == std::string_view::npos ? data.size() : end + 2);
        }
    }

    std::ostream& out_;
    OutputParts parts_;
    std::map<int, std::size_t> counts_;
};

}  // namespace

std::unique_ptr<Output> makeTableOutput(std::ostream& out, OutputParts parts) {
    return std::make_unique<TableOutput>(out, parts);
}

}  // namespace bouncecheck
