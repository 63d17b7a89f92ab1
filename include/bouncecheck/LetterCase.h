#pragma once

namespace bouncecheck {

/// Whether a comparison distinguishes capital and small ASCII letters.
enum class LetterCase { exact, ignored };

}  // namespace bouncecheck
