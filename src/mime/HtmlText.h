#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// The text of an HTML document (UTF-8) as a reader sees it: tags, comments,
/// scripts and styles gone, character references decoded, white space run
/// together outside `pre`, and each block, table row and `br` on a line of its
/// own, lines ending in CRLF.
///
/// Anything is taken: a '<' that begins no tag stays, so that an address in
/// unescaped brackets survives, and so does a tag that is never closed; a script
/// or style that is never closed ends with the text.
/// Not more than `limits::htmlText` bytes. Linear in the size of `html`.
std::string htmlToText(std::string_view html);

}  // namespace bouncecheck
