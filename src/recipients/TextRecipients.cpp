#include "recipients/TextRecipients.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <bouncecheck/Limits.h>
#include "recipients/AddressSpans.h"
#include "recipients/DialogueLine.h"
#include "recipients/LineShape.h"
#include "recipients/ReasonFinder.h"
#include "recipients/Sentence.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// How much an address that a line names has to do with the failure.
enum class Tier { stated, sentence, addressee };
constexpr std::size_t tiers = 3;

bool isIntroduction(std::string_view line) {
    return line.ends_with(':') || line.ends_with(wideColon);
}

std::size_t indentOf(std::string_view line) { return line.size() - ascii::trimLeft(line).size(); }

class NoticeReader {
public:
    NoticeReader(const Notice& notice, const Bystanders& others)
        : notice_(notice), others_(others) {}

    std::vector<TextRecipient> read() {
        for (std::size_t i = 0; i < notice_.lines().size() && !isFull(); ++i) readLine(i);
        std::vector<TextRecipient>& stated = named_[0];
        // What was said to all: to the sender, or to the message.
        const std::size_t sharing = shared_.empty() ? 0 : std::min(stated.size(), mostSharing);
        for (std::size_t i = 0; i < sharing; ++i) {
            const bool isSharing = !answered_.contains(i) && !saysWhy(stated[i].said);
            if (isSharing) stated[i].said.append(shared_);
        }
        for (TextRecipient& one : stated) one.isLone = one.isLone && !saysWhy(one.said);
        // Sentences say more than an address for which there is no reason to stand there.
        if (std::ranges::all_of(stated, &TextRecipient::isLone) && !named_[1].empty()) {
            return std::move(named_[1]);
        }
        dropOthers(stated);
        dropAddressees(stated);
        for (std::vector<TextRecipient>& tier : named_) {
            if (!tier.empty()) return std::move(tier);
        }
        return {};
    }

private:
    bool isFull() const {
        return named_[0].size() + named_[1].size() + named_[2].size() >= limits::recipients;
    }

    void readLine(std::size_t number) {
        const Notice::Line& line = notice_.lines()[number];
        const std::string_view text = ascii::trim(line.text);
        if (text.empty()) {
            // "The error was:" and a blank line introduce what is said.
            if (hasWords_ && !isIntroduction(lastText_)) close();
            isListClosed_ = open_.has_value();
            isIntroduced_ = hasWords_;
            inParagraph_ = false;
            return;
        }
        // What is quoted, or below a signature's mark, is nobody who failed.
        isSigned_ = isSigned_ || (text == "--" && !named_[0].empty());
        const bool isQuoted = text.starts_with('>') && !text.starts_with(">>>");
        if (isSigned_ || isQuoted) return;
        isBelowRule_ = isBelowRule_ || (hasReply_ && isRule(text));
        beginsParagraph_ = !std::exchange(inParagraph_, true);
        if (beginsParagraph_) readParagraph(number);
        wasAlone_ = std::exchange(isAlone_, false);
        if (readDialogue(text)) return;
        if (!readAddresses(line)) addWords(text);
        // "Questions should be directed to the owner\nat:"
        const bool isLastWord = !beginsParagraph_ && isIntroduction(text) && text.find(' ') == npos;
        if (!isLastWord) lastCues_ = Cues();
        lastCues_.join(line.cues);
        lastText_ = text;
    }

    /// Gathers the phrases of the paragraph that begins at line `number`.
    void readParagraph(std::size_t number) {
        const std::vector<Notice::Line>& lines = notice_.lines();
        const char* const begin = lines[number].text.data();
        const char* end = begin;
        lastParagraphCues_ = std::exchange(paragraphCues_, Cues());
        for (; number < lines.size() && !lines[number].isBlank(); ++number) {
            paragraphCues_.join(lines[number].cues);
            end = lines[number].text.data() + lines[number].text.size();
        }
        paragraph_ = std::string_view(begin, static_cast<std::size_t>(end - begin));
        isExplained_.reset();
        naming_ = {};
        isTroubleNamed_.reset();
    }

    /// Whether the paragraph says that something was not delivered, or why not.
    bool reportsFailure() {
        if (paragraphCues_.haveTrouble()) return true;
        if (!isExplained_) {
            isExplained_ = explains(paragraph_);
        }
        return *isExplained_;
    }

    /// Whether `text` has the words of a reply.
    static bool explains(std::string_view text) {
        return reasonOf({.text = text}).basis == ReasonBasis::phrase;
    }

