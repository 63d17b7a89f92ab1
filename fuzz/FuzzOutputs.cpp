// Every form of output of one message, whatever its bytes are: what programs read parses
// in full, and nothing in it is obeyed by a terminal.

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "text/Controls.h"
#include "text/Utf8.h"
#include "tool/output/Output.h"

namespace bouncecheck::fuzz {
namespace {

using Json = nlohmann::json;

template <class Make>
std::string printed(const Classified& message, Make make) {
    std::ostringstream out;
    const std::unique_ptr<Output> output = make(out);
    output->show(message);
    output->finish();
    return out.str();
}

/// `allowed` are the control characters that the form itself is made of.
void requireHarmless(std::string_view text, std::string_view allowed) {
    require(isUtf8(text), "an output is UTF-8");
    splitAtControls(
        text, [](std::string_view) {},
        [&](std::uint32_t, std::string_view bytes) {
            require(bytes.size() == 1 && allowed.find(bytes) != allowed.npos,
                    "no control character of a message is in an output");
        });
}

std::vector<const Field*> everyField() {
    std::vector<const Field*> all;
    for (const Field& field : allFields()) all.push_back(&field);
    return all;
}

std::string wellFormed(std::string_view text) {
    std::string out;
    appendWellFormed(out, text);
    return out;
}

void checkJson(const Classified& message, const OutputParts& parts) {
    const std::string text =
        printed(message, [&](std::ostream& out) { return makeJsonOutput(out, parts); });
    requireHarmless(text, "\n");
    require(text.find('\n') == text.size() - 1, "an object of JSON is one line");
    const Json json = Json::parse(text, nullptr, false);
    require(json.is_object(), "JSON parses");
    require(json["data"] == wellFormed(message.text.view()), "JSON has the text as it is");
}

/// The values of one record, unquoted; the text behind it stays in `text`.
std::vector<std::string> csvRecord(std::string_view& text) {
    std::vector<std::string> values(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isDoubled = isQuoted && text.substr(i, 2) == "\"\"";
        if (c == '"' && !isDoubled) {
            const bool isAtEdge =
                isQuoted ? text.find_first_of(",\r", i + 1) == i + 1 : values.back().empty();
            require(isAtEdge, "a quote of CSV stands around a value");
            isQuoted = !isQuoted;
        } else if (!isQuoted && c == ',') {
            values.emplace_back();
        } else if (!isQuoted && text.substr(i, 2) == "\r\n") {
            text.remove_prefix(i + 2);
            return values;
        } else {
            require(isQuoted || (c != '\r' && c != '\n' && c != '"'), "CSV quotes line ends");
            values.back() += c;
            if (isDoubled) ++i;
        }
    }
    require(false, "a record of CSV has an end");
    return values;
}

void checkCsv(const Classified& message, const OutputParts& parts) {
    const std::string text =
        printed(message, [&](std::ostream& out) { return makeCsvOutput(out, parts); });
    requireHarmless(text, "\t\r\n");
    std::string_view rest = text;
    require(csvRecord(rest).size() == parts.fields.size(), "CSV has a name for each field");
    const std::vector<std::string> values = csvRecord(rest);
    require(values.size() == parts.fields.size(), "CSV has a value for each field");
    require(rest.empty(), "CSV has one record for a message");
    for (const std::string& value : values) {
        require(!parts.isCsvSafe || value.find_first_of("=+-@\t\r\n") != 0,
                "no value is a formula");
    }
}

/// The bytes that a value of TSV stands for.
std::string unescaped(std::string_view value) {
    std::string out;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\') {
            out += value[i];
            continue;
        }
        require(i + 1 < value.size(), "an escape of TSV is whole");
        switch (value[++i]) {
            case '\\': out += '\\'; break;
            case 't': out += '\t'; break;
            case 'n': out += '\n'; break;
            case 'r': out += '\r'; break;
            case 'x': {
                require(i + 2 < value.size(), "an escape of TSV is whole");
                out +=
                    static_cast<char>(std::stoi(std::string(value.substr(i + 1, 2)), nullptr, 16));
                i += 2;
                break;
            }
            default: require(false, "an escape of TSV is known");
        }
    }
    return out;
}

