#pragma once

#include <functional>
#include <string>

namespace tovrin {

// What the desktop knows about the screen and the user's appearance settings; the tray application
// fills it from the toolkit. The defaults stand where nothing is known (no display).
struct DisplayFacts {
    double screenWidth = 0;
    double screenHeight = 0;
    double screenScaleFactor = 1;
    bool darkColorScheme = false;
    bool rightToLeftLayout = false;
    bool reduceMotion = false;
    bool invertColors = false;
};

// Asked on the main loop for each signal; empty when the application has no display.
using DisplayFactsProvider = std::function<DisplayFacts()>;

// The current POSIX locale as the service names it.
struct LocaleFacts {
    std::string identifier;        // "de_DE"
    std::string region;            // "DE", else the identifier
    std::string language;          // "de", else the identifier
    std::string preferredLanguage; // "de-DE", else "zz-ZZ"
};

// What stays the same for the whole run: the system, the machine and the locale.
struct SystemFacts {
    std::string systemVersion;           // "Linux 24.04.1"
    std::string majorSystemVersion;      // "Linux 24"
    std::string majorMinorSystemVersion; // "Linux 24.04"
    std::string architecture;            // as uname says: "x86_64", "aarch64"
    std::string modelName;
    LocaleFacts locale;
};

} // namespace tovrin
