#include <algorithm>
#include <vector>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/LogTrace.h>
#include <bouncecheck/PhraseList.h>
#include "bench/support/Literals.h"
#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"
#include "bounce/MessageClassifier.h"
#include "mime/Entity.h"
#include "text/Search.h"

namespace bouncecheck::bench {
namespace {

using Strings = std::vector<std::string>;

std::string plain(std::size_t bytes, std::string_view piece) {
    return repeated(bytes, piece, undeliverable, "\n");
}

template <class Pieces>
std::string cycled(std::size_t bytes, std::string_view head, const Pieces& pieces,
                   std::string_view behindEach) {
    MessageWriter writer(bytes);
    writer.add(head);
    std::size_t next = 0;
    return writer
        .fillFrom([&] { return std::string(pieces[next++ % pieces.size()]).append(behindEach); })
        .take();
}

ClassifiedMessage classified(std::string message) {
    LogNull log;
    return MessageClassifier().classify(Entity(std::move(message)), log);
}

/// Those of `pieces` that may stand in a text one after the other, each with
/// `behind` after it, and leave the verdict to the last step of the
/// classification, even behind a marker without address. Each is tried behind
/// the last `memory` bytes of such a text.
Strings undecided(const Strings& pieces, std::string_view behind, std::size_t memory) {
    Strings kept;
    std::string text;
    for (const std::string& piece : pieces) {
        std::string longer = text + piece + std::string(behind);
        const std::string message = std::string(undeliverable) + "\nRCPT To: nobody\n" + longer;
        if (classified(message).finding.rule) continue;
        kept.push_back(piece);
        longer.erase(0, longer.size() - std::min(longer.size(), memory));
        text = std::move(longer);
    }
    return kept;
}

/// The markers with their contexts before them.
Strings markers() {
    Strings all;
    for (const PhraseList& table : allPhraseLists()) {
        if (table.name != "BounceDataMarkers") continue;
        for (const std::string_view entry : table.rows) {
            std::string& marker = all.emplace_back();
            std::ranges::copy_if(entry, std::back_inserter(marker),
                                 [](char c) { return c != '[' && c != ']'; });
        }
    }
    return all;
}

const Strings& quietMarkers() {
    // A marker may stand inside another, which makes its word another too.
    static const Strings quiet =
        undecided(undecided(markers(), " postmaster@x.example\n", npos), " nobody\n", 400);
    return quiet;
}

std::string eachMarkerAnd(std::size_t bytes, std::string_view word) {
    return cycled(bytes, std::string(undeliverable) + "\n", quietMarkers(), word);
}

/// Each marker once, with its share of the message as one word behind it.
std::string longWords(std::size_t bytes, std::string_view start, std::string_view piece) {
    const Strings& all = quietMarkers();
    MessageWriter writer(bytes);
    writer.add(undeliverable).add("\n");
    for (std::size_t i = 0; i < all.size(); ++i) {
        writer.add(all[i]).add(start).fillShare(piece, all.size() - i).add("\n");
    }
    return writer.take();
}

/// All markers on one line, each with a bracket behind it that nothing closes.
std::string openBrackets(std::size_t bytes) {
    MessageWriter writer(bytes);
    writer.add(undeliverable).add("\n");
    for (const std::string& marker : quietMarkers()) {
        if (marker.find_first_of("\n>") == npos) writer.add(marker).add(" <x ");
    }
    return writer.fill("z").add("\n").take();
}

/// The contexts of "[[context]marker" entries over and over, their markers
/// before the first of them only.
std::string contexts(std::size_t bytes) {
    Strings found;
    std::string before;
    for (const PhraseList& table : allPhraseLists()) {
        for (const std::string_view entry : table.rows) {
            if (!entry.starts_with("[[")) continue;
            const std::size_t end = std::min(entry.find(']'), entry.size() - 1);
            found.emplace_back(entry.substr(2, end - 2));
            before.append(entry.substr(end + 1)).append("\n");
        }
    }
    return cycled(bytes, std::string(undeliverable) + "\n" + before, found, "\n");
}

/// The four bytes from each place of each phrase, in a mixed order.
std::string windows(std::size_t bytes) {
    Strings all;
    for (const std::string& literal : tableLiterals()) {
        for (std::size_t i = 0; i + 4 <= literal.size(); ++i) all.push_back(literal.substr(i, 4));
    }
    Strings mixed;
    for (std::size_t i = 0; i < all.size(); ++i) mixed.push_back(all[i * 7919 % all.size()]);
    return cycled(bytes, std::string(undeliverable) + "\n", mixed, "");
}

/// All phrases without `First` bytes at their beginning and `Last` at their end.
template <std::size_t First, std::size_t Last>
std::string nearMisses(std::size_t bytes) {
    static const Strings quiet = [] {
        Strings cut = tableLiterals();
        for (std::string& phrase : cut) {
            if (phrase.size() > First + Last) {
                phrase = phrase.substr(First, phrase.size() - First - Last);
            }
        }
        return undecided(cut, "", 200);
    }();
    return cycled(bytes, std::string(undeliverable) + "\n", quiet, "");
}

/// A report whose text is classified once for each pattern of subjects that its
/// subject matches, since no look at it decides.
class ClassifiedOften {
public:
    ClassifiedOften() {
        for (const PhraseList& table : allPhraseLists()) {
            if (table.name != "BounceSubjectList") continue;
            for (std::string pattern : table.rows) {
                // Others leave no place for more.
                if (!pattern.starts_with('*') || !pattern.ends_with('*')) continue;
                std::erase(pattern, '*');
                keepIfUseful(pattern + ' ');
            }
        }
        // Some markers hold a phrase of the rule table.
        std::string text;
        for (const std::string& marker : quietMarkers()) {
            text_ = marker + " postmaster@x.example\n";
            if (times() == times_) text += text_;
        }
        text_ = std::move(text);
    }

