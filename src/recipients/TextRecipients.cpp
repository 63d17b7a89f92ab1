#include "recipients/TextRecipients.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "mime/AddressSpans.h"
#include "reasons/ReasonFinder.h"
#include "reasons/ReplyCodes.h"
#include "recipients/AddressLines.h"
#include "recipients/CueSearch.h"
#include "recipients/Dialogue.h"
#include "recipients/DrawnRule.h"
#include "recipients/LineBefore.h"
#include "recipients/LineShape.h"
#include "recipients/NamedRecipients.h"
#include "recipients/Paragraph.h"
#include "recipients/RecipientBlock.h"
#include "recipients/Sentence.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

std::size_t indentOf(std::string_view line) { return line.size() - ascii::trimLeft(line).size(); }

/// Reads a notice line by line. What a line says of an address depends on its shape, on the line
/// before, and on whose lines are being read.
class NoticeReader {
public:
    NoticeReader(const Notice& notice, const Bystanders& others)
        : notice_(notice), others_(others) {}

    std::vector<TextRecipient> read() {
        for (std::size_t i = 0; i < notice_.lines().size() && !named_.isFull(); ++i) readLine(i);
        return named_.take();
    }

private:
    void readLine(std::size_t number) {
        const NoticeLine& line = notice_.lines()[number];
        const std::string_view text = ascii::trim(line.text);
        if (text.empty()) {
            endParagraph();
            return;
        }
        // What is quoted, or below a signature's mark, is nobody who failed.
        isSigned_ = isSigned_ || (text == "--" && !stated().empty());
        if (isSigned_ || isQuoted(text)) return;
        isBelowRule_ = isBelowRule_ || (named_.hasWords() && isRule(text));
        beginsParagraph_ = !std::exchange(inParagraph_, true);
        if (beginsParagraph_) {
            lastParagraphCues_ = paragraph_.cues();
            paragraph_ = Paragraph(std::span(notice_.lines()).subspan(number));
        }
        alone_.nextLine();
        if (dialogue_.read(text)) return;
        if (!readAddresses(line)) addWords(text);
        before_.replace(text, line.cues, !beginsParagraph_);
    }

    /// Whether a line is a quotation. Below a heading, the same mark stands for an entry of a list.
    bool isQuoted(std::string_view line) const {
        if (!line.starts_with('>') || line.starts_with(">>>")) return false;
        const bool isBelowHeading = before_.reportsTrouble() && before_.isIntroduction();
        if (!isBelowHeading && !before_.text().starts_with('>')) return true;
        const LineShape shape(line, findAddresses(line));
        return shape.kind() != LineShape::Kind::alone;
    }

    void endParagraph() {
        inParagraph_ = false;
        if (open_ && !open_->goesOnBehindBlank(before_.isIntroduction())) open_.reset();
    }

