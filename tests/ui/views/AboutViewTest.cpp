#include "ui/views/AboutView.h"

#include "core/BuildInfo.h"
#include "services/UpdaterManager.h"
#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/AboutContent.h"

#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

struct AboutFixture : ::testing::Test {
    std::vector<std::string> openedByUpdater;
    std::vector<QUrl> openedLinks;
    UpdaterManager::OpenAddress recordOpen() {
        return [this](const std::string& address) { openedByUpdater.push_back(address); };
    }
    AboutView::OpenUrl recordLink() {
        return [this](const QUrl& url) { openedLinks.push_back(url); };
    }
};

TEST_F(AboutFixture, ShowsTheBrandVersionAndMottoOnIron) {
    UpdaterManager updater("", "", recordOpen());
    AboutView about(updater, recordLink());
    about.adjustSize();
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Tovrin"));
    EXPECT_EQ(about.width(), 335 + 2 * 36) << "a 335-wide column padded 36 on each side";

    QStringList texts;
    for (const QLabel* label : about.findChildren<QLabel*>())
        texts << label->text();
    const QString version =
        QString::fromStdString(AboutContent::versionLine(BuildInfo::version, BuildInfo::buildNumber));
    EXPECT_TRUE(texts.contains(QStringLiteral("TOVRIN")));
    EXPECT_TRUE(texts.contains(version)) << version.toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("One app to watch them all.")));

    const QImage image = about.grab().toImage();
    test::saveArtifact(image, QStringLiteral("about-window"));
    // Iron at the top corner and darker iron at the bottom; the ember glow warms the icon's surround.
    EXPECT_TRUE(test::near(test::pixelAt(image, 1, 1), ForgeStyle::qColor(ForgeTheme::ironTop), 4));
    EXPECT_TRUE(test::near(test::pixelAt(image, 1, image.height() - 2),
                           ForgeStyle::qColor(ForgeTheme::ironBottom), 4));
    const QColor besideIcon = test::pixelAt(image, image.width() / 2 - 48 - 6, 32 + 48);
    EXPECT_GT(besideIcon.red(), besideIcon.blue() + 10) << "ember glow beside the icon";
}

TEST_F(AboutFixture, TheUpdateButtonFollowsWhetherTheUpdaterCanCheck) {
    UpdaterManager unconfigured("https://tovrin.app/download", "PUT-YOUR-KEY-HERE", recordOpen());
    AboutView about(unconfigured, recordLink());
    EXPECT_FALSE(about.updateButton()->isEnabled());
    about.updateButton()->click();
    EXPECT_TRUE(openedByUpdater.empty());

    unconfigured.canCheckForUpdates.set(true);
    test::settleEvents();
    EXPECT_TRUE(about.updateButton()->isEnabled()) << "comes back by itself";
    unconfigured.canCheckForUpdates.set(false);
    test::settleEvents();
    EXPECT_FALSE(about.updateButton()->isEnabled());
}

TEST_F(AboutFixture, AConfiguredUpdaterChecksAndTheLinkOpensTheSite) {
    UpdaterManager updater("https://tovrin.app/download", "real-key", recordOpen());
    AboutView about(updater, recordLink());
    ASSERT_TRUE(about.updateButton()->isEnabled());
    test::saveArtifact(about.grab().toImage(), QStringLiteral("about-window-can-check"));
    about.updateButton()->click();
    EXPECT_EQ(openedByUpdater, std::vector<std::string>{"https://tovrin.app/download"});

    if (AboutContent::websiteName(BuildInfo::website).empty()) GTEST_SKIP() << "this build names no web site";
    ASSERT_NE(about.websiteLink(), nullptr);
    about.websiteLink()->click();
    ASSERT_EQ(openedLinks.size(), 1u);
    EXPECT_EQ(openedLinks.front().toString().toStdString(), AboutContent::websiteAddress(BuildInfo::website));
}

} // namespace
} // namespace tovrin
