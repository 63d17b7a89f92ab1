#include <bouncecheck/classes/BounceCheck.h>

#include <utility>

#include <bouncecheck/classes/Email2.h>
#include <bouncecheck/classes/SystemCerts.h>
#include "bounce/BounceData.h"
#include "bounce/Checks.h"
#include "bounce/LastResort.h"
#include "bounce/MessageClassifier.h"
#include "bounce/ReportFields.h"
#include "log/LogGuard.h"

namespace bouncecheck {

using phrases::Engine;

/// Hands the members to `work` as evidence and keeps what it finds.
template <class Work>
int BounceCheck::withEvidence(Email2& email, Work work) {
    const Evidence evidence(
        entityOf(email), {m_sbSubject, m_sbFromAddr, m_sbFromName, m_sbBounceData},
        m_isMultipartReport, Engine::pass, SystemCertsHolder().getSystemCertsPtr() != nullptr);
    Finding finding;
    finding.address.text = std::move(m_sbBounceAddr);
    const int type = work(evidence, finding);
    m_sbBounceAddr = std::move(finding.address.text);
    if (finding.text) m_sbBounceData = *std::move(finding.text);
    return type;
}

int BounceCheck::run(Email2& email, LogBase& log, Check& check) {
    return withEvidence(email, [&](const Evidence& evidence, Finding& finding) {
        return check(evidence, finding, log);
    });
}

int BounceCheck::checkEmail(Email2& email, StringBuffer& bounceAddr, StringBuffer& bounceData,
                            LogBase& log) {
    LogGuard guarded(log);
    bounceAddr.clear();
    bounceData.clear();
    loadTransients(email, guarded);
    const int type = run(email, guarded, verdictOn);
    m_sbBounceData.handOut(bounceData);
    bounceAddr.append(m_sbBounceAddr);
    return type;
}

void BounceCheck::cleanBounceAddress() { checks::cleanAddress(m_sbBounceAddr); }

void BounceCheck::loadTransients(Email2& email, LogBase& log) {
    m_sbBounceAddr.weakClear();
    m_isMultipartReport =
        loadTexts(entityOf(email), m_sbSubject, m_sbFromAddr, m_sbFromName, m_sbBounceData, log);
    m_xSubject.weakClear();
    m_xSubject.appendUtf8(m_sbSubject.view());
}

void BounceCheck::getBounceData(Email2& email, LogBase& log) {
    readBounceData(entityOf(email), m_sbBounceData, log);
}

int BounceCheck::checkEmailInner(Email2& email, LogBase& log) {
    return run(email, log, checks::inOrder);
}

bool BounceCheck::isMultipartReport(Email2& email, LogBase& log) {
    return bouncecheck::isMultipartReport(entityOf(email), log);
}

int BounceCheck::checkMultipartReport(Email2& email, LogBase& log, bool& mprNoBody) {
    return withEvidence(email, [&](const Evidence& evidence, Finding& finding) {
        return checks::multipartReport(evidence, finding, log, mprNoBody);
    });
}

int BounceCheck::checkFeedbackReport(Email2& email, LogBase& log) {
    return run(email, log, checks::feedbackReport);
}

bool BounceCheck::getReportFeedbackType(Email2& email, StringBuffer& feedbackType, LogBase&) {
    feedbackType.setString(feedbackTypeOf(entityOf(email)));
    return !feedbackType.isEmpty();
}

bool BounceCheck::getMultipartReportInfo(Email2& email, LogBase& log,
                                         StringBuffer& sbDeliveryStatus, StringBuffer& sbAction,
                                         StringBuffer& sbDiagnosticCode,
                                         StringBuffer& sbDisposition,
                                         StringBuffer& sbPlainTextBody) {
    ReportFields fields = readReportFields(entityOf(email), log);
    sbDeliveryStatus = std::move(fields.deliveryStatus);
    sbAction = std::move(fields.action);
    sbDiagnosticCode = std::move(fields.diagnosticCode);
    sbDisposition = std::move(fields.disposition);
    sbPlainTextBody = std::move(fields.plainTextBody);
    m_sbBounceAddr = std::move(fields.recipient);
    return true;
}

int BounceCheck::checkAVGMAIL(Email2& email, LogBase& log) {
    return run(email, log, checks::avgMail);
}

int BounceCheck::checkSpecialSubjects(Email2& email, LogBase& log) {
    return run(email, log, checks::specialSubjects);
}

int BounceCheck::checkSpecialCases1(Email2& email, LogBase& log) {
    return run(email, log, checks::specialCases1);
}

int BounceCheck::checkSpecialCases2(Email2& email, LogBase& log) {
    return run(email, log, checks::specialCases2);
}

int BounceCheck::checkSpecialCases3(Email2& email, LogBase& log) {
    return run(email, log, checks::specialCases3);
}

int BounceCheck::checkSubjectList(Email2& email, LogBase& log) {
    return run(email, log, checks::subjectList);
}

int BounceCheck::checkFromAddrList(Email2& email, LogBase& log) {
    return run(email, log, checks::fromAddrList);
}

int BounceCheck::checkEmailBody(Email2& email, LogBase& log) {
    return run(email, log, checks::emailBody);
}

bool BounceCheck::containsAutoReplyIndicator(Email2& email, StringBuffer& text,
                                             LogBase& log) const {
    const Evidence evidence(entityOf(email),
                            {m_sbSubject, m_sbFromAddr, m_sbFromName, m_sbBounceData},
                            m_isMultipartReport, Engine::pass);
    const ScannedText scanned = evidence.scanned(TextOf::data, text.view());
    return static_cast<bool>(checks::autoReplySign(evidence, scanned, log));
}

bool BounceCheck::containsIndicator(const StringBuffer& text, const char* const* list,
                                    StringBuffer& matched) const {
    /// A list without its terminator ends here at the latest.
    constexpr std::size_t longestList = 2001;
    matched.clear();  // before the search, since it may be `text`
    for (std::size_t i = 0; i < longestList && list[i] && *list[i]; ++i) {
        if (!containsNoCase(text.view(), list[i])) continue;
        matched.setString(list[i]);
        return true;
    }
    return false;
}

int BounceCheck::applyRules(const BounceRule* rules, int& ruleIndex, LogBase&) const {
    for (ruleIndex = 0; rules[ruleIndex].source != RULE_END; ++ruleIndex) {
        const BounceRule& rule = rules[ruleIndex];
        const StringBuffer* const text = rule.source == RULE_SUBJECT       ? &m_sbSubject
                                         : rule.source == RULE_BOUNCE_DATA ? &m_sbBounceData
                                         : rule.source == RULE_FROM_NAME   ? &m_sbFromName
                                         : rule.source == RULE_FROM_ADDR   ? &m_sbFromAddr
                                                                           : nullptr;
        if (text && matches(rule, text->view())) return rule.bounceType;
    }
    ruleIndex = 0;
    return BOUNCE_NONE;
}

}  // namespace bouncecheck