    /// Whether `text` leaves no doubt. "Service unavailable" is said after any refusal.
    static bool saysWhy(std::string_view text) {
        const ReasonFinding finding = reasonOf({.text = text});
        return finding.basis == ReasonBasis::phrase && finding.isSure &&
               finding.reason != Reason::system;
    }

    /// Reads ">>> RCPT TO:<a@b.example>" and "<<< 550 no such user".
    bool readDialogue(std::string_view text) {
        if (isDialogueCommand(text)) {
            const std::vector<AddressSpan> spans = findAddresses(text);
            command_.reset();
            const bool isRecipient = containsNoCase(text.substr(0, 14), "RCPT");
            if (!spans.empty() && isRecipient) {
                command_ = add(Tier::stated, spans.front().in(text));
            }
            isSharedReply_ = !isRecipient;
            return true;
        }
        const std::optional<std::string_view> said = dialogueReply(text);
        if (!said) return false;
        const std::string_view reply = *said;
        // Commands may have been sent ahead of their replies, which then say whom they are about.
        const std::vector<AddressSpan> spans = findAddresses(reply);
        std::optional<std::size_t> about = command_;
        for (const AddressSpan& span : spans) {
            if (const auto known = find(span.in(reply))) about = known;
        }
        if (about) {
            answer(*about, reply);
            return true;
        }
        const bool namesOther = std::ranges::any_of(
            spans, [&](const AddressSpan& span) { return !others_.isAddressee(span.in(reply)); });
        if (!isSharedReply_ || (namesOther && named_[0].empty())) return false;
        // What was accepted says nothing of the failure.
        if (reply.starts_with('2') || reply.starts_with('3')) return true;
        if (shared_.size() < mostShared) shared_.append(wholeCharacters(reply, mostShared)) += '\n';
        return true;
    }

    /// Notes the `reply` to the command that named a recipient.
    void answer(std::size_t recipient, std::string_view reply) {
        if (reply.starts_with('2') || reply.starts_with('3')) {
            accepted_.insert(recipient);
        } else {
            say(recipient, reply);
            answered_.insert(recipient);
        }
    }

    /// Reads the addresses of a line; false where none of them is a recipient's, so that the
    /// line may be said of the one before.
    bool readAddresses(const Notice::Line& line) {
        if (line.text.find('@') == npos) return false;
        const LineShape shape(line.text, findAddresses(line.text));
        if (shape.spans().empty()) return false;
        switch (shape.kind()) {
            case LineShape::Kind::alone: return readAlone(line, shape);
            case LineShape::Kind::leading: return readLeading(line, shape);
            case LineShape::Kind::reply: return readReply(line, shape);
            case LineShape::Kind::labelled: return readLabelled(line, shape);
            case LineShape::Kind::named: return readNamed(line, shape);
            case LineShape::Kind::sentence: readSentence(line, shape); return false;
        }
        return false;
    }

    /// Whether the line before says that the addresses below are those of people who help.
    bool followsContact() const {
        if (!lastCues_.has(Cue::contact) || !lastCues_.has(Cue::failure)) {
            return lastCues_.has(Cue::contact);
        }
        // "The mailbox is full. Please contact:"
        const std::size_t stop = lastText_.rfind(". ");
        return stop != npos && cuesIn(lastText_.substr(stop + 2)).has(Cue::contact);
    }

    /// Whether a whole paragraph that reports a failure stands in front of the one that begins.
    bool followsReport() const {
        return beginsParagraph_ && endsSentence(lastText_) &&
               lastParagraphCues_.has(Cue::failure) && !lastParagraphCues_.has(Cue::contact);
    }

    /// Whether the line before says that the address below is the sender's: "A message sent by".
    bool followsSender(const LineShape& shape) const {
        return lastCues_.has(Cue::sender) && !lastCues_.has(Cue::failure) &&
               (others_.isAddressee(shape.first()) || lastText_.ends_with(" by") ||
                lastText_.ends_with(" from"));
    }

    /// Whether `line` goes on about the recipient whose lines are being read, rather than
    /// naming another.
    bool continuesOpen(const Notice::Line& line, std::string_view address) const {
        if (!open_) return false;
        if (ascii::equalsNoCase(named_[0][*open_].address, address)) return true;
        return hasWords_ && !isIntroduced_ && indentOf(line.text) > openIndent_;
    }

