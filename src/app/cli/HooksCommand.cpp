#include "app/cli/HooksCommand.h"

#include "app/InstalledHooks.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace tovrin {
namespace {

constexpr const char* usage = "Usage: tovrin hooks [install <id> | uninstall <id> | setup | remove-all]\n";

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

} // namespace

int runHooksCommand(int argc, char** argv) {
    const std::string action = argc >= 3 ? argv[2] : "";
    const std::string id = argc >= 4 ? argv[3] : "";
    const bool needsId = action == "install" || action == "uninstall";
    if (!(action.empty() || needsId || action == "setup" || action == "remove-all") ||
        (needsId != !id.empty()) || argc > (needsId ? 4 : 3)) {
        std::fputs(usage, stderr);
        return 2;
    }

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
