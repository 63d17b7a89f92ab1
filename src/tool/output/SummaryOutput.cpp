#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iomanip>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <bouncecheck/BounceType.h>
#include "tool/output/Address.h"
#include "tool/output/JsonWriter.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

/// Counts texts, and knows the most frequent.
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

/// `share`, which is between 0 and 1, with as many digits as distinguish it from its neighbours.
std::string decimal(double share) {
    std::array<char, 400> digits;  // of the smallest one
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), share,
                                            std::chars_format::fixed);
    const std::string text(digits.data(), end);
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

class SummaryOutput final : public Output {
public:
    SummaryOutput(std::ostream& out, SummaryForm form, Style style)
        : out_(out), form_(form), style_(style) {}

    Wanted wanted() const override { return {}; }

    void show(const Classified& message) override {
        ++messages_;
        ++types_[message.type];
        labels_.add(std::string(message.label()));
        domains_.add(countedDomainOf(message.address));
        phrases_.add(message.match.phrase);
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
        std::string json = "{\"messages\":" + std::to_string(messages_) + ",\"verdicts\":[";
        std::string_view comma;
        for (const auto& [type, count] : types_) {
            json.append(comma).append("{\"type\":").append(std::to_string(type));
            json.append(",\"name\":\"").append(bounceTypeName(type));
            json.append("\",\"count\":").append(std::to_string(count));
            json.append(",\"share\":").append(decimal(shareOf(count))).append("}");
            comma = ",";
        }
        const auto add = [&](const char* key, const char* of, const Frequencies& frequencies) {
            json.append("],\"").append(key).append("\":[");
            comma = "";
            for (const auto& [text, count] : frequencies.top()) {
                json.append(comma).append("{\"").append(of).append("\":");
                appendJsonString(json, text);
                json.append(",\"count\":").append(std::to_string(count)).append("}");
                comma = ",";
            }
        };
        add("labels", "label", labels_);
        add("domains", "domain", domains_);
        add("phrases", "phrase", phrases_);
        out_ << json << "]}\n";
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
