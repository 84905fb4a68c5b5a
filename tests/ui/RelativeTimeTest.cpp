#include "ui/viewmodels/RelativeTime.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(RelativeTime, EachUnitStartsAtItsThresholdAndSecondsAreCutTowardZero) {
    const struct {
        double seconds;
        const char* text;
    } cases[] = {
        {-3600, "just now"}, {-0.5, "just now"}, {0, "just now"},   {4, "just now"},    {4.99, "just now"},
        {5, "5s ago"},       {59, "59s ago"},    {59.9, "59s ago"}, {60, "1m ago"},     {3599, "59m ago"},
        {3600, "1h ago"},    {86399, "23h ago"}, {86400, "1d ago"}, {863999, "9d ago"},
    };
    const TimePoint now = std::chrono::sys_days(std::chrono::year{2026} / 3 / 14) + std::chrono::hours(9);
    for (const auto& c : cases) {
        EXPECT_EQ(RelativeTime::string(addSeconds(now, -c.seconds), now), c.text) << c.seconds << " s";
    }
}

} // namespace
} // namespace tovrin
