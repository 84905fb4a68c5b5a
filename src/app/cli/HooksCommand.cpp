#include "app/cli/HooksCommand.h"

#include "app/InstalledHooks.h"
#include "hooks/RemoteHookFileStore.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/ssh/SshShell.h"
#include "sessions/SshCommand.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>

namespace tovrin {
namespace {

constexpr const char* usage =
    "Usage: tovrin hooks [install <id> [--host <destination>] | uninstall <id> [--host <destination>] |\n"
    "                     setup | remove-all]\n";

std::string stateWord(const HookInstallManager::State& state) {
    switch (state.kind) {
    case HookInstallManager::State::Kind::installed:
        return "installed";
    case HookInstallManager::State::Kind::notInstalled:
        return "not installed";
    case HookInstallManager::State::Kind::agentMissing:
        return std::string(HookSettingsText::notFound);
    case HookInstallManager::State::Kind::unreadable:
        break;
    }
    return "unreadable";
}

std::string upper(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](unsigned char c) { return std::toupper(c); });
    return out;
}

// `setUpSkipped`: editors a set-up could not point at our VS Code hooks; the settings window
// drops them, a command line has no other place to say so.
void print(const HookSettingsViewModel& model,
           const std::vector<VSCodeHookRegistrar::SkippedSettings>& setUpSkipped) {
    std::string out = upper(HookSettingsText::heading) + "\n\n";
    if (const auto notice = model.notice()) {
        std::fputs((out + "! " + notice->text + "\n").c_str(), stdout);
        return;
    }
    for (const auto& row : model.rows()) {
        const auto shown = HookRowPresentation::of(row.target, row.state);
        char line[256];
        std::snprintf(line, sizeof line, "  %-13s %-24s %s\n", row.target.id.c_str(),
                      row.target.displayName.c_str(), stateWord(row.state).c_str());
        out += line;
        if (shown.secondLine) out += "                " + *shown.secondLine + "\n";
        for (const auto& original : model.manager()->originals(row.target))
            out += "                your original is kept as " + original.string() + "\n";
    }
    const auto footer = model.footer();
    out += '\n';
    for (const auto& caption : footer.captions)
        out += (caption.glyph.empty() ? "" : "! ") + caption.text + '\n';
    for (const auto& skipped : setUpSkipped)
        out += "! " + HookSettingsText::manualStep(skipped) + '\n';
    if (footer.setUpButton || footer.showsRemoveAll) {
        out += '\n';
        if (footer.setUpButton) out += *footer.setUpButton + ": tovrin hooks setup\n";
        if (footer.showsRemoveAll)
            out += std::string(HookSettingsText::removeAll) + ": tovrin hooks remove-all\n";
    }
    std::fputs(out.c_str(), stdout);
}

const HookSettingsViewModel::Row* rowNamed(const HookSettingsViewModel& model, const std::string& id) {
    const auto& rows = model.rows();
    const auto it =
        std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.target.id == id; });
    return it == rows.end() ? nullptr : &*it;
}

int failed(const std::string& why, int code = 1) {
    std::fprintf(stderr, "tovrin hooks: %s\n", why.c_str());
    return code;
}

// The same install as on this machine, with the files on the host: its home, its jq, its disk.
int runOnHost(const std::string& action, const std::string& id, const std::string& host) {
    if (auto problem = sshDestinationProblem(host)) return failed(*problem, 2);
    const auto named = [&id](const HookTarget& target) { return target.id == id; };
    const auto ids = HookTarget::all("/");
    if (std::none_of(ids.begin(), ids.end(), named)) return failed("no target named \"" + id + "\"", 2);
    // Its hook file is found through the settings of the editors on this machine.
    if (id == HookInstallManager::vsCodeTargetId)
        return failed("Copilot in VS Code is hooked through the editor's settings on this machine, not on " +
                          host + ".",
                      2);
    const auto resources =
        AdapterResources::locate(InstallationPaths::shareDir(), AdapterResources::processEnvironment());
    if (!resources) return failed(AdapterResources::payloadMissingMessage());

    auto store = std::make_shared<RemoteHookFileStore>(
        std::make_shared<SshShell>(host, SshCommand::fromEnvironment()));
    const bool installing = action == "install";
    const auto home = store->home(installing);
    if (!home) return failed(home.error());
    const auto manager = HookInstallManager::forHome(home.value(), *resources, store, store);
    const auto targets = HookTarget::all(home.value());
    const auto& target = *std::find_if(targets.begin(), targets.end(), named);

    Result<void> done;
    if (installing) {
        if (auto installed = manager.install(target); !installed)
            done = Result<void>::failure(installed.error());
    } else {
        done = manager.uninstall(target);
    }
    if (done && store->unanswered()) done = Result<void>::failure(*store->unanswered());
    if (!done) return failed(done.error());

    std::string out = (installing ? "Installed the hooks of " + target.displayName + " on "
                                  : "Removed the hooks of " + target.displayName + " from ") +
                      host + ".\n";
    if (installing) {
        if (target.note) out += *target.note + "\n";
        for (const auto& original : manager.originals(target))
            out += "Your original is kept there as " + original.string() + ".\n";
    }
    std::fputs(out.c_str(), stdout);
    return 0;
}

} // namespace

int runHooksCommand(int argc, char** argv) {
    std::vector<std::string> words(argv + std::min(argc, 2), argv + argc);
    std::optional<std::string> host;
    if (const auto flag = std::find(words.begin(), words.end(), "--host"); flag != words.end()) {
        if (flag + 1 == words.end()) {
            std::fputs(usage, stderr);
            return 2;
        }
        host = *(flag + 1);
        words.erase(flag, flag + 2);
    }
    const std::string action = words.empty() ? "" : words[0];
    const std::string id = words.size() >= 2 ? words[1] : "";
    const bool needsId = action == "install" || action == "uninstall";
    if (!(action.empty() || needsId || action == "setup" || action == "remove-all") ||
        (needsId != !id.empty()) || words.size() > (needsId ? 2u : 1u) || (host && !needsId)) {
        std::fputs(usage, stderr);
        return 2;
    }
    if (host) return runOnHost(action, id, *host);

    const auto hooks = makeInstalledHookSettings();
    auto& model = *hooks;
    model.refresh();

    std::vector<VSCodeHookRegistrar::SkippedSettings> setUpSkipped;
    if (needsId) {
        const auto* row = rowNamed(model, id);
        if (!row && model.manager()) {
            std::fprintf(stderr, "tovrin hooks: no target named \"%s\"\n", id.c_str());
            return 2;
        }
        if (row) {
            const auto chosen = *row; // the action replaces the rows
            action == "install" ? model.install(chosen) : model.uninstall(chosen);
        }
    } else if (action == "setup") {
        setUpSkipped = model.installDefaults();
    } else if (action == "remove-all") {
        model.uninstallAll();
    }
    print(model, setUpSkipped);
    return (model.errorMessage() || !model.manager()) ? 1 : 0;
}

} // namespace tovrin
