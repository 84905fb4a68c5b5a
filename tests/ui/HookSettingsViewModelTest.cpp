#include "ui/viewmodels/HookSettingsViewModel.h"

#include "hooks/HookFileError.h"
#include "support/SamplePayload.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using State = HookInstallManager::State;
using Control = HookRowPresentation::Control;

// A temporary home with the sample payload, and jq looked for in a folder of the test's own.
class HookSettingsViewModelTest : public ::testing::Test {
protected:
    std::unique_ptr<HookSettingsViewModel> makeModel(bool withPayload = true) const {
        std::optional<AdapterResources> resources;
        if (withPayload) resources = test::writeSamplePayload(dir.path() / "Adapters");
        return std::make_unique<HookSettingsViewModel>(resources, home, JQLocator({jqPath}, "/usr/bin/jq"));
    }
    void presentAgents(std::initializer_list<const char*> folders) const {
        for (const char* folder : folders)
            fs::create_directories(home / folder);
    }
    const HookSettingsViewModel::Row& row(const HookSettingsViewModel& model, const std::string& id) const {
        for (const auto& r : model.rows())
            if (r.target.id == id) return r;
        throw std::runtime_error("no row " + id);
    }

    test::TempDir dir;
    fs::path home = dir.path() / "home";
    fs::path jqPath = dir.path() / "bin/jq";
    std::string hint = std::string(HookSettingsText::hint);
};

TEST_F(HookSettingsViewModelTest, ShowsTheWriterPathAndTheHintBeforeAnythingIsInstalled) {
    const auto model = makeModel();
    EXPECT_TRUE(model->rows().empty());
    EXPECT_FALSE(model->notice());
    model->refresh();
    ASSERT_EQ(model->rows().size(), 6u);

    const auto writer = (home / ".tovrin/agent-status.sh").string();
    EXPECT_EQ(model->writerPath(), writer);
    const auto footer = model->footer();
    EXPECT_FALSE(footer.setUpButton);
    EXPECT_FALSE(footer.showsRemoveAll);
    EXPECT_EQ(footer.captions,
              (std::vector<HookCaption>{{JQLocator::Availability::missing().summary(), HookTone::waitingRed,
                                         "exclamationmark.triangle.fill"},
                                        {hint, HookTone::ashDim, ""},
                                        {"Writer: " + writer, HookTone::ashDim, ""}}));
    EXPECT_FALSE(fs::exists(home / ".tovrin"));
}

TEST_F(HookSettingsViewModelTest, TheSetUpButtonCountsPendingDefaultsOnly) {
    presentAgents({".claude", ".codex", ".cursor"});
    dir.write("bin/jq", "#!/bin/sh\n");
    ::chmod(jqPath.c_str(), 0755);
    const auto model = makeModel();
    model->refresh();
    EXPECT_EQ(model->pendingDefaultCount(), 2);
    EXPECT_EQ(model->footer().setUpButton, "Set up 2 agents");
    EXPECT_FALSE(model->footer().showsRemoveAll);
    EXPECT_EQ(model->footer().captions[0],
              (HookCaption{"jq found at " + jqPath.string() +
                               ". Agents launched from a terminal will find it; an "
                               "editor launched from the application menu might not.",
                           HookTone::ashDim, ""}));

    model->install(row(*model, "claude-code"));
    EXPECT_EQ(row(*model, "claude-code").state, State::installed());
    EXPECT_EQ(model->installedCount(), 1);
    EXPECT_EQ(model->footer().setUpButton, "Set up 1 agent");
    EXPECT_TRUE(model->footer().showsRemoveAll);

    model->install(row(*model, "cursor"));
    EXPECT_EQ(model->installedCount(), 2);
    EXPECT_EQ(model->pendingDefaultCount(), 1) << "an opt-in target never counts towards set-up";

    dir.write("home/.codex/hooks.json", "[]");
    model->refresh();
    EXPECT_EQ(model->pendingDefaultCount(), 0) << "an unreadable row does not count";
    EXPECT_FALSE(model->footer().setUpButton);
    EXPECT_TRUE(model->footer().showsRemoveAll);
}

