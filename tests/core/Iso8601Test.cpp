#include "core/Iso8601.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

long long epochSeconds(TimePoint t) {
    return std::chrono::duration_cast<std::chrono::seconds>(t.time_since_epoch()).count();
}

TEST(Iso8601, ParsesUtcAndNumericOffsetsToTheSameInstant) {
    const auto utc = parseIso8601("2026-11-22T20:54:38Z");
    ASSERT_TRUE(utc);
    EXPECT_EQ(epochSeconds(*utc), 1795380878);
    EXPECT_EQ(parseIso8601("2026-11-22T21:54:38+01:00"), utc);
    EXPECT_EQ(parseIso8601("2026-11-22T15:24:38-05:30"), utc);
}

TEST(Iso8601, RefusesWhatIsNotInternetDateTimeToTheSecond) {
    for (const char* text : {
             "2026-11-22T20:54:38.123Z", // fractional seconds
             "2026-11-22T20:54:38",      // no zone
             "2026-11-22 20:54:38Z",     // blank instead of T
             "2026-11-22t20:54:38z",     // lower case
             "2026-11-22T20:54Z",        // no seconds
             "2026-02-30T10:00:00Z",     // no such day
             "2026-13-01T10:00:00Z",     // no such month
             "2026-11-22T24:00:00Z",     // no such hour
             "2026-11-22T20:54:38+0100", // offset without colon
             "2026-11-22T20:54:38Z ",    // trailing blank
             "2262-04-11T23:47:17Z",     // past the clock's last second
             "1677-09-21T00:12:43Z",     // before its first
             "",
         }) {
        EXPECT_FALSE(parseIso8601(text)) << text;
    }
}

TEST(Iso8601, TheClocksFirstAndLastSecondsAreRead) {
    EXPECT_TRUE(parseIso8601("2262-04-11T23:47:16Z"));
    EXPECT_TRUE(parseIso8601("2262-04-12T00:47:16+01:00"));
    EXPECT_TRUE(parseIso8601("1677-09-21T00:12:44Z"));
}

TEST(Iso8601, LeapDayOnlyInLeapYears) {
    EXPECT_TRUE(parseIso8601("2028-02-29T00:00:00Z"));
    EXPECT_FALSE(parseIso8601("2027-02-29T00:00:00Z"));
}

TEST(Iso8601, FormatsInUtcAndRoundTrips) {
    const auto t = *parseIso8601("2026-01-05T03:04:05+02:00");
    EXPECT_EQ(formatIso8601(t), "2026-01-05T01:04:05Z");
    EXPECT_EQ(parseIso8601(formatIso8601(t)), t);
    EXPECT_EQ(formatIso8601(t + std::chrono::milliseconds(999)), "2026-01-05T01:04:05Z");
}

} // namespace
} // namespace tovrin
