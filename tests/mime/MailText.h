#pragma once

#include <gtest/gtest.h>

#include <functional>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/classes/Email2.h>
#include <bouncecheck/classes/SystemCerts.h>
#include <bouncecheck/classes/XString.h>

/// The answers of a message as values, where the library appends to buffers.
namespace bouncecheck {

using Mail = const Email2&;
using Text = std::string;
inline LogNull noLog;

template <class Out = StringBuffer, class Read, class... Args>
Text answer(Mail m, Read read, const Args&... args) {
    Out out;
    if constexpr (std::is_invocable_v<Read, Mail, const Args&..., Out&, LogBase&>)
        std::invoke(read, m, args..., out, noLog);
    else
        std::invoke(read, m, args..., out);
    return Text(out.view());
}

inline Text fieldOf(Mail m, const char* name) {
    return answer<XString>(m, &Email2::getDeliveryStatusInfo, name);
}
inline Text recipientOf(Mail m, int kind = 1, int index = 0) {
    return answer(m, &Email2::getRecipientAddrUtf8, kind, index);
}
inline Text plainOf(Mail m) { return answer(m, &Email2::getPlainTextBodyUtf8, m); }
inline Text effectiveOf(Mail m) { return answer<DataBuffer>(m, &Email2::getEffectiveBodyData, m); }
inline Text subjectOf(Mail m) { return answer(m, &Email2::getSubjectUtf8); }
inline Text fromOf(Mail m) { return answer(m, &Email2::getFromAddrUtf8); }
inline Text nameOf(Mail m) { return answer(m, &Email2::getFromNameUtf8); }
inline Text bodyOf(Mail m) { return answer<DataBuffer>(m, &Email2::getNonMultipartBodyData); }
inline Text rawBodyOf(Mail m) { return answer<DataBuffer>(m, &Email2::getRawBodyThisPart); }
inline Text statusOf(Mail m) { return answer<XString>(m, &Email2::getDeliveryStatusContent); }
inline std::unique_ptr<Email2, BrixelDeleter> attachedTo(Mail m, int index = 0) {
    SystemCerts certs;
    int status = 0;
    return {m.getAttachedMessage(index, status, certs, noLog), {}};
}

/// The tree: parts in parentheses; a leaf as `type[body]`, without the type if text/plain.
inline Text outlineOf(Mail m) {
    const Text type = answer(m, &Email2::getContentType), leaf = '[' + bodyOf(m) + ']';
    if (m.getNumParts() == 0) return type == "text/plain" ? leaf : type + leaf;
    Text parts;
    for (int i = 0; i < m.getNumParts(); ++i) parts += outlineOf(*m.getPart(i));
    return '(' + parts + ')';
}

/// What every operation answers, for the message and all parts.
inline Text everyAnswer(Mail m) {
    Text all = outlineOf(m) + answer(m, &Email2::getHeaderFieldUtf8, "X-Any") + fieldOf(m, "X");
    all += subjectOf(m) + '|' + fromOf(m) + '|' + nameOf(m) + '|' + plainOf(m) + effectiveOf(m);
    all += rawBodyOf(m) + statusOf(m) + recipientOf(m) + '|' + recipientOf(m, 2, 1);
    if (m.hasHeaderMatchingUtf8("X-Any", "*a*", true, noLog)) all += "match";
    if (const auto inner = attachedTo(m)) all += subjectOf(*inner) + recipientOf(*inner);
    for (int i = 0; i < m.getNumParts(); ++i) all += '\n' + everyAnswer(*m.getPart(i));
    return all;
}

using Case = std::pair<Text, Text>;

/// Expects `read` to answer each input as it should.
template <std::size_t size, class Read>
void expectEach(const Case (&cases)[size], Read read) {
    for (const auto& [input, expected] : cases) EXPECT_EQ(read(input), expected) << input;
}

}  // namespace bouncecheck
