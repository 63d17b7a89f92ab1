#include "recipients/RemovalRequest.h"

#include <algorithm>
#include <string_view>

#include "mime/AddressForms.h"
#include "mime/Entity.h"
#include "mime/Mailbox.h"
#include "recipients/Origin.h"
#include "recipients/tables/RemovalSubjects.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

bool asksBySubject(std::string_view subject) {
    subject = ascii::trim(subject);
    // "unsubscribe 12345"
    const std::size_t first = std::min(subject.find(' '), subject.size());
    const std::string_view token = subject.substr(first);
    const bool hasToken =
        token.find_first_of("0123456789@=") != npos && ascii::trim(token).find(' ') == npos;
    return std::ranges::any_of(removalSubjects, [&](std::string_view words) {
        return ascii::equalsNoCase(subject, words) ||
               (hasToken && ascii::equalsNoCase(subject.substr(0, first), words));
    });
}

/// Whether `address` is a mailbox for requests: "leave-77@lists.example", "news-unsubscribe@...".
bool isForRequests(std::string_view address) {
    const std::string_view local = localPartOf(address);
    return std::ranges::any_of(removalMailboxes, [&](std::string_view word) {
        if (local.size() < word.size()) return false;
        const std::size_t rest = local.size() - word.size();
        // People take leave, too.
        const bool isWhole = rest == 0 && word != "leave";
        const bool begins = ascii::startsWithNoCase(local, word) &&
                            (isWhole || (rest > 0 && ascii::isOneOf(local[word.size()], "-+.=")));
        const bool ends = rest > 0 && ascii::equalsNoCase(local.substr(rest), word) &&
                          ascii::isOneOf(local[rest - 1], "-+.=");
        return begins || ends;
    });
}

bool isAutomatic(const Entity& message) {
    const std::string automatic = message.field("Auto-Submitted");
    return (!automatic.empty() && !ascii::startsWithNoCase(automatic, "no")) ||
           message.is("multipart/report");
}

}  // namespace

std::string whoAsksForRemoval(const Entity& message) {
    if (isAutomatic(message)) return {};
    const bool byButton = message.hasField("X-Apple-Unsubscribe");
    const auto isSentToMailbox = [&] {
        return authorOf(message) == Author::person &&
               std::ranges::any_of(parseMailboxes(message.field("To"), 2),
                                   [](const Mailbox& to) { return isForRequests(to.address); });
    };
    const bool asks = byButton || asksBySubject(message.field("Subject")) || isSentToMailbox();
    const std::string& author = message.from().address;
    return asks && author.find('@') != npos ? author : std::string();
}

}  // namespace bouncecheck
