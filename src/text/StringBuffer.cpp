#include <bouncecheck/classes/StringBuffer.h>

#include <algorithm>

#include <bouncecheck/classes/DataBuffer.h>
#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/Search.h"

namespace bouncecheck {

using ascii::viewOf;

namespace {

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    std::size_t at = 0;
    for (std::size_t hit; (hit = findBytes(text, from, at)) != npos; at = hit + from.size()) {
        result.append(text, at, hit - at);
        result.append(to);
    }
    result.append(text, at);
    return result;
}

}  // namespace

void StringBuffer::setString(const char* s) { setString(viewOf(s)); }
void StringBuffer::setString(const StringBuffer& other) {
    if (other.text_.isShared()) {
        hold(other.text_);
    } else {
        setString(other.view());
    }
}
void StringBuffer::setString(std::string_view s) { text_.assign(s); }

void StringBuffer::append(const char* s) { append(viewOf(s)); }
void StringBuffer::append(const StringBuffer& other) { append(other.text_); }
void StringBuffer::append(const DataBuffer& bytes) { append(bytes.bytes()); }
void StringBuffer::append(const ByteStore& bytes) {
    if (isEmpty() && bytes.isShared()) {
        hold(bytes);
    } else {
        append(bytes.view());
    }
}
void StringBuffer::append(std::string_view s) { text_.append(s); }
void StringBuffer::appendN(const char* p, unsigned n) {
    if (p) append(std::string_view(p, n));
}

void StringBuffer::hold(const ByteStore& bytes) { text_ = bytes.stretch(bytes.view()); }

void StringBuffer::handOut(StringBuffer& other) {
    text_.makeShared();
    if (text_.isMostOfItsText()) {
        other.hold(text_);
    } else {
        other.setString(view());
    }
}

void StringBuffer::clear() noexcept { text_ = ByteStore(); }

bool StringBuffer::equals(const char* s) const noexcept { return view() == viewOf(s); }

bool StringBuffer::equalsIgnoreCase(const char* s) const noexcept {
    return ascii::equalsNoCase(view(), viewOf(s));
}

bool StringBuffer::beginsWith(const char* prefix) const noexcept {
    return view().starts_with(viewOf(prefix));
}

bool StringBuffer::beginsWithIgnoreCase(const char* prefix) const noexcept {
    return ascii::startsWithNoCase(view(), viewOf(prefix));
}

bool StringBuffer::beginsWithIgnoreCaseN(const char* s, unsigned n) const noexcept {
    const std::string_view prefix = viewOf(s);
    return prefix.size() >= n && ascii::startsWithNoCase(view(), prefix.substr(0, n));
}

bool StringBuffer::endsWith(const char* suffix) const noexcept {
    return view().ends_with(viewOf(suffix));
}

bool StringBuffer::containsSubstring(const char* s) const noexcept {
    return contains(view(), viewOf(s));
}

bool StringBuffer::containsSubstringNoCase(const char* s) const {
    return containsNoCase(view(), viewOf(s));
}

bool StringBuffer::containsChar(char c) const noexcept { return view().find(c) != npos; }

int StringBuffer::indexOf(const char* s) const noexcept {
    const std::size_t at = findBytes(view(), viewOf(s));
    return at == npos ? -1 : static_cast<int>(at);
}

char StringBuffer::charAt(unsigned i) const noexcept {
    return i < view().size() ? view()[i] : '\0';
}

const char* StringBuffer::pCharAt(unsigned i) const {
    return getString() + std::min<std::size_t>(i, view().size());
}

char StringBuffer::lastChar() const noexcept { return isEmpty() ? '\0' : view().back(); }

unsigned StringBuffer::countCharOccurances(char c) const noexcept {
    return static_cast<unsigned>(std::ranges::count(view(), c));
}

void StringBuffer::removeCharOccurances(char c) { std::erase(changing(), c); }

void StringBuffer::removeAnyOf(std::string_view bytes) {
    const ByteSet unwanted(bytes);
    std::erase_if(changing(), [&](char c) { return unwanted.contains(c); });
}

void StringBuffer::replaceAllOccurances(const char* from, const char* to) {
    const std::string_view old = viewOf(from);
    if (old.empty() || !contains(view(), old)) return;
    changing() = replaceAll(view(), old, viewOf(to));
}

bool StringBuffer::replaceFirstOccurance(const char* from, const char* to, bool ignoreCase) {
    const std::string_view old = viewOf(from);
    if (old.empty()) return false;
    const std::size_t at = findBytes(view(), old, 0, letterCase(ignoreCase));
    if (at == npos) return false;
    const std::string replacement(viewOf(to));
    changing().replace(at, old.size(), replacement);
    return true;
}

void StringBuffer::replaceAllWithUchar(const char* from, unsigned byte) {
    const std::string old(viewOf(from));
    if (old.empty() || !contains(view(), old)) return;
    // In place, since a byte is never longer.
    std::string& text = changing();
    char* end = text.data();
    std::size_t at = 0;
    for (std::size_t hit; (hit = findBytes(text, old, at)) != npos; at = hit + old.size()) {
        end = std::copy(text.data() + at, text.data() + hit, end);
        *end++ = static_cast<char>(byte);
    }
    end = std::copy(text.data() + at, text.data() + text.size(), end);
    text.resize(static_cast<std::size_t>(end - text.data()));
}

void StringBuffer::trim2() {
    if (ascii::trim(view()).size() == view().size()) return;
    std::string& text = changing();
    text.resize(ascii::trimRight(text).size());
    text.erase(0, text.size() - ascii::trimLeft(text).size());
}

void StringBuffer::captureNonWS(const char* p) {
    std::string_view word = viewOf(p);
    word = word.substr(
        0, static_cast<std::size_t>(std::ranges::find_if(word, ascii::isSpace) - word.begin()));
    append(word);
}

void StringBuffer::chopAtFirstChar(char c) {
    const std::size_t at = view().find(c);
    if (at != npos) changing().resize(at);
}

void StringBuffer::chopAtSubstr(const char* s, bool ignoreCase) {
    const std::string_view mark = viewOf(s);
    if (mark.empty()) return;
    const std::size_t at = findBytes(view(), mark, 0, letterCase(ignoreCase));
    if (at != npos) changing().resize(at);
}

void StringBuffer::shorten(unsigned n) {
    const std::size_t size = view().size();
    changing().resize(size - std::min<std::size_t>(n, size));
}

}  // namespace bouncecheck
