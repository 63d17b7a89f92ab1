#include "bounce/ReportFields.h"

#include <bouncecheck/classes/LogContextExitor.h>
#include "mime/Entity.h"

namespace bouncecheck {
namespace {

void appendReportField(const Entity& message, std::string_view name, StringBuffer& out) {
    const HeaderField* field = message.reportFields().find(name);
    std::string room;
    if (field) out.append(field->decodedIn(room));
}

/// Who failed; without the type of the address.
StringBuffer recipientOf(const Entity& message, const StringBuffer& plainText, LogBase& log) {
    StringBuffer recipient;
    appendReportField(message, "Original-recipient", recipient);
    // With "(generated from" in the text the final recipient is the address
    // behind an alias, which is not the one that the sender knows.
    if (recipient.isEmpty() && !plainText.containsSubstring("(generated from")) {
        appendReportField(message, "Final-Recipient", recipient);
    }
    if (recipient.isEmpty()) appendReportField(message, "Original-Rcpt-To", recipient);
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

std::string feedbackTypeOf(const Entity& message) {
    const HeaderField* field = message.reportFields().find("Feedback-Type");
    return field ? field->decoded() : std::string();
}

ReportFields readReportFields(const Entity& message, LogBase& log) {
    LogContextExitor context(log, "getMultipartReportInfo");
    ReportFields fields;
    appendReportField(message, "Disposition", fields.disposition);
    appendReportField(message, "Action", fields.action);
    appendReportField(message, "Diagnostic-Code", fields.diagnosticCode);
    fields.plainTextBody.append(message.plainText());
    fields.recipient = recipientOf(message, fields.plainTextBody, log);
    if (const Entity* report = message.report()) fields.deliveryStatus.append(report->body());
    return fields;
}

}  // namespace bouncecheck
