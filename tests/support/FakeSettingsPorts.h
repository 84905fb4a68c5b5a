#pragma once

#include "alerts/SoundFileChoosing.h"
#include "services/LoginItems.h"

#include <deque>
#include <filesystem>
#include <optional>

namespace tovrin::test {

// The desktop's login list, kept in memory; it can be told to refuse, as a failed write would.
class MemoryLoginItems final : public LoginItems {
public:
    bool isEnabled() const override { return enabled; }
    void setEnabled(bool on) override {
        if (!refuses) enabled = on;
    }
    bool enabled = false;
    bool refuses = false;
};

// The file dialog, answering with the queued choices in turn; cancelled once they run out.
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

} // namespace tovrin::test
