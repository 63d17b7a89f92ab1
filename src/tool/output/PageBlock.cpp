#include "tool/output/PageBlock.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

#include "mime/MailDate.h"
#include "tool/output/Excerpt.h"

namespace bouncecheck {
namespace {

// What a single message can add is bounded by these.
constexpr std::size_t mostBytesOfText = 400;
constexpr std::size_t mostBytesOfStep = 120;
constexpr std::size_t mostBytesOfLine = 300;
constexpr std::size_t mostEvents = 1000;
constexpr std::size_t mostLines = 60;
constexpr std::size_t mostFields = 40;

/// Enough for texts to be shared, and little enough to be read at a click.
constexpr std::size_t mostMessages = 2000;
constexpr std::size_t mostBytes = std::size_t{1} << 20;

/// After this, `element` is appended without another allocation.
void makeRoom(std::string& list, std::string_view element) {
    list.reserve(list.size() + 1 + element.size());
}

void appendElement(std::string& list, std::string_view element) {
    if (!list.empty()) list += ',';
    list += element;
}

/// Appends to an object, the first of whose members is there.
std::string& appendName(std::string& object, std::string_view name) {
    return object.append(",\"").append(name).append("\":");
}

void writeEscaped(std::ostream& out, std::string_view json) {
    for (std::size_t at = json.find('<'); at != std::string_view::npos; at = json.find('<')) {
        // In JSON, it stands in strings only.
        out << json.substr(0, at) << "\\u003c";
        json.remove_prefix(at + 1);
    }
    out << json;
}

void beginBlock(std::ostream& out, std::string_view className) {
    out << "<script type=\"application/json\" class=\"" << className << "\">";
}

void endBlock(std::ostream& out) { out << "</script>\n"; }

}  // namespace

void writeJsonBlock(std::ostream& out, std::string_view className, std::string_view json) {
    beginBlock(out, className);
    writeEscaped(out, json);
    endBlock(out);
}

void PageBlock::clear() noexcept {
    count_ = 0;
    rowTexts_.clear();
    texts_.clear();
    shapeNumbers_.clear();
    for (std::string& column : columns_) column.clear();
    shapes_.clear();
    details_.clear();
}

bool PageBlock::isFull() const noexcept {
    return count_ >= mostMessages ||
           rowTexts_.bytes() + texts_.bytes() + shapes_.size() + details_.size() >= mostBytes;
}

void PageBlock::add(const Classified& message) {
    const Columns added = rowsOf(message);
    const std::string detail = detailOf(message);
    for (std::size_t i = 0; i < added.size(); ++i) makeRoom(columns_[i], added[i]);
    makeRoom(details_, detail);
    for (std::size_t i = 0; i < added.size(); ++i) appendElement(columns_[i], added[i]);
    appendElement(details_, detail);
    ++count_;
}

constexpr std::array<std::string_view, 16> PageBlock::columnNames = {
    "type",      "label", "address", "subject", "from",   "place",  "date",       "rows",
    "recipient", "final", "outcome", "reason",  "advice", "status", "diagnostic", "quote"};

PageBlock::Columns PageBlock::rowsOf(const Classified& message) {
    const auto number = [&](std::string_view text) {
        return std::to_string(rowTexts_.add(text, mostBytesOfText));
    };
    const auto date = parseMailDate(message.date);
    // By its zone, the last day of 9999 can end in a year that the page has no room for.
    constexpr std::int64_t endOf9999 = 253'402'300'799;
    const bool isShown = date && *date <= endOf9999;
    Columns columns = {std::to_string(message.type),
                       number(message.label()),
                       number(message.address),
                       number(message.subject),
                       number(message.from),
                       number(message.place.text()),
                       isShown ? std::to_string(*date) : "null",
                       std::to_string(std::max<std::size_t>(message.recipients.size(), 1))};
    using RowTexts = std::array<std::string_view, 8>;
    constexpr std::size_t ofMessage = std::tuple_size_v<Columns> - std::tuple_size_v<RowTexts>;
    const auto addRow = [&](const RowTexts& texts) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            appendElement(columns[ofMessage + i], number(texts[i]));
        }
    };
    for (const Recipient& r : message.recipients) {
        addRow({r.address.empty() ? r.tag : r.address, r.finalAddress, nameOf(r.outcome),
                nameOf(r.reason), nameOf(r.advice), r.status, r.diagnostic, r.quote});
    }
    if (message.recipients.empty()) addRow({message.address});
    return columns;
}

std::string PageBlock::detailOf(const Classified& message) {
    std::string detail = "{";
    if (message.match) {
        const std::string phrase = phraseWithPlace(message.match);
        detail.append("\"phrase\":").append(number(phrase)).append(",");
    }
    detail.append("\"excerpt\":[").append(excerptLines(message)).append("]");
    addSteps(message, detail);
    addRecipients(message, detail);
    addFacts(message, detail);
    return detail.append("}");
}

void PageBlock::addSteps(const Classified& message, std::string& detail) {
    const std::span<const LogTrace::Event> events = message.trace;
    const std::size_t kept = std::min(events.size(), mostEvents);
    if (kept < events.size()) {
        appendName(detail, "moreSteps").append(std::to_string(events.size() - kept));
    }
    const std::size_t shape = shapeOf(events.first(kept), message.decidingEvent);
    appendName(detail, "shape").append(std::to_string(shape));
    std::string values;
    for (const LogTrace::Event& event : events.first(kept)) {
        if (event.kind != LogTrace::Kind::data) continue;
        appendElement(values, std::to_string(texts_.add(event.value.view(), mostBytesOfStep)));
    }
    appendName(detail, "values").append("[").append(values).append("]");
}