    /// Reads the addresses of a line; false where none of them is a recipient's, so that the
    /// line may be said of the one before.
    bool readAddresses(const NoticeLine& line) {
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

    /// Whether a whole paragraph that reports a failure stands in front of the one that begins.
    bool followsReport() const {
        return beginsParagraph_ && endsSentence(before_.text()) &&
               lastParagraphCues_.has(Cue::failure) && !lastParagraphCues_.has(Cue::contact);
    }

    /// Whether the line before, or its paragraph, announces recipients.
    bool isAnnounced() const {
        return before_.reportsFailure() || explains(before_.text()) || followsReport() ||
               before_.endsLongHeading();
    }

    /// Whether the line before says that the address below is the sender's.
    bool followsSender(const LineShape& shape) const {
        return before_.isAboutSender() &&
               (others_.isOfSender(shape.first()) || before_.endsWithFrom());
    }

    /// Whether `line` goes on about the recipient whose lines are being read, rather than
    /// naming another.
    bool continuesOpen(const NoticeLine& line, std::string_view address) const {
        if (!open_) return false;
        return ascii::equalsNoCase(openRecipient().address, address) ||
               open_->isContinuedAt(indentOf(line.text));
    }

    bool readAlone(const NoticeLine& line, const LineShape& shape) {
        if (before_.tellsContact() || followsSender(shape) || line.has(Cue::sender)) return true;
        if (continuesOpen(line, shape.first()) || goesOnInBrackets(line)) return false;
        if (alone_.take()) alone_.setHeading(before_.heading(), !isAnnounced());
        for (const AddressSpan& span : shape.spans()) {
            const std::size_t known = stated().size();
            openBlock(line, span.in(line.text));
            const bool isNew = stated().size() > known;
            if (!isNew) continue;
            openRecipient().isLone = alone_.areLone();
            named_.head(open_->recipient, alone_.heading());
            if (alone_.areLone() && isBelowRule_) named_.noteBelowRule();
        }
        return true;
    }

    /// "550 User unknown", "(b@y.example)": the line before goes on.
    bool goesOnInBrackets(const NoticeLine& line) const {
        return open_ && !beginsParagraph_ && !before_.isIntroduction() &&
               ascii::trimLeft(line.text).starts_with('(') &&
               !codesIn(before_.text()).reply.empty();
    }

    /// Below a heading, or among others of a list, a name and an address stand for a recipient;
    /// elsewhere they may be a signature.
    bool readNamed(const NoticeLine& line, const LineShape& shape) {
        const bool isNext =
            namedIndent_ == indentOf(line.text) && (open_ || explains(before_.text()));
        const bool hasHeading = before_.reportsFailure() && before_.text().ends_with(':');
        if (!isNext && !(hasHeading && !before_.tellsContact())) {
            readSentence(line, shape);
            return false;
        }
        if (line.has(Cue::sender) || line.has(Cue::contact)) return false;
        openBlock(line, shape.first());
        namedIndent_ = indentOf(line.text);
        return true;
    }

    bool readLeading(const NoticeLine& line, const LineShape& shape) {
        if (continuesOpen(line, shape.first())) return false;
        // The sender's own may begin a line where the one before was wrapped.
        const bool isOfSender =
            line.has(Cue::sender) || (!beginsParagraph_ && others_.isOfSender(shape.first()));
        // "It gave this error:", "<me@own.example>: user unknown"
        const bool isSaid = !beginsParagraph_ && before_.isIntroduction();
        if (isSaid && others_.isOfSender(shape.first())) return false;
        // The words of a table's next column may be about the sender.
        const bool isAnswered = shape.isAnswered() && !others_.isOfSender(shape.first());
        if (isOfSender && !shape.isSeparated() && !isAnswered) return false;
        const bool isStated = shape.isSeparated() || isAnswered || paragraph_.reportsFailure() ||
                              before_.reportsFailure();
        if (!isStated || before_.tellsContact()) return false;
        openBlock(line, shape.first());
        addWords(shape.restBehind(shape.spans().front()));
        return true;
    }

    /// "550 5.1.1 <a@b.example>... User unknown"
    bool readReply(const NoticeLine& line, const LineShape& shape) {
        const std::string_view address = shape.first();
        const std::optional<std::size_t> known = named_.find(address);
        if (open_ && open_->hasWords && (!known || known == open_->recipient)) return false;
        const bool isOfOther = line.has(Cue::sender) || others_.isOfSender(address) ||
                               shape.isOfSender(shape.spans().front());
        // "550-If this is wrong, write to", "550 c@b.example"
        const bool hasWords =
            shape.beginsReply() && !shape.restBehind(shape.spans().front()).empty();
        const bool isOfHelper =
            tellsContact(line, shape) || (!hasWords && !beginsParagraph_ && before_.tellsContact());
        if (isOfOther || isOfHelper || !shape.isFailureReply()) return false;
        if (known) {
            named_.say(*known, ascii::trim(line.text));
        } else if (const auto added = named_.add(Tier::stated, address)) {
            named_.say(*added, ascii::trim(line.text));
        }
        return true;
    }

    bool readLabelled(const NoticeLine& line, const LineShape& shape) {
        switch (shape.label()) {
            case LabelKind::other: return shape.isField();
            case LabelKind::addressee:
                named_.add(Tier::addressee, shape.first());
                return shape.isField();
            case LabelKind::original:
            case LabelKind::alias:
                if (!open_ || !open_->mayBeSentOn()) break;
                replaceOpen(shape);
                return true;
            case LabelKind::recipient:
                if (isOfOther(line, shape) || isOfReplyToOpen(line, shape)) return false;
                break;
            case LabelKind::unlisted:
                // "550 Blocked sender: me@own.example"
                if (isOfOther(line, shape) || isOfReplyToOpen(line, shape) ||
                    (!stated().empty() && others_.isOfSender(shape.first()))) {
                    return false;
                }
                if (line.has(Cue::failure) || explains(line.text)) break;
                readSentence(line, shape);
                return false;
        }
        if (isSentOn(shape)) {
            noteSentOn(shape.first());
            return false;
        }
        if (continuesOpen(line, shape.first())) return false;
        openLabelled(line, shape);
        // "User not found: a@b.example"
        const bool isReason = explains(line.text.substr(0, shape.spans().front().begin));
        addWords(isReason ? ascii::trim(line.text)
                          : shape.restBehind(shape.labelledSpans().back()));
        return true;
    }

    /// Whether a label is in front of a sender's address, or of one to write to.
    static bool isOfOther(const NoticeLine& line, const LineShape& shape) {
        return line.has(Cue::sender) || tellsContact(line, shape);
    }

    /// "550 User unknown: b@y.example", in the lines about another one: what a reply to the mail
    /// for them says.
    bool isOfReplyToOpen(const NoticeLine& line, const LineShape& shape) const {
        const auto hasReply = [](std::string_view text) { return !codesIn(text).reply.empty(); };
        return open_ && !beginsParagraph_ && !hasReply(openRecipient().said) &&
               hasReply(line.text.substr(0, shape.spans().front().begin));
    }

    /// Whether the command in the line tells that the mail of another one, whose lines are being
    /// read, was sent on, and failed there.
    bool isSentOn(const LineShape& shape) const {
        return open_ && shape.isCommand() &&
               !ascii::equalsNoCase(openRecipient().address, shape.first());
    }

    void noteSentOn(std::string_view address) {
        std::string& final = openRecipient().finalAddress;
        const bool isOwn = others_.isOfSender(address) || others_.isSystemOrList(address);
        if (final.empty() && !isOwn) final = address;
    }

    void openLabelled(const NoticeLine& line, const LineShape& shape) {
        for (const AddressSpan& span : shape.labelledSpans()) {
            openBlock(line, span.in(line.text));
        }
        if (!open_) return;
        const bool isAlias = shape.label() == LabelKind::alias;
        open_->isOriginal = isAlias || shape.label() == LabelKind::original;
        if (isAlias) openRecipient().isAlias = true;
    }

    void readSentence(const NoticeLine& line, const LineShape& shape) {
        if (open_ || !paragraph_.reportsFailure()) return;
        // A sentence goes on in the next line.
        const std::string_view restOfParagraph = paragraph_.from(line);
        std::vector<TextRecipient>& all = named_.of(Tier::sentence);
        std::string_view last;
        std::size_t lastAdded = 0;
        for (std::size_t i = 0; i < shape.spans().size(); ++i) {
            if (named_.isFull()) return;
            const AddressSpan& span = shape.spans()[i];
            const std::string_view address = span.in(line.text);
            if (others_.isOfSender(address) || shape.isOfSender(span)) continue;
            const std::string_view sentence = sentenceOf(line.text, span);
            const Cues cues = cuesIn(sentence);
            if (cues.has(Cue::contact) || beginsWithCondition(sentence) ||
                paragraph_.isAside(sentence, cues, line.text, before_.text()))
                continue;
            const auto added = named_.add(Tier::sentence, address);
            if (!added) continue;
            std::string& said = all[*added].said;
            const bool isNews = said.find(sentence) == npos;
            if (isNews && said.size() < mostSaid) {
                said.append(wordsFrom(restOfParagraph, sentence, address)) += '\n';
            }
            paragraph_.noteNaming(sentence);
            // Of two who are not in a list, one may have failed, and the other be the way there.
            if (last.data() == sentence.data() && *added != lastAdded && !shape.isJoined(i)) {
                all[*added].isLone = all[lastAdded].isLone = true;
            }
            last = sentence;
            lastAdded = *added;
        }
    }

    /// Whether the sentence around the first address tells whom to write to.
    static bool tellsContact(const NoticeLine& line, const LineShape& shape) {
        if (!line.has(Cue::contact)) return false;
        return cuesIn(sentenceOf(line.text, shape.spans().front())).has(Cue::contact);
    }

    /// From here on, lines are said of `address`.
    void openBlock(const NoticeLine& line, std::string_view address) {
        const bool isNext = open_ && open_->isOpenList();
        const std::optional<std::size_t> recipient = named_.add(Tier::stated, address);
        const bool isListed = isNext && recipient != open_->recipient;
        open_.reset();
        if (!recipient) return;
        open_ = {.recipient = *recipient, .indent = indentOf(line.text), .isListed = isListed};
    }
    /// The recipient of whom the lines are took the place of the one whom `shape` names.
    void replaceOpen(const LineShape& shape) {
        const bool isAlias = shape.label() == LabelKind::alias;
        if (named_.replace(open_->recipient, shape.first(), isAlias)) open_->isOriginal = true;
    }

    /// What follows a list of addresses is not said of the last of them alone.
    void addWords(std::string_view words) {
        if (!open_ || words.empty()) return;
        if (!open_->isListed) named_.say(open_->recipient, words);
        open_->hasWords = true;
    }

    /// Of whom the lines are.
    TextRecipient& openRecipient() noexcept { return stated()[open_->recipient]; }
    const TextRecipient& openRecipient() const noexcept { return stated()[open_->recipient]; }
    std::vector<TextRecipient>& stated() noexcept { return named_.of(Tier::stated); }
    const std::vector<TextRecipient>& stated() const noexcept { return named_.of(Tier::stated); }

    const Notice& notice_;
    const Bystanders& others_;
    NamedRecipients named_{others_};
    Dialogue dialogue_{named_, others_};

    std::optional<RecipientBlock> open_;
    /// The indent of the last recipient who stands there by name.
    std::optional<std::size_t> namedIndent_;
    bool inParagraph_ = false;
    bool beginsParagraph_ = false;
    bool isSigned_ = false;
    /// Whether a rule was drawn below words about a recipient.
    bool isBelowRule_ = false;
    Paragraph paragraph_;
    /// Those of the paragraph before.
    Cues lastParagraphCues_;
    LineBefore before_;
    AddressLines alone_;
};

}  // namespace

std::vector<TextRecipient> recipientsNamedIn(const Notice& notice, const Bystanders& others) {
    return NoticeReader(notice, others).read();
}

}  // namespace bouncecheck
