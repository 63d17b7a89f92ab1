#pragma once

#include <string_view>

/// The page of src/tool/html, style and script within, as the build put it together
/// (cmake/EmbedPage.cmake). HTML in UTF-8.
namespace bouncecheck {

/// All before the data blocks, and all behind them.
extern const std::string_view pageBeforeData;
extern const std::string_view pageBehindData;

}  // namespace bouncecheck
