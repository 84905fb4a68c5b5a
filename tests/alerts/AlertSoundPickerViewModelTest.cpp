#include "alerts/AlertSoundPickerViewModel.h"

#include "alerts/SoundCatalog.h"
#include "support/FakeSoundPorts.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using Titles = std::vector<std::string>;

class AlertSoundPickerViewModelTest : public ::testing::Test {
protected:
    Titles titles(const std::string& selection) const {
        Titles result;
        for (const auto& s : model.sections(selection))
            result.push_back(s.title);
        return result;
    }

    test::TempDir root;
    CustomSoundManager manager{root.path() / "sounds"};
    test::ScriptedSoundChooser chooser;
    std::vector<fs::path> revealed;
    AlertSoundPickerViewModel model{manager, chooser, [this](const fs::path& p) { revealed.push_back(p); }};
};

TEST_F(AlertSoundPickerViewModelTest, OnlyACustomIdWithoutItsFileIsMissing) {
    root.write("sounds/mine.wav", "x");
    model.refresh();
    const std::pair<const char*, bool> cases[] = {
        {"custom:mine.wav", false}, {"custom:gone.wav", true},     {"horn-of-gondor", false}, {"Nope", false},
        {"custom:", false},         {"custom:../mine.wav", false},
    };
    for (const auto& [id, missing] : cases)
        EXPECT_EQ(model.isSelectionMissing(id), missing) << id;

    EXPECT_EQ(titles("war-cry"), (Titles{"Tovrin", "System", "Yours"}));
    const auto missing = model.sections("custom:gone.wav").back();
    EXPECT_EQ(missing.title, "Missing");
    ASSERT_EQ(missing.rows.size(), 1u);
    EXPECT_EQ(missing.rows[0].id, "custom:gone.wav");
    EXPECT_EQ(missing.rows[0].displayName, "gone");

    fs::remove(root.path() / "sounds/mine.wav");
    model.refresh();
    EXPECT_EQ(titles("custom:mine.wav"), (Titles{"Tovrin", "System", "Missing"}));
}

TEST_F(AlertSoundPickerViewModelTest, AddKeepsTheLastErrorUntilASuccess) {
    chooser.answers = {root.write("x.mp3", "x"), std::nullopt, root.write("beep.wav", "x")};
    EXPECT_EQ(model.addSound(), std::nullopt);
    const AlertSoundCaption error{"MP3 files aren't supported. Choose a wav, aiff, aif file.", true};
    EXPECT_EQ(model.caption(), error);
    EXPECT_EQ(model.addSound(), std::nullopt); // cancelled
    EXPECT_EQ(model.caption(), error);

    const auto added = model.addSound();
    ASSERT_TRUE(added);
    EXPECT_EQ(added->id, "custom:beep.wav");
    EXPECT_EQ(model.customSounds(), std::vector{*added});
    EXPECT_EQ(model.caption(), (AlertSoundCaption{std::string(AlertSoundPickerText::hint), false}));
}

TEST_F(AlertSoundPickerViewModelTest, RemovingTheSelectionFallsBackToTheHornEvenWhenRemovalFails) {
    root.write("sounds/mine.wav", "x");
    root.write("sounds/stuck.wav/inner", "x"); // a folder that isn't empty can't be removed
    model.refresh();
    EXPECT_EQ(model.removeSelection("custom:stuck.wav"), SoundCatalog::fallbackId);
    EXPECT_TRUE(model.caption().isError);
    EXPECT_EQ(model.removeSelection("custom:mine.wav"), SoundCatalog::fallbackId);
    EXPECT_FALSE(model.errorMessage());
    EXPECT_TRUE(model.customSounds().empty());
}

TEST_F(AlertSoundPickerViewModelTest, RevealFolderCreatesItFirst) {
    model.revealFolder();
    EXPECT_TRUE(fs::is_directory(root.path() / "sounds"));
    EXPECT_EQ(revealed, std::vector{root.path() / "sounds"});
}

} // namespace
} // namespace tovrin
