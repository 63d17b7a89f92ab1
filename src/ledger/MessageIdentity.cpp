#include "ledger/MessageIdentity.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

#include "text/Ascii.h"

namespace bouncecheck::ledger {
namespace {

/// Takes the first line off `text`, without its end: LF, or CRs and LF.
std::string_view takeLine(std::string_view& text) noexcept {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    while (line.ends_with('\r')) line.remove_suffix(1);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

void skipWhatIsNotOfTheMessage(std::string_view& text) noexcept {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
    if (text.starts_with("From ") || text.starts_with(">From ")) takeLine(text);
}

/// The fields that count, in the order of their numbers from 1.
constexpr std::string_view countedFields[] = {
    "Message-ID", "Date", "From", "To", "Subject", "Content-Type", "X-Failed-Recipients"};
constexpr char lastThatIdentifies = 2;

/// The number of the field that `line` begins; 0 for any other field.
char numberOf(std::string_view line) noexcept {
    // Most fields are told apart by their first letter.
    constexpr std::string_view firstLetters = "MDFTSCXmdftscx";
    if (firstLetters.find(line.front()) == std::string_view::npos) return 0;
    const std::string_view name = ascii::trimRight(line.substr(0, line.find(':')));
    const auto* known = std::ranges::find_if(
        countedFields, [&](std::string_view other) { return ascii::equalsNoCase(name, other); });
    if (known == std::end(countedFields)) return 0;
    return static_cast<char>(known - std::begin(countedFields) + 1);
}

/// Takes the header off `text`: fields and what continues them, and a blank line.
std::string_view takeHeader(std::string_view& text) noexcept {
    const std::string_view whole = text;
    std::size_t size = 0;
    for (std::string_view rest = text; !rest.empty(); size = whole.size() - rest.size()) {
        const std::string_view line = takeLine(rest);
        if (line.empty()) {
            text = rest;
            return whole.substr(0, size);
        }
        if (!ascii::isBlank(line.front()) && line.find(':') == std::string_view::npos) break;
    }
    text.remove_prefix(size);
    return whole.substr(0, size);
}

/// Appends the fields of a header, or those that count, in their order. False when none of them
/// identifies the message.
bool appendFields(std::string& text, std::string_view header, bool onlyCounted) {
    bool isWithin = false;
    bool isIdentified = false;
    while (!header.empty()) {
        std::string_view line = takeLine(header);
        if (!ascii::isBlank(line.front())) {
            const char number = numberOf(line);
            isWithin = number != 0 || !onlyCounted;
            isIdentified |= number != 0 && number <= lastThatIdentifies;
            if (!isWithin) continue;
            text += '\n';
            if (onlyCounted) {
                text += number;
                line.remove_prefix(line.find(':') + 1);
            }
        }
        // Whoever folds a field anew may put another white space there.
        if (isWithin) text.append(1, ' ').append(ascii::trim(line));
    }
    return isIdentified;
}

void addHeader(HashInput& hash, std::string_view& text) {
    const std::string_view header = takeHeader(text);
    std::string fields;
    if (!appendFields(fields, header, true)) appendFields(fields, header, false);
    hash.add(fields.append("\n\n"));
}

/// Adds `text`, which has no CRs, in pieces as large as may be.
void addUnquoted(HashInput& hash, std::string_view text) {
    constexpr std::string_view from = "From ";
    std::size_t added = 0;
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += from.size()) {
        std::size_t quotes = at;
        while (quotes > added && text[quotes - 1] == '>') --quotes;
        if (quotes > 0 && text[quotes - 1] != '\n') continue;
        hash.add(text.substr(added, quotes - added));
        added = at;
    }
    hash.add(text.substr(added));
    hash.add("\n");
}

void addBody(HashInput& hash, std::string_view text) {
    text = text.substr(0, text.find_last_not_of("\r\n") + 1);
    if (text.find('\r') == text.npos) return addUnquoted(hash, text);
    while (!text.empty()) addUnquoted(hash, takeLine(text));
}

}  // namespace

void addIdentity(HashInput& hash, std::string_view message) {
    skipWhatIsNotOfTheMessage(message);
    addHeader(hash, message);
    addBody(hash, message);
}

void addIdentityOfHeader(HashInput& hash, std::string_view beginning) {
    skipWhatIsNotOfTheMessage(beginning);
    addHeader(hash, beginning);
    hash.add("header only");
}

}  // namespace bouncecheck::ledger
