#include "ui/views/AboutView.h"

#include "core/BuildInfo.h"
#include "services/UpdaterManager.h"
#include "support/CannedAppcast.h"
#include "support/FakeHttpClient.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "ui/viewmodels/AboutContent.h"
#include "ui/views/UpdateDialog.h"

#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

struct AboutFixture : ::testing::Test {
    test::FakeHttpClient http;
    MemoryDefaultsStore defaults;
    std::vector<QUrl> openedLinks;
    std::shared_ptr<test::CannedAppcast> feed = std::make_shared<test::CannedAppcast>();
    UpdaterManager makeUpdater(std::string key) {
        // The feed answered below reads as one release, 2.0.0.
        feed->items = {{.version = "60",
                        .shortVersion = "2.0.0",
                        .notes = "<p>Faster <b>alerts</b>.</p>",
                        .url = "https://tovrin.app/tovrin.tar.gz",
                        .length = 100,
                        .signature = "c2lnbmF0dXJl"}};
        return UpdaterManager({"https://tovrin.app/appcast.xml", std::move(key), "1.4.2", "57"},
                              {http, feed, defaults}, std::nullopt, {});
    }
    AboutView::OpenUrl recordLink() {
        return [this](const QUrl& url) { openedLinks.push_back(url); };
    }
};

TEST_F(AboutFixture, TheUpdateButtonFollowsWhetherTheUpdaterCanCheck) {
    UpdaterManager unconfigured = makeUpdater("PUT-YOUR-KEY-HERE");
    AboutView about(unconfigured, recordLink());
    EXPECT_FALSE(about.updateButton()->isEnabled());
    about.updateButton()->click();
    EXPECT_TRUE(http.requests().empty());

    unconfigured.canCheckForUpdates.set(true);
    test::settleEvents();
    EXPECT_TRUE(about.updateButton()->isEnabled()) << "comes back by itself";
    unconfigured.canCheckForUpdates.set(false);
    test::settleEvents();
    EXPECT_FALSE(about.updateButton()->isEnabled());
}

// Its texts and title are found by name in AccessibilityTest; here, how it is drawn and what it does.
TEST_F(AboutFixture, IsDrawnOnDarkIronAndAConfiguredUpdaterChecksAndTheLinkOpensTheSite) {
    UpdaterManager updater = makeUpdater("pfIShU4dEXqPd5ObYNfDBiQWcXozk7estwzTnF9BamQ=");
    AboutView about(updater, recordLink());
    ASSERT_TRUE(about.updateButton()->isEnabled());
    about.adjustSize();
    const QImage image = about.grab().toImage();
    test::saveArtifact(image, QStringLiteral("about-window"));
    const QColor top = test::pixelAt(image, 1, 1);
    const QColor bottom = test::pixelAt(image, 1, image.height() - 2);
    EXPECT_LT(top.lightness(), 80) << "not the light default window";
    EXPECT_LT(bottom.lightness(), top.lightness());
    const QColor besideIcon = test::pixelAt(image, image.width() / 2 - 48 - 6, 32 + 48);
    EXPECT_GT(besideIcon.red(), besideIcon.blue() + 10) << "ember glow beside the icon";
    about.updateButton()->click();
    ASSERT_EQ(http.requests().size(), 1u);
    EXPECT_EQ(http.requests()[0].url, "https://tovrin.app/appcast.xml");
    ASSERT_NE(about.updateDialog(), nullptr);
    EXPECT_TRUE(about.updateDialog()->isVisible());

    if (AboutContent::websiteName(BuildInfo::website).empty()) GTEST_SKIP() << "this build names no web site";
    ASSERT_NE(about.websiteLink(), nullptr);
    about.websiteLink()->click();
    ASSERT_EQ(openedLinks.size(), 1u);
    EXPECT_EQ(openedLinks.front().toString().toStdString(), AboutContent::websiteAddress(BuildInfo::website));
}

TEST_F(AboutFixture, TheUpdateDialogOffersTheReleaseAndSkippingItClosesTheDialog) {
    UpdaterManager updater = makeUpdater("pfIShU4dEXqPd5ObYNfDBiQWcXozk7estwzTnF9BamQ=");
    AboutView about(updater, recordLink());
    about.updateButton()->click();
    const QPointer<UpdateDialog> dialog = about.updateDialog();
    ASSERT_TRUE(dialog);
    http.respond(200, "feed");
    test::settleEvents();

    QStringList texts;
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        texts << label->text();
    EXPECT_TRUE(texts.contains(QStringLiteral("Tovrin 2.0.0 is available.")))
        << texts.join('|').toStdString();
    EXPECT_FALSE(dialog->installButton()->isVisible()) << "no installation here replaces itself";
    EXPECT_TRUE(dialog->laterButton()->isVisible());
    EXPECT_FALSE(dialog->doneButton()->isVisible());
    test::saveArtifact(dialog->grab().toImage(), QStringLiteral("update-dialog-offer"));

    dialog->skipButton()->click();
    test::settleEvents();
    EXPECT_EQ(defaults.object("skippedUpdateVersion"), nlohmann::json("60"));
    EXPECT_TRUE(!dialog || !dialog->isVisible());
}

} // namespace
} // namespace tovrin