    bool readAlone(const Notice::Line& line, const LineShape& shape) {
        if (followsContact() || followsSender(shape) || line.has(Cue::sender)) return true;
        if (continuesOpen(line, shape.first())) return false;
        // The heading of the first address is that of the list.
        if (!wasAlone_) {
            isLone_ = !lastCues_.has(Cue::failure) && !explains(lastText_) && !followsReport();
        }
        isAlone_ = true;
        for (const AddressSpan& span : shape.spans()) {
            const std::size_t known = named_[0].size();
            openBlock(line, span.in(line.text));
            if (open_ == known) named_[0][*open_].isLone = isLone_;
            if (open_ == known && isLone_ && isBelowRule_) belowRule_.insert(known);
        }
        return true;
    }

    /// Below a heading, or among others of a list, a name and an address stand for a recipient;
    /// elsewhere they may be a signature.
    bool readNamed(const Notice::Line& line, const LineShape& shape) {
        const bool isNext = namedIndent_ == indentOf(line.text) && (open_ || explains(lastText_));
        const bool hasHeading = lastCues_.has(Cue::failure) && lastText_.ends_with(':');
        if (!isNext && !(hasHeading && !followsContact())) {
            readSentence(line, shape);
            return false;
        }
        if (line.has(Cue::sender) || line.has(Cue::contact)) return false;
        openBlock(line, shape.first());
        namedIndent_ = openIndent_;
        return true;
    }

    bool readLeading(const Notice::Line& line, const LineShape& shape) {
        if (continuesOpen(line, shape.first())) return false;
        // The sender's own may begin a line where the one before was wrapped.
        const bool isOfSender =
            line.has(Cue::sender) || (!beginsParagraph_ && others_.isAddressee(shape.first()));
        if (isOfSender && !shape.isSeparated()) return false;
        const bool isStated =
            shape.isSeparated() || reportsFailure() || lastCues_.has(Cue::failure);
        if (!isStated || followsContact()) return false;
        openBlock(line, shape.first());
        addWords(shape.restBehind(shape.spans().front()));
        return true;
    }

    /// "550 5.1.1 <a@b.example>... User unknown"
    bool readReply(const Notice::Line& line, const LineShape& shape) {
        const std::string_view address = shape.first();
        const std::optional<std::size_t> known = find(address);
        if (open_ && hasWords_ && (!known || known == open_)) return false;
        const bool isOfOther = line.has(Cue::sender) || others_.isAddressee(address) ||
                               shape.isOfSender(shape.spans().front());
        if (isOfOther || !shape.isFailureReply()) return false;
        if (known) {
            say(*known, ascii::trim(line.text));
        } else if (const auto added = add(Tier::stated, address)) {
            say(*added, ascii::trim(line.text));
        }
        return true;
    }

    bool readLabelled(const Notice::Line& line, const LineShape& shape) {
        switch (shape.label()) {
            case LabelKind::other: return false;
            case LabelKind::unlisted:
                if (line.has(Cue::sender) || tellsContact(line, shape)) return false;
                // "550 Blocked sender: me@own.example"
                if (!named_[0].empty() && others_.isAddressee(shape.first())) return false;
                if (!line.has(Cue::failure) && !explains(line.text)) {
                    readSentence(line, shape);
                    return false;
                }
                break;
            case LabelKind::addressee: add(Tier::addressee, shape.first()); return false;
            case LabelKind::original:
            case LabelKind::alias:
                if (open_ && !isOpenOriginal_ && !isListed_) {
                    replaceOpen(shape);
                    return true;
                }
                break;
            case LabelKind::recipient:
                if (line.has(Cue::sender) || tellsContact(line, shape)) return false;
                break;
        }
        if (open_ && !ascii::equalsNoCase(named_[0][*open_].address, shape.first()) &&
            shape.isCommand()) {
            // The mail was sent on, and failed there.
            std::string& final = named_[0][*open_].finalAddress;
            const bool isOwn = others_.isAddressee(shape.first()) || others_.isOther(shape.first());
            if (final.empty() && !isOwn) final = shape.first();
            return false;
        }
        if (continuesOpen(line, shape.first())) return false;
        for (const AddressSpan& span : shape.labelledSpans()) {
            openBlock(line, span.in(line.text));
        }
        const bool isAlias = shape.label() == LabelKind::alias;
        isOpenOriginal_ = isAlias || shape.label() == LabelKind::original;
        if (isAlias && open_) named_[0][*open_].isAlias = true;
        // "User not found: a@b.example"
        const bool isReason = explains(line.text.substr(0, shape.spans().front().begin));
        addWords(isReason ? ascii::trim(line.text)
                          : shape.restBehind(shape.labelledSpans().back()));
        return true;
    }

