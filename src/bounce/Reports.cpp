#include <bouncecheck/classes/LogContextExitor.h>
#include "bounce/Checks.h"
#include "bounce/ReportFields.h"
#include "mime/Entity.h"
#include "text/Ascii.h"

namespace bouncecheck::checks {
namespace {

/// Which list has a phrase in a text of a report. What does not stand in the data does
/// not stand in a part of it, which spares most reports a pass.
Match firstOf(ListId list, const Evidence& evidence, const ScannedText& text) {
    if (evidence.isPartOfData(text.view()) && !evidence.data.firstOf(list)) return {};
    return text.firstOf(list);
}

}  // namespace

int feedbackReport(const Evidence& evidence, Finding& finding, LogBase& log) {
    const std::string type = feedbackTypeOf(evidence.message);
    if (type.empty()) return BOUNCE_NONE;
    if (ascii::equalsNoCase(type, "virus")) return finding.decide("10.3", log);
    if (ascii::equalsNoCase(type, "abuse") || ascii::equalsNoCase(type, "fraud")) {
        return finding.decide("15.1", log);
    }
    return finding.decide("7.11", log);
}

int multipartReport(const Evidence& evidence, Finding& finding, LogBase& log, bool& mprNoBody) {
    mprNoBody = false;
    log.LogInfo("This is a multipart/report email.");
    if (const int type = feedbackReport(evidence, finding, log)) {
        log.LogDataLong("feedbackReportBounceType2", type);
        return type;
    }

    log.LogInfo("Getting multipart/report info (2)");
    log.LogInfo("Filling sbBounceData with multipart/report info..");
    const ReportFields fields = readReportFields(evidence.message, log);
    finding.address.set(fields.recipient.view(), AddressSource::report);
    mprNoBody = true;
    const auto decideOn = [&](const StringBuffer& text) { finding.text.emplace().setString(text); };

    const ScannedText status = evidence.scanned(TextOf::report, fields.deliveryStatus.view());
    if (const Match match = firstOf(SenderBlockedIndicators, evidence, status)) {
        return finding.decideLogged("5.1a", log, match);
    }
    const ScannedText diagnosticCode =
        evidence.scanned(TextOf::report, fields.diagnosticCode.view());
    Match trouble = diagnosticCode.firstOf(MailboxFullIndicators);
    if (!trouble) trouble = diagnosticCode.firstOf(SoftBounceIndicators);
    if (trouble) {
        decideOn(fields.deliveryStatus);
        return finding.decide("2.4", log, trouble);
    }
    const ScannedText body = evidence.scanned(TextOf::body, fields.plainTextBody.view());
    if (const Match match = firstOf(MailboxFullIndicators, evidence, body)) {
        decideOn(fields.plainTextBody);
        return finding.decide("2.41", log, match);
    }

    log.LogDataSb("reportAction", fields.action);
    log.LogDataSb("reportDisposition", fields.disposition);
    // RFC 3464, section 2.3.3. A relayed report is no receipt: who relays does
    // not know whether the message was displayed (rule 14.2a never came to be).
    const auto actionIs = [&](const char* name) { return fields.action.equalsIgnoreCase(name); };
    if (actionIs("delayed") || actionIs("relayed") || actionIs("delivered")) {
        decideOn(fields.deliveryStatus);
        return finding.decide("7.6a", log);
    }
    if (actionIs("failed")) {
        decideOn(fields.deliveryStatus);
        return finding.decide("1.mri", log);
    }
    if (fields.disposition.endsWith("displayed")) {
        decideOn(fields.deliveryStatus);
        return finding.decide("14.3b", log);
    }
    return BOUNCE_NONE;
}

int avgMail(const Evidence& evidence, Finding& finding, LogBase& log) {
    const Entity& message = evidence.message;
    if (!message.is("multipart/mixed")) return BOUNCE_NONE;
    std::string room;
    if (!contains(message.fieldIn("Content-Type", room), "AVGMAIL")) return BOUNCE_NONE;
    const Entity* first = message.part(0);
    if (!first || !first->is("multipart/report")) return BOUNCE_NONE;

    // The fields of the report are found through the message around it.
    bool ignored = false;
    if (const int type = multipartReport(evidence, finding, log, ignored)) return type;
    return finding.decide("1.AVG", log);
}

}  // namespace bouncecheck::checks
