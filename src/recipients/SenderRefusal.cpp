#include "recipients/SenderRefusal.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "recipients/DialogueLine.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// What Postfix writes behind or in front of replies: "(in reply to MAIL FROM command)". Whether
/// they are to commands that name the sender; nothing where there is no such note.
std::optional<bool> notesSender(std::string_view text) {
    constexpr std::string_view note = "reply to";
    bool isFound = findBytes(text, "refused to talk to me:") != npos;
    for (std::size_t at = findBytes(text, note); at != npos; at = findBytes(text, note, at)) {
        // Lines are folded at any blank.
        const bool isNote = ascii::trimRight(text.substr(0, at)).ends_with("in");
        at += note.size();
        if (!isNote) continue;
        const std::string_view verb = ascii::trimLeft(text.substr(at, 16));
        if (!verb.starts_with("MAIL") && !verb.starts_with("EHLO") && !verb.starts_with("HELO")) {
            return false;
        }
        isFound = true;
    }
    return isFound ? std::optional(true) : std::nullopt;
}

}  // namespace

bool refusesSender(std::string_view text) {
    if (const std::optional<bool> noted = notesSender(text)) return *noted;
    bool isToSender = false;
    bool isFound = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const DialogueLine line(ascii::trim(text.substr(at, end - at)));
        at = end + 1;
        if (line.isCommand()) isToSender = line.isSenderCommand();
        const bool isRefusal =
            line.isReply() && (line.said().starts_with('4') || line.said().starts_with('5'));
        if (!isRefusal) continue;
        if (!isToSender) return false;
        isFound = true;
    }
    return isFound;
}

}  // namespace bouncecheck
