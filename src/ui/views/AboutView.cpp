#include "ui/views/AboutView.h"

#include "core/BuildInfo.h"
#include "services/UpdaterManager.h"
#include "ui/theme/AppBrandIcon.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/SoftGlow.h"
#include "ui/viewmodels/AboutContent.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/SmallWindow.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QDesktopServices>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace tovrin {

namespace {

constexpr int columnWidth = 335;
constexpr int iconSide = 96;

// The brand image at its size; its ember glow is painted by the window behind it, so that the glow
// can spread past the image's own frame.
class BrandImage : public QWidget {
public:
    explicit BrandImage(QWidget* parent) : QWidget(parent) { setFixedSize(iconSide, iconSide); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPixmap& image = AppBrandIcon::image();
        if (!image.isNull()) painter.drawPixmap(rect(), image, image.rect());
    }
};

QString linkStyle() {
    return QStringLiteral("QPushButton { color: %1; background: transparent; border: none; padding: 0; }"
                          "QPushButton:hover, QPushButton:focus { text-decoration: underline; }")
        .arg(SettingsStyle::cssColor(ForgeTheme::bronze));
}

} // namespace

AboutView::AboutView(UpdaterManager& updater, OpenUrl openUrl, QWidget* parent)
    : QWidget(parent), m_updater(updater), m_openUrl(std::move(openUrl)) {
    setWindowTitle(QStringLiteral("About Tovrin"));
    setObjectName(QStringLiteral("about"));
    if (!m_openUrl) m_openUrl = [](const QUrl& url) { QDesktopServices::openUrl(url); };

    SmallWindow::useForgePalette(*this);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(36, 32, 36, 28);
    column->setSpacing(14);
    column->setSizeConstraint(QLayout::SetFixedSize);

    m_icon = new BrandImage(this);
    column->addWidget(m_icon, 0, Qt::AlignHCenter);

    auto* titles = new QVBoxLayout();
    titles->setSpacing(6);
    QFont engraved = ForgeStyle::engraved(22, QFont::DemiBold);
    engraved.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    titles->addWidget(SmallWindow::textLine(QStringLiteral("TOVRIN"), engraved, ForgeTheme::bronze, this));
    const std::string version = AboutContent::versionLine(BuildInfo::version, BuildInfo::buildNumber);
    titles->addWidget(SmallWindow::textLine(QString::fromStdString(version), ForgeStyle::systemFont(12),
                                            ForgeTheme::ashDim, this));
    column->addLayout(titles);

    QFont italic = ForgeStyle::systemFont(14);
    italic.setItalic(true);
    QLabel* motto = SmallWindow::textLine(
        QString::fromUtf8(AboutContent::motto.data(), static_cast<qsizetype>(AboutContent::motto.size())),
        italic, ForgeTheme::ash, this);
    motto->setWordWrap(true);
    motto->setFixedWidth(columnWidth);
    column->addWidget(motto);

    column->addSpacing(4);
    m_updateButton = new QPushButton(QStringLiteral("Check for Updates…"), this);
    m_updateButton->setFont(ForgeStyle::systemFont(13));
    m_updateButton->setStyleSheet(SmallWindow::borderedButtonStyle());
    m_updateButton->setCursor(Qt::PointingHandCursor);
    connect(m_updateButton, &QPushButton::clicked, this, [this] {
        m_updater.checkForUpdates();
        if (!m_updateDialog) m_updateDialog = new UpdateDialog(m_updater, this);
        m_updateDialog->present();
    });
    column->addWidget(m_updateButton, 0, Qt::AlignHCenter);

    const std::string site = AboutContent::websiteName(BuildInfo::website);
    if (!site.empty()) {
        column->addSpacing(2);
        m_websiteLink = new QPushButton(QString::fromStdString(site), this);
        m_websiteLink->setFont(ForgeStyle::systemFont(11));
        m_websiteLink->setStyleSheet(linkStyle());
        m_websiteLink->setCursor(Qt::PointingHandCursor);
        const QUrl address(QString::fromStdString(AboutContent::websiteAddress(BuildInfo::website)));
        connect(m_websiteLink, &QPushButton::clicked, this, [this, address] { m_openUrl(address); });
        column->addWidget(m_websiteLink, 0, Qt::AlignHCenter);
    }

    followUpdater();
    new ChangeRelay(
        m_updater.willChange, [this] { followUpdater(); }, this);
}

void AboutView::followUpdater() {
    m_updateButton->setEnabled(m_updater.canCheckForUpdates());
}

void AboutView::present() {
    SmallWindow::presentCentred(*this);
}

void AboutView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void AboutView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
    const QPixmap& image = AppBrandIcon::image();
    if (!image.isNull())
        SoftGlow::paint(painter, image.toImage(), QRectF(m_icon->geometry()),
                        ForgeStyle::qColor(ForgeTheme::ember), 0.45, 22);
}

} // namespace tovrin
