#include "mime/HtmlText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include <bouncecheck/Limits.h>
#include "mime/Charset.h"
#include "mime/tables/HtmlEntities.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// Elements that begin and end on lines of their own, sorted.
constexpr std::string_view blockElements[] = {
    "address", "article", "aside", "blockquote", "body",     "br",     "caption", "center",
    "dd",      "div",     "dl",    "dt",         "fieldset", "footer", "form",    "h1",
    "h2",      "h3",      "h4",    "h5",         "h6",       "head",   "header",  "hr",
    "html",    "li",      "main",  "nav",        "ol",       "p",      "pre",     "section",
    "table",   "tbody",   "tfoot", "thead",      "title",    "tr",     "ul"};

static_assert(std::ranges::is_sorted(blockElements));

/// Those of the names of elements.
constexpr ByteSet nameBytes =
    bytesWhere([](char c) { return ascii::isAlnum(c) || ascii::isOneOf(c, ":-"); });

/// What begins something else than text.
constexpr ByteSet markup("<&");
/// What ends a tag, or begins and ends a value in it.
constexpr ByteSet tagStops("\"'>");

/// Text in the making, with white space as a browser lays it out.
class TextFlow {
public:
    void add(std::string_view text, bool preformatted) {
        if (preformatted) {
            addAsItStands(text);
        } else {
            addCollapsed(text);
        }
    }
    void addBlank() noexcept { blank_ = true; }
    void breakLine() {
        blank_ = false;
        if (!atLineStart()) out_ += "\r\n";
    }
    std::size_t size() const noexcept { return out_.size(); }
    std::string finish() { return std::move(out_); }

private:
    void addAsItStands(std::string_view text) {
        for (const char c : text) {
            if (c == '\n' || c == '\r') {
                if (c == '\n') out_ += "\r\n";
                blank_ = false;
            } else {
                settleBlank();
                out_ += c;
            }
        }
    }
    /// Each stretch of white space becomes a blank, which counts once a letter follows. What is
    /// written behind a blank and is white space too is written over, which takes no decision.
    void addCollapsed(std::string_view text) {
        const std::string_view words = ascii::trimLeft(text);
        blank_ = blank_ || words.size() < text.size();
        if (words.empty()) return;
        settleBlank();
        std::size_t size = out_.size();
        out_.resize(size + words.size());
        bool isBehindBlank = false;
        for (const char c : words) {
            const bool isBlank = ascii::isSpace(c);
            out_[size] = isBlank ? ' ' : c;
            size += isBlank && isBehindBlank ? 0 : 1;
            isBehindBlank = isBlank;
        }
        blank_ = isBehindBlank;
        out_.resize(size - (blank_ ? 1 : 0));
    }
    bool atLineStart() const noexcept { return out_.empty() || out_.ends_with('\n'); }
    void settleBlank() {
        if (blank_ && !atLineStart()) out_ += ' ';
        blank_ = false;
    }

    std::string out_;
    bool blank_ = false;
};

class HtmlReader {
public:
    explicit HtmlReader(std::string_view html) noexcept : rest_(html) {}

