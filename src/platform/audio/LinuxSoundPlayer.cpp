#include "platform/audio/LinuxSoundPlayer.h"

#include "core/UserPaths.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <pulse/simple.h>
#include <sndfile.h>
#include <system_error>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

constexpr int maxChannels = 8;
constexpr int maxRate = 384000;

struct SoundFile {
    explicit SoundFile(const fs::path& path) : handle(sf_open(path.c_str(), SFM_READ, &info)) {}
    ~SoundFile() {
        if (handle) sf_close(handle);
    }
    SoundFile(const SoundFile&) = delete;
    SoundFile& operator=(const SoundFile&) = delete;

    // Something PulseAudio can take as it is: frames, 1 to 8 channels, a rate it accepts.
    bool playable() const {
        return handle && info.frames > 0 && info.channels >= 1 && info.channels <= maxChannels &&
               info.samplerate > 0 && info.samplerate <= maxRate;
    }

    SF_INFO info{};
    SNDFILE* handle;
};

struct PulseStream {
    PulseStream(const pa_sample_spec& format, const pa_buffer_attr& buffer)
        : handle(pa_simple_new(nullptr, "Tovrin", PA_STREAM_PLAYBACK, nullptr, "Alert sound", &format,
                               nullptr, &buffer, nullptr)) {}
    ~PulseStream() {
        if (handle) pa_simple_free(handle);
    }
    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    pa_simple* handle;
};

std::optional<fs::path> absoluteDir(const char* value) {
    if (!value || !*value) return std::nullopt;
    fs::path dir(value);
    if (!dir.is_absolute()) return std::nullopt;
    return dir;
}

// $XDG_DATA_HOME, then $XDG_DATA_DIRS, with the defaults of the base directory layout; relative
// entries are ignored, as that layout asks.
std::vector<fs::path> dataDirs() {
    std::vector<fs::path> dirs;
    dirs.push_back(absoluteDir(std::getenv("XDG_DATA_HOME")).value_or(UserPaths::home() / ".local/share"));
    const char* list = std::getenv("XDG_DATA_DIRS");
    const std::string joined = list && *list ? list : "/usr/local/share:/usr/share";
    std::size_t start = 0;
    while (start <= joined.size()) {
        const std::size_t end = std::min(joined.find(':', start), joined.size());
        if (auto dir = absoluteDir(joined.substr(start, end - start).c_str())) dirs.push_back(*dir);
        start = end + 1;
    }
    return dirs;
}

// The "Inherits" list of a theme's index.theme, from the first data folder that has one.
std::vector<std::string> inheritedThemes(const std::string& theme, const std::vector<fs::path>& dirs) {
    for (const auto& dir : dirs) {
        std::ifstream index(dir / "sounds" / theme / "index.theme");
        if (!index) continue;
        std::vector<std::string> parents;
        bool inThemeSection = false;
        for (std::string line; std::getline(index, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (line.starts_with('[')) {
                inThemeSection = line == "[Sound Theme]";
            } else if (inThemeSection && line.starts_with("Inherits=")) {
                std::string rest = line.substr(9);
                std::size_t start = 0;
                while (start <= rest.size()) {
                    const std::size_t end = std::min(rest.find(',', start), rest.size());
                    std::string name = rest.substr(start, end - start);
                    name.erase(0, name.find_first_not_of(' '));
                    name.erase(name.find_last_not_of(' ') + 1);
                    if (!name.empty() && name.find('/') == std::string::npos) parents.push_back(name);
                    start = end + 1;
                }
            }
        }
        return parents;
    }
    return {};
}

} // namespace

LinuxSoundPlayer::LinuxSoundPlayer(std::string themeName, Observer observer)
    : m_themeName(std::move(themeName)), m_observer(std::move(observer)), m_worker([this] { run(); }) {}

LinuxSoundPlayer::~LinuxSoundPlayer() {
    {
        std::lock_guard lock(m_mutex);
        m_quit = true;
        ++m_generation;
    }
    m_wake.notify_all();
    m_worker.join();
}

