#include "recipients/CueSearch.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "phrases/CompiledMatcher.h"
#include "recipients/tables/NoticeCues.h"

namespace bouncecheck {
namespace {

constexpr const phrases::Matcher& cueMatcher =
    phrases::CompiledMatcher<noticeCues, &NoticeCue::phrase>::matcher;

constexpr auto cues = [] {
    std::array<Cue, noticeCues.size()> all{};
    std::ranges::transform(noticeCues, all.begin(), &NoticeCue::cue);
    return all;
}();

/// Receives the phrases that a pass over lines finds.
class CueCollector {
public:
    explicit CueCollector(std::span<NoticeLine> lines)
        : lines_(lines), begin_(lines.front().text.data()) {}

    bool wants(std::size_t phrase, std::size_t at) {
        return !lineAt(begin_ + at).has(cues[phrase]);
    }
    void onFound(std::size_t phrase, std::size_t at) { lineAt(begin_ + at).cues.add(cues[phrase]); }

private:
    /// Places come nearly in their order, so the line is seldom far from the last one.
    NoticeLine& lineAt(const char* place) {
        while (last_ + 1 < lines_.size() && lines_[last_ + 1].text.data() <= place) ++last_;
        while (lines_[last_].text.data() > place) --last_;
        return lines_[last_];
    }

    std::span<NoticeLine> lines_;
    const char* begin_;
    std::size_t last_ = 0;
};

}  // namespace

void findCues(std::span<NoticeLine> lines) {
    const char* const begin = lines.front().text.data();
    const std::string_view last = lines.back().text;
    CueCollector collector(lines);
    cueMatcher.scan({begin, static_cast<std::size_t>(last.data() + last.size() - begin)},
                    collector);
}

Cues cuesIn(std::string_view text) {
    NoticeLine line{.text = text};
    findCues({&line, 1});
    return line.cues;
}

}  // namespace bouncecheck
