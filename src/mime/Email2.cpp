#include "mime/Email2.h"

#include <algorithm>
#include <array>
#include <utility>

#include "log/LogBase.h"
#include "mime/Charset.h"
#include "mime/HtmlText.h"
#include "mime/LineEnds.h"
#include "mime/Mailbox.h"
#include "mime/MimeTree.h"
#include "mime/SystemCerts.h"
#include "mime/TransferEncoding.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/StringBuffer.h"
#include "text/Wildcard.h"
#include "text/XString.h"

namespace bouncecheck {
namespace {

/// Reports in the order of their standing: a delivery status anywhere in the
/// message comes before the others.
constexpr std::string_view deliveryStatus = "message/delivery-status";
constexpr std::array<std::string_view, 4> otherReports = {
    "message/feedback-report", "message/disposition-notification", "message/global-delivery-status",
    "message/global-disposition-notification"};

constexpr std::array<std::string_view, 3> messageTypes = {"message/rfc822", "message/global",
                                                          "message/news"};

template <std::size_t Size>
bool isOneOf(const MediaType& type, const std::array<std::string_view, Size>& names) noexcept {
    return std::ranges::find(names, type.name()) != names.end();
}

std::vector<Mailbox> mailboxesOf(const HeaderField* field, std::size_t limit) {
    return field ? parseMailboxes(field->unfolded(), limit) : std::vector<Mailbox>();
}

}  // namespace

Email2::Email2(std::string_view rawMessage) : Email2(ByteStore::shared(copyWithCrLf(rawMessage))) {}

Email2::Email2(std::string&& rawMessage)
    : Email2(ByteStore::shared(withCrLf(std::move(rawMessage)))) {}

Email2::Email2(ByteStore source) : source_(std::move(source)) {
    const std::string_view text = source_.view();
    MimeTreeBuilder::build(*this, text, HeaderFields::startIn(text));
}

void Email2::readHeader(HeaderFields header, std::string_view defaultType) {
    header_ = std::move(header);
    const HeaderField* contentType = header_.find("Content-Type");
    mediaType_ = MediaType(contentType ? contentType->unfolded() : std::string(), defaultType);
}

// --- Structure -------------------------------------------------------------

void Email2::getContentType(StringBuffer& out) const { out.append(mediaType_.name()); }

Email2* Email2::getPart(int index) const noexcept {
    return index >= 0 && index < getNumParts() ? parts_[static_cast<std::size_t>(index)].get()
                                               : nullptr;
}

/// The first entity in document order for which `wanted` holds, or null.
template <class Wanted>
const Email2* Email2::findEntity(Wanted&& wanted) const {
    if (wanted(*this)) return this;
    for (const auto& part : parts_) {
        if (const Email2* found = part->findEntity(wanted)) return found;
    }
    return nullptr;
}

Email2* Email2::findContentType(const char* contentType) const {
    const std::string name = ascii::lowerCase(ascii::viewOf(contentType));
    return const_cast<Email2*>(
        findEntity([&](const Email2& entity) { return entity.mediaType_.is(name); }));
}

// --- Header ----------------------------------------------------------------

void Email2::getHeaderFieldUtf8(const char* name, StringBuffer& out, LogBase&) const {
    if (const HeaderField* field = header_.find(ascii::viewOf(name))) out.append(field->decoded());
}

bool Email2::hasHeaderMatchingUtf8(const char* name, const char* value, bool ignoreCase,
                                   LogBase&) const {
    return std::ranges::any_of(header_.all(), [&](const HeaderField& field) {
        return ascii::equalsNoCase(field.name, ascii::viewOf(name)) &&
               wildcardMatch(field.decoded(), ascii::viewOf(value), letterCase(ignoreCase));
    });
}

const Mailbox& Email2::from() const {
    if (!from_) {
        std::vector<Mailbox> mailboxes = mailboxesOf(header_.find("From"), 1);
        from_ = mailboxes.empty() ? Mailbox() : std::move(mailboxes.front());
    }
    return *from_;
}

void Email2::getFromAddrUtf8(StringBuffer& out) const { out.append(from().address); }

void Email2::getFromNameUtf8(StringBuffer& out, LogBase&) const { out.append(from().name); }

void Email2::getSubjectUtf8(StringBuffer& out, LogBase& log) const {
    getHeaderFieldUtf8("Subject", out, log);
}

void Email2::getRecipientAddrUtf8(int kind, int index, StringBuffer& out) const {
    constexpr std::array<std::string_view, 3> fields = {"To", "Cc", "Bcc"};
    if (kind < 1 || kind > 3 || index < 0) return;
    const std::string_view name = fields[static_cast<std::size_t>(kind - 1)];
    std::size_t left = static_cast<std::size_t>(index);
    for (const HeaderField& field : header_.all()) {
        if (!ascii::equalsNoCase(field.name, name)) continue;
        const std::vector<Mailbox> mailboxes = mailboxesOf(&field, left + 1);
        if (mailboxes.size() > left) {
            out.append(mailboxes[left].address);
            return;
        }
        left -= mailboxes.size();
    }
}

// --- Bodies ----------------------------------------------------------------

/// Whether the body is lines, whose ends count, rather than bytes.
bool Email2::hasLines() const noexcept {
    return mediaType_.isOf("text") || mediaType_.isOf("message");
}

TransferEncoding Email2::encoding() const {
    const HeaderField* field = header_.find("Content-Transfer-Encoding");
    return field ? transferEncoding(field->unfolded()) : TransferEncoding::identity;
}

/// The body of a leaf; part of the message where nothing is to decode.
ByteStore Email2::decodedBody() const {
    std::optional<std::string> decoded;
    const TransferEncoding transfer = encoding();
    if (transfer != TransferEncoding::identity) decoded = decodeTransfer(bodyText_, transfer);
    if (mediaType_.isOf("text")) {
        const std::string_view bytes = decoded ? std::string_view(*decoded) : bodyText_;
        auto utf8 = convertedToUtf8(bytes, mediaType_.parameter("charset"));
        if (utf8) decoded = std::move(utf8);
    }
    if (!decoded) return source_.stretch(bodyText_);
    // Only now: in a wide charset a line end is no CR and LF.
    return ByteStore::shared(hasLines() ? withCrLf(std::move(*decoded)) : std::move(*decoded));
}

DataBuffer* Email2::getNonMultipartBody3() const {
    if (!parts_.empty()) return nullptr;
    if (!body_) body_ = std::make_unique<DataBuffer>(decodedBody());
    return body_.get();
}

const DataBuffer& Email2::leafBody() const { return *getNonMultipartBody3(); }

void Email2::getNonMultipartBodyData(DataBuffer& out) const {
    if (parts_.empty()) out.append(leafBody());
}

void Email2::getRawBodyThisPart(DataBuffer& out) const {
    const TransferEncoding transfer = encoding();
    if (!parts_.empty() || transfer == TransferEncoding::identity) {
        out.append(DataBuffer(source_.stretch(bodyText_)));
        return;
    }
    std::string decoded = decodeTransfer(bodyText_, transfer);
    out.append(hasLines() ? withCrLf(std::move(decoded)) : decoded);
}

bool Email2::isAttachment() const {
    const HeaderField* field = header_.find("Content-Disposition");
    return field && ParameterizedValue(field->unfolded()).head() == "attachment";
}

const Email2* Email2::firstHtml() const {
    return findEntity([](const Email2& entity) {
        return entity.parts_.empty() && entity.mediaType_.is("text/html");
    });
}

const DataBuffer& Email2::plainTextBody() const {
    const Email2* plain = findEntity([](const Email2& entity) {
        return entity.parts_.empty() && entity.mediaType_.is("text/plain") &&
               !entity.isAttachment();
    });
    if (plain) return plain->leafBody();
    if (!htmlText_) {
        const Email2* html = firstHtml();
        htmlText_.emplace(html ? htmlToText(html->leafBody().view()) : std::string());
    }
    return *htmlText_;
}

void Email2::getPlainTextBodyUtf8(const Email2& email, StringBuffer& out, LogBase&) const {
    out.append(email.plainTextBody());
}

void Email2::getEffectiveBodyData(const Email2& email, DataBuffer& out, LogBase&) const {
    const Email2* html = email.firstHtml();
    out.append(html ? html->leafBody() : email.plainTextBody());
}

// --- Reports and attached messages -------------------------------------------

const Email2* Email2::reportPart() const {
    const Email2* status =
        findEntity([](const Email2& entity) { return entity.mediaType_.is(deliveryStatus); });
    if (status) return status;
    return findEntity(
        [](const Email2& entity) { return isOneOf(entity.mediaType_, otherReports); });
}

const HeaderFields& Email2::reportFields() const {
    if (!reportFields_) {
        const Email2* report = reportPart();
        reportFields_ = report ? HeaderFields::ofReport(report->leafBody().view()) : HeaderFields();
    }
    return *reportFields_;
}

void Email2::getDeliveryStatusInfo(const char* name, XString& out, LogBase&) const {
    const HeaderField* field = reportFields().find(ascii::viewOf(name));
    if (field) out.appendUtf8(field->decoded());
}

void Email2::getDeliveryStatusContent(XString& out, LogBase&) const {
    if (const Email2* report = reportPart()) out.appendUtf8(report->leafBody());
}

Email2* Email2::getAttachedMessage(int index, int& status, SystemCerts&, LogBase&) const {
    int before = index;
    const Email2* carrier = findEntity([&](const Email2& entity) {
        return entity.parts_.empty() && isOneOf(entity.mediaType_, messageTypes) && before-- == 0;
    });
    status = carrier ? 1 : 0;
    if (!carrier) return nullptr;
    return new Email2(carrier->leafBody().bytes());
}

}  // namespace bouncecheck
