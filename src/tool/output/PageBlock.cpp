#include "tool/output/PageBlock.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

#include "facts/MailDate.h"
#include "text/Utf8.h"
#include "tool/output/Excerpt.h"

namespace bouncecheck {
namespace {

using Json = nlohmann::ordered_json;

// What a single message can add is bounded by these.
constexpr std::size_t mostBytesOfText = 400;
constexpr std::size_t mostBytesOfStep = 120;
constexpr std::size_t mostBytesOfLine = 300;
constexpr std::size_t mostEvents = 1000;
constexpr std::size_t mostRecipients = 20;
constexpr std::size_t mostFields = 40;

/// Enough for texts to be shared, and little enough to be read at a click.
constexpr std::size_t mostMessages = 2000;
constexpr std::size_t mostBytes = std::size_t{1} << 20;

std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void appendElement(std::string& list, const std::string& element) {
    if (!list.empty()) list += ',';
    list += element;
}

}  // namespace

void writeJsonBlock(std::ostream& out, std::string_view className, const std::string& json) {
    out << "<script type=\"application/json\" class=\"" << className << "\">";
    std::string_view rest = json;
    for (std::size_t at = rest.find('<'); at != std::string_view::npos; at = rest.find('<')) {
        // In JSON, it stands in strings only.
        out << rest.substr(0, at) << "\\u003c";
        rest.remove_prefix(at + 1);
    }
    out << rest << "</script>\n";
}

std::size_t SharedTexts::add(std::string_view text, std::size_t mostBytesOfOne) {
    std::string kept(wholeCharacters(text, mostBytesOfOne));
    if (kept.size() < text.size()) kept += "\xE2\x80\xA6";
    const auto [entry, isNew] = numbers_.try_emplace(std::move(kept), texts_.size());
    if (isNew) {
        texts_.push_back(entry->first);
        bytes_ += entry->first.size();
    }
    return entry->second;
}

std::string SharedTexts::json() const { return dump(Json(texts_)); }

void SharedTexts::clear() {
    numbers_.clear();
    texts_.clear();
    bytes_ = 0;
    add("", 0);
}

void PageBlock::clear() {
    count_ = 0;
    rowTexts_.clear();
    rows_ = Json::object();
    for (const char* column : {"type", "label", "address", "subject", "from", "place", "date"}) {
        rows_[column] = Json::array();
    }
    texts_.clear();
    shapeNumbers_.clear();
    shapes_.clear();
    details_.clear();
}

bool PageBlock::isFull() const noexcept {
    return count_ >= mostMessages ||
           rowTexts_.bytes() + texts_.bytes() + shapes_.size() + details_.size() >= mostBytes;
}

void PageBlock::add(const Classified& message) {
    addRow(message);
    Json detail = Json::object();
    const std::string_view phrase = phraseBehind(message);
    if (!phrase.empty()) detail["phrase"] = text(phrase);
    detail["excerpt"] = excerptLines(message, phrase);
    addSteps(message.trace, detail);
    addFacts(message.facts, detail);
    appendElement(details_, dump(detail));
    ++count_;
}

void PageBlock::addRow(const Classified& message) {
    const auto add = [&](const char* column, std::string_view value) {
        rows_[column].push_back(rowTexts_.add(value, mostBytesOfText));
    };
    rows_["type"].push_back(message.type);
    add("label", message.label);
    add("address", message.address);
    add("subject", message.subject);
    add("from", message.from);
    add("place", placeOf(message.source, message.index, message.inMailbox));
    const auto date = parseMailDate(message.date);
    rows_["date"].push_back(date ? Json(*date) : Json(nullptr));
}

void PageBlock::addSteps(std::span<const LogTrace::Event> events, Json& detail) {
    const std::size_t kept = std::min(events.size(), mostEvents);
    if (kept < events.size()) detail["moreSteps"] = events.size() - kept;
    detail["shape"] = shapeOf(events.first(kept), decidingEvent(events));
    Json& values = detail["values"] = Json::array();
    for (const LogTrace::Event& event : events.first(kept)) {
        if (event.kind != LogTrace::Kind::data) continue;
        values.push_back(texts_.add(event.value, mostBytesOfStep));
    }
}

/// A shape is the number of the deciding event, and four times the number of its text
/// plus its kind for each event.
std::size_t PageBlock::shapeOf(std::span<const LogTrace::Event> events, std::size_t deciding) {
    std::vector<std::size_t> shape = {deciding};
    for (const LogTrace::Event& event : events) {
        const bool isLeave = event.kind == LogTrace::Kind::leave;
        const std::size_t number = isLeave ? 0 : texts_.add(event.text, mostBytesOfText);
        shape.push_back(4 * number + static_cast<std::size_t>(event.kind));
    }
    const auto [entry, isNew] = shapeNumbers_.try_emplace(std::move(shape), shapeNumbers_.size());
    if (isNew) appendElement(shapes_, dump(Json(entry->first)));
    return entry->second;
}

/// A line is its pieces, those marked at the odd places; a gap has none.
Json PageBlock::excerptLines(const Classified& message, std::string_view phrase) {
    Json lines = Json::array();
    for (const ExcerptLine& whole : excerptOf(message, phrase)) {
        Json& pieces = lines.emplace_back(Json::array());
        if (whole.isGap) continue;
        const ExcerptLine line = cutLine(whole, mostBytesOfLine);
        std::size_t end = 0;
        const auto addUpTo = [&](std::size_t to) {
            pieces.push_back(texts_.add(line.text.substr(end, to - end), mostBytesOfLine));
            end = to;
        };
        for (const Mark& mark : line.marks) {
            if (mark.size == 0) continue;
            addUpTo(mark.begin);
            addUpTo(mark.begin + mark.size);
        }
        addUpTo(line.text.size());
    }
    return lines;
}

void PageBlock::addFacts(const Facts& facts, Json& detail) {
    const std::size_t recipients = std::min(facts.recipients.size(), mostRecipients);
    for (const RecipientFacts& r : std::span(facts.recipients).first(recipients)) {
        detail["recipients"].push_back({text(r.originalRecipient), text(r.finalRecipient),
                                        text(r.action), text(r.status), text(r.diagnosticCode),
                                        text(r.remoteMta)});
    }
    if (recipients < facts.recipients.size()) {
        detail["moreRecipients"] = facts.recipients.size() - recipients;
    }
    std::string failed;
    for (const std::string& address : facts.failedRecipients) {
        failed.append(failed.empty() ? "" : ", ").append(address);
    }
    if (!failed.empty()) detail["failed"] = text(failed);
    if (!facts.reportingMta.empty()) detail["reportedBy"] = text(facts.reportingMta);
    // Pairs of name and value.
    for (const ReportField& field :
         std::span(facts.report).first(std::min(facts.report.size(), mostFields))) {
        detail["report"].push_back({text(field.name), text(field.value)});
    }
    const ReturnedMessage& returned = facts.returned;
    const std::array<std::pair<const char*, std::string_view>, 5> fields = {
        {{"Message-ID", returned.messageId},
         {"To", returned.to},
         {"Subject", returned.subject},
         {"Date", returned.date},
         {"List-Id", returned.listId}}};
    for (const auto& [name, value] : fields) {
        if (!value.empty()) detail["returned"].push_back({text(name), text(value)});
    }
}

std::size_t PageBlock::text(std::string_view text) { return texts_.add(text, mostBytesOfText); }

void PageBlock::write(std::ostream& out) {
    std::string rows = "{\"texts\":" + rowTexts_.json();
    for (const auto& [name, column] : rows_.items()) {
        rows.append(",\"").append(name).append("\":").append(dump(column));
    }
    writeJsonBlock(out, "rows", rows + "}");
    std::string details = "{\"texts\":" + texts_.json();
    details.append(",\"shapes\":[").append(shapes_).append("]");
    writeJsonBlock(out, "details", details + ",\"messages\":[" + details_ + "]}");
    clear();
}

}  // namespace bouncecheck
