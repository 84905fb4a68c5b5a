#include "ui/viewmodels/HookSettingsViewModel.h"

#include "hooks/HookFileStore.h"

#include <algorithm>

namespace tovrin {

using State = HookInstallManager::State;

std::string HookSettingsText::setUpButton(int pending) {
    return "Set up " + std::to_string(pending) + (pending == 1 ? " agent" : " agents");
}

std::string HookSettingsText::writerLine(const std::string& path) {
    return "Writer: " + path;
}

std::string HookSettingsText::manualStep(const VSCodeHookRegistrar::SkippedSettings& skipped) {
    return skipped.url.string() + " could not be edited automatically (" + skipped.reason + "). Add \"" +
           std::string(VSCodeHookRegistrar::ourLocation) + "\": true under " +
           std::string(VSCodeHookRegistrar::settingKey) + ".";
}

HookRowPresentation HookRowPresentation::of(const HookTarget& target, const State& state) {
    using Control = HookRowPresentation::Control;
    switch (state.kind) {
    case State::Kind::installed:
        return {HookTone::workingAmber, true, target.note, Control::removeButton,
                std::string(HookSettingsText::remove)};
    case State::Kind::notInstalled:
        return {HookTone::ashDim, false, target.note, Control::installButton,
                std::string(HookSettingsText::install)};
    case State::Kind::agentMissing:
        return {HookTone::ashDim, false, std::nullopt, Control::notFoundText,
                std::string(HookSettingsText::notFound)};
    case State::Kind::unreadable:
        break;
    }
    return {HookTone::waitingRed, false, state.reason, Control::disabledInstallButton,
            std::string(HookSettingsText::install)};
}

HookSettingsViewModel::HookSettingsViewModel(std::optional<AdapterResources> resources,
                                             const std::filesystem::path& home, JQLocator locator,
                                             std::shared_ptr<HookFileStoring> store)
    : rows(objectWillChange, {}), jq(objectWillChange, JQLocator::Availability::missing()),
      errorMessage(objectWillChange, std::nullopt), manualSteps(objectWillChange, {}),
      writerPath(objectWillChange, std::nullopt), m_targets(HookTarget::all(home)),
      m_locator(std::move(locator)) {
    if (!resources) return;
    if (!store) store = std::make_shared<HookFileStore>();
    m_manager.emplace(HookInstallManager::forHome(home, std::move(*resources), std::move(store)));
    // Shown whether or not the writer is installed yet.
    writerPath.set(m_manager->writerInstaller().destination.string());
}

int HookSettingsViewModel::installedCount() const {
    return static_cast<int>(std::count_if(rows().begin(), rows().end(), [](const Row& row) {
        return row.state.kind == State::Kind::installed;
    }));
}

int HookSettingsViewModel::pendingDefaultCount() const {
    return static_cast<int>(std::count_if(rows().begin(), rows().end(), [](const Row& row) {
        return row.target.isDefault && row.state.kind == State::Kind::notInstalled;
    }));
}

void HookSettingsViewModel::refresh() {
    jq.set(m_locator.locate());
    if (!m_manager) return;
    std::vector<Row> fresh;
    fresh.reserve(m_targets.size());
    for (const auto& target : m_targets)
        fresh.push_back({target, m_manager->state(target)});
    rows.set(std::move(fresh));
}

void HookSettingsViewModel::run(
    const std::function<Result<std::vector<VSCodeHookRegistrar::SkippedSettings>>()>& action) {
    if (!m_manager) return;
    auto result = action();
    if (!result) {
        // Earlier manual steps stay: they still need doing.
        errorMessage.set(result.error());
    } else {
        errorMessage.set(std::nullopt);
        std::vector<std::string> steps;
        for (const auto& skipped : result.value())
            steps.push_back(HookSettingsText::manualStep(skipped));
        manualSteps.set(std::move(steps));
    }
    refresh();
}

void HookSettingsViewModel::install(const Row& row) {
    run([&] { return m_manager->install(row.target); });
}

void HookSettingsViewModel::uninstall(const Row& row) {
    using R = Result<std::vector<VSCodeHookRegistrar::SkippedSettings>>;
    run([&]() -> R {
        if (auto removed = m_manager->uninstall(row.target); !removed) return R::failure(removed.error());
        return std::vector<VSCodeHookRegistrar::SkippedSettings>{};
    });
}

std::vector<VSCodeHookRegistrar::SkippedSettings> HookSettingsViewModel::installDefaults() {
    std::vector<VSCodeHookRegistrar::SkippedSettings> skipped;
    if (!m_manager) return skipped;
    // Also when agents were found but every install failed: the rows tell which.
    if (m_manager->installDefaults(m_targets, &skipped).empty())
        errorMessage.set(std::string(HookSettingsText::noAgentsFound));
    else
        errorMessage.set(std::nullopt);
    manualSteps.set({});
    refresh();
    return skipped;
}

void HookSettingsViewModel::uninstallAll() {
    if (!m_manager) return;
    m_manager->uninstallAll(m_targets);
    errorMessage.set(std::nullopt);
    manualSteps.set({});
    refresh();
}

std::optional<HookCaption> HookSettingsViewModel::notice() const {
    if (m_manager) return std::nullopt;
    return HookCaption{AdapterResources::payloadMissingMessage(), HookTone::waitingRed,
                       "exclamationmark.triangle.fill"};
}

HookFooterPresentation HookSettingsViewModel::footer() const {
    HookFooterPresentation footer;
    if (const int pending = pendingDefaultCount(); pending >= 1)
        footer.setUpButton = HookSettingsText::setUpButton(pending);
    footer.showsRemoveAll = installedCount() >= 1;

    if (jq().kind == JQLocator::Availability::Kind::missing)
        footer.captions.push_back({jq().summary(), HookTone::waitingRed, "exclamationmark.triangle.fill"});
    else
        footer.captions.push_back({jq().summary(), HookTone::ashDim, ""});
    footer.captions.push_back({std::string(HookSettingsText::hint), HookTone::ashDim, ""});
    if (writerPath())
        footer.captions.push_back({HookSettingsText::writerLine(*writerPath()), HookTone::ashDim, ""});
    for (const auto& step : manualSteps())
        footer.captions.push_back({step, HookTone::bronze, "hand.raised"});
    if (errorMessage())
        footer.captions.push_back({*errorMessage(), HookTone::waitingRed, "exclamationmark.triangle"});
    return footer;
}

} // namespace tovrin