    std::string message(std::size_t bytes) const {
        return MessageWriter(bytes)
            .add(start)
            .add(subject_)
            .add(middle)
            .add(text_)
            .fill("sorry, no ")
            .add(end)
            .take();
    }

    /// Half of it subject.
    std::string messageWithLongSubject(std::size_t bytes) const {
        return MessageWriter(bytes)
            .add(start)
            .add(subject_)
            .fillShare("x", 2)
            .add(middle)
            .add(text_)
            .fill("sorry, no ")
            .add(end)
            .take();
    }

    /// Most of it returned, from a message that names no recipient.
    std::string messageWithAttachment(std::size_t bytes) const {
        return MessageWriter(bytes)
            .add(start)
            .add(subject_)
            .add(middle)
            .add(text_)
            .add("\n--b\nContent-Type: message/rfc822\n\nSubject: x\n")
            .fill("X-Field: no recipient\n")
            .add("\nhello")
            .add(end)
            .take();
    }

private:
    static constexpr std::string_view start = "From: a@b.example\nSubject: ";
    static constexpr std::string_view middle =
        "\nContent-Type: multipart/report; boundary=b\n\n--b\n\n";
    static constexpr std::string_view end =
        "\n--b\nContent-Type: message/delivery-status\n\nReporting-MTA: x\n\n--b--\n";

    /// How often the text of the message is classified; 0 when a look at it
    /// decides.
    std::size_t times() const {
        std::size_t matches = 0;
        LogTrace log;
        MessageClassifier().classify(Entity(message(0)), log);
        for (const LogTrace::Event& event : log.events()) {
            if (event.text.starts_with("Bounce type determined")) return 0;
            if (event.text == "SubjectMatch") ++matches;
        }
        return matches;
    }

    /// Adds the words of a pattern to the subject when that makes one more.
    void keepIfUseful(const std::string& words) {
        const std::size_t before = subject_.size();
        subject_ += words;
        const std::size_t now = times();
        if (now > times_) {
            times_ = now;
        } else {
            subject_.resize(before);
        }
    }

    std::string subject_;
    std::string text_;
    std::size_t times_ = 0;
};

const ClassifiedOften& classifiedOften() {
    static const ClassifiedOften often;
    return often;
}

constexpr Family families[] = {
    {"words", [](std::size_t n) { return plain(n, "sorry, no "); }},
    {"one-letter", [](std::size_t n) { return plain(n, "a"); }},
    {"blanks", [](std::size_t n) { return plain(n, " "); }},
    {"markers-postmaster",
     [](std::size_t n) { return eachMarkerAnd(n, " postmaster@x.example\n"); }},
    {"markers-no-address", [](std::size_t n) { return eachMarkerAnd(n, " nobody\n"); }},
    {"markers-long-words", [](std::size_t n) { return longWords(n, " postmaster@", "x"); }},
    {"markers-signs", [](std::size_t n) { return longWords(n, " postmaster", "<@>"); }},
    {"markers-written-signs", [](std::size_t n) { return longWords(n, " postmaster", "[AT]"); }},
    {"markers-slashes", [](std::size_t n) { return longWords(n, " ", "/."); }},
    {"markers-quotes", [](std::size_t n) { return longWords(n, " \"", "x y "); }},
    {"markers-open-brackets", openBrackets},
    {"one-marker-long-word",
     [](std::size_t n) { return repeated(n, "x@", undeliverable, "\nRCPT To: "); }},
    {"contexts", contexts},
    {"to-signs", [](std::size_t n) { return plain(n, "To:"); }},
    {"dashes", [](std::size_t n) { return plain(n, "-"); }},
    {"arrows", [](std::size_t n) { return plain(n, "--> To:"); }},
    {"no-longer-valid",
     [](std::size_t n) { return plain(n, "a@ is no longer a valid email address"); }},
    {"windows-of-phrases", windows},
    {"phrases-without-end", nearMisses<0, 1>},
    {"phrases-without-start", nearMisses<1, 0>},
    {"phrases-inside", nearMisses<1, 1>},
    {"classified-often", [](std::size_t n) { return classifiedOften().message(n); }},
    {"classified-often-subject",
     [](std::size_t n) { return classifiedOften().messageWithLongSubject(n); }},
    {"classified-often-attachment",
     [](std::size_t n) { return classifiedOften().messageWithAttachment(n); }},
};

}  // namespace

std::span<const Family> textFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
