// Dates: what is read of any bytes is on the calendar, and reads the same once it is
// written as RFC 5322 has it.

#include <array>
#include <chrono>
#include <cstdio>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/MailDate.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    using namespace std::chrono;
    const ExactBytes bytes(Input(data, size).rest());
    const auto seconds = parseMailDate(bytes.view());
    if (!seconds) return 0;
    const sys_seconds time{std::chrono::seconds(*seconds)};
    const sys_days day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    const int year = static_cast<int>(date.year());
    require(year >= 1899 && year <= 10'000, "a date is of this age");
    if (year < 1900 || year > 9999) return 0;  // for the zone only
    constexpr std::array<const char*, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::array<char, 64> text;
    std::snprintf(
        text.data(), text.size(), "%u %s %d %02d:%02d:%02d +0000",
        static_cast<unsigned>(date.day()), months[static_cast<unsigned>(date.month()) - 1], year,
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count()));
    require(parseMailDate(text.data()) == seconds, "a date that was written reads the same");
    return 0;
}
