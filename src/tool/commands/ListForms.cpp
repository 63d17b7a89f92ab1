#include "tool/commands/ListForms.h"

#include <ostream>
#include <string>

#include "tool/commands/Times.h"
#include "tool/output/JsonWriter.h"
#include "tool/output/SeparatedWriter.h"

namespace bouncecheck {
namespace {

using ledger::ListedAddress;

/// A column, or a key of an object.
struct Column {
    std::string_view name;
    std::string (*text)(const ListedAddress& address);
    bool isNumber = false;
};

constexpr Column columns[] = {
    {"address", [](const ListedAddress& a) { return std::string(a.address); }},
    {"state",
     [](const ListedAddress& a) { return std::string(a.isSuppressed ? "suppressed" : "active"); }},
    {"cause", [](const ListedAddress& a) { return std::string(nameOf(a.cause)); }},
    {"reason", [](const ListedAddress& a) { return std::string(a.reason); }},
    {"since", [](const ListedAddress& a) { return timeText(a.since); }},
    {"first_seen", [](const ListedAddress& a) { return timeText(a.firstSeen); }},
    {"last_seen", [](const ListedAddress& a) { return timeText(a.lastSeen); }},
    {"count", [](const ListedAddress& a) { return std::to_string(a.count); }, true},
    {"evidence", [](const ListedAddress& a) { return std::string(a.evidence); }},
    {"changed", [](const ListedAddress& a) { return timeText(a.changed); }},
};

/// A column for people.
struct TableColumn {
    std::string_view heading;
    std::size_t width;
    std::string (*text)(const ListedAddress& address);
};

std::string day(std::optional<ledger::Time> time) { return time ? dayText(*time) : ""; }

constexpr TableColumn tableColumns[] = {
    {"ADDRESS", 37, [](const ListedAddress& a) { return std::string(a.address); }},
    {"CAUSE", 11, [](const ListedAddress& a) { return std::string(nameOf(a.cause)); }},
    {"REASON", 17, [](const ListedAddress& a) { return std::string(a.reason); }},
    {"FIRST SEEN", 10, [](const ListedAddress& a) { return day(a.firstSeen); }},
    {"LAST SEEN", 10, [](const ListedAddress& a) { return day(a.lastSeen); }},
    {"COUNT", 5, [](const ListedAddress& a) { return std::to_string(a.count); }},
    {"EVIDENCE", 30, [](const ListedAddress& a) { return std::string(a.evidence); }},
};

class Table {
public:
    Table(std::ostream& out, const Style& style) : out_(out), style_(style) {}

    void operator()(const ListedAddress& address) {
        if (!hasHeadings_) {
            std::string line;
            for (const TableColumn& column : tableColumns) append(line, column, column.heading);
            out_ << style_.paint(line, "1") << '\n';
            hasHeadings_ = true;
        }
        std::string line;
        for (const TableColumn& column : tableColumns) {
            const std::string text = column.text(address);
            append(line, column, text.empty() ? "-" : printable(text));
        }
        out_ << line << '\n';
    }

private:
    /// In a terminal a longer value is cut, elsewhere it pushes the rest to the right.
    void append(std::string& line, const TableColumn& column, std::string_view text) const {
        line += style_.width > 0 ? fitted(text, column.width) : std::string(text);
        if (&column == std::end(tableColumns) - 1) return;
        const std::size_t used = columns_(text);
        line.append(used < column.width ? column.width - used + 1 : 1, ' ');
    }
    static std::size_t columns_(std::string_view text) { return bouncecheck::columns(text); }

    std::ostream& out_;
    Style style_;
    bool hasHeadings_ = false;
};

class Json {
public:
    explicit Json(std::ostream& out) : out_(out) {}

    void operator()(const ListedAddress& address) {
        JsonWriter json(out_);
        json.beginObject();
        for (const Column& column : columns) {
            const std::string text = column.text(address);
            json.name(column.name);
            if (text.empty()) {
                json.null();
            } else if (column.isNumber) {
                json.number(text);
            } else {
                json.string(text);
            }
        }
        json.endObject();
        json.endLine();
    }

private:
    std::ostream& out_;
};

class Separated {
public:
    Separated(std::ostream& out, Dialect dialect) : writer_(out, dialect) {
        for (const Column& column : columns) writer_.value(column.name);
        writer_.endLine();
    }

    void operator()(const ListedAddress& address) {
        for (const Column& column : columns) writer_.value(column.text(address));
        writer_.endLine();
    }

private:
    SeparatedWriter writer_;
};

}  // namespace

std::function<void(const ListedAddress&)> makeList(ListForm form, std::ostream& out,
                                                   const Style& style) {
    switch (form) {
        case ListForm::json: return Json(out);
        case ListForm::csv: return Separated(out, Dialect::csv);
        case ListForm::tsv: return Separated(out, Dialect::tsv);
        case ListForm::table: break;
    }
    return Table(out, style);
}

}  // namespace bouncecheck
