#include "alerts/CustomSoundManager.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using Ids = std::vector<std::string>;

Ids idsOf(const std::vector<AlertSound>& sounds) {
    Ids ids;
    for (const auto& s : sounds)
        ids.push_back(s.id);
    return ids;
}

class CustomSoundManagerTest : public ::testing::Test {
protected:
    fs::path folder() const { return root.path() / "home/.tovrin/sounds"; }

    test::TempDir root;
    CustomSoundManager manager{folder()};
};

TEST_F(CustomSoundManagerTest, FilenameNeverLeavesTheFolder) {
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"custom:a.wav", "a.wav"},        {"custom:my horn.wav", "my horn.wav"},
        {"custom:", std::nullopt},        {"custom:../x.wav", std::nullopt},
        {"custom:..", std::nullopt},      {"custom:.", std::nullopt},
        {"custom:a/b.wav", std::nullopt}, {"custom:/etc/passwd", std::nullopt},
        {"horn-of-gondor", std::nullopt}, {"Custom:a.wav", std::nullopt},
    };
    for (const auto& [id, expected] : cases)
        EXPECT_EQ(CustomSoundManager::filename(id), expected) << id;
}

TEST_F(CustomSoundManagerTest, ImportKeepsTheNameAndNumbersTakenOnes) {
    const auto source = root.write("in/beep.WAV", "first");
    const auto a = manager.importSound(source);
    ASSERT_TRUE(a);
    EXPECT_EQ(a.value().id, "custom:beep.WAV");
    EXPECT_EQ(a.value().displayName, "beep");
    const auto b = manager.importSound(source);
    ASSERT_TRUE(b);
    EXPECT_EQ(b.value().id, "custom:beep-2.WAV");
    EXPECT_EQ(fs::file_size(folder() / "beep-2.WAV"), 5u);
    EXPECT_TRUE(fs::exists(source));

    root.write("home/.tovrin/sounds/horn.aif", "");
    root.write("home/.tovrin/sounds/horn-2.aif", "");
    fs::create_symlink(root.path() / "nowhere", folder() / "horn-3.aif"); // a dangling link is taken too
    const auto c = manager.importSound(root.write("in/horn.aif", "x"));
    ASSERT_TRUE(c);
    EXPECT_EQ(c.value().id, "custom:horn-4.aif");
}

TEST_F(CustomSoundManagerTest, ImportErrorsSayWhatWentWrongAndCopyNothing) {
    const auto list = " Choose a wav, aiff, aif file.";
    const std::pair<fs::path, std::string> cases[] = {
        {root.write("in/x.mp3", "x"), "MP3 files aren't supported." + std::string(list)},
        {root.write("in/noext", "x"), "That file has no extension." + std::string(list)},
        {root.write("in/.wav", "x"), "That file has no extension." + std::string(list)},
        {root.path() / "in/missing.wav", "missing.wav couldn't be read."},
    };
    for (const auto& [source, text] : cases) {
        const auto result = manager.importSound(source);
        ASSERT_FALSE(result) << source;
        EXPECT_EQ(result.error().description(), text);
    }
    EXPECT_FALSE(fs::exists(folder()));

    root.write("home/.tovrin/sounds", "a file where the folder should be");
    const auto blocked = manager.importSound(root.write("in/ok.wav", "x"));
    ASSERT_FALSE(blocked);
    EXPECT_EQ(blocked.error().kind, CustomSoundManager::ImportError::Kind::copyFailed);
    EXPECT_TRUE(blocked.error().description().starts_with("The sound couldn't be added: "));
}

TEST_F(CustomSoundManagerTest, ListsSupportedVisibleFilesInNaturalOrder) {
    EXPECT_TRUE(manager.sounds().empty()) << "a missing folder lists nothing";
    for (const char* name :
         {"Track 10.wav", "Track 2.wav", "Bravo.aif", "alpha.AIFF", ".hidden.wav", "notes.txt"}) {
        root.write("home/.tovrin/sounds/" + std::string(name), "x");
    }
    fs::create_directory(folder() / "folder.wav");
    EXPECT_EQ(idsOf(manager.sounds()),
              (Ids{"custom:alpha.AIFF", "custom:Bravo.aif", "custom:Track 2.wav", "custom:Track 10.wav"}));
}

TEST_F(CustomSoundManagerTest, RemoveDeletesOnlyInsideTheFolder) {
    const auto outside = root.write("home/.tovrin/outside.wav", "x");
    const auto mine = root.write("home/.tovrin/sounds/mine.wav", "x");
    fs::create_symlink(outside, folder() / "link.wav");

    for (const char* id : {"custom:../outside.wav", "custom:..", "custom:.", "custom:gone.wav", "war-cry"}) {
        EXPECT_TRUE(manager.remove(id)) << id;
    }
    EXPECT_TRUE(manager.remove("custom:link.wav"));
    EXPECT_TRUE(manager.remove("custom:mine.wav"));
    EXPECT_FALSE(fs::exists(mine));
    EXPECT_FALSE(fs::is_symlink(folder() / "link.wav"));
    EXPECT_TRUE(fs::exists(outside));
    EXPECT_TRUE(fs::exists(folder()));

    root.write("home/.tovrin/sounds/stuck.wav/inner", "x");
    const auto failed = manager.remove("custom:stuck.wav");
    ASSERT_FALSE(failed);
    EXPECT_FALSE(failed.error().empty());
    EXPECT_TRUE(fs::exists(folder() / "stuck.wav/inner"));
}

} // namespace
} // namespace tovrin
