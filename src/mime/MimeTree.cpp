#include "mime/MimeTree.h"

#include <algorithm>

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "mime/LineEnds.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

constexpr std::string_view dashes = "--";

std::string_view boundaryOf(const MediaType& type) noexcept {
    return type.isOf("multipart") ? ascii::trimRight(type.boundary()) : std::string_view();
}

}  // namespace

void MimeTreeBuilder::build(Entity& root, std::string_view text, std::size_t headerStart) {
    MimeTreeBuilder builder(text);
    builder.open(root, headerStart, "text/plain");
    std::size_t at = builder.position_;
    if (!text.substr(at).starts_with(dashes)) at = builder.nextDashLine(at);
    while (at != npos) {
        const std::size_t end = std::min(findCrLf(text, at), text.size());
        if (builder.onDashLine(at, ascii::trimRight(text.substr(at, end - at)))) {
            at = builder.position_;
            if (text.substr(at).starts_with(dashes)) continue;
        }
        at = builder.nextDashLine(at);
    }
    builder.closeDownTo(0, text.size());
}

std::size_t MimeTreeBuilder::nextDashLine(std::size_t from) const noexcept {
    const auto isSought = [](const OpenEntity& entity) { return !entity.boundary.empty(); };
    if (std::ranges::none_of(open_.all(), isSought)) return npos;
    for (std::size_t at = from; (at = findPair(text_, '\n', '-', at)) != npos; ++at) {
        const bool isLineStart = at > from && text_[at - 1] == '\r';
        if (isLineStart && text_.substr(at + 1).starts_with(dashes)) return at + 1;
    }
    return npos;
}

void MimeTreeBuilder::open(Entity& entity, std::size_t headerStart, std::string_view defaultType) {
    // There may be thousands of parts, with a field or two each.
    const std::size_t usual = open_.empty() ? HeaderFields::usualFields : 4;
    entity.readHeader(
        HeaderFields::ofMessage(text_.substr(headerStart), limits::headerFields - fields_, usual),
        defaultType, room_);
    fields_ += entity.header_.all().size();
    position_ = headerStart + entity.header_.size();
    const bool mayHaveParts = open_.size() < limits::nesting;
    open_.push_back({&entity, position_, mayHaveParts ? boundaryOf(entity.mediaType_) : ""});
}

void MimeTreeBuilder::closeDownTo(std::size_t keep, std::size_t end) {
    while (open_.size() > keep) {
        const OpenEntity& last = open_.all().back();
        last.entity->bodyText_ =
            text_.substr(last.bodyStart, std::max(end, last.bodyStart) - last.bodyStart);
        open_.pop_back();
    }
}

bool MimeTreeBuilder::onDashLine(std::size_t lineStart, std::string_view line) {
    const std::span<OpenEntity> enclosing = open_.all();
    for (std::size_t i = enclosing.size(); i-- > 0;) {
        std::string_view& boundary = enclosing[i].boundary;
        std::string_view rest = line.substr(dashes.size());
        if (boundary.empty() || !rest.starts_with(boundary)) continue;
        rest.remove_prefix(boundary.size());
        const bool isClose = rest == dashes;
        if (!rest.empty() && !isClose) continue;

        // The line end before a delimiter is part of it.
        closeDownTo(i + 1, lineStart - std::min(lineStart, crLf.size()));
        position_ = lineStart + line.size();
        if (isClose || parts_ >= limits::parts) {
            boundary = {};
            return true;
        }
        ++parts_;
        Entity& parent = *enclosing[i].entity;
        const std::size_t lineStop = findCrLf(text_, position_);
        const std::size_t partStart = lineStop == npos ? text_.size() : lineStop + crLf.size();
        open(parent.addPart(), partStart,
             parent.mediaType_.is("multipart/digest") ? "message/rfc822" : "text/plain");
        return true;
    }
    return false;
}

}  // namespace bouncecheck