    void readSentence(const Notice::Line& line, const LineShape& shape) {
        if (open_ || !reportsFailure()) return;
        // A sentence goes on in the next line.
        const auto begin = static_cast<std::size_t>(line.text.data() - paragraph_.data());
        const std::string_view restOfParagraph = paragraph_.substr(begin);
        std::string_view last;
        std::size_t lastAdded = 0;
        for (std::size_t i = 0; i < shape.spans().size(); ++i) {
            if (isFull()) return;
            const AddressSpan& span = shape.spans()[i];
            const std::string_view address = span.in(line.text);
            if (others_.isAddressee(address) || shape.isOfSender(span)) continue;
            const std::string_view sentence = sentenceOf(line.text, span);
            const Cues cues = cuesIn(sentence);
            if (cues.has(Cue::contact) || isAside(sentence, cues, line.text)) continue;
            const auto added = add(Tier::sentence, address);
            if (!added) continue;
            std::string& said = named_[1][*added].said;
            if (said.size() < mostShared) said.append(wordsFrom(restOfParagraph, sentence)) += '\n';
            if (naming_.empty()) naming_ = sentence;
            // Of two who are not in a list, one may have failed, and the other be the way there.
            if (last.data() == sentence.data() && *added != lastAdded && !shape.isJoined(i)) {
                named_[1][*added].isLone = named_[1][lastAdded].isLone = true;
            }
            last = sentence;
            lastAdded = *added;
        }
    }

    /// Whether `sentence` only goes on behind the one that names who failed: "a@x.example has gone.
    /// Mail reaches us at b@x.example."
    bool isAside(std::string_view sentence, Cues cues, std::string_view line) {
        const bool isNext = !naming_.empty() && sentence.data() != naming_.data();
        if (!isNext || cues.haveTrouble()) return false;
        // Long sentences, which are cut near each address, end here; so time stays linear.
        const auto begin = static_cast<std::size_t>(sentence.data() - line.data());
        const std::string_view inLine = ascii::trimRight(line.substr(0, begin));
        if (!endsSentence(inLine.empty() ? lastText_ : inLine)) return false;
        if (!isTroubleNamed_) {
            isTroubleNamed_ = cuesIn(naming_).haveTrouble() || explains(naming_);
        }
        return *isTroubleNamed_ && !explains(sentence);
    }

    /// Whether the sentence around the first address tells whom to write to.
    static bool tellsContact(const Notice::Line& line, const LineShape& shape) {
        if (!line.has(Cue::contact)) return false;
        return cuesIn(sentenceOf(line.text, shape.spans().front())).has(Cue::contact);
    }

    /// From here on, lines are said of `address`.
    void openBlock(const Notice::Line& line, std::string_view address) {
        const bool isNext = open_ && !hasWords_ && !isListClosed_;
        const std::optional<std::size_t> last = open_;
        close();
        open_ = add(Tier::stated, address);
        openIndent_ = indentOf(line.text);
        isListed_ = isNext && open_ && open_ != last;
    }
    /// The recipient of whom the lines are took the place of the one whom `shape` names.
    void replaceOpen(const LineShape& shape) {
        const std::string_view original = shape.first();
        if (others_.isAddressee(original) || others_.isOther(original)) return;
        const auto [known, isNew] = places_[0].try_emplace(ascii::lowerCase(original), *open_);
        if (!isNew && known->second == *open_) return;
        TextRecipient& recipient = named_[0][known->second];
        if (!isNew || shape.label() == LabelKind::alias) recipient.isAlias = true;
        if (!isNew) return;
        isOpenOriginal_ = true;
        recipient.finalAddress = std::exchange(recipient.address, std::string(original));
    }

    void close() {
        open_.reset();
        isOpenOriginal_ = false;
        hasWords_ = false;
        isIntroduced_ = false;
        isListed_ = false;
        isListClosed_ = false;
    }

    /// What follows a list of addresses is not said of the last of them alone.
    void addWords(std::string_view words) {
        if (!open_ || words.empty()) return;
        if (!isListed_) say(*open_, words);
        hasWords_ = true;
    }
    void say(std::size_t recipient, std::string_view words) {
        named_[0][recipient].said.append(words).append("\n");
        hasReply_ = true;
    }

