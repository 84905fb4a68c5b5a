#pragma once

#include "alerts/SoundPlayer.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/linux/PosixProcessRunner.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tovrin {

// Plays each sound in a child process, tovrin-play, so that the sound server's client library and
// the codecs it pulls in are mapped only while a sound plays, never for the life of the caller.
// play() starts the child and returns; the child is reaped when it ends. A newer sound cuts the
// one playing short. With no sound server, or no player program, nothing is heard or reported.
class LinuxSoundPlayer final : public SoundPlayer {
public:
    // `themeName` is the desktop's sound theme; "freedesktop" is always searched after it.
    explicit LinuxSoundPlayer(
        std::string themeName = "freedesktop",
        std::optional<std::filesystem::path> program = InstallationPaths::playerExecutable());

    bool canDecode(const std::filesystem::path& file) const override;
    void play(const std::filesystem::path& file) override;
    std::optional<std::filesystem::path> themeSound(const std::string& eventName) const override;

private:
    std::string m_themeName;
    std::optional<std::filesystem::path> m_program;
    PosixProcessRunner m_runner;
};

} // namespace tovrin
