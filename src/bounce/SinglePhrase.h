#pragma once

#include <bouncecheck/Match.h>
#include "text/Search.h"

namespace bouncecheck {

/// A phrase that a check asks for by itself.
struct SinglePhrase {
    /// What it is asked for: the label of a rule, or a word for a step that is none.
    const char* purpose;
    TextOf text;
    LetterCase letters;
    const char* phrase;
    /// Has to stand in the text as well; "" for nothing.
    const char* also = "";
};

}  // namespace bouncecheck
