#include "services/telemetry/LinuxSystemFacts.h"

#include "services/telemetry/DefaultSignalPayload.h"
#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(LinuxSystemFactsTest, SystemVersionsFromOsRelease) {
    const std::vector<std::array<std::string, 4>> rows = {
        {"NAME=\"Ubuntu\"\nVERSION_ID=\"24.04\"\n", "Linux 24.04", "Linux 24", "Linux 24.04"},
        {"ID=debian\n  VERSION_ID=12", "Linux 12", "Linux 12", "Linux 12.0"},
        {"VERSION_ID='40.1.2'\n", "Linux 40.1.2", "Linux 40", "Linux 40.1"},
        {"ID=arch\nBUILD_ID=rolling\n", "Linux", "Linux", "Linux"},
        {"VERSION_ID=\"\"\n", "Linux", "Linux", "Linux"},
    };
    for (const auto& [content, full, major, majorMinor] : rows) {
        SystemFacts facts;
        fillSystemVersions(facts, osReleaseVersionID(content));
        EXPECT_EQ(facts.systemVersion, full) << content;
        EXPECT_EQ(facts.majorSystemVersion, major) << content;
        EXPECT_EQ(facts.majorMinorSystemVersion, majorMinor) << content;
    }
}

TEST(LinuxSystemFactsTest, LocaleFromThePosixNames) {
    const std::vector<std::array<std::string, 6>> rows = {
        // locale, LANGUAGE, identifier, region, language, preferred language
        {"de_DE.UTF-8", "", "de_DE", "DE", "de", "de-DE"},
        {"en_US.UTF-8", ":pt_BR.UTF-8:en", "en_US", "US", "en", "pt-BR"},
        {"sr_RS@latin", "", "sr_RS", "RS", "sr", "sr-RS"},
        {"es_419.UTF-8", "", "es_419", "419", "es", "es-419"},
        {"C.UTF-8", "", "C", "C", "C", "zz-ZZ"},
        {"", "fr", "C", "C", "C", "fr"},
    };
    for (const auto& [locale, languages, identifier, region, language, preferred] : rows) {
        const auto facts = localeFacts(locale, languages);
        EXPECT_EQ(facts.identifier, identifier) << locale;
        EXPECT_EQ(facts.region, region) << locale;
        EXPECT_EQ(facts.language, language) << locale;
        EXPECT_EQ(facts.preferredLanguage, preferred) << locale;
    }
}

TEST(LinuxSystemFactsTest, ReadsTheFilesAndEnvironmentItIsPointedAt) {
    test::TempDir dir;
    const test::ScopedEnv all("LC_ALL", ""), messages("LC_MESSAGES", "nb_NO.UTF-8"), language("LANGUAGE", "");
    const auto facts =
        readSystemFacts({.osRelease = {dir.path() / "missing", dir.write("os", "VERSION_ID=6.1")},
                         .productName = dir.write("product", "  Precision 5570 \n")});
    EXPECT_EQ(facts.systemVersion, "Linux 6.1");
    EXPECT_EQ(facts.modelName, "Precision 5570");
    EXPECT_EQ(facts.locale.identifier, "nb_NO");
    EXPECT_FALSE(facts.architecture.empty());
    EXPECT_EQ(readSystemFacts({.osRelease = {}, .productName = dir.path() / "missing"}).modelName, "");
}

TEST(DefaultSignalPayloadTest, TimeZonesCalendarAndScreenMeasures) {
    const std::vector<std::pair<long, std::string>> zones = {
        {0, "UTC+0"}, {3600, "UTC+1"}, {-12600, "UTC-3:30"}, {20700, "UTC+5:45"}, {-36000, "UTC-10"}};
    for (const auto& [offset, text] : zones)
        EXPECT_EQ(DefaultSignalPayload::timeZone(offset), text);

    // New Year's Day 2027, a Friday, is still in ISO week 53 of 2026.
    std::tm newYear{};
    newYear.tm_year = 127;
    newYear.tm_mday = 1;
    newYear.tm_hour = 23;
    newYear.tm_wday = 5;
    const SignalParameters expected = {
        {"TelemetryDeck.Calendar.dayOfMonth", "1"},    {"TelemetryDeck.Calendar.dayOfWeek", "5"},
        {"TelemetryDeck.Calendar.dayOfYear", "1"},     {"TelemetryDeck.Calendar.weekOfYear", "53"},
        {"TelemetryDeck.Calendar.isWeekend", "false"}, {"TelemetryDeck.Calendar.monthOfYear", "1"},
        {"TelemetryDeck.Calendar.quarterOfYear", "1"}, {"TelemetryDeck.Calendar.hourOfDay", "23"}};
    EXPECT_EQ(DefaultSignalPayload::calendar(newYear), expected);

    EXPECT_EQ(DefaultSignalPayload::decimal(1920), "1920.0");
    EXPECT_EQ(DefaultSignalPayload::decimal(1.25), "1.25");
    EXPECT_EQ(DefaultSignalPayload::decimal(0), "0.0");
}

} // namespace
} // namespace tovrin
