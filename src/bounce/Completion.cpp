#include "bounce/Checks.h"
#include "bounce/Utf7.h"
#include "mime/Entity.h"
#include "mime/LineEnds.h"

namespace bouncecheck::checks {
namespace {

int autoReply(const Evidence& evidence, Finding& finding, LogBase& log) {
    if (finding.address.isEmpty()) {
        log.LogInfo("Using FROM address for out-of-office/auto-reply.");
        finding.address.set(evidence.senderAddress.view(), AddressSource::sender);
    }
    return BOUNCE_AUTO_REPLY;
}

/// Takes the To address of the header that a report returns in place of the
/// whole message.
void takeAddressFromReturnedHeader(const Entity& message, FoundAddress& address) {
    for (std::size_t i = 0; i < message.partCount(); ++i) {
        const Entity& part = *message.part(i);
        if (!contains(part.type(), "text/rfc822-headers")) continue;
        // Read in place: it may be most of the message. A NUL byte ends it.
        std::string_view text = part.body().view();
        text = text.substr(0, text.find('\0'));
        std::string completed;  // the bodies of text have their line ends
        if (!part.mediaType().isOf("text")) text = completed = copyWithCrLf(text);
        const HeaderFields header =
            HeaderFields::ofMessage(text.substr(HeaderFields::startIn(text)));
        const HeaderField* const field = header.find("To");
        const std::string to = field ? field->decoded() : std::string();
        std::string_view found = to;
        if (const std::size_t bracket = found.find('<'); bracket != npos) {
            found.remove_prefix(bracket + 1);
            found = found.substr(0, found.find('>'));
        }
        if (!found.empty()) address.set(found, AddressSource::returned);
        return;
    }
}

/// A message that no check decided may still be an answer from somebody away.
int reconsiderNone(const Evidence& evidence, Finding& finding, LogBase& log) {
    const Match match = evidence.firstOf("6.481");
    if (!match) return BOUNCE_NONE;
    finding.decide("6.481", log, match);
    finding.address.set(evidence.message.from().address, AddressSource::sender);
    return autoReply(evidence, finding, log);
}

}  // namespace

int complete(int type, const Evidence& evidence, Finding& finding, LogBase& log) {
    if (type == BOUNCE_NONE) return reconsiderNone(evidence, finding, log);

    FoundAddress& address = finding.address;
    const Entity& message = evidence.message;
    if (address.isEmpty() && message.is("multipart/report")) {
        takeAddressFromReturnedHeader(message, address);
    }
    std::string room;
    if (address.isEmpty()) {
        address.set(message.fieldIn("X-Env-Sender", room), AddressSource::header);
    }

    if (type == BOUNCE_AUTO_REPLY) return autoReply(evidence, finding, log);
    if (type == BOUNCE_SOFT && address.isEmpty()) {
        log.LogInfo("Using FROM address for soft bounce.");
        address.set(evidence.senderAddress.view(), AddressSource::sender);
    }
    if (type == BOUNCE_UNCLASSIFIED) {
        const std::string_view autoreplyFrom = message.fieldIn("X-Autoreply-From", room);
        if (!autoreplyFrom.empty()) {
            address.set(autoreplyFrom, AddressSource::header);
            return finding.decide("6.482", log);
        }
    }
    return type;
}

void cleanAddress(StringBuffer& address) {
    constexpr std::size_t longestAddress = 300;
    if (address.view().size() > longestAddress && address.containsSubstring("vFileStorage")) {
        address.clear();
    }
    if (address.beginsWith("<")) {
        address.removeCharOccurances('<');
        address.removeCharOccurances('>');
    }
    if (address.isEmpty()) return;
    decodeUtf7Signs(address);
    if (address.charAt(0) == '@') address.replaceFirstOccurance("@", "", false);
}

}  // namespace bouncecheck::checks