    std::optional<std::size_t> find(std::string_view address) const {
        const auto known = places_[0].find(ascii::lowerCase(address));
        if (known == places_[0].end()) return std::nullopt;
        return known->second;
    }

    /// The place of the recipient with that address among those of the tier; nothing where the
    /// address cannot be a recipient's.
    std::optional<std::size_t> add(Tier tier, std::string_view address) {
        if (others_.isOther(address)) return std::nullopt;
        const auto index = static_cast<std::size_t>(tier);
        const auto [place, isNew] =
            places_[index].try_emplace(ascii::lowerCase(address), named_[index].size());
        if (isNew) named_[index].push_back({.address = std::string(address)});
        return place->second;
    }

    /// Of the recipients of a dialogue those have not failed whom the server accepted, while
    /// something was said of others. What stands below a rule for no reason may be in the message
    /// that came back.
    void dropOthers(std::vector<TextRecipient>& stated) const {
        const auto isSaid = [](const TextRecipient& one) { return !one.said.empty(); };
        const bool hasAccepted = !accepted_.empty() && std::ranges::any_of(stated, isSaid);
        if (!hasAccepted && belowRule_.empty()) return;
        std::vector<TextRecipient> failed;
        for (std::size_t i = 0; i < stated.size(); ++i) {
            const bool isAccepted = hasAccepted && !isSaid(stated[i]) && accepted_.contains(i);
            const bool isReturned = stated[i].isLone && belowRule_.contains(i);
            if (!isAccepted && !isReturned) failed.push_back(std::move(stated[i]));
        }
        stated = std::move(failed);
    }

    /// To whom the bounce was sent counts as a recipient only where nobody else is named, or
    /// where something is said of the address.
    void dropAddressees(std::vector<TextRecipient>& stated) const {
        if (stated.size() < 2) return;
        std::erase_if(stated, [&](const TextRecipient& recipient) {
            return others_.isAddressee(recipient.address) && recipient.said.empty();
        });
    }

    const Notice& notice_;
    const Bystanders& others_;
    std::vector<TextRecipient> named_[tiers];
    std::unordered_map<std::string, std::size_t> places_[tiers];

    /// The recipient of whom the lines are that are being read.
    std::optional<std::size_t> open_;
    std::size_t openIndent_ = 0;
    /// Whether that is who the mail was for at first.
    bool isOpenOriginal_ = false;
    bool hasWords_ = false;
    /// Whether a blank line has followed words that introduce more of them.
    bool isIntroduced_ = false;
    /// That of the last recipient who stands there by name.
    std::optional<std::size_t> namedIndent_;
    /// Whether another address stands directly in front of it, of which nothing is said.
    bool isListed_ = false;
    /// Whether a blank line has followed.
    bool isListClosed_ = false;
    bool inParagraph_ = false;
    bool beginsParagraph_ = false;
    bool isSigned_ = false;
    /// Whether something was said of a recipient, and whether a rule was drawn below that.
    bool hasReply_ = false;
    bool isBelowRule_ = false;
    std::string_view paragraph_;
    Cues paragraphCues_;
    Cues lastParagraphCues_;
    /// Whether the paragraph says why; nothing while it has not been asked.
    std::optional<bool> isExplained_;
    /// The sentence of the paragraph that names a recipient first.
    std::string_view naming_;
    /// Whether that sentence says that something failed; nothing while it has not been asked.
    std::optional<bool> isTroubleNamed_;
    /// Those of the line before that was not blank.
    Cues lastCues_;
    std::string_view lastText_;
    /// Whether this line, and the one before that was not blank, have only addresses.
    bool isAlone_ = false;
    bool wasAlone_ = false;
    /// Whether the list of such lines that is being read has no heading.
    bool isLone_ = false;
    /// Whom the last command of a dialogue named.
    std::optional<std::size_t> command_;
    bool isSharedReply_ = false;
    /// The replies to other commands, and the recipients who have one of their own.
    static constexpr std::size_t mostShared = 1024;
    static constexpr std::size_t mostSharing = 100;
    std::string shared_;
    std::unordered_set<std::size_t> answered_;
    /// Those who stand below a rule, without a heading.
    std::unordered_set<std::size_t> belowRule_;
    /// Those whom the server of a dialogue took.
    std::unordered_set<std::size_t> accepted_;
};

}  // namespace

std::vector<TextRecipient> recipientsNamedIn(const Notice& notice, const Bystanders& others) {
    return NoticeReader(notice, others).read();
}

}  // namespace bouncecheck
