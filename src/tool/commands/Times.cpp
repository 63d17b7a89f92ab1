#include "tool/commands/Times.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <stdexcept>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

using ledger::Time;

/// Takes `digits` digits, and what is behind them, off `text`.
std::optional<int> takeNumber(std::string_view& text, std::size_t digits,
                              std::string_view behind = "") {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && !text.starts_with('-') &&
                          static_cast<std::size_t>(end - text.data()) == digits &&
                          text.substr(digits).starts_with(behind);
    if (!isNumber) return std::nullopt;
    text.remove_prefix(digits + behind.size());
    return number;
}

/// Takes the date off `text`: the seconds to its beginning.
std::optional<Time> takeDate(std::string_view& text) {
    const auto year = takeNumber(text, 4, "-");
    if (!year) return std::nullopt;
    const auto month = takeNumber(text, 2, "-");
    if (!month) return std::nullopt;
    const auto day = takeNumber(text, 2);
    if (!day) return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok()) return std::nullopt;
    return std::chrono::sys_days(date).time_since_epoch().count() * ledger::secondsPerDay;
}

/// Takes "10:00:00" off `text`, with decimals.
std::optional<Time> takeClock(std::string_view& text) {
    const auto hour = takeNumber(text, 2, ":");
    if (!hour || *hour > 23) return std::nullopt;
    const auto minute = takeNumber(text, 2, ":");
    if (!minute || *minute > 59) return std::nullopt;
    const auto second = takeNumber(text, 2);
    if (!second || *second > 60) return std::nullopt;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (text.empty() || !ascii::isDigit(text.front())) return std::nullopt;
        while (!text.empty() && ascii::isDigit(text.front())) text.remove_prefix(1);
    }
    return Time{*hour} * 3600 + Time{*minute} * 60 + *second;
}

/// The seconds that the zone, all of `text`, is ahead of UTC.
std::optional<Time> zoneOf(std::string_view text) {
    if (text == "Z" || text == "z") return 0;
    if (!text.starts_with('+') && !text.starts_with('-')) return std::nullopt;
    const int sign = text.front() == '-' ? -1 : 1;
    text.remove_prefix(1);
    const auto hour = takeNumber(text, 2, ":");
    if (!hour) return std::nullopt;
    const auto minute = takeNumber(text, 2);
    if (!minute || !text.empty() || *hour > 23 || *minute > 59) return std::nullopt;
    return sign * (Time{*hour} * 3600 + Time{*minute} * 60);
}

std::optional<Time> dateAndTime(std::string_view text) {
    const auto date = takeDate(text);
    if (!date || text.empty()) return date;
    if (!ascii::isOneOf(text.front(), "Tt ")) return std::nullopt;
    text.remove_prefix(1);
    const auto clock = takeClock(text);
    if (!clock) return std::nullopt;
    const auto zone = zoneOf(text);
    if (!zone) return std::nullopt;
    return *date + *clock - *zone;
}

std::optional<Time> duration(std::string_view text) {
    constexpr Time most = 100'000'000;  // of any unit
    Time number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number <= 0 || number > most) return std::nullopt;
    const std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
    if (unit == "s") return number;
    if (unit == "m") return number * 60;
    if (unit == "h") return number * 3600;
    if (unit == "d") return number * ledger::secondsPerDay;
    if (unit == "w") return number * ledger::secondsPerDay * 7;
    return std::nullopt;
}

std::string fullText(Time time) {
    const std::chrono::sys_seconds point{std::chrono::seconds(time)};
    const auto day = std::chrono::floor<std::chrono::days>(point);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(point - day);
    char text[64];
    const int size = std::snprintf(
        text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count()));
    return {text, static_cast<std::size_t>(size)};
}

}  // namespace

Time parseDuration(std::string_view text) {
    if (const auto seconds = duration(text)) return *seconds;
    throw std::invalid_argument("\"" + std::string(text) +
                                "\" is not a time; examples: 12h, 30d, 4w");
}

Time parseTime(std::string_view text, Time now) {
    if (const auto time = dateAndTime(text)) return *time;
    if (const auto seconds = duration(text)) return now - *seconds;
    throw std::invalid_argument("\"" + std::string(text) +
                                "\" is not a time; examples: 2026-11-22, 2026-11-22T10:00:00Z, 7d");
}

std::string timeText(std::optional<Time> time) { return time ? fullText(*time) : ""; }

std::string minuteText(Time time) { return fullText(time).replace(10, 1, " ").substr(0, 16); }

std::string dayText(Time time) { return fullText(time).substr(0, 10); }

}  // namespace bouncecheck
