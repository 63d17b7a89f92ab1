#include "bounce/BounceData.h"

#include <string_view>

#include <bouncecheck/LogBase.h>
#include <bouncecheck/classes/DataBuffer.h>
#include "mime/Entity.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

long sizeOf(const StringBuffer& text) { return static_cast<long>(text.view().size()); }

void appendOnNewLine(StringBuffer& text, std::string_view more) {
    constexpr std::string_view lineEnd = "\r\n";
    text.reserve(text.view().size() + lineEnd.size() + more.size());  // both may be long
    text.append(lineEnd);
    text.append(more);
}

/// The second part of a mixed message, when it is a returned message or text. False when
/// it has no body.
bool appendSecondOfMixed(const Entity& message, const Entity& second, StringBuffer& data,
                         LogBase& log) {
    const bool isMessage = contains(second.type(), "rfc822");
    if (!isMessage && !second.is("text/plain")) return true;
    if (!second.isLeaf()) return false;
    const std::string_view body = second.body().view();
    if (body.empty()) return true;

    if (isMessage && containsNoCase(body, "Content-Transfer-Encoding: base64")) {
        const DataBuffer& text = message.plainText();
        if (!text.view().empty()) {
            data.append(text);
            log.LogDataLong("newBounceDataSize5", sizeOf(data));
        }
    } else if (body != data.view()) {
        appendOnNewLine(data, body);
        log.LogDataLong("newBounceDataSize1", sizeOf(data));
    }
    return true;
}

/// The first body and, of a report or a mixed message, the second. False when
/// one of them has no body at all, which also rules out what could stand in.
bool appendFirstBodies(const Entity& message, StringBuffer& data, LogBase& log) {
    const Entity* part = message.part(0);
    const Entity& first = part ? *part : message;
    if (!first.isLeaf()) return false;
    data.append(first.body());

    const Entity* second = message.part(1);
    if (!second) return true;
    if (message.is("multipart/report")) {
        if (!second->isLeaf()) return false;
        const std::string_view more = second->body().view();
        if (!more.empty() && more != data.view()) appendOnNewLine(data, more);
        return true;
    }
    return !message.is("multipart/mixed") || appendSecondOfMixed(message, *second, data, log);
}

}  // namespace

void readSubject(const Entity& message, StringBuffer& subject) {
    subject.weakClear();
    std::string room;
    subject.append(message.fieldIn("Subject", room));
    for (const char* spamTag : {"Possible Spam :", "SPAM-LOW:", "SPAM >"}) {
        subject.replaceFirstOccurance(spamTag, "", false);
    }
    subject.trim2();
}

void readBounceData(const Entity& message, StringBuffer& data, LogBase& log) {
    data.clear();
    if (!appendFirstBodies(message, data, log)) return;

    if (data.isEmpty()) {
        if (const Entity* status = message.findType("message/delivery-status")) {
            data.append(status->rawBody());
            log.LogDataLong("newBounceDataSize2", sizeOf(data));
        }
    }
    if (data.isEmpty()) {
        data.append(message.plainText());
        log.LogDataLong("newBounceDataSize3", sizeOf(data));
    }
}

}  // namespace bouncecheck
