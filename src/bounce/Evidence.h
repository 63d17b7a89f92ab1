#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <bouncecheck/Match.h>
#include <bouncecheck/classes/StringBuffer.h>
#include "bounce/PhraseBook.h"
#include "bounce/RecipientExtraction.h"
#include "bounce/ScannedText.h"
#include "phrases/Catalog.h"

namespace bouncecheck {

class Entity;

/// The texts of a message that the checks read.
struct MessageTexts {
    /// Without the tags of spam filters.
    const StringBuffer& subject;
    const StringBuffer& senderAddress;
    const StringBuffer& senderName;
    /// What most checks search.
    const StringBuffer& data;
};

/// What shows that a message is an automatic reply; false when nothing does.
struct AutoReplySign {
    /// What is logged of it.
    const char* line = nullptr;
    /// The phrase, if it is one.
    Match match;

    explicit operator bool() const noexcept { return line != nullptr; }
};

/// What repeated looks at the text of one message need not find again.
struct BodyMemory {
    /// What each marker in the text led to, once none led to an address.
    std::optional<std::vector<MarkerOutcome>> vainMarkers;
    std::optional<AutoReplySign> autoReply;
    bool namesNoAttachedRecipient = false;
};

/// One message, as the checks see it. Nothing here changes while they run.
class Evidence {
public:
    /// Refers to the message and the texts. A plain engine also remembers nothing.
    Evidence(const Entity& whole, const MessageTexts& texts, bool isMultipartReport,
             phrases::Engine engine, bool canOpenSigned = true) noexcept
        : message(whole),
          subject(TextOf::subject, texts.subject.view(), engine),
          senderAddress(TextOf::senderAddress, texts.senderAddress.view(), engine),
          senderName(TextOf::senderName, texts.senderName.view(), engine),
          data(TextOf::data, texts.data.view(), engine, &markerPlaces_),
          dataBuffer(texts.data),
          isReport(isMultipartReport),
          canOpenAttached(canOpenSigned),
          engine_(engine) {}
    Evidence(const Evidence&) = delete;
    Evidence& operator=(const Evidence&) = delete;

    /// The first single phrase of a purpose, each in the text that it is for.
    Match firstOf(SingleId singles) const;

    /// Scans another text of the message.
    ScannedText scanned(TextOf kind, std::string_view text) const {
        return ScannedText(kind, text, engine_);
    }
    /// Whether `text` is the data or one of the bodies that it begins or ends with: then a
    /// phrase that does not stand in the data does not stand in `text` either.
    bool isPartOfData(std::string_view text) const noexcept {
        return data.view().starts_with(text) || data.view().ends_with(text);
    }

    /// Null when nothing is to be remembered.
    BodyMemory* memory() const noexcept {
        return engine_ == phrases::Engine::pass ? &memory_ : nullptr;
    }

    const Entity& message;
    const ScannedText subject;
    const ScannedText senderAddress;
    const ScannedText senderName;
    const ScannedText data;
    const StringBuffer& dataBuffer;
    const bool isReport;
    /// Whether attached messages may be read: signed ones could not be opened without the
    /// certificates of the system.
    const bool canOpenAttached;

private:
    const phrases::Engine engine_;
    MarkerPlaces markerPlaces_;
    mutable BodyMemory memory_;
};

}  // namespace bouncecheck
