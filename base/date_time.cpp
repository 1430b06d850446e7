#include "base/date_time.h"

#include <array>
#include <chrono>
#include <initializer_list>

namespace cvlog::base {

namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;

void appendPadded(std::u16string& out, std::int64_t number, int digits) {
    std::array<char16_t, 20> text; // as long as a number gets
    auto first = text.end();
    for (; digits > 0 || number > 0; --digits, number /= 10)
        *--first = static_cast<char16_t>(u'0' + number % 10);
    out.append(first, text.end());
}

void appendTimeOfDay(std::u16string& out, std::int64_t seconds) {
    appendPadded(out, seconds / 3600, 2);
    out.push_back(u':');
    appendPadded(out, seconds / 60 % 60, 2);
    out.push_back(u':');
    appendPadded(out, seconds % 60, 2);
}

} // namespace

std::u16string formatDateTime(LocalTime time) {
    using namespace std::chrono;
    std::int64_t day = time.seconds / kSecondsPerDay;
    std::int64_t second = time.seconds % kSecondsPerDay;
    if (second < 0) {
        second += kSecondsPerDay;
        --day;
    }
    const year_month_day date{sys_days{days{day}}};
    std::u16string text;
    appendPadded(text, static_cast<int>(date.year()), 4);
    text.push_back(u'-');
    appendPadded(text, static_cast<unsigned>(date.month()), 2);
    text.push_back(u'-');
    appendPadded(text, static_cast<unsigned>(date.day()), 2);
    text.push_back(u' ');
    appendTimeOfDay(text, second);
    return text;
}

std::u16string formatElapsed(LocalTime from, LocalTime to) {
    const std::int64_t difference = to.seconds - from.seconds;
    std::u16string text;
    appendTimeOfDay(text, (difference < 0 ? -difference : difference) % kSecondsPerDay);
    return text;
}

LocalTime localTime(int year, int month, int day, int hour, int minute, int second) noexcept {
    using namespace std::chrono;
    const sys_days date = std::chrono::year{year} / month / day;
    return {date.time_since_epoch().count() * kSecondsPerDay + hour * 3600 + minute * 60 + second};
}

} // namespace cvlog::base
