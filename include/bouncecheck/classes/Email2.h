#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/Export.h>
#include <bouncecheck/classes/BrixelObject.h>
#include <bouncecheck/classes/DataBuffer.h>

namespace bouncecheck {

class Entity;
class LogBase;
class StringBuffer;
class SystemCerts;
class XString;

/// One MIME entity: a whole message or one of its parts.
///
/// A message is built from its bytes and never refuses them: a text that is no
/// message is an entity without header fields. It keeps one copy of the bytes,
/// with CRLF line ends however they were stored; bodies are decoded when first asked for
/// and kept. Parts and bodies belong to their message and live as long as it. What is
/// absent reads as empty or null. Operations that fill a buffer append to it. One thread
/// at a time; distinct messages are independent.
///
/// Messages inside (`message/rfc822` and its kin, `text/rfc822-headers`,
/// `message/delivery-status`) are leaves whose body is the enclosed text.
class BOUNCECHECK_EXPORT Email2 final : public BrixelObject {
public:
    /// An entity without header and body.
    Email2();
    /// The message whose bytes are `rawMessage`: copied from a view, taken over from a
    /// string that is given away; a C string ends at its NUL. A "From " line of a
    /// mailbox, a byte order mark and blank lines before the header are passed over.
    explicit Email2(std::string_view rawMessage);
    explicit Email2(std::string&& rawMessage);
    explicit Email2(const char* rawMessage);
    ~Email2() override;

    // --- Structure ---------------------------------------------------------

    bool isMultipartMixed() const noexcept;
    bool isMultipartReport() const noexcept;
    /// The media type without parameters, in lower case. "text/plain" where none
    /// is declared or what is declared does not have the form of one (RFC 2045, 5.2);
    /// "message/rfc822" in a multipart/digest (RFC 2046, 5.1.5).
    void getContentType(StringBuffer& out) const;
    /// Direct parts; 0 for a leaf, and a multipart without boundary is one.
    int getNumParts() const noexcept;
    /// The direct part at `index` from 0, or null.
    Email2* getPart(int index) const;
    /// The first entity of that type in document order, this one included, or null.
    Email2* findContentType(const char* contentType);
    const Email2* findContentType(const char* contentType) const;

    // --- Header (RFC 5322) -------------------------------------------------

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
    friend const Entity& entityOf(const Email2& email) noexcept;

    /// A part of a message, which outlives it.
    BOUNCECHECK_HIDDEN explicit Email2(const Entity& part) noexcept;
    BOUNCECHECK_HIDDEN explicit Email2(std::unique_ptr<const Entity> message) noexcept;

    /// Null for a part.
    std::unique_ptr<const Entity> own_;
    const Entity* entity_;
    /// The parts that were asked for; null where one was not.
    mutable std::vector<std::unique_ptr<Email2>> parts_;
    mutable std::unique_ptr<DataBuffer> body_;
};

}  // namespace bouncecheck
