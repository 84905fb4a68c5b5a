#pragma once

#include "alerts/telegram/SecretStoring.h"
#include "core/Clock.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tovrin {

// The secret store chosen at start: the Secret Service when it answers, else a private file.
struct ChosenSecretStore {
    std::unique_ptr<SecretStoring> store;
    // Set when the file fallback is in use: where the secrets are.
    std::optional<std::filesystem::path> fallbackFile;

    bool usesFallback() const { return fallbackFile.has_value(); }
    // What to tell the user when the fallback is in use; empty otherwise.
    std::string notice() const;
};

// Whether a Secret Service answers on the session bus within the timeout (starting it if the
// bus can). Asks on a private connection, so each call looks at the environment afresh.
bool secretServiceAnswers(Seconds timeout);

ChosenSecretStore chooseSecretStore(const std::string& service = "com.tovrin.app",
                                    std::filesystem::path fallbackFile = {},
                                    Seconds probeTimeout = Seconds(5));

} // namespace tovrin