/// A shape is the number of the deciding event, and four times the number of its text
/// plus its kind for each event.
std::size_t PageBlock::shapeOf(std::span<const LogTrace::Event> events, std::size_t deciding) {
    std::string shape = "[" + std::to_string(deciding);
    for (const LogTrace::Event& event : events) {
        const bool isLeave = event.kind == LogTrace::Kind::leave;
        const std::size_t number = isLeave ? 0 : texts_.add(event.text, mostBytesOfText);
        shape += ',';
        shape += std::to_string(4 * number + static_cast<std::size_t>(event.kind));
    }
    shape += ']';
    const auto known = shapeNumbers_.find(shape);
    if (known != shapeNumbers_.end()) return known->second;
    makeRoom(shapes_, shape);
    const std::size_t number = shapeNumbers_.size();
    const auto entry = shapeNumbers_.emplace(std::move(shape), number).first;
    appendElement(shapes_, entry->first);
    return number;
}

/// A line is its pieces: a text, or a text and what it is marked as; a gap has none.
std::string PageBlock::excerptLines(const Classified& message) {
    std::string lines;
    std::vector<ExcerptLine> excerpt = excerptOf(message);
    if (excerpt.size() > mostLines) {
        excerpt.resize(mostLines);
        excerpt.back() = {.isGap = true};
    }
    for (const ExcerptLine& whole : excerpt) {
        std::string pieces;
        const ExcerptLine line = whole.isGap ? whole : cutLine(whole, mostBytesOfLine);
        const auto textOf = [&](std::size_t begin, std::size_t end) {
            return std::to_string(
                texts_.add(line.text.substr(begin, end - begin), mostBytesOfLine));
        };
        std::size_t end = 0;
        for (const Mark& mark : line.marks) {
            if (mark.begin > end) appendElement(pieces, textOf(end, mark.begin));
            end = mark.begin + mark.size;
            const std::string marked = textOf(mark.begin, end) + "," + std::to_string(mark.what);
            appendElement(pieces, "[" + marked + "]");
        }
        if (!line.isGap) appendElement(pieces, textOf(end, line.text.size()));
        appendElement(lines, "[" + pieces + "]");
    }
    return lines;
}

/// A list each, in the order of the rows.
void PageBlock::addRecipients(const Classified& message, std::string& detail) {
    std::string list;
    for (const Recipient& r : message.recipients) {
        std::string numbers;
        for (const std::string_view text :
             {std::string_view(r.tag), std::string_view(r.replyCode), std::string_view(r.remoteMta),
              std::string_view(r.lastAttempt), std::string_view(r.willRetryUntil), nameOf(r.source),
              nameOf(r.basis), r.row}) {
            appendElement(numbers, number(text));
        }
        appendElement(list, "[" + numbers + "]");
    }
    appendName(detail, "recipients").append("[").append(list).append("]");
}

void PageBlock::addFacts(const Classified& message, std::string& detail) {
    const Facts& facts = message.facts;
    std::string list;
    const auto addTexts = [&](std::initializer_list<std::string_view> texts) {
        std::string numbers;
        for (const std::string_view text : texts) appendElement(numbers, number(text));
        appendElement(list, "[" + numbers + "]");
    };
    const auto endList = [&](std::string_view name) {
        if (!list.empty()) appendName(detail, name).append("[").append(list).append("]");
        list.clear();
    };
    if (!facts.reportingMta.empty()) {
        appendName(detail, "reportedBy").append(number(facts.reportingMta));
    }
    // Pairs of name and value.
    for (const ReportField& field :
         std::span(facts.report).first(std::min(facts.report.size(), mostFields))) {
        addTexts({field.name, field.value});
    }
    endList("report");
    const ReturnedMessage& returned = facts.returned;
    const std::array<std::pair<std::string_view, std::string_view>, 6> fields = {
        {{"Message-ID", returned.messageId},
         {"From", returned.from},
         {"To", returned.to},
         {"Subject", returned.subject},
         {"Date", returned.date},
         {"List-Id", returned.listId}}};
    for (const auto& [name, value] : fields) {
        if (!value.empty()) addTexts({name, value});
    }
    endList("returned");
}

std::string PageBlock::number(std::string_view text) {
    return std::to_string(texts_.add(text, mostBytesOfText));
}

void PageBlock::write(std::ostream& out) {
    const auto writeTexts = [&](const SharedTexts& texts) {
        out << "{\"texts\":[\"\"";
        writeEscaped(out, texts.json());
        out << ']';
    };
    beginBlock(out, "rows");
    writeTexts(rowTexts_);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        out << ",\"" << columnNames[i] << "\":[" << columns_[i] << ']';
    }
    out << '}';
    endBlock(out);
    beginBlock(out, "details");
    writeTexts(texts_);
    out << ",\"shapes\":[" << shapes_ << "],\"messages\":[" << details_ << "]}";
    endBlock(out);
    clear();
}

}  // namespace bouncecheck
