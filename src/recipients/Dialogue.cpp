#include "recipients/Dialogue.h"

#include <algorithm>
#include <vector>

#include "mime/AddressSpans.h"

namespace bouncecheck {

bool Dialogue::read(std::string_view line) {
    const DialogueLine dialogue(line);
    if (dialogue.isCommand()) readCommand(dialogue);
    return dialogue.isCommand() || (dialogue.isReply() && readReply(dialogue.said()));
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
    if (!isOfAll_ || (namesOther && named_.of(Tier::stated).empty())) return false;
    named_.share(reply);
    return true;
}

}  // namespace bouncecheck
