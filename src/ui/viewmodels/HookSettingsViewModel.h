#pragma once

#include "core/Property.h"
#include "core/Result.h"
#include "core/Signal.h"
#include "hooks/AdapterResources.h"
#include "hooks/HookFileStoring.h"
#include "hooks/HookInstallManager.h"
#include "hooks/HookTarget.h"
#include "hooks/JQLocator.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// The words of the hook section, shared by the settings window and the terminal.
namespace HookSettingsText {
inline constexpr std::string_view heading = "Agent hooks"; // shown in capitals
inline constexpr std::string_view install = "Install";
inline constexpr std::string_view remove = "Remove";
inline constexpr std::string_view notFound = "Not found";
inline constexpr std::string_view removeAll = "Remove all";
inline constexpr std::string_view hint =
    "Hooks are written into each agent's own config, alongside anything you already had there. Restart an "
    "agent for its hooks to take effect.";
inline constexpr std::string_view noAgentsFound =
    "No agents were found to hook. Install Claude Code, Codex, or Copilot CLI first.";

// "Set up 1 agent", "Set up 2 agents".
std::string setUpButton(int pending);
std::string writerLine(const std::string& path);
std::string manualStep(const VSCodeHookRegistrar::SkippedSettings& skipped);
} // namespace HookSettingsText

// Tones of the theme that the section uses; the view maps them to colours.
enum class HookTone { workingAmber, ashDim, waitingRed, bronze };

// One line of small text, with an optional glyph key (empty for none).
struct HookCaption {
    std::string text;
    HookTone tone = HookTone::ashDim;
    std::string glyph;
    bool operator==(const HookCaption&) const = default;
};

// What one target's row shows, right of its name.
struct HookRowPresentation {
    enum class Control { installButton, disabledInstallButton, removeButton, notFoundText };
    HookTone dot = HookTone::ashDim;
    bool glows = false;
    std::optional<std::string> secondLine;
    Control control = Control::installButton;
    std::string controlText;

    static HookRowPresentation of(const HookTarget& target, const HookInstallManager::State& state);
};

// What stands below the rows: the two buttons when they show, then the captions in order
// (jq notice, hint, writer path, manual steps, error).
struct HookFooterPresentation {
    std::optional<std::string> setUpButton; // label, when pending defaults exist
    bool showsRemoveAll = false;            // at the right, after a flexible space
    std::vector<HookCaption> captions;
};

// The presentation state of hook installation: one row per target, jq, the last error, the
// manual steps left, the writer's path. Turns clicks into manager calls and re-reads the disk
// after each. Main loop only.
class HookSettingsViewModel {
public:
    struct Row {
        HookTarget target;
        HookInstallManager::State state;
        bool operator==(const Row& other) const {
            return target.id == other.target.id && state == other.state;
        }
    };

    // Without resources there is no manager, and the section shows only the payload notice.
    // Without a store, files are read and written on disk through HookFileStore.
    HookSettingsViewModel(std::optional<AdapterResources> resources, const std::filesystem::path& home,
                          JQLocator locator, std::shared_ptr<HookFileStoring> store = nullptr);
    HookSettingsViewModel(const HookSettingsViewModel&) = delete;
    HookSettingsViewModel& operator=(const HookSettingsViewModel&) = delete;

    Signal<> objectWillChange;
    Property<std::vector<Row>> rows; // empty until the first refresh, and without a manager
    Property<JQLocator::Availability> jq;
    Property<std::optional<std::string>> errorMessage;
    Property<std::vector<std::string>> manualSteps;
    Property<std::optional<std::string>> writerPath;

    const std::vector<HookTarget>& targets() const { return m_targets; }
    const std::optional<HookInstallManager>& manager() const { return m_manager; }
    const JQLocator& locator() const { return m_locator; }

    int installedCount() const;
    // Default targets that are not installed; unreadable and missing agents don't count.
    int pendingDefaultCount() const;

    // Keeps errorMessage and manualSteps, so that the last action's words stay on reopening.
    void refresh();
    void install(const Row& row);
    void uninstall(const Row& row);
    // Returns the editors whose settings could not take the VS Code hooks; the section itself
    // shows no manual step after a set-up.
    std::vector<VSCodeHookRegistrar::SkippedSettings> installDefaults();
    void uninstallAll();

    // The payload-missing notice when there is no manager; the section then shows nothing else.
    std::optional<HookCaption> notice() const;
    HookFooterPresentation footer() const;

private:
    void run(const std::function<Result<std::vector<VSCodeHookRegistrar::SkippedSettings>>()>& action);

    std::vector<HookTarget> m_targets;
    std::optional<HookInstallManager> m_manager;
    JQLocator m_locator;
};

} // namespace tovrin
