#include "ui/views/settings/HookInstallSection.h"

#include "support/RenderedImages.h"
#include "support/SamplePayload.h"
#include "support/SettleEvents.h"
#include "support/TempDir.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/HookSettingsViewModel.h"
#include "ui/views/settings/GlyphCaption.h"
#include "ui/views/settings/HookTargetRow.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

// The section over a model of a temporary home, with the shipped templates and no jq to be found.
struct HookInstallSectionTest : ::testing::Test {
    void build(bool withPayload) {
        std::optional<AdapterResources> resources;
        if (withPayload) resources = AdapterResources{TOVRIN_SOURCE_ADAPTERS_DIR};
        model = std::make_unique<HookSettingsViewModel>(resources, home,
                                                        JQLocator({dir.path() / "bin/jq"}, "/usr/bin/jq"));
        host.setPalette(SettingsStyle::palette(host.palette()));
        host.setStyleSheet(SettingsStyle::styleSheet());
        host.setAutoFillBackground(true);
        host.setFixedWidth(469);
        section = new HookInstallSection(*model);
        auto* column = new QVBoxLayout(&host);
        column->addWidget(section);
        column->addStretch(1);
        host.show();
        model->refresh();
        test::settleEvents();
    }
    HookTargetRow* row(const std::string& id) const {
        const auto& targets = model->targets();
        for (std::size_t index = 0; index < targets.size(); ++index)
            if (targets[index].id == id) return section->targetRows()[index];
        throw std::runtime_error("no target " + id);
    }
    void snapshot(const QString& name) {
        host.adjustSize();
        test::saveArtifact(host.grab().toImage(), name);
    }

    test::TempDir dir;
    fs::path home = dir.path() / "home";
    std::unique_ptr<HookSettingsViewModel> model;
    QWidget host;
    HookInstallSection* section = nullptr;
};

TEST_F(HookInstallSectionTest, InstallAndRemoveAllGoThroughTheModelAndTheRowsFollow) {
    fs::create_directories(home / ".claude");
    dir.write("home/.codex/hooks.json", "[]");
    build(true);
    EXPECT_FALSE(section->notice()->isVisible());
    EXPECT_TRUE(section->setUpButton()->isVisible());
    EXPECT_FALSE(section->removeAllButton()->isVisible());
    EXPECT_FALSE(row("codex")->button()->isEnabled()) << "a file it can't read is never overwritten";
    EXPECT_TRUE(row("cursor")->notFound()->isVisible());
    const GlyphCaption* jq = section->captions().front();
    EXPECT_TRUE(jq->hasGlyph());
    EXPECT_EQ(jq->color(), ForgeStyle::qColor(ForgeTheme::waitingRed)) << "jq is missing";
    snapshot(QStringLiteral("hook-section-pending"));

    QPushButton* claude = row("claude-code")->button();
    claude->setFocus();
    claude->click();
    test::settleEvents();
    EXPECT_NE(test::readText(home / ".claude/settings.json").find("agent-status.sh"), std::string::npos);
    EXPECT_EQ(claude->text().toStdString(), HookSettingsText::remove);
    EXPECT_TRUE(claude->hasFocus()) << "the row is redrawn in place";
    EXPECT_FALSE(section->setUpButton()->isVisible());
    EXPECT_TRUE(section->removeAllButton()->isVisible());
    snapshot(QStringLiteral("hook-section-installed"));

    section->removeAllButton()->click();
    test::settleEvents();
    EXPECT_EQ(test::readText(home / ".claude/settings.json").find("agent-status.sh"), std::string::npos);
    EXPECT_EQ(claude->text().toStdString(), HookSettingsText::install);
    EXPECT_FALSE(section->removeAllButton()->isVisible());
}

TEST_F(HookInstallSectionTest, WithoutThePayloadOnlyTheNoticeShows) {
    build(false);
    EXPECT_TRUE(section->notice()->isVisible());
    EXPECT_EQ(section->notice()->color(), ForgeStyle::qColor(ForgeTheme::waitingRed));
    for (const HookTargetRow* row : section->targetRows())
        EXPECT_FALSE(row->isVisible());
    EXPECT_FALSE(section->setUpButton()->isVisible());
    EXPECT_FALSE(section->removeAllButton()->isVisible());
    snapshot(QStringLiteral("hook-section-no-payload"));
}

} // namespace
} // namespace tovrin
