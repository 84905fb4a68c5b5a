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
    // Formatting is in UTC, to the whole second.
    EXPECT_EQ(formatIso8601(*parseIso8601("2026-11-22T21:54:38+01:00") + std::chrono::milliseconds(999)),
              "2026-11-22T20:54:38Z");
}

TEST(Iso8601, ReadsInternetDateTimeToTheSecondWithinTheClocksRange) {
    const std::pair<const char*, bool> cases[] = {
        {"2262-04-11T23:47:16Z", true},      // the clock's last second
        {"2262-04-12T00:47:16+01:00", true}, // the same, with an offset
        {"1677-09-21T00:12:44Z", true},      // its first
        {"2028-02-29T00:00:00Z", true},      // a leap day
        {"2027-02-29T00:00:00Z", false},     // no leap day this year
        {"2262-04-11T23:47:17Z", false},     // past the clock's last second
        {"1677-09-21T00:12:43Z", false},     // before its first
        {"2026-11-22T20:54:38.123Z", false}, // fractional seconds
        {"2026-11-22T20:54:38", false},      // no zone
        {"2026-11-22 20:54:38Z", false},     // blank instead of T
        {"2026-11-22t20:54:38z", false},     // lower case
        {"2026-11-22T20:54Z", false},        // no seconds
        {"2026-02-30T10:00:00Z", false},     // no such day
        {"2026-13-01T10:00:00Z", false},     // no such month
        {"2026-11-22T24:00:00Z", false},     // no such hour
        {"2026-11-22T20:54:38+0100", false}, // offset without colon
        {"2026-11-22T20:54:38Z ", false},    // trailing blank
        {"", false},
    };
    for (const auto& [text, valid] : cases)
        EXPECT_EQ(parseIso8601(text).has_value(), valid) << text;
}

} // namespace
} // namespace tovrin
