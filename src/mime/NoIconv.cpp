#include "mime/Iconv.h"

// In place of Iconv.cpp where there is no iconv: no charset is known but those that the library
// reads itself, and text in others stays as it is.
namespace bouncecheck {

void Iconv::Close::operator()(void*) const noexcept {}

void Iconv::open() {}

void Iconv::reset() {}

std::string Iconv::convert(std::string_view bytes, std::size_t) { return std::string(bytes); }

std::optional<ByteMeanings> Iconv::byteMeanings() { return std::nullopt; }

}  // namespace bouncecheck
