#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <variant>

namespace tovrin {

// One choice of the alert sound. Its id is what the `alertSound` setting stores: a themed id
// ("horn-of-gondor"), a system name ("Glass"), or "custom:" and a file name in the custom folder.
struct AlertSound {
    struct Bundled {
        std::string resource;
        bool operator==(const Bundled&) const = default;
    };
    struct Custom {
        std::filesystem::path url;
        bool operator==(const Custom&) const = default;
    };
    struct System {
        bool operator==(const System&) const = default;
    };
    using Source = std::variant<Bundled, Custom, System>;

    std::string id;
    std::string displayName;
    Source source;

    bool operator==(const AlertSound&) const = default;
};

} // namespace tovrin

template <> struct std::hash<tovrin::AlertSound> {
    std::size_t operator()(const tovrin::AlertSound& sound) const noexcept {
        return std::hash<std::string>{}(sound.id);
    }
};
