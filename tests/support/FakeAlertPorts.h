#pragma once

#include "alerts/DesktopNotifier.h"
#include "alerts/SoundPlayer.h"
#include "focus/SessionFocusing.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tovrin::test {

// Decodes any existing file but those marked undecodable; logs what it was asked to decode and play.
class FakeSoundPlayer final : public SoundPlayer {
public:
    bool canDecode(const std::filesystem::path& file) const override {
        decodeRequests.push_back(file);
        std::error_code ec;
        return std::filesystem::exists(file, ec) && !undecodable.contains(file);
    }
    void play(const std::filesystem::path& file) override { played.push_back(file); }
    std::optional<std::filesystem::path> themeSound(const std::string& eventName) const override {
        const auto it = themeSounds.find(eventName);
        return it == themeSounds.end() ? std::nullopt : std::optional(it->second);
    }

    std::set<std::filesystem::path> undecodable;
    std::map<std::string, std::filesystem::path> themeSounds;
    std::vector<std::filesystem::path> played;
    mutable std::vector<std::filesystem::path> decodeRequests;
};

class FakeDesktopNotifier final : public DesktopNotifier {
public:
    void learnCapabilities() override { ++capabilityRequests; }
    void show(const std::string& title, const std::string& body) override { shown.emplace_back(title, body); }

    int capabilityRequests = 0;
    std::vector<std::pair<std::string, std::string>> shown;
};

class FakeSessionFocusing final : public SessionFocusing {
public:
    void focus(const AgentSession& session) override { focused.push_back(session.sessionId); }
    void revealInFileManager(const AgentSession& session) override { revealed.push_back(session.sessionId); }

    std::vector<std::string> focused;
    std::vector<std::string> revealed;
};

} // namespace tovrin::test
