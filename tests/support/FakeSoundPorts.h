#pragma once

#include "alerts/SoundFileChoosing.h"
#include "alerts/WaitingSoundPlaying.h"

#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tovrin::test {

// Answers each file dialog with the next of `answers`; with none left, the user cancels.
class ScriptedSoundChooser final : public SoundFileChoosing {
public:
    std::optional<std::filesystem::path> chooseSoundFile() override {
        if (answers.empty()) return std::nullopt;
        auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::deque<std::optional<std::filesystem::path>> answers;
};

// Keeps the id of every waiting sound it is asked to play.
class RecordingWaitingSound final : public WaitingSoundPlaying {
public:
    void playWaiting(const std::string& soundId) override { played.push_back(soundId); }
    std::vector<std::string> played;
};

} // namespace tovrin::test
