#include "bounce/BounceCheck.h"

#include "bounce/Utf7.h"
#include "bounce/Verdict.h"
#include "log/LogContextExitor.h"
#include "log/LogGuard.h"
#include "mime/Email2.h"
#include "mime/MimeHeader.h"
#include "text/DataBuffer.h"

namespace bouncecheck {

int BounceCheck::checkEmail(Email2& email, StringBuffer& bounceAddr, StringBuffer& bounceData,
                            LogBase& log) {
    LogGuard guarded(log);
    bounceAddr.clear();
    bounceData.clear();
    loadTransients(email, guarded);

    int type = BOUNCE_NONE;
    {
        LogContextExitor context(guarded, "checkEmailInner");
        m_memory.emplace();
        type = checkEmailInner(email, guarded);
        m_memory.reset();
    }
    guarded.LogDataLong("bounceType", type);
    cleanBounceAddress();
    type = type == BOUNCE_NONE ? reconsiderNone(email, guarded)
                               : completeVerdict(type, email, guarded);

    m_sbBounceData.handOut(bounceData);
    bounceAddr.append(m_sbBounceAddr);
    return type;
}

/// Finds an address for a verdict without one, each kind in its own way.
int BounceCheck::completeVerdict(int type, Email2& email, LogBase& log) {
    if (m_sbBounceAddr.isEmpty() && email.isMultipartReport()) {
        takeAddressFromReturnedHeader(email, log);
    }
    if (m_sbBounceAddr.isEmpty()) email.getHeaderFieldUtf8("X-Env-Sender", m_sbBounceAddr, log);

    if (type == BOUNCE_AUTO_REPLY) return autoReply(log);
    if (type == BOUNCE_SOFT && m_sbBounceAddr.isEmpty()) {
        log.LogInfo("Using FROM address for soft bounce.");
        m_sbBounceAddr.setString(m_sbFromAddr);
    }
    if (type == BOUNCE_UNCLASSIFIED) {
        StringBuffer autoreplyFrom;
        email.getHeaderFieldUtf8("X-Autoreply-From", autoreplyFrom, log);
        if (!autoreplyFrom.isEmpty()) {
            m_sbBounceAddr.setString(autoreplyFrom);
            return decide(log, BOUNCE_AUTO_REPLY, "Bounce type: 6.482");
        }
    }
    return type;
}

/// A message that no check decided may still be an answer from somebody away.
int BounceCheck::reconsiderNone(Email2& email, LogBase& log) {
    const PhraseScan& data = dataPhrases();
    if (!data.has("I am out of the office") && !data.has("I will be out of the office")) {
        return BOUNCE_NONE;
    }
    log.LogInfo("Bounce type: 6.481");
    m_sbBounceAddr.clear();
    email.getFromAddrUtf8(m_sbBounceAddr);
    return autoReply(log);
}

int BounceCheck::autoReply(LogBase& log) {
    if (m_sbBounceAddr.isEmpty()) {
        log.LogInfo("Using FROM address for out-of-office/auto-reply.");
        m_sbBounceAddr.setString(m_sbFromAddr);
    }
    return BOUNCE_AUTO_REPLY;
}

/// Takes the To address of the header that a report returns in place of the
/// whole message.
void BounceCheck::takeAddressFromReturnedHeader(Email2& email, LogBase& log) {
    for (int i = 0; i < email.getNumParts(); ++i) {
        const Email2* part = email.getPart(i);
        if (!part) continue;
        if (!containsNoCase(part->contentType(), "text/rfc822-headers")) continue;

        DataBuffer text;
        part->getNonMultipartBodyData(text);
        text.appendChar('\0');
        MimeHeader header;
        StringBuffer scratch;
        header.loadMimeHeaderText(text.view().data(), nullptr, 0, scratch, log);
        header.getMimeFieldUtf8_2("To", 2, m_sbBounceAddr, log);
        if (m_sbBounceAddr.containsChar('<')) {
            const std::string_view to = m_sbBounceAddr.view();
            m_sbBounceAddr.setString(to.substr(to.find('<') + 1));
            m_sbBounceAddr.chopAtFirstChar('>');
        }
        return;
    }
}

void BounceCheck::cleanBounceAddress() {
    constexpr std::size_t longestAddress = 300;
    if (m_sbBounceAddr.view().size() > longestAddress &&
        m_sbBounceAddr.containsSubstring("vFileStorage")) {
        m_sbBounceAddr.clear();
    }
    if (m_sbBounceAddr.beginsWith("<")) {
        m_sbBounceAddr.removeCharOccurances('<');
        m_sbBounceAddr.removeCharOccurances('>');
    }
    if (m_sbBounceAddr.isEmpty()) return;
    decodeUtf7Signs(m_sbBounceAddr);
    if (m_sbBounceAddr.charAt(0) == '@') m_sbBounceAddr.replaceFirstOccurance("@", "", false);
}

}  // namespace bouncecheck