void checkTsv(const Classified& message, const OutputParts& parts) {
    const std::string text =
        printed(message, [&](std::ostream& out) { return makeTsvOutput(out, parts); });
    requireHarmless(text, "\t\n");
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    require(lines.peek() == std::char_traits<char>::eof(), "TSV has one line for a message");
    std::string scratch;
    for (const Field* field : parts.fields) {
        const std::size_t end = line.find('\t');
        require((end == line.npos) == (field == parts.fields.back()), "TSV has each field");
        require(unescaped(line.substr(0, end)) == wellFormed(field->read({message}, scratch)),
                "TSV reads back");
        line.erase(0, end == line.npos ? end : end + 1);
    }
}

/// The data blocks of a page, parsed.
void checkPage(const Classified& message) {
    const std::string page = printed(message, makeHtmlOutput);
    requireHarmless(page, "\n");
    constexpr std::string_view start = "<script type=\"application/json\"";
    constexpr std::string_view end = "</script>";
    std::vector<Json> blocks;
    for (std::size_t at = page.find(start); at != page.npos; at = page.find(start, at)) {
        at = page.find('>', at) + 1;
        const std::string_view json = std::string_view(page).substr(at, page.find(end, at) - at);
        require(json.find('<') == json.npos, "no tag is in the data of a page");
        blocks.push_back(Json::parse(json, nullptr, false));
        require(blocks.back().is_object(), "the data of a page parses");
    }
    require(blocks.size() == 3, "a page has its help, rows and details");
    const Json& texts = blocks[2]["texts"];
    for (const Json& line : blocks[2]["messages"][0]["excerpt"]) {
        for (const Json& piece : line) {
            const Json& text = piece.is_array() ? piece[0] : piece;
            require(text < texts.size(), "a page has its texts");
        }
    }
    require(blocks[1]["type"] == Json::array({message.type}), "a page has the verdict");
    const std::size_t rows = std::max<std::size_t>(message.recipients.size(), 1);
    require(blocks[1]["rows"] == Json::array({rows}), "a page counts its rows");
    for (const char* column : {"recipient", "reason", "quote"}) {
        require(blocks[1][column].size() == rows, "a page has a row for each recipient");
    }
    require(blocks[2]["messages"][0]["recipients"].size() == message.recipients.size(),
            "a page explains each recipient");
}

void checkText(const Classified& message, const OutputParts& parts) {
    for (const std::size_t width : {0U, 1U, 40U}) {
        const Style style = {.width = width};
        requireHarmless(
            printed(message, [&](std::ostream& out) { return makeTableOutput(out, parts, style); }),
            "\n");
        requireHarmless(
            printed(message, [&](std::ostream& out) { return makeExplainOutput(out, style); }),
            "\n");
    }
    const std::string addresses =
        printed(message, [](std::ostream& out) { return makeAddressOutput(out, false); });
    requireHarmless(addresses, "\n");
    std::istringstream lines(addresses);
    for (std::string line; std::getline(lines, line);) {
        require(line.find('@', 1) != line.npos && line.back() != '@', "an address has two parts");
    }
    const Json summary = Json::parse(
        printed(message,
                [](std::ostream& out) { return makeSummaryOutput(out, SummaryForm::json, {}); }),
        nullptr, false);
    require(summary["messages"] == 1, "the summary counts");
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const Wanted all = {.facts = true, .header = true, .data = true, .trace = true};
    const std::string bytes(Input(data, size).rest());
    // A path is not less hostile than a message.
    const std::string path = bytes.substr(0, bytes.find('\n'));
    Classified message = asRead({.place = {.source = path, .inMailbox = true}, .bytes = bytes});
    ToolClassifier(all).classify(message);
    require(message.problem.empty(), "every message has a verdict");

    const OutputParts parts = {.fields = everyField(), .data = true, .trace = true};
    checkJson(message, parts);
    checkJson(message, {.fields = {}, .data = true, .trace = true});
    checkCsv(message, {.fields = everyField()});
    checkCsv(message, {.fields = everyField(), .isCsvSafe = true});
    checkTsv(message, {.fields = everyField()});
    checkText(message, parts);
    checkPage(message);
    return 0;
}
