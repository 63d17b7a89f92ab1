#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mime/BrixelObject.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "mime/MediaType.h"
#include "mime/TransferEncoding.h"
#include "text/Ascii.h"
#include "text/ByteStore.h"
#include "text/DataBuffer.h"

namespace bouncecheck {

class LogBase;
class StringBuffer;
class SystemCerts;
class XString;

/// One MIME entity: a whole message or one of its parts.
///
/// A message is built from its bytes and never refuses them: a text that is no
/// message is an entity without header fields. It keeps one copy of the bytes,
/// with CRLF line ends however they were stored, and its parts refer into that
/// copy; bodies are decoded when first asked for and kept. Parts and bodies
/// belong to their message and live as long as it. What is absent reads as
/// empty or null. Operations that fill a buffer append to it. One thread at a
/// time; distinct messages are independent. Limits: see mime/Limits.h.
///
/// Messages inside (`message/rfc822` and its kin, `text/rfc822-headers`,
/// `message/delivery-status`) are leaves whose body is the enclosed text.
class Email2 final : public BrixelObject {
public:
    /// An entity without header and body.
    Email2() = default;
    /// The message whose bytes are `rawMessage`: copied from a view, taken over from a
    /// string that is given away; a C string ends at its NUL. A "From " line of a
    /// mailbox, a byte order mark and blank lines before the header are passed over.
    explicit Email2(std::string_view rawMessage);
    explicit Email2(std::string&& rawMessage);
    explicit Email2(const char* rawMessage) : Email2(ascii::viewOf(rawMessage)) {}

    // --- Structure ---------------------------------------------------------

    bool isMultipartMixed() const noexcept { return mediaType_.is("multipart/mixed"); }
    bool isMultipartReport() const noexcept { return mediaType_.is("multipart/report"); }
    /// The media type without parameters, in lower case. "text/plain" where none
    /// is declared or what is declared has not the form of one (RFC 2045, 5.2);
    /// "message/rfc822" in a multipart/digest (RFC 2046, 5.1.5).
    void getContentType(StringBuffer& out) const;
    /// The same, without a copy.
    const std::string& contentType() const noexcept { return mediaType_.name(); }
    /// Direct parts; 0 for a leaf, and a multipart without boundary is one.
    int getNumParts() const noexcept { return static_cast<int>(parts_.size()); }
    /// The direct part at `index` from 0, or null.
    Email2* getPart(int index) const noexcept;
    /// The first entity of that type in document order, this one included, or null.
    Email2* findContentType(const char* contentType) const;

    // --- Header (RFC 5322) -------------------------------------------------

    /// All fields, in order; they refer into the message.
    const HeaderFields& header() const noexcept { return header_; }
    /// The first field of that name, unfolded, trimmed, in UTF-8.
    void getHeaderFieldUtf8(const char* name, StringBuffer& out, LogBase& log) const;
    /// Whether a field of that name has a value that as a whole matches `value`,
    /// in which '*' stands for any run of bytes.
    bool hasHeaderMatchingUtf8(const char* name, const char* value, bool ignoreCase,
                               LogBase& log) const;
    /// The bare address of the first mailbox of From.
    void getFromAddrUtf8(StringBuffer& out) const;
    /// The display name beside it.
    void getFromNameUtf8(StringBuffer& out, LogBase& log) const;
    void getSubjectUtf8(StringBuffer& out, LogBase& log) const;
    /// The bare address of recipient `index` from 0; `kind` 1 is To, 2 Cc, 3 Bcc.
    void getRecipientAddrUtf8(int kind, int index, StringBuffer& out) const;

    // --- Bodies ------------------------------------------------------------

    /// The body of a leaf with its transfer encoding undone, that of a text/*
    /// leaf in UTF-8 besides; null for an entity with parts.
    DataBuffer* getNonMultipartBody3() const;
    void getNonMultipartBodyData(DataBuffer& out) const;
    /// The body of this entity with its transfer encoding undone; for one with
    /// parts, its text as it stands.
    void getRawBodyThisPart(DataBuffer& out) const;
    /// The first text/plain leaf of `email` that is no attachment, else its
    /// first text/html leaf as text, in UTF-8.
    void getPlainTextBodyUtf8(const Email2& email, StringBuffer& out, LogBase& log) const;
    /// That of this message, without a copy.
    const DataBuffer& plainTextBody() const;
    /// What a reader of `email` sees: its first text/html leaf, else the
    /// plain-text body, in UTF-8.
    void getEffectiveBodyData(const Email2& email, DataBuffer& out, LogBase& log) const;

    // --- Reports and attached messages ---------------------------------------

    /// The first field of that name in the report part: the first
    /// message/delivery-status (RFC 3464), or else the first message/feedback-report
    /// (RFC 5965), message/disposition-notification (RFC 8098) or an
    /// internationalised form of them (RFC 6533).
    void getDeliveryStatusInfo(const char* name, XString& out, LogBase& log) const;
    /// The whole text of the report part.
    void getDeliveryStatusContent(XString& out, LogBase& log) const;
    /// A new message made of the one that the part number `index` (from 0)
    /// carries, for the caller to release with `deleteObject`; null when there is
    /// none. `status` becomes 1 or 0 accordingly. `certs` is not read today.
    Email2* getAttachedMessage(int index, int& status, SystemCerts& certs, LogBase& log) const;

private:
    friend class MimeTreeBuilder;

    void readHeader(HeaderFields header, std::string_view defaultType);
    template <class Wanted>
    const Email2* findEntity(Wanted&& wanted) const;
    bool isAttachment() const;
    const Email2* firstHtml() const;
    const Email2* reportPart() const;
    const HeaderFields& reportFields() const;
    bool hasLines() const noexcept;
    TransferEncoding encoding() const;
    ByteStore decodedBody() const;
    /// The body of a leaf, as `getNonMultipartBody3` has it.
    const DataBuffer& leafBody() const;
    const Mailbox& from() const;

    /// A message of shared bytes whose line ends are CRLF.
    explicit Email2(ByteStore source);

    /// The bytes of the whole message, in each of its parts.
    ByteStore source_;
    HeaderFields header_;
    MediaType mediaType_;
    /// What follows the header, as it stands in the message.
    std::string_view bodyText_;
    std::vector<std::unique_ptr<Email2>> parts_;

    // What was asked for once.
    mutable std::unique_ptr<DataBuffer> body_;
    mutable std::optional<HeaderFields> reportFields_;
    mutable std::optional<Mailbox> from_;
    /// The first text/html leaf as text.
    mutable std::optional<DataBuffer> htmlText_;
};

}  // namespace bouncecheck
