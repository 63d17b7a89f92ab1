#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// `text` for a cell of a table: what would end it, or begin markup, is escaped.
inline std::string cell(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '|' || c == '*' || c == '_' || c == '<') out += '\\';
        out += c;
    }
    return out;
}

inline std::string code(std::string_view text) { return "`" + std::string(text) + "`"; }

}  // namespace bouncecheck
