#include "bounce/RecipientExtraction.h"

#include <algorithm>
#include <memory>

#include "bounce/PhraseSearch.h"
#include "bounce/Utf7.h"
#include "log/LogBase.h"
#include "log/LogNull.h"
#include "mime/Email2.h"
#include "mime/SystemCerts.h"
#include "text/ExtPtrArray.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// An entry of the marker table, taken apart.
struct Marker {
    std::string_view text;
    /// Has to stand in the text too; empty when the entry has none.
    std::string_view context;
    /// Whether the marker counts behind the context only.
    bool afterContext = false;

    explicit Marker(std::string_view entry) noexcept : text(entry) {
        if (!entry.starts_with('[')) return;
        const bool isDouble = entry.starts_with("[[");
        text.remove_prefix(isDouble ? 2 : 1);
        const std::size_t end = text.find(']');
        if (end == npos) return;
        context = text.substr(0, end);
        text.remove_prefix(end + 1);
        afterContext = isDouble;
    }
};

void stripSingleQuotes(StringBuffer& address) {
    if (address.beginsWith("'")) address.replaceFirstOccurance("'", "", false);
    if (address.endsWith("'")) address.shorten(1);
}

}  // namespace

bool pickBeforeNoLongerValid(std::string_view text, StringBuffer& address) {
    const std::size_t phrase = findBytes(text, noLongerValid);
    if (phrase == npos || phrase == 0) return false;
    const std::size_t at = text.rfind('@', phrase - 1);
    if (at == npos || at == 0) return false;
    // Only blanks and line feeds begin a word here; any white space ends it.
    const std::size_t before = text.find_last_of(" \n", at - 1);
    if (before == npos || before == 0) return false;
    const std::string_view word = text.substr(before + 1);
    address.append(word.substr(0, word.find_first_of(" \r\t\n")));
    return true;
}

MarkerCapture::Outcome MarkerCapture::capture(std::string_view entry, StringBuffer& address,
                                              LogBase& log) {
    if (!placeBehind(entry)) return Outcome::notApplicable;
    captureWord(address);
    cleanCapturedAddress(address);
    if (PhraseSearch(address).hasNoCase("postmaster")) {
        log.LogInfo("Postmaster is not the original recipient..");
        address.clear();
        return Outcome::postmaster;
    }
    return Outcome::candidate;
}

/// Moves the cursor just behind the marker; false when the entry does not apply.
bool MarkerCapture::placeBehind(std::string_view entry) {
    const Marker marker(entry);
    const PhraseSearch search(text_);
    if (!marker.context.empty() && !search.has(marker.context)) return false;
    if (!search.has(marker.text)) return false;

    if (cursor_.m_sbText.isEmpty()) cursor_.append(text_);
    cursor_.m_pos = 0;
    if (marker.afterContext) cursor_.seekAndSkip(marker.context);
    return cursor_.seekAndSkip(marker.text);
}

void MarkerCapture::skipWhiteSpace() noexcept { cursor_.skipUntilNotChar4(' ', '\t', '\r', '\n'); }

/// Appends the word behind the cursor, or an address in brackets on its line.
void MarkerCapture::captureWord(StringBuffer& address) {
    constexpr const char* whiteSpace = " \t\r\n";
    skipWhiteSpace();
    if (cursor_.current() == '"') {  // a display name
        cursor_.advance(1);
        cursor_.skipUntilChar('"');
        cursor_.advance(1);
        skipWhiteSpace();
    } else if (cursor_.current() == '*') {  // the bullet of a list
        cursor_.advance(1);
        skipWhiteSpace();
    }
    cursor_.captureToNext(whiteSpace, address);
    if (!address.containsChar('@') && address.charAt(0) == '<') {
        cursor_.captureToNext(">\r\n\t", address);
    }
    address.replaceAllWithUchar("[AT]", '@');
    address.replaceAllWithUchar("[DOT]", '.');
    if (address.containsChar('@')) return;

    const std::string_view rest = cursor_.rest();
    const std::string_view restOfLine = rest.substr(0, rest.find_first_of("\r\n"));
    if (restOfLine.find('<') == npos) return;
    cursor_.seekAndSkip("<");
    address.clear();
    cursor_.captureToNext(whiteSpace, address);
}

void cleanCapturedAddress(StringBuffer& address) {
    if (address.charAt(0) == '<' && address.indexOf("<mailto") >= 1) {
        address.chopAtSubstr("<mailto", false);
    }
    stripSingleQuotes(address);
    for (const char c : std::string_view("<>`;\":()[]")) address.removeCharOccurances(c);
    address.chopAtFirstChar('/');
    while (address.lastChar() == '.') address.shorten(1);
    decodeUtf7Signs(address);
    address.trim2();
    if (!address.containsChar('@')) address.clear();

    // A link's text and its target, glued together by the clean-up.
    const std::string_view text = address.view();
    const std::string_view half = text.substr(0, text.size() / 2);
    if (address.countCharOccurances('@') == 2 && text.size() % 2 == 0 &&
        half == text.substr(half.size())) {
        address.shorten(static_cast<unsigned>(half.size()));
    }
}

void scanWords(const StringBuffer& text, StringBuffer& address) {
    constexpr std::size_t longestNotice = 3999;
    if (text.view().size() > longestNotice) return;
    ExtPtrArraySb pieces;
    text.split(pieces, ' ', false, false);
    for (int i = 0; i < pieces.getSize(); ++i) {
        StringBuffer* piece = pieces.elementAt(i);
        if (!piece || !piece->containsChar('@')) continue;
        piece->trim2();
        address.setString(*piece);
        stripSingleQuotes(address);
        for (const char c : std::string_view("<>`;")) address.removeCharOccurances(c);
        address.trim2();
        return;
    }
}

AttachedRecipient lookUpAttachedRecipient(Email2& email, StringBuffer& address) {
    LogNull log;  // how the attachment is read is no step of the classification
    SystemCertsHolder holder;
    SystemCerts* certs = holder.getSystemCertsPtr();
    if (!certs) return AttachedRecipient::noCertStore;
    int status = 0;
    const std::unique_ptr<Email2, BrixelDeleter> attached(
        email.getAttachedMessage(0, status, *certs, log));
    if (!attached) return AttachedRecipient::none;
    address.clear();
    attached->getRecipientAddrUtf8(1, 0, address);
    return address.isEmpty() ? AttachedRecipient::none : AttachedRecipient::found;
}

}  // namespace bouncecheck