    std::string read() {
        while (!rest_.empty() && flow_.size() <= limits::htmlText) {
            // By the piece, since a text without markup is to end at the limit too.
            const std::string_view next = rest_.substr(0, 65'536);
            const std::size_t plain = lengthBefore(markup, next);
            flow_.add(take(plain), preformatted_);
            if (plain == next.size()) continue;
            const bool done = rest_.front() == '<' ? readMarkup() : readReference();
            if (!done) flow_.add(take(1), preformatted_);
        }
        std::string text = flow_.finish();
        text.resize(wholeCharacters(text, limits::htmlText).size());
        if (text.ends_with('\r')) text.pop_back();  // half a line end
        return text;
    }

private:
    std::string_view take(std::size_t count) noexcept {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    /// Passes over what `rest_` begins with up to and including `end`.
    bool skipPast(std::string_view end, bool& isLost) noexcept {
        if (isLost) return false;
        const std::size_t at = findBytes(rest_, end);
        isLost = at == npos;
        if (isLost) return false;
        rest_.remove_prefix(at + end.size());
        return true;
    }

    bool readMarkup() {
        if (rest_.starts_with("<!--") && skipPast("-->", commentEndLost_)) return true;
        if (rest_.starts_with("<!") || rest_.starts_with("<?")) return skipPast(">", tagEndLost_);

        const bool closing = rest_.starts_with("</");
        const std::string_view inside = rest_.substr(closing ? 2 : 1);
        if (inside.empty() || !ascii::isAlpha(inside.front())) return false;
        const std::size_t nameLength = lengthOf(nameBytes, inside);
        const char next = nameLength < inside.size() ? inside[nameLength] : '\0';
        if (!ascii::isSpace(next) && next != '/' && next != '>') return false;
        const std::string name = ascii::lowerCase(inside.substr(0, nameLength));
        if (!skipTag()) return false;
        onTag(name, closing);
        return true;
    }

    /// Passes over a tag, whose attribute values may hold '>' in quotes.
    bool skipTag() noexcept {
        for (std::size_t at = 0; !quotesLost_;) {
            at += lengthBefore(tagStops, rest_.substr(at));
            if (at < rest_.size() && rest_[at] == '>') {
                rest_.remove_prefix(at + 1);
                return true;
            }
            const bool isOpening = at < rest_.size() && rest_[at - 1] == '=';
            if (isOpening) at = rest_.find(rest_[at], at + 1);
            quotesLost_ = at >= rest_.size();
            ++at;
        }
        return skipPast(">", tagEndLost_);
    }

    void onTag(const std::string& name, bool closing) {
        if (!closing && (name == "script" || name == "style")) {
            skipRawText("</" + name);
        } else if (std::ranges::binary_search(blockElements, name)) {
            if (name == "pre") preformatted_ = !closing;
            flow_.breakLine();
        } else if (name == "td" || name == "th") {
            flow_.addBlank();
        }
    }

    void skipRawText(std::string_view endTag) {
        rest_.remove_prefix(std::min(findBytesNoCase(rest_, endTag), rest_.size()));
    }

    /// A character reference: &name; or &#number; the ';' may be missing.
    bool readReference() {
        constexpr std::size_t longest = 32;
        std::string_view body = rest_.substr(1, longest);
        const bool numeric = body.starts_with('#');
        if (numeric) body.remove_prefix(1);
        const auto end = std::ranges::find_if_not(body, ascii::isAlnum);
        body = body.substr(0, static_cast<std::size_t>(end - body.begin()));
        const std::optional<std::uint32_t> codePoint = numeric ? number(body) : named(body);
        if (!codePoint) return false;

        take(1 + (numeric ? 1 : 0) + body.size());
        if (rest_.starts_with(';')) take(1);
        flow_.add(character(*codePoint), preformatted_);
        return true;
    }

    static std::optional<std::uint32_t> number(std::string_view digits) noexcept {
        const bool hex = digits.starts_with('x') || digits.starts_with('X');
        if (hex) digits.remove_prefix(1);
        std::uint32_t value = 0;
        const char* const end = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), end, value, hex ? 16 : 10);
        if (stop != end || error != std::errc()) return std::nullopt;
        return value;
    }

    static std::string character(std::uint32_t codePoint) {
        // Numbers of control characters are meant as Windows-1252.
        if (codePoint >= 0x80 && codePoint <= 0x9F) {
            const char byte = static_cast<char>(codePoint);
            return undeclaredToUtf8(std::string(1, byte));
        }
        std::string out;
        if (codePoint == 0) codePoint = 0xFFFD;
        appendUtf8(out, codePoint == 0xA0 ? ' ' : codePoint);  // phrases are written with blanks
        return out;
    }

    static std::optional<std::uint32_t> named(std::string_view name) noexcept {
        const auto found = std::ranges::lower_bound(htmlEntities, name, {}, &HtmlEntity::name);
        if (found == std::end(htmlEntities) || found->name != name) return std::nullopt;
        return found->codePoint;
    }

    std::string_view rest_;
    TextFlow flow_;
    bool preformatted_ = false;
    // Set once an end was looked for in vain: it will not come any more.
    bool commentEndLost_ = false;
    bool tagEndLost_ = false;
    bool quotesLost_ = false;
};

}  // namespace

std::string htmlToText(std::string_view html) { return HtmlReader(html).read(); }

}  // namespace bouncecheck
