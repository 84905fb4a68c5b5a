#include "core/Iso8601.h"

#include <chrono>
#include <cstdio>

namespace tovrin {
namespace {

// Reads exactly `width` ASCII digits at `pos`.
std::optional<int> digits(std::string_view text, std::size_t pos, std::size_t width) {
    if (pos + width > text.size()) return std::nullopt;
    int value = 0;
    for (std::size_t i = pos; i < pos + width; ++i) {
        const char c = text[i];
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

bool at(std::string_view text, std::size_t pos, char c) {
    return pos < text.size() && text[pos] == c;
}

} // namespace

std::optional<TimePoint> parseIso8601(std::string_view text) {
    using namespace std::chrono;
    // YYYY-MM-DDTHH:MM:SS is 19 characters; a zone follows.
    const auto year = digits(text, 0, 4), month = digits(text, 5, 2), day = digits(text, 8, 2);
    const auto hour = digits(text, 11, 2), minute = digits(text, 14, 2), second = digits(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
    if (!at(text, 4, '-') || !at(text, 7, '-') || !at(text, 10, 'T') || !at(text, 13, ':') ||
        !at(text, 16, ':'))
        return std::nullopt;

    const year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                              std::chrono::day{static_cast<unsigned>(*day)}};
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;

    int offsetMinutes = 0;
    const std::string_view zone = text.substr(19);
    if (zone == "Z") {
        offsetMinutes = 0;
    } else if (zone.size() == 6 && (zone[0] == '+' || zone[0] == '-') && zone[3] == ':') {
        const auto oh = digits(zone, 1, 2), om = digits(zone, 4, 2);
        if (!oh || !om || *oh > 23 || *om > 59) return std::nullopt;
        offsetMinutes = (*oh * 60 + *om) * (zone[0] == '-' ? -1 : 1);
    } else {
        return std::nullopt;
    }

    const sys_seconds local = sys_days(date) + hours(*hour) + minutes(*minute) + seconds(*second);
    const sys_seconds instant = local - minutes(offsetMinutes);
    // The clock counts nanoseconds in 64 bits (about 1677 to 2262); converting a year beyond
    // that would overflow.
    if (instant < ceil<seconds>(TimePoint::min()) || instant > floor<seconds>(TimePoint::max()))
        return std::nullopt;
    return TimePoint(instant);
}

std::string formatIso8601(TimePoint time) {
    using namespace std::chrono;
    const auto secs = floor<seconds>(time);
    const auto days = floor<std::chrono::days>(secs);
    const year_month_day date(days);
    const hh_mm_ss clock(secs - days);
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return buffer;
}

} // namespace tovrin
