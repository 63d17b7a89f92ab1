#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace bouncecheck {

/// What the body of a part is, besides text and files.
enum class ReportKind {
    /// The fields of a delivery status (RFC 3464).
    delivery,
    /// Those of a complaint (RFC 5965).
    complaint,
    /// Those of a receipt (RFC 8098).
    receipt,
    /// A whole message.
    message,
    /// The header of one.
    header,
};

struct ReportType {
    std::string_view mediaType;
    ReportKind kind;
};

/// The media types of reports and of what they return, with the internationalised forms
/// (RFC 6532, RFC 6533).
inline constexpr std::array<ReportType, 10> reportTypes = {{
    {"message/delivery-status", ReportKind::delivery},
    {"message/global-delivery-status", ReportKind::delivery},
    {"message/feedback-report", ReportKind::complaint},
    {"message/disposition-notification", ReportKind::receipt},
    {"message/global-disposition-notification", ReportKind::receipt},
    {"message/rfc822", ReportKind::message},
    {"message/global", ReportKind::message},
    {"message/news", ReportKind::message},
    {"text/rfc822-headers", ReportKind::header},
    {"message/global-headers", ReportKind::header},
}};

/// Whether a media type, in lower case, is of one of these kinds.
template <class... Kinds>
constexpr bool isOfKind(std::string_view mediaType, Kinds... kinds) noexcept {
    const auto row = std::ranges::find(reportTypes, mediaType, &ReportType::mediaType);
    return row != reportTypes.end() && ((row->kind == kinds) || ...);
}

}  // namespace bouncecheck
