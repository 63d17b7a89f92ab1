#pragma once

#include <string_view>

/// The pages of src/tool/html, style and script within, as the build put them together
/// (cmake/EmbedPage.cmake). HTML in UTF-8.
namespace bouncecheck {

struct PageText {
    /// All before the data blocks, and all behind them.
    std::string_view beforeData;
    std::string_view behindData;
};

extern const PageText messagesPage;
extern const PageText ledgerPage;

}  // namespace bouncecheck
