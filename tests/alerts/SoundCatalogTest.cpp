#include "alerts/SoundCatalog.h"

#include "support/FakeAlertPorts.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <set>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

class SoundCatalogTest : public ::testing::Test {
protected:
    SoundCatalogTest() {
        root.write("outside.wav", "RIFF");
        player.themeSounds["message-new-instant"] = "/themes/message-new-instant.oga";
    }
    std::optional<fs::path> sound(std::string_view id) const { return catalog.sound(id); }

    test::TempDir root;
    fs::path horn = root.write("share/Sounds/horn-of-gondor.wav", "RIFF");
    fs::path warCry = root.write("share/Sounds/war-cry.wav", "RIFF");
    fs::path mine = root.write("custom/my horn.wav", "RIFF");
    test::FakeSoundPlayer player;
    CustomSoundManager custom{root.path() / "custom"};
    SoundCatalog catalog{root.path() / "share/Sounds", custom, player};
};

TEST_F(SoundCatalogTest, EverySystemNameHasAnEventOfItsOwn) {
    std::set<std::string_view> events;
    for (const auto& s : SoundCatalog::system())
        events.insert(SoundCatalog::themeEvent(s.id).value_or(""));
    EXPECT_EQ(events.size(), 14u);
    EXPECT_FALSE(events.contains(""));
}

TEST_F(SoundCatalogTest, ResolvesEachFormOfId) {
    EXPECT_EQ(sound("war-cry"), warCry);
    EXPECT_EQ(sound("custom:my horn.wav"), mine);
    EXPECT_EQ(sound("Glass"), player.themeSounds["message-new-instant"]);
    EXPECT_EQ(sound("Ping"), std::nullopt) << "a theme without the event plays nothing";
    EXPECT_EQ(sound("drums-of-war"), std::nullopt) << "a themed file that isn't shipped plays nothing";
    EXPECT_EQ(sound("Nope"), std::nullopt);
    EXPECT_EQ(sound("../outside"), std::nullopt);
}

TEST_F(SoundCatalogTest, LostOrUndecodableCustomSoundFallsBackToTheHornButThemedDoesNot) {
    EXPECT_EQ(sound("custom:gone.aiff"), horn);
    player.undecodable = {mine, warCry};
    EXPECT_EQ(sound("custom:my horn.wav"), horn);
    EXPECT_EQ(sound("war-cry"), std::nullopt);
    fs::remove(horn);
    EXPECT_EQ(sound("custom:gone.aiff"), std::nullopt);
}

TEST_F(SoundCatalogTest, CustomIdsThatPointOutOfTheFolderReadNothingThere) {
    for (const char* id : {"custom:../outside.wav", "custom:..", "custom:/etc/passwd"}) {
        player.decodeRequests.clear();
        EXPECT_EQ(sound(id), horn) << id;
        EXPECT_EQ(player.decodeRequests, std::vector{horn}) << id;
    }
}

TEST_F(SoundCatalogTest, DisplayNameAlwaysGivesAName) {
    const std::pair<const char*, const char*> cases[] = {
        {"war-cry", "War Cry"},       {"Glass", "Glass"}, {"custom:my horn.wav", "my horn"},
        {"custom:gone.aiff", "gone"}, {"Nope", "Nope"},   {"custom:../x.wav", "custom:../x.wav"},
    };
    for (const auto& [id, name] : cases)
        EXPECT_EQ(catalog.displayName(id), name);
}

} // namespace
} // namespace tovrin
