#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bounce/BounceType.h"
#include "text/Ascii.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

/// Counts texts, and tells the most frequent.
class Frequencies {
public:
    void add(const std::string& text) {
        // Domains are invented without end; of what is new this late nothing
        // becomes frequent.
        constexpr std::size_t mostTexts = 100'000;
        constexpr std::size_t longestText = 255;  // of a domain: RFC 1035, section 2.3.4
        if (text.empty() || text.size() > longestText) return;
        const auto known = counts_.find(text);
        if (known != counts_.end()) {
            ++known->second;
        } else if (counts_.size() < mostTexts) {
            counts_.emplace(text, 1);
        }
    }

    std::vector<std::pair<std::string, std::size_t>> top() const {
        constexpr std::size_t rows = 10;
        std::vector<std::pair<std::string, std::size_t>> all(counts_.begin(), counts_.end());
        std::ranges::sort(all, [](const auto& a, const auto& b) {
            return a.second != b.second ? a.second > b.second : a.first < b.first;
        });
        all.resize(std::min(all.size(), rows));
        return all;
    }

private:
    std::unordered_map<std::string, std::size_t> counts_;
};

/// What is behind the last "@", without what mail leaves there; as the page counts it.
std::string domainOf(std::string_view address) {
    const std::size_t at = address.rfind('@');
    if (at == std::string_view::npos) return {};
    const std::string_view domain = address.substr(at + 1);
    return ascii::lowerCase(domain.substr(0, domain.find_first_of(" \t\r\n<>()[],;:\"'/\\")));
}

class SummaryOutput final : public Output {
public:
    SummaryOutput(std::ostream& out, SummaryForm form, Style style)
        : out_(out), form_(form), style_(style) {}

    Wanted wanted() const override { return {}; }

    void show(const Classified& message) override {
        ++messages_;
        ++types_[message.type];
        labels_.add(message.label);
        domains_.add(domainOf(message.address));
        phrases_.add(message.phrase);
    }

    void finish() override {
        if (form_ == SummaryForm::json) {
            showJson();
        } else {
            showText();
        }
    }

private:
    double shareOf(std::size_t count) const {
        return messages_ == 0 ? 0 : static_cast<double>(count) / static_cast<double>(messages_);
    }

    void showJson() const {
        using Json = nlohmann::ordered_json;
        Json summary = {{"messages", messages_}, {"verdicts", Json::array()}};
        for (const auto& [type, count] : types_) {
            summary["verdicts"].push_back({{"type", type},
                                           {"name", bounceTypeName(type)},
                                           {"count", count},
                                           {"share", shareOf(count)}});
        }
        const auto add = [&](const char* key, const char* of, const Frequencies& frequencies) {
            Json& list = summary[key] = Json::array();
            for (const auto& [text, count] : frequencies.top()) {
                list.push_back({{of, text}, {"count", count}});
            }
        };
        add("labels", "label", labels_);
        add("domains", "domain", domains_);
        add("phrases", "phrase", phrases_);
        out_ << summary.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    }

    void showText() const {
        showHeading("VERDICT");
        for (const auto& [type, count] : types_) {
            showRow(bounceTypeName(type), count, colorOf(type));
        }
        showRow("messages", messages_);
        showTop("LABEL", labels_);
        showTop("DOMAIN", domains_);
        showTop("PHRASE", phrases_);
    }

    void showTop(std::string_view heading, const Frequencies& frequencies) const {
        const auto top = frequencies.top();
        if (top.empty()) return;
        out_ << '\n';
        showHeading(heading);
        for (const auto& [text, count] : top) showRow(text, count);
    }

    void showHeading(std::string_view heading) const {
        out_ << style_.paint("   COUNT   SHARE  " + std::string(heading), "1") << '\n';
    }

    void showRow(std::string_view text, std::size_t count, std::string_view color = "") const {
        std::ostringstream numbers;
        numbers << std::setw(8) << count << std::setw(7) << std::fixed << std::setprecision(1)
                << 100 * shareOf(count) << "%  ";
        const std::size_t used = numbers.str().size();
        std::string shown = printable(text);
        if (style_.width > used) shown = fitted(shown, style_.width - used);
        out_ << numbers.str() << style_.paint(shown, color) << '\n';
    }

    std::ostream& out_;
    SummaryForm form_;
    Style style_;
    std::size_t messages_ = 0;
    std::map<int, std::size_t> types_;
    Frequencies labels_;
    Frequencies domains_;
    Frequencies phrases_;
};

}  // namespace

std::unique_ptr<Output> makeSummaryOutput(std::ostream& out, SummaryForm form, Style style) {
    return std::make_unique<SummaryOutput>(out, form, style);
}

}  // namespace bouncecheck
