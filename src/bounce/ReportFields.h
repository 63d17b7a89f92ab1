#pragma once

#include <string>

#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

class Entity;
class LogBase;

/// What a report states in its fields.
struct ReportFields {
    /// The body of the part that holds the fields.
    StringBuffer deliveryStatus;
    StringBuffer action;
    StringBuffer diagnosticCode;
    StringBuffer disposition;
    /// Who failed, without the type of the address.
    StringBuffer recipient;
    /// The text for people.
    StringBuffer plainTextBody;
};

/// Whether `message` is a delivery report: a multipart/report, or a multipart/mixed that
/// begins with one.
bool isMultipartReport(const Entity& message, LogBase& log);

/// Reads the fields of the report. What is missing reads as empty.
ReportFields readReportFields(const Entity& message, LogBase& log);

/// The type of a feedback report (RFC 5965); empty when the message is none.
std::string feedbackTypeOf(const Entity& message);

}  // namespace bouncecheck
