#include "mime/MailDate.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>

#include "mime/CalendarNames.h"
#include "mime/Comment.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

struct Zone {
    std::string_view name;
    /// Minutes east of UTC.
    int offset;
};

constexpr Zone zones[] = {
    {"UT", 0},        {"GMT", 0},       {"UTC", 0},       {"Z", 0},
    {"EDT", -4 * 60}, {"EST", -5 * 60}, {"CDT", -5 * 60}, {"CST", -6 * 60},
    {"MDT", -6 * 60}, {"MST", -7 * 60}, {"PDT", -7 * 60}, {"PST", -8 * 60},
};

/// Takes words off the front of a text; comments (RFC 5322, section 3.2.2), commas
/// and white space stand between them.
class Words {
public:
    explicit Words(std::string_view text) noexcept : rest_(text) {}

    /// "" when there are no more.
    std::string_view next() noexcept {
        while (!rest_.empty() && isBetween(rest_.front())) {
            if (rest_.front() == '(') {
                skipComment();
            } else {
                rest_.remove_prefix(1);
            }
        }
        const auto end = std::ranges::find_if(rest_, isBetween);
        const auto size = static_cast<std::size_t>(end - rest_.begin());
        const std::string_view word = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return word;
    }

private:
    static bool isBetween(char c) noexcept { return ascii::isSpace(c) || c == ',' || c == '('; }

    void skipComment() noexcept {
        rest_.remove_prefix(std::min(commentLength(rest_), rest_.size()));
    }

    std::string_view rest_;
};

/// The value of one to four digits, or -1.
int numberOf(std::string_view word) noexcept {
    const bool isNumber =
        !word.empty() && word.size() <= 4 && std::ranges::all_of(word, ascii::isDigit);
    int value = -1;
    if (isNumber) std::from_chars(word.data(), word.data() + word.size(), value);
    return value;
}

/// What was read of a date; -1 stands for what was not.
class DateParts {
public:
    /// False for a word that no date holds in this place.
    bool add(std::string_view word) noexcept {
        if (word.find(':') != std::string_view::npos) return addTime(word);
        if (ascii::isDigit(word.front())) return addNumber(word);
        if (word.front() == '+' || word.front() == '-') return addOffset(word);
        if (!std::ranges::all_of(word, ascii::isAlpha)) return false;
        addName(word);
        return true;
    }

    std::optional<std::int64_t> seconds() const noexcept {
        using namespace std::chrono;
        const year_month_day date{year(year_), month(static_cast<unsigned>(month_)),
                                  day(static_cast<unsigned>(day_))};
        const bool isWhole = year_ >= 1900 && month_ > 0 && day_ > 0 && minuteOfDay_ >= 0;
        if (!isWhole || !date.ok()) return std::nullopt;
        const std::int64_t days = sys_days(date).time_since_epoch().count();
        return days * 86'400 + std::int64_t{minuteOfDay_ - offset_} * 60 + second_;
    }

private:
    bool addTime(std::string_view word) noexcept {
        const std::size_t colon = word.find(':');
        const std::string_view behind = word.substr(colon + 1);
        const std::size_t second = behind.find(':');
        const int hours = numberOf(word.substr(0, colon));
        const int minutes = numberOf(behind.substr(0, second));
        const bool hasSeconds = second != std::string_view::npos;
        second_ = hasSeconds ? numberOf(behind.substr(second + 1)) : 0;
        const bool isTime = minuteOfDay_ < 0 && hours >= 0 && hours < 24 && minutes >= 0 &&
                            minutes < 60 && second_ >= 0 && second_ <= 60;
        minuteOfDay_ = hours * 60 + minutes;
        return isTime;
    }

    /// The day comes before the year in every order.
    bool addNumber(std::string_view word) noexcept {
        const int number = numberOf(word);
        if (number < 0) return false;
        if (word.size() <= 2 && day_ < 0) {
            day_ = number;
            return true;
        }
        const bool isFirst = year_ < 0;
        year_ = number;
        if (word.size() == 2) year_ += number < 50 ? 2000 : 1900;
        if (word.size() == 3) year_ += 1900;
        return isFirst;
    }

    bool addOffset(std::string_view word) noexcept {
        const int number = word.size() == 5 ? numberOf(word.substr(1)) : -1;
        if (number < 0 || number % 100 >= 60) return false;
        const int minutes = number / 100 * 60 + number % 100;
        offset_ = word.front() == '-' ? -minutes : minutes;
        return true;
    }

    void addName(std::string_view word) noexcept {
        const int month = indexOfName(word, monthNames);
        if (month >= 0) month_ = month + 1;
        const auto isZone = [&](const Zone& zone) { return ascii::equalsNoCase(word, zone.name); };
        const auto zone = std::ranges::find_if(zones, isZone);
        // "+0100 GMT" is a number and a guess: the number counts.
        if (zone != std::end(zones) && offset_ == 0) offset_ = zone->offset;
    }

    int year_ = -1;
    int month_ = -1;
    int day_ = -1;
    int minuteOfDay_ = -1;
    int second_ = 0;
    int offset_ = 0;
};

}  // namespace

std::optional<std::int64_t> parseMailDate(std::string_view text) noexcept {
    Words words(text);
    DateParts parts;
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        if (!parts.add(word)) return std::nullopt;
    }
    return parts.seconds();
}

}  // namespace bouncecheck
