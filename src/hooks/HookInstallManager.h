#pragma once

#include "core/Result.h"
#include "hooks/AdapterResources.h"
#include "hooks/HookFileStoring.h"
#include "hooks/HookOwnership.h"
#include "hooks/HookTarget.h"
#include "hooks/HookTemplateRenderer.h"
#include "hooks/VSCodeHookRegistrar.h"
#include "hooks/WriterInstaller.h"

#include <memory>
#include <string>
#include <vector>

namespace tovrin {

// The order of installing and removing hooks: writer, template, the agent's file, the merge,
// the write, and for VS Code the editors' settings. Holds no state: every call reads the disk.
// Runs only on the user's clicks, on the main loop.
class HookInstallManager {
public:
    struct State {
        enum class Kind { installed, notInstalled, agentMissing, unreadable };
        Kind kind = Kind::notInstalled;
        std::string reason; // the read error's text, for `unreadable` only

        static State installed() { return {Kind::installed, {}}; }
        static State notInstalled() { return {Kind::notInstalled, {}}; }
        static State agentMissing() { return {Kind::agentMissing, {}}; }
        static State unreadable(std::string why) { return {Kind::unreadable, std::move(why)}; }
        bool operator==(const State&) const = default;
    };
    using SkippedSettings = VSCodeHookRegistrar::SkippedSettings;

    HookInstallManager(AdapterResources resources, WriterInstaller writerInstaller,
                       HookTemplateRenderer renderer, std::shared_ptr<HookFileStoring> store,
                       VSCodeHookRegistrar vsCode);

    // The usual graph for one home folder: writer in <home>/.tovrin, the registrar over `store`.
    // Without `writerFiles`, the writer is copied on this machine.
    static HookInstallManager forHome(const std::filesystem::path& home, AdapterResources resources,
                                      std::shared_ptr<HookFileStoring> store,
                                      std::shared_ptr<WriterFiles> writerFiles = nullptr);

    // Installs one target afresh. For `vscode` the result lists editors whose settings could
    // not be changed; the hook file is in place all the same.
    Result<std::vector<SkippedSettings>> install(const HookTarget& target) const;
    // Installs every default target whose agent is present, dropping single failures; returns
    // those that succeeded, in order. Editors whose settings could not take the VS Code hooks
    // go to `skipped` when it is given.
    std::vector<HookTarget> installDefaults(const std::vector<HookTarget>& targets,
                                            std::vector<SkippedSettings>* skipped = nullptr) const;
    State state(const HookTarget& target) const;
    // A merged file is rewritten, never deleted. A dedicated file goes with its backup when it
    // held our entries and nothing else; otherwise only our entries leave it.
    Result<void> uninstall(const HookTarget& target) const;
    // Every target whatever its state, then the writer; failures are dropped.
    void uninstallAll(const std::vector<HookTarget>& targets) const;

    // The users' own files as they were before we first changed them, for this target.
    std::vector<std::filesystem::path> originals(const HookTarget& target) const;
    HookOwnership ownership() const { return HookOwnership(m_writerInstaller.destination); }

    const AdapterResources& resources() const { return m_resources; }
    const WriterInstaller& writerInstaller() const { return m_writerInstaller; }
    const VSCodeHookRegistrar& vsCode() const { return m_vsCode; }

    static constexpr std::string_view vsCodeTargetId = "vscode";

private:
    AdapterResources m_resources;
    WriterInstaller m_writerInstaller;
    HookTemplateRenderer m_renderer;
    std::shared_ptr<HookFileStoring> m_store;
    VSCodeHookRegistrar m_vsCode;
};

} // namespace tovrin
