#include "recipients/Origin.h"

#include <algorithm>
#include <string>

#include "mime/Entity.h"
#include "recipients/CueSearch.h"
#include "recipients/tables/Origins.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether `address` begins with `name`, and no word goes on there.
bool beginsWithName(std::string_view address, std::string_view name) {
    return ascii::startsWithNoCase(address, name) &&
           (name.ends_with('-') || address.size() == name.size() ||
            !ascii::isAlpha(address[name.size()]));
}

/// Whether a person passes on, or answers, what somebody else wrote: "[list] Fwd: ...".
bool isPassedOn(std::string_view subject) {
    subject = ascii::trimLeft(subject);
    while (subject.starts_with('[')) {
        const std::size_t end = subject.find(']');
        if (end == npos) break;
        subject = ascii::trimLeft(subject.substr(end + 1));
    }
    return std::ranges::any_of(passedOnSubjects, [&](std::string_view prefix) {
        return ascii::startsWithNoCase(subject, prefix);
    });
}

}  // namespace

bool isAutomaticReply(const Entity& message) {
    return ascii::startsWithNoCase(message.field("Auto-Submitted"), "auto-replied") ||
           message.hasField("X-Autoreply") || message.hasField("X-Autorespond");
}

Author authorOf(const Entity& message) {
    if (message.is("multipart/report") || message.hasField("X-Failed-Recipients")) {
        return Author::system;
    }
    // What a list distributes is by its members.
    if (message.hasField("List-Id")) return Author::person;
    const std::string& from = message.from().address;
    const bool bySender = from.empty() || std::ranges::any_of(systemSenders, [&](auto sender) {
                              return beginsWithName(from, sender);
                          });
    const bool isAutomatic = isAutomaticReply(message);
    if (bySender) return isAutomatic ? Author::perhapsSystem : Author::system;
    if (message.field("Return-Path") == "<>" && !isAutomatic) return Author::system;
    const std::string subject = message.field("Subject");
    // Only people ask.
    if (isPassedOn(subject) || subject.find('?') != npos) return Author::person;
    const bool isNoticeSubject = std::ranges::any_of(
        noticeSubjects, [&](auto words) { return containsNoCase(subject, words); });
    return isNoticeSubject ? Author::perhapsSystem : Author::person;
}

bool isDiscussion(const Entity& message) {
    return isPassedOn(message.field("Subject")) || message.hasField("List-Id") ||
           message.hasField("List-Post");
}

bool saysTrouble(std::string_view subject) { return cuesIn(subject).haveTrouble(); }

}  // namespace bouncecheck
