#include "platform/audio/LinuxSoundPlayer.h"

#include "platform/audio/SoundPlayback.h"
#include "platform/audio/SoundTheme.h"

namespace tovrin {

LinuxSoundPlayer::LinuxSoundPlayer(std::string themeName, std::optional<std::filesystem::path> program)
    : m_themeName(std::move(themeName)), m_program(std::move(program)) {}

bool LinuxSoundPlayer::canDecode(const std::filesystem::path& file) const {
    return SoundPlayback::canDecode(file);
}

void LinuxSoundPlayer::play(const std::filesystem::path& file) {
    if (m_program) m_runner.start(*m_program, {file.string()});
}

std::optional<std::filesystem::path> LinuxSoundPlayer::themeSound(const std::string& eventName) const {
    return SoundTheme::find(m_themeName, eventName);
}

} // namespace tovrin
