#include "bounce/MessageClassifier.h"

#include <utility>

#include <bouncecheck/classes/LogContextExitor.h>
#include "bounce/BounceData.h"
#include "bounce/Checks.h"
#include "bounce/ReportFields.h"
#include "log/LogGuard.h"
#include "mime/Entity.h"

namespace bouncecheck {

bool loadTexts(const Entity& message, StringBuffer& subject, StringBuffer& senderAddress,
               StringBuffer& senderName, StringBuffer& data, LogBase& log) {
    readSubject(message, subject);
    senderAddress.weakClear();
    senderAddress.append(message.from().address);
    senderName.weakClear();
    senderName.append(message.from().name);
    readBounceData(message, data, log);
    const bool isReport = isMultipartReport(message, log);
    log.LogDataSb("subject", subject);
    log.LogDataSb("fromAddr", senderAddress);
    log.LogDataSb("fromName", senderName);
    return isReport;
}

int verdictOn(const Evidence& evidence, Finding& finding, LogBase& log) {
    int type = BOUNCE_NONE;
    {
        LogContextExitor context(log, "checkEmailInner");
        type = checks::inOrder(evidence, finding, log);
    }
    log.LogDataLong("bounceType", type);
    checks::cleanAddress(finding.address.text);
    return checks::complete(type, evidence, finding, log);
}

ClassifiedMessage MessageClassifier::classify(const Entity& message, LogBase& log) {
    LogGuard guarded(log);
    const bool isReport = loadTexts(message, subject_, senderAddress_, senderName_, data_, guarded);
    ClassifiedMessage result;
    {
        const Evidence evidence(message, {subject_, senderAddress_, senderName_, data_}, isReport,
                                engine_);
        result.type = verdictOn(evidence, result.finding, guarded);
    }
    if (result.finding.text) {
        result.text = *std::move(result.finding.text);
    } else {
        data_.handOut(result.text);
    }
    return result;
}

}  // namespace bouncecheck
