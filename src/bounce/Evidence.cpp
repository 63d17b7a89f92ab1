#include "bounce/Evidence.h"

namespace bouncecheck {

Match Evidence::firstOf(SingleId singles) const {
    const auto textFor = [this](TextOf kind) -> const ScannedText* {
        switch (kind) {
            case TextOf::subject: return &subject;
            case TextOf::senderAddress: return &senderAddress;
            case TextOf::senderName: return &senderName;
            case TextOf::data: return &data;
            default: return nullptr;
        }
    };
    for (std::size_t row = singles.rows().first; row < singles.rows().end; ++row) {
        const ScannedText* const text = textFor(singlePhrases[row].text);
        if (!text) continue;
        if (const Match match = text->single(row)) return match;
    }
    return {};
}

}  // namespace bouncecheck
