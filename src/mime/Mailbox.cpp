#include "mime/Mailbox.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <bouncecheck/Limits.h>
#include "mime/Comment.h"
#include "mime/EncodedWords.h"
#include "mime/PlainMailbox.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// A run of bytes without white space or special characters between them.
struct Word {
    /// As it stands, the quotes of quoted parts included.
    std::string raw;
    /// Without quotes and escapes.
    std::string plain;

    bool isQuoted() const noexcept { return raw.starts_with('"') && raw.ends_with('"'); }
};

/// Without comments and white space outside quotes, source route (RFC 5322,
/// section 4.4) and "mailto:".
std::string bareAddress(std::string_view text) {
    std::string out;
    bool quoted = false;
    bool commentsOpen = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"') quoted = !quoted;
        if (c == '(' && !quoted && !commentsOpen) {
            const std::size_t length = commentLength(text.substr(i));
            commentsOpen = length == npos;
            if (!commentsOpen) {
                i += length - 1;
                continue;
            }
        }
        if (quoted || !ascii::isSpace(c)) out += c;
    }
    if (out.starts_with('@')) {
        const std::size_t colon = out.find(':');
        if (colon != npos) out.erase(0, colon + 1);
    }
    if (ascii::startsWithNoCase(out, "mailto:")) out.erase(0, 7);
    return out;
}

/// The name in a comment, which often stands in quotes: ("Mail System").
std::string nameIn(std::string_view comment) {
    comment = ascii::trim(comment);
    const bool isQuoted = comment.size() >= 2 && comment.front() == '"' && comment.back() == '"';
    if (isQuoted) comment = comment.substr(1, comment.size() - 2);
    std::string name;
    for (std::size_t i = 0; i < comment.size(); ++i) {
        if (comment[i] == '\\' && i + 1 < comment.size()) ++i;
        name += comment[i];
    }
    return name;
}

bool hasAt(std::string_view text) noexcept { return text.find('@') != npos; }

/// What was read of one mailbox so far.
class Draft {
public:
    bool isEmpty() const noexcept { return words_.empty() && !angle_ && comment_.empty(); }
    bool isOnlyName() const noexcept {
        return !words_.empty() && !angle_ && !hasAddressWord_ && comment_.empty();
    }
    bool hasAngle() const noexcept { return angle_; }
    bool hasAddressWord() const noexcept { return hasAddressWord_; }

    /// Adds to the last word, or begins one after white space.
    void addPlain(std::string_view text) { addPiece(text, text); }
    void addPiece(std::string_view raw, std::string_view plain) {
        if (!wordOpen_ && words_.size() >= limits::mailboxWords) return;
        Word& word = lastWord();
        hasAddressWord_ = hasAddressWord_ || hasAt(raw);
        word.raw += raw;
        word.plain += plain;
    }
    void endWord() noexcept { wordOpen_ = false; }

    void addComment(std::string_view text) {
        endWord();
        if (comment_.empty()) comment_ = text;
    }
    void setAngle(std::string_view text) {
        endWord();
        if (!angle_) angleText_ = text;
        angle_ = true;
    }
    /// The words were the name of a group.
    void dropWords() noexcept {
        words_.clear();
        wordOpen_ = false;
    }

    Mailbox finish() {
        Mailbox mailbox;
        joinAroundAt();
        const auto addressWord = findAddressWord();
        if (angle_ && (hasAt(angleText_) || addressWord == words_.end())) {
            mailbox.address =
                hasAt(angleText_) ? bareAddress(angleText_) : std::string(ascii::trim(angleText_));
        } else if (addressWord != words_.end()) {
            mailbox.address =
                bareAddress(addressWord->isQuoted() ? addressWord->plain : addressWord->raw);
            words_.erase(addressWord);
            if (angle_) comment_ = angleText_;
        } else if (words_.size() == 1 && !comment_.empty()) {
            // MAILER-DAEMON (Mail Delivery System): a user of the local host.
            mailbox.address = words_.front().plain;
            words_.clear();
        }
        std::string name;
        for (const Word& word : words_) name.append(name.empty() ? "" : " ").append(word.plain);
        if (name.empty()) name = nameIn(comment_);
        mailbox.name = ascii::trim(decodeEncodedWords(name));
        return mailbox;
    }

private:
    Word& lastWord() {
        if (!wordOpen_) words_.emplace_back();
        wordOpen_ = true;
        return words_.back();
    }

    /// `user @ example.com` is one address.
    void joinAroundAt() {
        if (angle_ || !hasAddressWord_) return;
        std::vector<Word> joined;
        for (Word& word : words_) {
            if (!joined.empty() &&
                (joined.back().raw.ends_with('@') || word.raw.starts_with('@'))) {
                joined.back().raw += word.raw;
                joined.back().plain += word.plain;
            } else {
                joined.push_back(std::move(word));
            }
        }
        words_ = std::move(joined);
    }

    /// The word that holds the address when no brackets do.
    std::vector<Word>::iterator findAddressWord() {
        const auto bare = std::ranges::find_if(
            words_, [](const Word& word) { return hasAt(word.raw) && !word.isQuoted(); });
        if (bare != words_.end() || angle_) return bare;
        return std::ranges::find_if(words_, [](const Word& word) {
            return hasAt(word.plain) && word.plain.find(' ') == npos;
        });
    }

    std::vector<Word> words_;
    bool wordOpen_ = false;
    bool hasAddressWord_ = false;
    bool angle_ = false;
    std::string angleText_;
    std::string comment_;
};

class MailboxReader {
public:
    MailboxReader(std::string_view field, std::size_t limit) noexcept
        : text_(field), limit_(limit) {}

