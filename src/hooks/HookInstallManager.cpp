#include "hooks/HookInstallManager.h"

#include "hooks/HookConfigMerger.h"
#include "hooks/HookFileError.h"
#include "hooks/HookFileStore.h"

namespace tovrin {
namespace fs = std::filesystem;

HookInstallManager::HookInstallManager(AdapterResources resources, WriterInstaller writerInstaller,
                                       HookTemplateRenderer renderer, std::shared_ptr<HookFileStoring> store,
                                       VSCodeHookRegistrar vsCode)
    : m_resources(std::move(resources)), m_writerInstaller(std::move(writerInstaller)),
      m_renderer(std::move(renderer)), m_store(std::move(store)), m_vsCode(std::move(vsCode)) {}

HookInstallManager HookInstallManager::forHome(const fs::path& home, AdapterResources resources,
                                               std::shared_ptr<HookFileStoring> store,
                                               std::shared_ptr<WriterFiles> writerFiles) {
    auto writer = WriterInstaller::forHome(home, resources, std::move(writerFiles));
    HookTemplateRenderer renderer{resources};
    VSCodeHookRegistrar registrar(home, store);
    return HookInstallManager(std::move(resources), std::move(writer), std::move(renderer), std::move(store),
                              std::move(registrar));
}

Result<std::vector<HookInstallManager::SkippedSettings>>
HookInstallManager::install(const HookTarget& target) const {
    using R = Result<std::vector<SkippedSettings>>;
    // The only moment the writer's staleness is examined.
    auto writer = m_writerInstaller.ensureInstalled(WriterInstaller::currentAppVersion());
    if (!writer) return R::failure(writer.error());
    auto ours = m_renderer.render(target.templateName, writer.value());
    if (!ours) return R::failure(ours.error());
    // Read even under dedicatedFile: a file we can't read is refused, not discarded.
    auto existing = m_store->readObject(target.configPath);
    if (!existing) return R::failure(existing.error());
    const auto owner = ownership();
    const bool isUsersOwn = !HookConfigMerger::isInstalled(existing.value(), target.strategy, owner);
    auto merged = HookConfigMerger::merge(ours.value(), std::move(existing).value(), target.strategy, owner);
    if (!merged) return R::failure(HookFileError::noPlaceForHooks(target.configPath, merged.error()));
    if (auto written = m_store->write(merged.value(), target.configPath, isUsersOwn); !written)
        return R::failure(written.error());
    if (target.id == vsCodeTargetId) return m_vsCode.registerHooks();
    return std::vector<SkippedSettings>{};
}

std::vector<HookTarget> HookInstallManager::installDefaults(const std::vector<HookTarget>& targets,
                                                            std::vector<SkippedSettings>* skipped) const {
    std::vector<HookTarget> installed;
    for (const auto& target : targets) {
        if (!target.isDefault || state(target).kind == State::Kind::agentMissing) continue;
        auto result = install(target);
        if (!result) continue;
        installed.push_back(target);
        if (skipped) skipped->insert(skipped->end(), result.value().begin(), result.value().end());
    }
    return installed;
}

HookInstallManager::State HookInstallManager::state(const HookTarget& target) const {
    const auto owner = ownership();
    if (target.id == vsCodeTargetId) {
        if (!m_vsCode.isVSCodeInstalled()) return State::agentMissing();
        // Our own file: a broken one is simply not installed, and install will say why.
        auto document = m_store->readObject(target.configPath);
        if (!document) return State::notInstalled();
        return HookConfigMerger::isInstalled(document.value(), target.strategy, owner) &&
                       m_vsCode.isRegistered()
                   ? State::installed()
                   : State::notInstalled();
    }
    if (target.detectionPath && !m_store->fileExists(*target.detectionPath)) return State::agentMissing();
    if (!m_store->fileExists(target.configPath)) return State::notInstalled();
    auto document = m_store->readObject(target.configPath);
    if (!document) return State::unreadable(document.error());
    return HookConfigMerger::isInstalled(document.value(), target.strategy, owner) ? State::installed()
                                                                                   : State::notInstalled();
}

Result<void> HookInstallManager::uninstall(const HookTarget& target) const {
    if (m_store->fileExists(target.configPath)) {
        auto document = m_store->readObject(target.configPath);
        if (!document) return Result<void>::failure(document.error());
        const auto owner = ownership();
        const bool held = HookConfigMerger::isInstalled(document.value(), target.strategy, owner);
        const auto cleaned = HookConfigMerger::remove(std::move(document).value(), target.strategy, owner);
        if (target.strategy.kind == MergeStrategy::Kind::dedicatedFile) {
            // Our own file goes only when it was ours alone; someone else's entries keep it.
            if (held) {
                auto done = cleaned.empty() ? m_store->remove(target.configPath)
                                            : m_store->write(cleaned, target.configPath, false);
                if (!done) return done;
            }
        } else if (auto written = m_store->write(cleaned, target.configPath, !held); !written) {
            // Written back even when unchanged or empty: a merged file is never deleted.
            return written;
        }
    }
    if (target.id == vsCodeTargetId) (void)m_vsCode.deregister();
    return {};
}

void HookInstallManager::uninstallAll(const std::vector<HookTarget>& targets) const {
    for (const auto& target : targets)
        (void)uninstall(target);
    (void)m_writerInstaller.removeInstalled();
}

std::vector<fs::path> HookInstallManager::originals(const HookTarget& target) const {
    std::vector<fs::path> files{target.configPath};
    if (target.id == vsCodeTargetId) {
        const auto editors = VSCodeHookRegistrar::userSettingsURLs(m_vsCode.home());
        files.insert(files.end(), editors.begin(), editors.end());
    }
    std::vector<fs::path> kept;
    for (const auto& file : files) {
        auto original = HookFileStore::originalPath(file);
        if (m_store->fileExists(original)) kept.push_back(std::move(original));
    }
    return kept;
}

} // namespace tovrin
