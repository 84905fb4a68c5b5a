// Merge of our hooks into a configuration document read strictly, then their removal, for every
// target's template and strategy. For a document that holds nothing of ours, remove must give back
// what merge accepted, and merging twice must equal merging once. Three differences are by design:
// a flat file keeps the "version" merge added; a named block owns its key, so that key goes; and an
// event list the user left empty, once merge filled it, is tidied away like one merge created
// (the merged documents can't tell them apart), and so is a "hooks" left empty by that.
#include "hooks/ForeignJson.h"
#include "hooks/HookConfigMerger.h"
#include "hooks/HookTarget.h"
#include "hooks/HookTemplateRenderer.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using nlohmann::json;
using namespace tovrin;

namespace {

const std::filesystem::path home = "/home/u";
const HookOwnership ownership(home / ".tovrin/agent-status.sh");

struct Template {
    MergeStrategy strategy;
    json ours;
};

std::vector<Template> renderTemplates() {
    const HookTemplateRenderer renderer{AdapterResources{TOVRIN_ADAPTERS}};
    std::vector<Template> templates;
    for (const HookTarget& target : HookTarget::all(home)) {
        auto ours = renderer.render(target.templateName, ownership.writer());
        if (!ours) {
            std::fprintf(stderr, "template %s: %s\n", target.templateName.c_str(), ours.error().c_str());
            std::abort();
        }
        templates.push_back({target.strategy, std::move(ours).value()});
    }
    return templates;
}

void tidyWhatMergeFilled(const Template& t, json& expected) {
    const auto hooks = expected.find("hooks");
    const auto ourHooks = t.ours.find("hooks");
    if (t.strategy.kind == MergeStrategy::Kind::namedBlock || hooks == expected.end() ||
        !hooks->is_object() || ourHooks == t.ours.end() || !ourHooks->is_object())
        return;
    bool filled = false;
    for (const auto& [event, entries] : ourHooks->items()) {
        if (!entries.is_array() || entries.empty()) continue;
        filled = true;
        const auto it = hooks->find(event);
        if (it != hooks->end() && *it == json::array()) hooks->erase(it);
    }
    if (filled && hooks->empty()) expected.erase(hooks);
}

void check(const Template& t, const json& document) {
    const auto merged = HookConfigMerger::merge(t.ours, document, t.strategy, ownership);
    if (!merged) return;
    const auto again = HookConfigMerger::merge(t.ours, merged.value(), t.strategy, ownership);
    if (!again || again.value() != merged.value()) std::abort();

    json restored = HookConfigMerger::remove(merged.value(), t.strategy, ownership);
    if (HookConfigMerger::containsOurCommand(document, ownership)) return;
    json expected = document;
    if (t.strategy.kind == MergeStrategy::Kind::flat && !document.contains("version"))
        expected["version"] = merged.value()["version"];
    if (t.strategy.kind == MergeStrategy::Kind::namedBlock) expected.erase(t.strategy.key);
    tidyWhatMergeFilled(t, expected);
    if (restored != expected) {
        std::fprintf(stderr, "merged:   %s\nrestored: %s\n", merged.value().dump().c_str(),
                     restored.dump().c_str());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<Template> templates = renderTemplates();
    const auto document = ForeignJson::read(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!document) return 0;
    for (const Template& t : templates)
        check(t, document.value());
    return 0;
}
