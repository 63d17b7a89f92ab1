#include "recipients/Verp.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "mime/AddressForms.h"
#include "mime/Entity.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

std::size_t findLastNoCase(std::string_view text, std::string_view sought) {
    if (sought.size() > text.size()) return npos;
    for (std::size_t at = text.size() - sought.size() + 1; at-- > 0;) {
        if (ascii::equalsNoCase(text.substr(at, sought.size()), sought)) return at;
    }
    return npos;
}

}  // namespace

std::optional<VerpPattern> VerpPattern::parse(std::string_view pattern) {
    using Kind = Piece::Kind;
    static constexpr std::pair<std::string_view, Kind> placeholders[] = {
        {"{local}", Kind::local}, {"{domain}", Kind::domain}, {"{tag}", Kind::tag}};
    if (pattern.find('@') == npos) return std::nullopt;
    VerpPattern verp;
    std::vector<Piece>& pieces = verp.pieces_;
    while (!pattern.empty()) {
        const bool followsLiteral = !pieces.empty() && pieces.back().kind == Kind::literal;
        const auto* const known = std::ranges::find_if(placeholders, [&](const auto& placeholder) {
            return pattern.starts_with(placeholder.first);
        });
        if (known != std::end(placeholders)) {
            // Nothing would divide two of them.
            if (!pieces.empty() && !followsLiteral) return std::nullopt;
            pieces.push_back({known->second, {}});
            pattern.remove_prefix(known->first.size());
        } else {
            if (ascii::isOneOf(pattern.front(), "{}")) return std::nullopt;
            if (!followsLiteral) pieces.push_back({Kind::literal, {}});
            pieces.back().literal += pattern.front();
            pattern.remove_prefix(1);
        }
    }
    const auto count = [&](Kind kind) { return std::ranges::count(pieces, kind, &Piece::kind); };
    const auto locals = count(Kind::local);
    const auto domains = count(Kind::domain);
    const auto tags = count(Kind::tag);
    const bool isOfAddress = locals == 1 && domains == 1 && tags == 0;
    const bool isOfTag = locals == 0 && domains == 0 && tags == 1;
    if (!isOfAddress && !isOfTag) return std::nullopt;
    return verp;
}

std::optional<VerpPattern::Match> VerpPattern::match(std::string_view address) const {
    std::span<const Piece> pieces(pieces_);
    if (pieces.empty()) return std::nullopt;
    if (pieces.front().kind == Piece::Kind::literal) {
        const std::string_view start = pieces.front().literal;
        if (!ascii::startsWithNoCase(address, start)) return std::nullopt;
        address.remove_prefix(start.size());
        pieces = pieces.subspan(1);
    }
    if (pieces.back().kind == Piece::Kind::literal) {
        const std::string_view end = pieces.back().literal;
        if (address.size() < end.size()) return std::nullopt;
        const std::size_t size = address.size() - end.size();
        if (!ascii::equalsNoCase(address.substr(size), end)) return std::nullopt;
        address = address.substr(0, size);
        pieces = pieces.first(pieces.size() - 1);
    }
    // A placeholder is left, or two with a divider between.
    const Piece::Kind kind = pieces.front().kind;
    std::string_view second;
    if (pieces.size() > 1) {
        const std::string_view divider = pieces[1].literal;
        const std::size_t at = kind == Piece::Kind::local ? findLastNoCase(address, divider)
                                                          : findBytesNoCase(address, divider);
        if (at == npos || at + divider.size() == address.size()) return std::nullopt;
        second = address.substr(at + divider.size());
        address = address.substr(0, at);
    }
    if (address.empty()) return std::nullopt;
    if (kind == Piece::Kind::tag) return Match{{}, std::string(address)};
    const bool isLocalFirst = kind == Piece::Kind::local;
    return Match{std::string(isLocalFirst ? address : second)
                     .append("@")
                     .append(isLocalFirst ? second : address),
                 {}};
}

std::optional<VerpPattern::Match> matchVerp(const Entity& message, std::string_view returnPath,
                                            std::span<const VerpPattern> patterns) {
    static constexpr auto fields = std::to_array<std::string_view>(
        {"Delivered-To", "X-Original-To", "Envelope-To", "X-Envelope-To", "To"});
    constexpr std::size_t mostMailboxes = 100;
    if (patterns.empty()) return std::nullopt;
    const auto matchAny = [&](std::string_view field) -> std::optional<VerpPattern::Match> {
        for (const Mailbox& mailbox : parseMailboxes(field, mostMailboxes)) {
            const std::string address = withoutRewriting(mailbox.address);
            for (const VerpPattern& pattern : patterns) {
                if (auto match = pattern.match(address)) return match;
            }
        }
        return std::nullopt;
    };
    for (const std::string_view name : fields) {
        std::size_t left = mostMailboxes;
        for (const HeaderField& field : message.header().all()) {
            if (left == 0) break;
            if (!ascii::equalsNoCase(field.name, name)) continue;
            --left;
            if (auto match = matchAny(field.unfolded())) return match;
        }
    }
    return matchAny(returnPath);
}

}  // namespace bouncecheck
