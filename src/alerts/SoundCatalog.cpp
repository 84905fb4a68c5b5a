#include "alerts/SoundCatalog.h"

#include <algorithm>
#include <array>
#include <utility>

namespace fs = std::filesystem;

namespace tovrin {

namespace {

// Each system name maps to a distinct event of the freedesktop sound theme, picked by the
// character of the sound it stands for:
//   Basso     → dialog-error            low thud of a refusal
//   Blow      → window-attention        soft rush asking for a look
//   Bottle    → message                 hollow knock of a plain message
//   Frog      → suspend-error           the croak of something gone wrong
//   Funk      → dialog-warning          short warning chord
//   Glass     → message-new-instant     bright chime of a new message
//   Hero      → complete                fanfare of something done
//   Morse     → phone-outgoing-calling  beeping pattern
//   Ping      → bell                    a single ping
//   Pop       → audio-volume-change     the small pop of a volume step
//   Purr      → device-added            low hum of something arriving
//   Sosumi    → dialog-information      a neutral notice
//   Submarine → phone-incoming-call     sonar-like ring that calls you
//   Tink      → window-question         light tap that asks
constexpr std::array<std::pair<std::string_view, std::string_view>, 14> systemEvents{{
    {"Basso", "dialog-error"},
    {"Blow", "window-attention"},
    {"Bottle", "message"},
    {"Frog", "suspend-error"},
    {"Funk", "dialog-warning"},
    {"Glass", "message-new-instant"},
    {"Hero", "complete"},
    {"Morse", "phone-outgoing-calling"},
    {"Ping", "bell"},
    {"Pop", "audio-volume-change"},
    {"Purr", "device-added"},
    {"Sosumi", "dialog-information"},
    {"Submarine", "phone-incoming-call"},
    {"Tink", "window-question"},
}};

const AlertSound* find(const std::vector<AlertSound>& list, std::string_view id) {
    const auto it = std::ranges::find(list, id, &AlertSound::id);
    return it == list.end() ? nullptr : &*it;
}

} // namespace

const std::vector<AlertSound>& SoundCatalog::themed() {
    static const std::vector<AlertSound> list = [] {
        const std::array<std::pair<const char*, const char*>, 7> rows{{
            {"horn-of-gondor", "Horn of Gondor"},
            {"horns-of-vengeance", "Horns of Vengeance"},
            {"clash-of-swords", "Clash of Swords"},
            {"drawn-steel", "Drawn Steel"},
            {"arrow-volley", "Arrow Volley"},
            {"war-cry", "War Cry"},
            {"drums-of-war", "Drums of War"},
        }};
        std::vector<AlertSound> sounds;
        for (const auto& [id, name] : rows)
            sounds.push_back({id, name, AlertSound::Bundled{id}});
        return sounds;
    }();
    return list;
}

const std::vector<AlertSound>& SoundCatalog::system() {
    static const std::vector<AlertSound> list = [] {
        std::vector<AlertSound> sounds;
        for (const auto& [name, event] : systemEvents) {
            sounds.push_back({std::string(name), std::string(name), AlertSound::System{}});
        }
        return sounds;
    }();
    return list;
}

std::optional<std::string_view> SoundCatalog::themeEvent(std::string_view systemName) {
    for (const auto& [name, event] : systemEvents) {
        if (name == systemName) return event;
    }
    return std::nullopt;
}

SoundCatalog::SoundCatalog(fs::path soundsFolder, const CustomSoundManager& custom, const SoundPlayer& player)
    : m_soundsFolder(std::move(soundsFolder)), m_custom(custom), m_player(player) {}

std::optional<fs::path> SoundCatalog::decodable(std::optional<fs::path> file) const {
    if (file && m_player.canDecode(*file)) return file;
    return std::nullopt;
}

std::optional<fs::path> SoundCatalog::bundledURL(std::string_view id) const {
    if (!find(themed(), id)) return std::nullopt;
    auto file = m_soundsFolder / (std::string(id) + ".wav");
    std::error_code ec;
    if (!fs::is_regular_file(file, ec)) return std::nullopt;
    return file;
}

std::optional<fs::path> SoundCatalog::sound(std::string_view id) const {
    if (id.starts_with(CustomSoundManager::idPrefix)) {
        if (auto file = decodable(m_custom.url(id))) return file;
        return decodable(bundledURL(fallbackId));
    }
    if (auto file = bundledURL(id)) return decodable(std::move(file));
    if (const auto event = themeEvent(id)) return m_player.themeSound(std::string(*event));
    return std::nullopt;
}

std::string SoundCatalog::displayName(std::string_view id) const {
    if (const auto* s = find(themed(), id)) return s->displayName;
    if (const auto* s = find(system(), id)) return s->displayName;
    const auto custom = m_custom.sounds();
    if (const auto* s = find(custom, id)) return s->displayName;
    if (const auto name = CustomSoundManager::filename(id)) return CustomSoundManager::displayName(*name);
    return std::string(id);
}

} // namespace tovrin