bool LinuxSoundPlayer::canDecode(const std::filesystem::path& file) const {
    return SoundFile(file).playable();
}

void LinuxSoundPlayer::play(const std::filesystem::path& file) {
    {
        std::lock_guard lock(m_mutex);
        m_pending = file;
        ++m_generation;
    }
    m_wake.notify_one();
}

void LinuxSoundPlayer::run() {
    for (;;) {
        fs::path file;
        std::uint64_t generation = 0;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_quit || m_pending; });
            if (m_quit) return;
            file = std::move(*m_pending);
            m_pending.reset();
            generation = m_generation;
        }
        const Outcome outcome = playOne(file, generation);
        if (m_observer) m_observer(file, outcome);
    }
}

bool LinuxSoundPlayer::superseded(std::uint64_t generation) const {
    return m_generation.load() != generation;
}

LinuxSoundPlayer::Outcome LinuxSoundPlayer::playOne(const std::filesystem::path& file,
                                                    std::uint64_t generation) {
    SoundFile sound(file);
    if (!sound.playable()) return Outcome::failed;

    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(sound.info.samplerate),
                                static_cast<std::uint8_t>(sound.info.channels)};
    // A short server-side buffer, so that a newer sound cuts in within about a tenth of a second.
    const auto unset = static_cast<std::uint32_t>(-1);
    const pa_buffer_attr buffer{unset, static_cast<std::uint32_t>(pa_usec_to_bytes(100'000, &format)), unset,
                                unset, unset};
    PulseStream stream(format, buffer);
    if (!stream.handle) return Outcome::failed;

    const sf_count_t chunkFrames = std::max(1, sound.info.samplerate / 20);
    std::vector<float> samples(static_cast<std::size_t>(chunkFrames * sound.info.channels));
    for (;;) {
        if (superseded(generation)) {
            pa_simple_flush(stream.handle, nullptr);
            return Outcome::interrupted;
        }
        const sf_count_t frames = sf_readf_float(sound.handle, samples.data(), chunkFrames);
        if (frames <= 0) break;
        const auto bytes = static_cast<std::size_t>(frames * sound.info.channels) * sizeof(float);
        if (pa_simple_write(stream.handle, samples.data(), bytes, nullptr) < 0) return Outcome::failed;
    }
    return pa_simple_drain(stream.handle, nullptr) < 0 ? Outcome::failed : Outcome::finished;
}

std::vector<std::string> LinuxSoundPlayer::themeChain(const std::vector<std::filesystem::path>& dirs) const {
    std::vector<std::string> chain;
    std::vector<std::string> queue{m_themeName};
    // Breadth first, each theme once, so that a loop of inheritance ends.
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const std::string& theme = queue[i];
        if (theme.empty() || std::find(chain.begin(), chain.end(), theme) != chain.end()) continue;
        chain.push_back(theme);
        for (auto& parent : inheritedThemes(theme, dirs))
            queue.push_back(std::move(parent));
    }
    if (std::find(chain.begin(), chain.end(), "freedesktop") == chain.end())
        chain.emplace_back("freedesktop");
    return chain;
}

std::optional<std::filesystem::path> LinuxSoundPlayer::themeSound(const std::string& eventName) const {
    if (eventName.empty() || eventName.find('/') != std::string::npos) return std::nullopt;
    const std::vector<fs::path> dirs = dataDirs();
    const std::vector<std::string> themes = themeChain(dirs);
    constexpr std::array extensions{".oga", ".ogg", ".wav"};

    std::string name = eventName;
    for (;;) {
        for (const auto& theme : themes) {
            for (const auto& dir : dirs) {
                for (const char* extension : extensions) {
                    fs::path candidate = dir / "sounds" / theme / "stereo" / (name + extension);
                    std::error_code error;
                    if (fs::is_regular_file(candidate, error)) return candidate;
                }
            }
        }
        const std::size_t dash = name.rfind('-');
        if (dash == std::string::npos || dash == 0) return std::nullopt;
        name.erase(dash);
    }
}

} // namespace tovrin
