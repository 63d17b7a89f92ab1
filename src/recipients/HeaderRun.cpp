#include "recipients/HeaderRun.h"

#include <algorithm>
#include <array>

#include "text/Ascii.h"
#include "text/ByteSet.h"

namespace bouncecheck {
namespace {

constexpr ByteSet fieldNameBytes("-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");

/// Fields that only the header of a message has.
bool isOfMessage(std::string_view name) {
    static constexpr auto names = std::to_array<std::string_view>(
        {"Received", "Return-Path", "Message-ID", "DKIM-Signature", "MIME-Version", "X-Mailer",
         "Delivered-To", "X-Originating-IP", "X-Received", "DomainKey-Signature", "User-Agent"});
    return std::ranges::any_of(
        names, [&](std::string_view known) { return ascii::equalsNoCase(name, known); });
}

/// Those of a delivery status and of a part, which the text of a broken multipart carries too.
bool isOfPart(std::string_view name) {
    static constexpr auto names = std::to_array<std::string_view>(
        {"Reporting-MTA", "Final-Recipient", "Original-Recipient", "Action", "Diagnostic-Code"});
    return ascii::startsWithNoCase(name, "Content-") ||
           std::ranges::any_of(
               names, [&](std::string_view known) { return ascii::equalsNoCase(name, known); });
}

}  // namespace

std::string_view fieldName(std::string_view line) {
    const std::size_t end = lengthOf(fieldNameBytes, line);
    const bool isField =
        end > 1 && end < line.size() && line[end] == ':' && !line.substr(end).starts_with("://");
    return isField ? line.substr(0, end) : std::string_view();
}

bool HeaderRun::take(std::string_view line) {
    const std::string_view name = fieldName(line);
    if (!name.empty() && (fields_ > 0 || !isOfPart(name))) {
        ++fields_;
        ofMessage_ = ofMessage_ || isOfMessage(name);
        ++lines_;
        return true;
    }
    if (fields_ > 0 && !line.empty() && ascii::isBlank(line.front())) {
        ++lines_;
        return true;
    }
    *this = HeaderRun();
    return false;
}

}  // namespace bouncecheck
