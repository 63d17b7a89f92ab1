#include "bounce/BounceCheck.h"
#include "bounce/Verdict.h"
#include "bounce/tables/MailboxFullIndicators.h"
#include "bounce/tables/SenderBlockedIndicators.h"
#include "bounce/tables/SoftBounceAndVirusIndicators.h"
#include "log/LogContextExitor.h"
#include "mime/Email2.h"

namespace bouncecheck {
namespace {

void readField(Email2& email, const char* name, StringBuffer& value, LogBase& log) {
    XString field;
    email.getDeliveryStatusInfo(name, field, log);
    value.setString(field.view());
}

}  // namespace

bool BounceCheck::isMultipartReport(Email2& email, LogBase& log) {
    if (email.contentType() == "multipart/report") return true;
    if (email.contentType() != "multipart/mixed") return false;
    const Email2* first = email.getPart(0);
    if (!first || first->contentType() != "multipart/report") return false;
    log.LogInfo("Found multipart/mixed --> multipart/report");
    return true;
}

bool BounceCheck::getReportFeedbackType(Email2& email, StringBuffer& feedbackType, LogBase& log) {
    readField(email, "Feedback-Type", feedbackType, log);
    return !feedbackType.isEmpty();
}

int BounceCheck::checkFeedbackReport(Email2& email, LogBase& log) {
    StringBuffer feedbackType;
    if (!getReportFeedbackType(email, feedbackType, log)) return BOUNCE_NONE;
    if (feedbackType.equalsIgnoreCase("virus")) {
        return decide(log, BOUNCE_VIRUS, "Bounce type 10.3");
    }
    if (feedbackType.equalsIgnoreCase("abuse") || feedbackType.equalsIgnoreCase("fraud")) {
        return decide(log, BOUNCE_ABUSE, "Bounce type 15.1");
    }
    return decide(log, BOUNCE_TRANSIENT, "Bounce type 7.11");
}

bool BounceCheck::getMultipartReportInfo(Email2& email, LogBase& log,
                                         StringBuffer& sbDeliveryStatus, StringBuffer& sbAction,
                                         StringBuffer& sbDiagnosticCode,
                                         StringBuffer& sbDisposition,
                                         StringBuffer& sbPlainTextBody) {
    LogContextExitor context(log, "getMultipartReportInfo");
    readField(email, "Disposition", sbDisposition, log);
    readField(email, "Action", sbAction, log);
    readField(email, "Diagnostic-Code", sbDiagnosticCode, log);
    email.getPlainTextBodyUtf8(email, sbPlainTextBody, log);

    XString recipient;
    email.getDeliveryStatusInfo("Original-recipient", recipient, log);
    // With "(generated from" in the text the final recipient is the address
    // behind an alias, which is not the one that the sender knows.
    if (recipient.isEmpty() && !sbPlainTextBody.containsSubstring("(generated from")) {
        email.getDeliveryStatusInfo("Final-Recipient", recipient, log);
    }
    if (recipient.isEmpty()) email.getDeliveryStatusInfo("Original-Rcpt-To", recipient, log);
    if (!recipient.isEmpty()) log.LogData("OriginalRecipient", recipient.getUtf8());
    for (const char* addressType : {"RFC822;", "rfc822;", "LOCAL;", "local;"}) {
        recipient.replaceFirstOccuranceUtf8(addressType, "", false);
    }
    recipient.trim2();
    m_sbBounceAddr.setString(recipient.getAnsi());
    if (m_sbBounceAddr.containsSubstring("vFileStorage")) m_sbBounceAddr.clear();

    XString content;
    email.getDeliveryStatusContent(content, log);
    sbDeliveryStatus.setString(content.getUtf8Sb());
    return true;
}

int BounceCheck::checkMultipartReport(Email2& email, LogBase& log, bool& mprNoBody) {
    mprNoBody = false;
    log.LogInfo("This is a multipart/report email.");
    if (const int type = checkFeedbackReport(email, log)) {
        log.LogDataLong("feedbackReportBounceType2", type);
        return type;
    }

    log.LogInfo("Getting multipart/report info (2)");
    log.LogInfo("Filling sbBounceData with multipart/report info..");
    StringBuffer sbDeliveryStatus;
    StringBuffer sbAction;
    StringBuffer sbDiagnosticCode;
    StringBuffer sbDisposition;
    StringBuffer sbPlainTextBody;
    if (!getMultipartReportInfo(email, log, sbDeliveryStatus, sbAction, sbDiagnosticCode,
                                sbDisposition, sbPlainTextBody)) {
        return BOUNCE_NONE;
    }
    mprNoBody = true;

    StringBuffer sbMatched;
    if (containsIndicator(sbDeliveryStatus, SenderBlockedIndicators, sbMatched)) {
        log.LogDataSb("matchedIndicator", sbMatched);
        return decide(log, BOUNCE_BLOCKED, "Bounce type 5.1a");
    }
    const PhraseScan diagnosticCode(sbDiagnosticCode.view());
    if (findIndicator(diagnosticCode, MailboxFullIndicators, sbMatched) ||
        findIndicator(diagnosticCode, SoftBounceIndicators, sbMatched)) {
        m_sbBounceData.setString(sbDeliveryStatus);
        return decide(log, BOUNCE_SOFT, "Bounce type 2.4");
    }
    if (containsIndicator(sbPlainTextBody, MailboxFullIndicators, sbMatched)) {
        m_sbBounceData.setString(sbPlainTextBody);
        return decide(log, BOUNCE_SOFT, "Bounce type 2.41");
    }

    log.LogDataSb("reportAction", sbAction);
    log.LogDataSb("reportDisposition", sbDisposition);
    // RFC 3464, section 2.3.3. A relayed report is no receipt: who relays does
    // not know whether the message was displayed (rule 14.2a never came to be).
    const auto actionIs = [&](const char* name) { return sbAction.equalsIgnoreCase(name); };
    if (actionIs("delayed") || actionIs("relayed") || actionIs("delivered")) {
        m_sbBounceData.setString(sbDeliveryStatus);
        return decide(log, BOUNCE_TRANSIENT, "Bounce type 7.6a");
    }
    if (actionIs("failed")) {
        m_sbBounceData.setString(sbDeliveryStatus);
        return decide(log, BOUNCE_HARD, "Bounce type 1.mri");
    }
    if (sbDisposition.endsWith("displayed")) {
        m_sbBounceData.setString(sbDeliveryStatus);
        return decide(log, BOUNCE_DISPOSITION, "Bounce type 14.3b");
    }
    return BOUNCE_NONE;
}

int BounceCheck::checkAVGMAIL(Email2& email, LogBase& log) {
    if (!email.isMultipartMixed()) return BOUNCE_NONE;
    StringBuffer contentType;
    email.getHeaderFieldUtf8("content-type", contentType, log);
    if (!contentType.containsSubstring("AVGMAIL")) return BOUNCE_NONE;
    const Email2* first = email.getPart(0);
    if (!first || first->contentType() != "multipart/report") return BOUNCE_NONE;

    // The fields of the report are found through the message around it.
    bool ignored = false;
    if (const int type = checkMultipartReport(email, log, ignored)) return type;
    return decide(log, BOUNCE_HARD, "Bounce type 1.AVG");
}

}  // namespace bouncecheck
