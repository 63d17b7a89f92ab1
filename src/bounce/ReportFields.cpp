#include "bounce/ReportFields.h"

#include <bouncecheck/classes/LogContextExitor.h>
#include "mime/Entity.h"

namespace bouncecheck {
namespace {

std::string reportField(const Entity& message, std::string_view name) {
    const HeaderField* field = message.reportFields().find(name);
    return field ? field->decoded() : std::string();
}

/// Who failed; without the type of the address.
StringBuffer recipientOf(const Entity& message, const StringBuffer& plainText, LogBase& log) {
    StringBuffer recipient;
    recipient.append(reportField(message, "Original-recipient"));
    // With "(generated from" in the text the final recipient is the address
    // behind an alias, which is not the one that the sender knows.
    if (recipient.isEmpty() && !plainText.containsSubstring("(generated from")) {
        recipient.append(reportField(message, "Final-Recipient"));
    }
    if (recipient.isEmpty()) recipient.append(reportField(message, "Original-Rcpt-To"));
    if (!recipient.isEmpty()) log.LogDataSb("OriginalRecipient", recipient);
    for (const char* addressType : {"RFC822;", "rfc822;", "LOCAL;", "local;"}) {
        recipient.replaceFirstOccurance(addressType, "", false);
    }
    recipient.trim2();
    recipient.setString(recipient.getString());  // a NUL ends it
    if (recipient.containsSubstring("vFileStorage")) recipient.clear();
    return recipient;
}

}  // namespace

bool isMultipartReport(const Entity& message, LogBase& log) {
    if (message.is("multipart/report")) return true;
    if (!message.is("multipart/mixed")) return false;
    const Entity* first = message.part(0);
    if (!first || !first->is("multipart/report")) return false;
    log.LogInfo("Found multipart/mixed --> multipart/report");
    return true;
}

std::string feedbackTypeOf(const Entity& message) { return reportField(message, "Feedback-Type"); }

ReportFields readReportFields(const Entity& message, LogBase& log) {
    LogContextExitor context(log, "getMultipartReportInfo");
    ReportFields fields;
    fields.disposition.append(reportField(message, "Disposition"));
    fields.action.append(reportField(message, "Action"));
    fields.diagnosticCode.append(reportField(message, "Diagnostic-Code"));
    fields.plainTextBody.append(message.plainText());
    fields.recipient = recipientOf(message, fields.plainTextBody, log);
    if (const Entity* report = message.report()) fields.deliveryStatus.append(report->body());
    return fields;
}

}  // namespace bouncecheck