TEST_F(HookSettingsViewModelTest, ManualStepsAndErrorsFollowTheLastAction) {
    presentAgents({".config/Code/User"});
    const auto settings = dir.write("home/.config/Code/User/settings.json", "{ // mine\n}");
    const auto claude = dir.write("home/.claude/settings.json", "{ // mine\n}");
    const auto model = makeModel();
    model->refresh();

    model->install(row(*model, "vscode"));
    EXPECT_FALSE(model->errorMessage());
    EXPECT_EQ(model->manualSteps(),
              std::vector<std::string>{
                  settings.string() +
                  " could not be edited automatically (settings.json is not plain JSON (it may "
                  "use comments). Tovrin left it untouched.). Add \"~/.tovrin/vscode-hooks.json\": "
                  "true under chat.hookFilesLocations."});
    const auto footer = model->footer();
    EXPECT_EQ(footer.captions.back(),
              (HookCaption{model->manualSteps()[0], HookTone::bronze, "hand.raised"}));

    model->install(row(*model, "claude-code"));
    EXPECT_EQ(model->errorMessage(), HookFileError::unreadableJSON(claude));
    EXPECT_EQ(model->manualSteps().size(), 1u) << "a failure leaves earlier steps on screen";
    EXPECT_EQ(model->footer().captions.back(),
              (HookCaption{HookFileError::unreadableJSON(claude), HookTone::waitingRed,
                           "exclamationmark.triangle"}));
    model->refresh();
    EXPECT_TRUE(model->errorMessage()) << "reopening the window keeps the message";

    dir.write("home/.claude/settings.json", "{}");
    model->install(row(*model, "claude-code"));
    EXPECT_FALSE(model->errorMessage());
    EXPECT_TRUE(model->manualSteps().empty());

    model->uninstall(row(*model, "claude-code"));
    EXPECT_EQ(row(*model, "claude-code").state, State::notInstalled()) << "the row follows";
}

TEST_F(HookSettingsViewModelTest, SetUpWithNothingToHookSaysSoAndRemoveAllClearsTheWords) {
    const auto model = makeModel();
    model->refresh();
    model->installDefaults();
    EXPECT_EQ(model->errorMessage(), std::string(HookSettingsText::noAgentsFound));

    presentAgents({".claude", ".config/Code/User"});
    dir.write("home/.codex/hooks.json", "{ broken");
    model->installDefaults();
    EXPECT_FALSE(model->errorMessage());
    EXPECT_TRUE(model->manualSteps().empty());
    EXPECT_EQ(model->installedCount(), 2);

    model->install(row(*model, "codex")); // fails: the file is not JSON
    ASSERT_TRUE(model->errorMessage());
    model->uninstallAll();
    EXPECT_FALSE(model->errorMessage()) << "even though removing codex failed";
    EXPECT_TRUE(model->manualSteps().empty());
    EXPECT_EQ(model->installedCount(), 0);
}

TEST_F(HookSettingsViewModelTest, WithoutThePayloadOnlyTheNoticeShowsAndNothingHappens) {
    presentAgents({".claude"});
    const auto model = makeModel(false);
    EXPECT_EQ(model->notice(), (HookCaption{AdapterResources::payloadMissingMessage(), HookTone::waitingRed,
                                            "exclamationmark.triangle.fill"}));
    EXPECT_FALSE(model->writerPath());
    model->refresh();
    EXPECT_TRUE(model->rows().empty());

    int changes = 0;
    Subscription counting = model->objectWillChange.connect([&] { ++changes; });
    const HookSettingsViewModel::Row claude{model->targets()[0], State::notInstalled()};
    model->install(claude);
    model->uninstall(claude);
    model->installDefaults();
    model->uninstallAll();
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(model->errorMessage());
}

TEST(HookRowPresentation, EachStateHasItsDotLineAndControl) {
    const auto targets = HookTarget::all("/home/dev");
    const auto& claude = targets[0];
    struct Case {
        const HookTarget& target;
        State state;
        HookTone dot;
        bool glows;
        std::optional<std::string> secondLine;
        Control control;
        std::string text;
    };
    const Case cases[] = {
        {claude, State::installed(), HookTone::workingAmber, true, claude.note, Control::removeButton,
         "Remove"},
        {claude, State::notInstalled(), HookTone::ashDim, false, claude.note, Control::installButton,
         "Install"},
        {claude, State::agentMissing(), HookTone::ashDim, false, std::nullopt, Control::notFoundText,
         "Not found"},
        {claude, State::unreadable("why"), HookTone::waitingRed, false, "why", Control::disabledInstallButton,
         "Install"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.target.id + " " + c.text);
        const auto shown = HookRowPresentation::of(c.target, c.state);
        EXPECT_EQ(shown.dot, c.dot);
        EXPECT_EQ(shown.glows, c.glows);
        EXPECT_EQ(shown.secondLine, c.secondLine);
        EXPECT_EQ(shown.control, c.control);
        EXPECT_EQ(shown.controlText, c.text);
    }
}

} // namespace
} // namespace tovrin
