#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mime/SmallList.h"

namespace bouncecheck {

class Entity;

/// Takes the text of a message apart into its tree of entities (RFC 2046,
/// section 5.1), in one pass over its lines and without recursion.
///
/// A delimiter belongs to the innermost open multipart with that boundary and
/// ends all that is open inside it, closed properly or not. Preambles and
/// epilogues belong to no part.
class MimeTreeBuilder {
public:
    /// `text` has CRLF line ends and outlives `root`, whose header begins at
    /// `headerStart`.
    static void build(Entity& root, std::string_view text, std::size_t headerStart);

private:
    struct OpenEntity {
        Entity* entity;
        std::size_t bodyStart;
        /// What stands behind the "--" of a delimiter, in the entity; empty for a leaf, or when no
        /// delimiter counts any more.
        std::string_view boundary;
    };

    explicit MimeTreeBuilder(std::string_view text) noexcept : text_(text) {}

    void open(Entity& entity, std::size_t headerStart, std::string_view defaultType);
    /// Ends all entities above the first `keep`, whose text goes up to `end`.
    void closeDownTo(std::size_t keep, std::size_t end);
    /// Acts on a line that begins with "--" if it is a delimiter.
    bool onDashLine(std::size_t lineStart, std::string_view line);
    std::size_t nextDashLine(std::size_t from) const noexcept;

    std::string_view text_;
    SmallList<OpenEntity, 4> open_;
    std::string room_;
    std::size_t parts_ = 0;
    std::size_t fields_ = 0;
    /// Where the text goes on after the last delimiter and part header.
    std::size_t position_ = 0;
};

}  // namespace bouncecheck
