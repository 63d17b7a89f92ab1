#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/ByteStore.h>
#include <bouncecheck/classes/DataBuffer.h>
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "mime/MediaType.h"
#include "mime/TransferEncoding.h"
#include "text/Search.h"

namespace bouncecheck {

/// One MIME entity: a whole message or one of its parts.
///
/// A message is built from its bytes and never refuses them: a text that is no
/// message is an entity without header fields. It keeps one copy of the bytes,
/// with CRLF line ends however they were stored, and its parts refer into that
/// copy; bodies are decoded when first asked for and kept. Parts and bodies
/// belong to their message and live as long as it. What is absent reads as
/// empty or null. One thread at a time; distinct messages are independent. Limits: see
/// <bouncecheck/Limits.h>.
///
/// Messages inside (`message/rfc822` and its kin, `text/rfc822-headers`,
/// `message/delivery-status`) are leaves whose body is the enclosed text.
class Entity {
public:
    /// An entity without header and body.
    Entity() = default;
    /// The message whose bytes are `rawMessage`: copied from a view, taken over from a
    /// string that is given away. A "From " line of a mailbox, a byte order mark and blank
    /// lines before the header are passed over.
    explicit Entity(std::string_view rawMessage);
    explicit Entity(std::string&& rawMessage);
    explicit Entity(const char* rawMessage) : Entity(std::string_view(rawMessage)) {}
    /// A message of shared bytes whose line ends are CRLF.
    explicit Entity(ByteStore source);

    // --- Structure ---------------------------------------------------------

    /// The media type. "text/plain" where none is declared or what is declared has not
    /// the form of one (RFC 2045, 5.2); "message/rfc822" in a multipart/digest (RFC 2046,
    /// 5.1.5).
    const MediaType& mediaType() const noexcept { return mediaType_; }
    /// Its name, in lower case.
    std::string_view type() const noexcept { return mediaType_.name(); }
    /// Whether its sender wants it stored rather than shown (RFC 2183).
    bool isAttachment() const;
    bool is(std::string_view type) const noexcept { return mediaType_.is(type); }
    /// Whether it has no parts; a multipart without boundary has none.
    bool isLeaf() const noexcept { return firstParts_.empty(); }
    std::size_t partCount() const noexcept { return firstParts_.size() + moreParts_.size(); }
    /// The direct part at `index`, or null.
    const Entity* part(std::size_t index) const noexcept {
        if (index < firstParts_.size()) return &firstParts_[index];
        index -= firstParts_.size();
        return index < moreParts_.size() ? moreParts_[index].get() : nullptr;
    }
    /// The first entity in document order, this one included, for which `wanted` holds,
    /// or null.
    template <class Wanted>
    const Entity* find(Wanted&& wanted) const {
        if (wanted(*this)) return this;
        for (std::size_t i = 0; i < partCount(); ++i) {
            if (const Entity* found = part(i)->find(wanted)) return found;
        }
        return nullptr;
    }
    /// The first of that type, in lower case.
    const Entity* findType(std::string_view type) const {
        return find([&](const Entity& entity) { return entity.is(type); });
    }

    // --- Header (RFC 5322) -------------------------------------------------

    /// All fields, in order; they refer into the message.
    const HeaderFields& header() const noexcept { return header_; }
    /// The first field of that name, as a person reads it; see HeaderField::decoded.
    std::string field(std::string_view name) const;
    /// The same, referring to the message where nothing is to change, else to `room`.
    std::string_view fieldIn(std::string_view name, std::string& room) const;
    /// Whether the first field of that name has a value; one without says nothing.
    bool hasField(std::string_view name) const {
        std::string room;
        return !fieldIn(name, room).empty();
    }
    /// Whether a field of that name has a value that as a whole matches `pattern`, in
    /// which '*' stands for any run of bytes.
    bool hasFieldMatching(std::string_view name, std::string_view pattern,
                          LetterCase letters) const;
    /// The first mailbox of From.
    const Mailbox& from() const;
    /// The address of the mailbox number `index` of the fields of that name.
    std::string recipient(std::string_view name, std::size_t index) const;

    // --- Bodies ------------------------------------------------------------

    /// The body of a leaf with its transfer encoding undone, that of a text/*
    /// leaf in UTF-8 besides; empty for an entity with parts.
    const DataBuffer& body() const;
    /// The body of this entity with its transfer encoding undone; for one with
    /// parts, its text as it stands.
    DataBuffer rawBody() const;
    /// The first text/plain leaf that is no attachment, else the first text/html leaf as
    /// text, in UTF-8.
    const DataBuffer& plainText() const;
    /// What a reader sees: the first text/html leaf, else the plain text, in UTF-8.
    const DataBuffer& effectiveBody() const;

    // --- Reports and attached messages ---------------------------------------

    /// The part with the fields of a report: the first message/delivery-status, or else
    /// the first of another kind; null when there is none.
    const Entity* report() const;
    /// The fields of that part.
    const HeaderFields& reportFields() const;

    /// A new message made of the one that the part number `index` carries, counted among
    /// those that carry one; null when there is none.
    std::unique_ptr<Entity> attached(std::size_t index) const;

private:
    friend class MimeTreeBuilder;

    Entity& addPart();
    /// `room` is for what has to be unfolded meanwhile.
    void readHeader(HeaderFields header, std::string_view defaultType, std::string& room);
    const Entity* firstHtml() const;
    bool hasLines() const noexcept;
    TransferEncoding encoding() const;
    ByteStore decodedBody() const;

    /// The bytes of the whole message, in each of its parts.
    ByteStore source_;
    HeaderFields header_;
    MediaType mediaType_;
    /// What follows the header, as it stands in the message.
    std::string_view bodyText_;
    /// As many as most messages have, side by side in room that does not grow, so that none moves;
    /// and those behind them.
    std::vector<Entity> firstParts_;
    std::vector<std::unique_ptr<Entity>> moreParts_;

    // What was asked for once.
    mutable std::optional<DataBuffer> body_;
    mutable std::unique_ptr<HeaderFields> reportFields_;
    mutable std::optional<Mailbox> from_;
    /// The first text/html leaf as text; seldom asked for, and there may be thousands of parts.
    mutable std::unique_ptr<DataBuffer> htmlText_;
};

}  // namespace bouncecheck
