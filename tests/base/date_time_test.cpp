#include "base/date_time.h"

#include <gtest/gtest.h>

#include <clocale>

namespace cvlog::base {
namespace {

TEST(FormatDateTime, PadsEveryPartAndCountsTwentyFourHours) {
    EXPECT_EQ(formatDateTime(localTime(2024, 1, 2, 9, 5, 7)), u"2024-01-02 09:05:07");
    EXPECT_EQ(formatDateTime(localTime(1999, 12, 31, 23, 59, 59)), u"1999-12-31 23:59:59");
    EXPECT_EQ(formatDateTime(localTime(2024, 2, 29, 0, 0, 0)), u"2024-02-29 00:00:00");
    EXPECT_EQ(formatDateTime(localTime(987, 6, 5, 4, 3, 2)), u"0987-06-05 04:03:02");
}

TEST(FormatDateTime, CountsBackwardsBefore1970) {
    EXPECT_EQ(formatDateTime(LocalTime{0}), u"1970-01-01 00:00:00");
    EXPECT_EQ(formatDateTime(LocalTime{-1}), u"1969-12-31 23:59:59");
    EXPECT_EQ(formatDateTime(localTime(1899, 12, 30, 1, 2, 3)), u"1899-12-30 01:02:03");
}

TEST(FormatDateTime, FollowsTheGregorianLeapYears) {
    EXPECT_EQ(formatDateTime(LocalTime{localTime(1900, 2, 28, 0, 0, 0).seconds + 86400}),
              u"1900-03-01 00:00:00");
    EXPECT_EQ(formatDateTime(LocalTime{localTime(2000, 2, 28, 0, 0, 0).seconds + 86400}),
              u"2000-02-29 00:00:00");
}

TEST(FormatDateTime, DoesNotDependOnTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"ja_JP.UTF-8", "ko_KR.UTF-8", "C.UTF-8", "C"}) {
        std::setlocale(LC_ALL, name); // a locale that is not installed leaves the one before
        EXPECT_EQ(formatDateTime(localTime(2024, 1, 2, 9, 5, 7)), u"2024-01-02 09:05:07") << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

struct ElapsedCase {
    std::int64_t seconds;
    const char16_t* text;
};

class FormatElapsed : public testing::TestWithParam<ElapsedCase> {};

TEST_P(FormatElapsed, GivesATimeOfDay) {
    const LocalTime from = localTime(2024, 1, 2, 10, 0, 0);
    EXPECT_EQ(formatElapsed(from, LocalTime{from.seconds + GetParam().seconds}), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Differences, FormatElapsed,
                         testing::Values(ElapsedCase{0, u"00:00:00"}, ElapsedCase{5, u"00:00:05"},
                                         ElapsedCase{3599, u"00:59:59"}, ElapsedCase{36005, u"10:00:05"},
                                         ElapsedCase{86399, u"23:59:59"}, ElapsedCase{86400, u"00:00:00"},
                                         ElapsedCase{90000, u"01:00:00"}, ElapsedCase{-5, u"00:00:05"},
                                         ElapsedCase{-90000, u"01:00:00"},
                                         ElapsedCase{100000 * 86400LL + 1, u"00:00:01"}));

} // namespace
} // namespace cvlog::base