    std::vector<Mailbox> read() {
        while (at_ < text_.size() && found_.size() < limit_) readNext();
        endMailbox();
        return std::move(found_);
    }

private:
    void readNext() {
        const char c = text_[at_];
        if (ascii::isSpace(c)) {
            draft_.endWord();
            ++at_;
        } else if (c == ',' && draft_.isOnlyName()) {
            draft_.addPlain(",");  // Doe, John <john@example.com>, without the quotes
            draft_.endWord();
            ++at_;
        } else if (c == ',' || c == ';') {
            endMailbox();
            ++at_;
        } else if (c == ':' && !draft_.hasAngle() && !draft_.hasAddressWord()) {
            draft_.dropWords();
            ++at_;
        } else if (const std::size_t word = encodedWordLength(text_.substr(at_))) {
            // Mailers leave ':' and ',' in them, which divide nothing here.
            draft_.addPiece(text_.substr(at_, word), text_.substr(at_, word));
            at_ += word;
        } else if (c == '(' && readComment()) {
        } else if (c == '"' && readQuoted()) {
        } else if (c == '<') {
            readAngle();
        } else if (c == '>' || c == '"') {
            ++at_;  // closes or opens nothing
        } else {
            const std::size_t length = plainLength();
            draft_.addPlain(text_.substr(at_, length));
            at_ += length;
        }
    }

    /// How many bytes from here on can only be part of a word; one at least.
    std::size_t plainLength() const noexcept {
        std::size_t end = at_ + 1;
        while (end < text_.size() && !mayBeSpecial(text_[end])) ++end;
        return end - at_;
    }

    static bool mayBeSpecial(char c) noexcept {
        switch (c) {
            case ',':
            case ';':
            case ':':
            case '=':
            case '(':
            case '"':
            case '<':
            case '>': return true;
            default: return ascii::isSpace(c);
        }
    }

    void endMailbox() {
        if (!draft_.isEmpty() && found_.size() < limit_) found_.push_back(draft_.finish());
        draft_ = Draft();
    }

    bool readComment() {
        if (commentsOpen_) return false;
        const std::size_t length = commentLength(text_.substr(at_));
        commentsOpen_ = length == npos;
        if (commentsOpen_) return false;
        draft_.addComment(text_.substr(at_ + 1, length - 2));
        at_ += length;
        return true;
    }

    bool readQuoted() {
        if (quotesOpen_) return false;
        std::string plain;
        for (std::size_t i = at_ + 1; i < text_.size(); ++i) {
            char c = text_[i];
            if (c == '"') {
                draft_.addPiece(text_.substr(at_, i + 1 - at_), plain);
                at_ = i + 1;
                return true;
            }
            if (c == '\\' && i + 1 < text_.size()) c = text_[++i];
            plain += c;
        }
        quotesOpen_ = true;
        return false;
    }

    /// An address in brackets; without a closing one it ends at white space or
    /// a comma.
    void readAngle() {
        while (at_ < text_.size() && (text_[at_] == '<' || ascii::isSpace(text_[at_]))) ++at_;
        std::size_t end = anglesOpen_ ? npos : closingAngle();
        if (end == npos) {
            anglesOpen_ = true;
            end = std::min(text_.find_first_of(" \t,;<>", at_), text_.size());
        }
        draft_.setAngle(text_.substr(at_, end - at_));
        at_ = end;
    }

    std::size_t closingAngle() const noexcept {
        bool quoted = false;
        for (std::size_t i = at_; i < text_.size(); ++i) {
            if (text_[i] == '"') quoted = !quoted;
            if (text_[i] == '>' && !quoted) return i;
        }
        return npos;
    }

    std::string_view text_;
    std::size_t limit_;
    std::size_t at_ = 0;
    Draft draft_;
    std::vector<Mailbox> found_;
    // Once something was left open to the end of the field, looking for its
    // end again could only cost time.
    bool commentsOpen_ = false;
    bool quotesOpen_ = false;
    bool anglesOpen_ = false;
};

}  // namespace

std::vector<Mailbox> parseMailboxes(std::string_view field, std::size_t limit) {
    if (limit > 0) {
        if (std::optional<Mailbox> only = plainMailbox(field)) {
            std::vector<Mailbox> mailboxes;
            mailboxes.push_back(std::move(*only));
            return mailboxes;
        }
    }
    std::vector<Mailbox> mailboxes = MailboxReader(field, limit).read();
    for (Mailbox& mailbox : mailboxes) {
        // Some mailers encode the address along with the name.
        if (!mailbox.address.empty() || !hasAt(mailbox.name)) continue;
        std::vector<Mailbox> inside = MailboxReader(mailbox.name, 1).read();
        if (!inside.empty()) mailbox = std::move(inside.front());
    }
    return mailboxes;
}

Mailbox parseSender(std::string_view field) {
    if (std::optional<Mailbox> only = plainMailbox(field)) return *std::move(only);
    std::vector<Mailbox> mailboxes = parseMailboxes(field, 1);
    if (mailboxes.empty()) return {};
    Mailbox& sender = mailboxes.front();
    // Names of people have a blank or a comma. Quotes and encoded words, which names have too,
    // stand in the field but not in what was read of it.
    const bool isLoneWord =
        sender.address.empty() && !sender.name.empty() && sender.name == ascii::trim(field) &&
        std::ranges::none_of(sender.name, [](char c) { return ascii::isSpace(c) || c == ','; });
    if (isLoneWord) std::swap(sender.address, sender.name);
    return std::move(sender);
}

}  // namespace bouncecheck
