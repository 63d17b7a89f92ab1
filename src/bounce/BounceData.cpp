#include <string_view>

#include "bounce/BounceCheck.h"
#include "log/LogBase.h"
#include "mime/Email2.h"
#include "text/DataBuffer.h"

namespace bouncecheck {
namespace {

long sizeOf(const StringBuffer& text) { return static_cast<long>(text.view().size()); }

void appendOnNewLine(StringBuffer& text, std::string_view more) {
    text.append("\r\n");
    text.append(more);
}

}  // namespace

void BounceCheck::loadTransients(Email2& email, LogBase& log) {
    m_sbBounceAddr.weakClear();
    m_sbSubject.weakClear();
    m_xSubject.weakClear();
    m_sbFromAddr.weakClear();
    m_sbFromName.weakClear();
    m_sbBounceData.weakClear();
    m_memory.reset();

    email.getSubjectUtf8(m_sbSubject, log);
    for (const char* spamTag : {"Possible Spam :", "SPAM-LOW:", "SPAM >"}) {
        m_sbSubject.replaceFirstOccurance(spamTag, "", false);
    }
    m_sbSubject.trim2();
    m_xSubject.appendUtf8(m_sbSubject.view());
    email.getFromAddrUtf8(m_sbFromAddr);
    email.getFromNameUtf8(m_sbFromName, log);
    getBounceData(email, log);
    m_isMultipartReport = isMultipartReport(email, log);

    log.LogDataSb("subject", m_sbSubject);
    log.LogDataSb("fromAddr", m_sbFromAddr);
    log.LogDataSb("fromName", m_sbFromName);
}

void BounceCheck::getBounceData(Email2& email, LogBase& log) {
    m_sbBounceData.clear();
    if (!appendFirstBodies(email, log)) return;

    if (m_sbBounceData.isEmpty()) {
        if (const Email2* status = email.findContentType("message/delivery-status")) {
            DataBuffer body;
            status->getRawBodyThisPart(body);
            m_sbBounceData.append(body);
            log.LogDataLong("newBounceDataSize2", sizeOf(m_sbBounceData));
        }
    }
    if (m_sbBounceData.isEmpty()) {
        email.getPlainTextBodyUtf8(email, m_sbBounceData, log);
        log.LogDataLong("newBounceDataSize3", sizeOf(m_sbBounceData));
    }
}

/// The first body and, of a report or a mixed message, the second. False when
/// one of them has no body at all, which also rules out what could stand in.
bool BounceCheck::appendFirstBodies(Email2& email, LogBase& log) {
    const Email2* first = email.getPart(0);
    const DataBuffer* body = (first ? first : &email)->getNonMultipartBody3();
    if (!body) return false;
    m_sbBounceData.append(*body);

    const Email2* second = email.getPart(1);
    if (!second) return true;
    if (email.isMultipartReport()) {
        const DataBuffer* more = second->getNonMultipartBody3();
        if (!more) return false;
        if (more->getSize() > 0 && more->view() != m_sbBounceData.view()) {
            appendOnNewLine(m_sbBounceData, more->view());
        }
        return true;
    }
    return !email.isMultipartMixed() || appendSecondOfMixed(email, *second, log);
}

/// The second part of a mixed message, when it is a returned message or text.
bool BounceCheck::appendSecondOfMixed(Email2& email, const Email2& second, LogBase& log) {
    const bool isMessage = containsNoCase(second.contentType(), "rfc822");
    if (!isMessage && second.contentType() != "text/plain") return true;
    const DataBuffer* body = second.getNonMultipartBody3();
    if (!body) return false;
    if (body->getSize() == 0) return true;

    if (isMessage && containsNoCase(body->view(), "Content-Transfer-Encoding: base64")) {
        StringBuffer text;
        email.getPlainTextBodyUtf8(email, text, log);
        if (!text.isEmpty()) {
            m_sbBounceData.append(text);
            log.LogDataLong("newBounceDataSize5", sizeOf(m_sbBounceData));
        }
    } else if (body->view() != m_sbBounceData.view()) {
        appendOnNewLine(m_sbBounceData, body->view());
        log.LogDataLong("newBounceDataSize1", sizeOf(m_sbBounceData));
    }
    return true;
}

}  // namespace bouncecheck
