#pragma once

#include <cstdint>
#include <string>

namespace cvlog::base {

/// A moment of local time in whole seconds since 1970-01-01 00:00:00 of the same local time. Fractions are dropped
/// when a moment is taken, so that the difference of two moments is the difference of what the user sees.
struct LocalTime {
    std::int64_t seconds = 0;
    friend auto operator<=>(const LocalTime&, const LocalTime&) = default;
};

/// "yyyy-mm-dd hh:nn:ss" in the Gregorian calendar, 24 hours, whatever the user's regional settings are.
std::u16string formatDateTime(LocalTime time);

/// The time between two moments as a time of day, "hh:nn:ss". A day or more wraps around; a clock that was set back
/// gives the time of day of the absolute difference.
std::u16string formatElapsed(LocalTime from, LocalTime to);

/// The moment for a civil date and time (month and day from 1).
LocalTime localTime(int year, int month, int day, int hour, int minute, int second) noexcept;

} // namespace cvlog::base
