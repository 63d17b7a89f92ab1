#include "recipients/Dialogue.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "mime/AddressSpans.h"
#include "reasons/CodeShapes.h"
#include "reasons/ReplyCodes.h"
#include "recipients/LineShape.h"

namespace bouncecheck {

bool Dialogue::read(std::string_view line) {
    if (std::exchange(endsReply_, false) && isInOwnWords(line)) return true;
    const DialogueLine dialogue(line);
    if (dialogue.isCommand()) readCommand(dialogue);
    if (!dialogue.isReply()) return dialogue.isCommand();
    endsReply_ = beginsWithFailure(dialogue.said()) && !isFirstLineOnly(dialogue.said());
    return readReply(dialogue.said());
}

/// "550 5.1.1 <a@b.example>... User unknown", "554 Service unavailable": below any reply that
/// refuses, the system that writes says so in words of its own, which mean no more.
bool Dialogue::isInOwnWords(std::string_view line) const {
    if (!beginsWithFailure(line)) return false;
    return std::ranges::all_of(findAddresses(line), [&](const AddressSpan& span) {
        const auto known = named_.find(span.in(line));
        return known && !named_.of(Tier::stated)[*known].said.empty();
    });
}

/// ">>> RCPT TO:<a@b.example>"
void Dialogue::readCommand(const DialogueLine& command) {
    const std::vector<AddressSpan> spans = findAddresses(command.said());
    recipient_.reset();
    if (command.isRecipientCommand() && !spans.empty()) {
        recipient_ = named_.add(Tier::stated, spans.front().in(command.said()));
    }
    isOfAll_ = !command.isRecipientCommand();
}

/// "<<< 550 no such user"
bool Dialogue::readReply(std::string_view reply) {
    const std::vector<AddressSpan> spans = findAddresses(reply);
    // Commands may have been sent ahead of their replies, which then say whom they are about.
    std::optional<std::size_t> about = recipient_;
    for (const AddressSpan& span : spans) {
        if (const auto known = named_.find(span.in(reply))) about = known;
    }
    if (about) {
        named_.answer(*about, reply);
        return true;
    }
    const bool namesOther = std::ranges::any_of(
        spans, [&](const AddressSpan& span) { return !others_.isOfSender(span.in(reply)); });
    const bool isOfOther =
        namesOther && (named_.of(Tier::stated).empty() || LineShape(reply, spans).beginsReply());
    if (!isOfAll_ || isOfOther) return false;
    named_.share(reply);
    return true;
}

}  // namespace bouncecheck
