#pragma once

#include <string>
#include <vector>

#include "tool/ToolRun.h"

namespace bouncecheck {

/// What stands in the elements that begin with `tag`.
inline std::vector<std::string> contentsOf(const std::string& html, const std::string& tag,
                                           const std::string& endTag) {
    std::vector<std::string> all;
    for (std::size_t at = html.find(tag); at != std::string::npos; at = html.find(tag, at)) {
        at += tag.size();
        all.push_back(html.substr(at, html.find(endTag, at) - at));
    }
    return all;
}

inline std::vector<Json> blocks(const std::string& html, const std::string& name) {
    std::vector<Json> all;
    const std::string tag = "<script type=\"application/json\" class=\"" + name + "\">";
    for (const std::string& json : contentsOf(html, tag, "</script>")) {
        all.push_back(Json::parse(json));
    }
    return all;
}

/// A cell of a column.
inline std::string cell(const Json& rows, const char* column, std::size_t at = 0) {
    return rows["texts"][rows[column][at].get<std::size_t>()];
}

}  // namespace bouncecheck
