#include "bounce/RecipientExtraction.h"

#include <algorithm>
#include <memory>

#include "bounce/Marker.h"
#include "bounce/Utf7.h"
#include "mime/Entity.h"
#include "text/ByteSet.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

void stripSingleQuotes(StringBuffer& address) {
    if (address.beginsWith("'")) address.replaceFirstOccurance("'", "", false);
    if (address.endsWith("'")) address.shorten(1);
}

constexpr ByteSet whiteSpace(" \t\r\n");
constexpr ByteSet lineEnd("\r\n");
constexpr std::string_view bracketsAndSigns = "<>`;\":()[]";

/// Bytes. Nothing that long is an address; taken for one, it could be as long as the
/// message.
constexpr std::size_t longestWord = 1'048'576;

/// What `text` begins with, up to the next byte of `stops`, which is taken off it.
std::string_view takeUpTo(std::string_view& text, const ByteSet& stops) noexcept {
    const std::string_view taken = text.substr(0, lengthBefore(stops, text));
    text.remove_prefix(taken.size());
    return taken;
}

void skipWhiteSpace(std::string_view& text) noexcept {
    text.remove_prefix(lengthOf(whiteSpace, text));
}

/// Appends the word that `behind` begins with, or an address in brackets on its
/// line. Returns how many bytes were looked at.
std::size_t captureWord(const std::string_view behind, StringBuffer& address) {
    std::string_view text = behind;
    const auto lookedAt = [&] { return behind.size() - text.size(); };
    skipWhiteSpace(text);
    if (text.starts_with('"')) {  // a display name
        const std::size_t end = text.find('"', 1);
        text.remove_prefix(end == npos ? text.size() : end + 1);
        skipWhiteSpace(text);
    } else if (text.starts_with('*')) {  // the bullet of a list
        text.remove_prefix(1);
        skipWhiteSpace(text);
    }
    const std::string_view start = text;
    std::string_view word = takeUpTo(text, whiteSpace);
    if (word.starts_with('<') && !contains(word, "@")) {
        word = start.substr(0, word.size() + takeUpTo(text, ByteSet(">\r\n\t")).size());
    }
    if (word.size() > longestWord) return lookedAt();
    address.append(word);
    if (address.containsChar('[')) {
        address.replaceAllWithUchar("[AT]", '@');
        address.replaceAllWithUchar("[DOT]", '.');
    }
    if (address.containsChar('@')) return lookedAt();

    const std::string_view line = takeUpTo(text, lineEnd);
    const std::size_t bracket = line.find('<');
    if (bracket != npos) {
        std::string_view inside = line.substr(bracket + 1);
        word = takeUpTo(inside, whiteSpace);
        address.clear();
        if (word.size() <= longestWord) address.append(word);
    }
    return lookedAt();
}

}  // namespace

bool pickBefore(std::string_view phrase, std::string_view text, StringBuffer& address) {
    const std::size_t place = findBytes(text, phrase);
    if (place == npos || place == 0) return false;
    const std::size_t at = text.rfind('@', place - 1);
    if (at == npos || at == 0) return false;
    // Only blanks and line feeds begin a word here; any white space ends it.
    const std::size_t before = text.find_last_of(" \n", at - 1);
    if (before == npos || before == 0) return false;
    std::string_view rest = text.substr(before + 1);
    const std::string_view word = takeUpTo(rest, whiteSpace);
    if (word.size() > longestWord) return false;
    address.append(word);
    return true;
}

MarkerOutcome MarkerCaptures::behind(const Marker& marker, std::size_t place,
                                     StringBuffer& address) {
    if (marker.afterContext) {
        const std::size_t context = findBytes(text_, marker.context);
        place = findBytes(text_, marker.text, context + marker.context.size());
    }
    if (place == npos) return MarkerOutcome::notApplicable;
    std::string_view behind = text_.substr(place + marker.text.size());
    const bool isCut = allowance_ == 0 && behind.size() > oneLine;
    if (isCut) behind = behind.substr(0, oneLine);
    const std::size_t lookedAt = captureWord(behind, address);
    if (isCut && lookedAt == behind.size()) address.clear();  // may be half of one
    allowance_ -= std::min(allowance_, lookedAt);
    cleanCapturedAddress(address);
    if (!address.containsSubstringNoCase("postmaster")) return MarkerOutcome::candidate;
    address.clear();
    return MarkerOutcome::postmaster;
}

void cleanCapturedAddress(StringBuffer& address) {
    if (!address.containsChar('@') && !address.containsChar('+')) {
        address.clear();  // nothing in it could become one
        return;
    }
    if (address.charAt(0) == '<' && address.indexOf("<mailto") >= 1) {
        address.chopAtSubstr("<mailto", false);
    }
    stripSingleQuotes(address);
    address.removeAnyOf(bracketsAndSigns);
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
    const std::size_t sign = text.view().find('@');
    if (sign == npos) return;
    const std::string_view upToSign = text.view().substr(0, sign);
    const std::size_t begin = upToSign.rfind(' ') + 1;  // 0 where there is no blank
    const std::string_view word = text.view().substr(begin);
    address.setString(ascii::trim(word.substr(0, word.find(' '))));
    stripSingleQuotes(address);
    address.removeAnyOf("<>`;");
    address.trim2();
}

bool lookUpAttachedRecipient(const Entity& message, StringBuffer& address) {
    const std::unique_ptr<Entity> attached = message.attached(0);
    if (!attached) return false;
    address.setString(attached->recipient("To", 0));
    return !address.isEmpty();
}

}  // namespace bouncecheck
