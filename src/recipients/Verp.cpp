#include "recipients/Verp.h"

#include <algorithm>
#include <array>

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
    VerpPattern verp;
    std::array<std::size_t, 4> seen{};
    constexpr auto names = std::to_array<std::string_view>({"", "{local}", "{domain}", "{tag}"});
    if (pattern.find('@') == npos) return std::nullopt;
    while (!pattern.empty()) {
        std::size_t kind = 0;
        for (std::size_t i = 1; i < names.size(); ++i) {
            if (pattern.starts_with(names[i])) kind = i;
        }
        const bool followsText =
            verp.pieces_.empty() || verp.pieces_.back().kind == Piece::Kind::literal;
        if (kind == 0) {
            if (pattern.front() == '{' || pattern.front() == '}') return std::nullopt;
            if (verp.pieces_.empty() || !followsText) {
                verp.pieces_.push_back({Piece::Kind::literal, {}});
            }
            verp.pieces_.back().literal += pattern.front();
            pattern.remove_prefix(1);
            continue;
        }
        if (!verp.pieces_.empty() && !followsText) return std::nullopt;
        verp.pieces_.push_back({static_cast<Piece::Kind>(kind), {}});
        ++seen[kind];
        pattern.remove_prefix(names[kind].size());
    }
    const bool isAddress = seen[1] == 1 && seen[2] == 1 && seen[3] == 0;
    const bool isTag = seen[1] == 0 && seen[2] == 0 && seen[3] == 1;
    if (!isAddress && !isTag) return std::nullopt;
    return verp;
}

std::optional<VerpPattern::Match> VerpPattern::match(std::string_view address) const {
    std::span<const Piece> pieces(pieces_);
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
    std::string_view parts[4];
    const auto partOf = [&](const Piece& piece) -> std::string_view& {
        return parts[static_cast<std::size_t>(piece.kind)];
    };
    if (pieces.size() > 1) {
        const std::string_view divider = pieces[1].literal;
        const bool isLocalFirst = pieces.front().kind == Piece::Kind::local;
        const std::size_t at =
            isLocalFirst ? findLastNoCase(address, divider) : findBytesNoCase(address, divider);
        if (at == npos || at + divider.size() == address.size()) return std::nullopt;
        partOf(pieces.back()) = address.substr(at + divider.size());
        address = address.substr(0, at);
    }
    if (address.empty()) return std::nullopt;
    partOf(pieces.front()) = address;
    if (!parts[3].empty()) return Match{{}, std::string(parts[3])};
    return Match{std::string(parts[1]).append("@").append(parts[2]), {}};
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
