#include "mime/Entity.h"

#include <algorithm>
#include <utility>

#include "mime/Charset.h"
#include "mime/HtmlText.h"
#include "mime/LineEnds.h"
#include "mime/MimeTree.h"
#include "mime/ReportTypes.h"
#include "text/Ascii.h"
#include "text/Wildcard.h"

namespace bouncecheck {

Entity::Entity(std::string_view rawMessage) : Entity(ByteStore::shared(copyWithCrLf(rawMessage))) {}

Entity::Entity(std::string&& rawMessage)
    : Entity(ByteStore::shared(withCrLf(std::move(rawMessage)))) {}

Entity::Entity(ByteStore source) : source_(std::move(source)) {
    const std::string_view text = source_.view();
    MimeTreeBuilder::build(*this, text, HeaderFields::startIn(text));
}

Entity& Entity::addPart() {
    constexpr std::size_t usualParts = 3;
    if (firstParts_.empty()) firstParts_.reserve(usualParts);
    const bool isUsual = firstParts_.size() < usualParts;
    Entity& part =
        isUsual ? firstParts_.emplace_back() : *moreParts_.emplace_back(std::make_unique<Entity>());
    part.source_ = source_;
    return part;
}

void Entity::readHeader(HeaderFields header, std::string_view defaultType, std::string& room) {
    header_ = std::move(header);
    const HeaderField* contentType = header_.find("Content-Type");
    mediaType_ = MediaType(contentType ? contentType->unfoldedIn(room) : "", defaultType);
}

// --- Header ----------------------------------------------------------------

std::string Entity::field(std::string_view name) const {
    const HeaderField* field = header_.find(name);
    return field ? field->decoded() : std::string();
}

std::string_view Entity::fieldIn(std::string_view name, std::string& room) const {
    const HeaderField* field = header_.find(name);
    return field ? field->decodedIn(room) : std::string_view();
}

bool Entity::hasFieldMatching(std::string_view name, std::string_view pattern,
                              LetterCase letters) const {
    std::string room;
    return std::ranges::any_of(header_.all(), [&](const HeaderField& field) {
        return ascii::equalsNoCase(field.name, name) &&
               wildcardMatch(field.decodedIn(room), pattern, letters);
    });
}

const Mailbox& Entity::from() const {
    if (!from_) {
        const HeaderField* field = header_.find("From");
        std::string room;
        from_ = field ? parseSender(field->unfoldedIn(room)) : Mailbox();
    }
    return *from_;
}

std::string Entity::recipient(std::string_view name, std::size_t index) const {
    std::string room;
    for (const HeaderField& field : header_.all()) {
        if (!ascii::equalsNoCase(field.name, name)) continue;
        std::vector<Mailbox> mailboxes = parseMailboxes(field.unfoldedIn(room), index + 1);
        if (mailboxes.size() > index) return std::move(mailboxes[index].address);
        index -= mailboxes.size();
    }
    return {};
}

// --- Bodies ----------------------------------------------------------------

/// Whether the body is lines, whose ends count, rather than bytes.
bool Entity::hasLines() const noexcept {
    return mediaType_.isOf("text") || mediaType_.isOf("message");
}

TransferEncoding Entity::encoding() const {
    const HeaderField* field = header_.find("Content-Transfer-Encoding");
    std::string room;
    return field ? transferEncoding(field->unfoldedIn(room)) : TransferEncoding::identity;
}

/// The body of a leaf; part of the message where nothing is to decode.
ByteStore Entity::decodedBody() const {
    std::optional<std::string> decoded;
    const TransferEncoding transfer = encoding();
    if (transfer != TransferEncoding::identity) decoded = decodeTransfer(bodyText_, transfer);
    if (mediaType_.isOf("text")) {
        const std::string_view bytes = decoded ? std::string_view(*decoded) : bodyText_;
        auto utf8 = convertedToUtf8(bytes, mediaType_.charset());
        if (utf8) decoded = std::move(utf8);
    }
    if (!decoded) return source_.stretch(bodyText_);
    // Only now: in a wide charset a line end is no CR and LF.
    return ByteStore::shared(hasLines() ? withCrLf(std::move(*decoded)) : std::move(*decoded));
}

const DataBuffer& Entity::body() const {
    if (!body_) body_.emplace(isLeaf() ? decodedBody() : ByteStore());
    return *body_;
}

DataBuffer Entity::rawBody() const {
    const TransferEncoding transfer = encoding();
    if (!isLeaf() || transfer == TransferEncoding::identity) {
        return DataBuffer(source_.stretch(bodyText_));
    }
    std::string decoded = decodeTransfer(bodyText_, transfer);
    return DataBuffer(hasLines() ? withCrLf(std::move(decoded)) : std::move(decoded));
}

bool Entity::isAttachment() const {
    const HeaderField* field = header_.find("Content-Disposition");
    std::string room;
    return field &&
           ascii::equalsNoCase(ParameterizedValue(field->unfoldedIn(room)).head(), "attachment");
}

const Entity* Entity::firstHtml() const {
    return find([](const Entity& entity) { return entity.isLeaf() && entity.is("text/html"); });
}

const DataBuffer& Entity::plainText() const {
    const Entity* plain = find([](const Entity& entity) {
        return entity.isLeaf() && entity.is("text/plain") && !entity.isAttachment();
    });
    if (plain) return plain->body();
    if (!htmlText_) {
        const Entity* html = firstHtml();
        htmlText_ =
            std::make_unique<DataBuffer>(html ? htmlToText(html->body().view()) : std::string());
    }
    return *htmlText_;
}

const DataBuffer& Entity::effectiveBody() const {
    const Entity* html = firstHtml();
    return html ? html->body() : plainText();
}

// --- Reports and attached messages -------------------------------------------

const Entity* Entity::report() const {
    if (const Entity* status = findType("message/delivery-status")) return status;
    return find([](const Entity& entity) {
        return isOfKind(entity.type(), ReportKind::delivery, ReportKind::complaint,
                        ReportKind::receipt);
    });
}

const HeaderFields& Entity::reportFields() const {
    if (!reportFields_) {
        const Entity* part = report();
        reportFields_ = std::make_unique<HeaderFields>(
            part ? HeaderFields::ofReport(part->body().view()) : HeaderFields());
    }
    return *reportFields_;
}

std::unique_ptr<Entity> Entity::attached(std::size_t index) const {
    const Entity* carrier = find([&](const Entity& entity) {
        return entity.isLeaf() && isOfKind(entity.type(), ReportKind::message) && index-- == 0;
    });
    return carrier ? std::make_unique<Entity>(carrier->body().bytes()) : nullptr;
}

}  // namespace bouncecheck
