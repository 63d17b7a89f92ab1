#include "tool/output/SharedTexts.h"

#include <utility>

#include "text/Utf8.h"
#include "tool/output/JsonWriter.h"

namespace bouncecheck {

std::size_t SharedTexts::add(std::string_view text, std::size_t mostBytesOfOne) {
    std::string kept(wholeCharacters(text, mostBytesOfOne));
    if (kept.size() < text.size()) kept += "\xE2\x80\xA6";
    if (kept.empty()) return 0;
    const auto known = numbers_.find(kept);
    if (known != numbers_.end()) return known->second;
    std::string element;
    appendJsonString(element, kept);
    json_.reserve(json_.size() + 1 + element.size());
    const std::size_t size = kept.size();
    const std::size_t number = numbers_.size() + 1;
    numbers_.emplace(std::move(kept), number);
    json_.append(",").append(element);
    bytes_ += size;
    return number;
}

void SharedTexts::clear() noexcept {
    numbers_.clear();
    json_.clear();
    bytes_ = 0;
}

}  // namespace bouncecheck
