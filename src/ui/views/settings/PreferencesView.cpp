#include "ui/views/settings/PreferencesView.h"

#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "services/LoginItemManager.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/HookSettingsViewModel.h"
#include "ui/viewmodels/PreferencesViewModel.h"
#include "ui/views/ViewAccessibility.h"
#include "ui/views/settings/AlertsSettingsPage.h"
#include "ui/views/settings/GeneralSettingsPage.h"
#include "ui/views/settings/HostsSection.h"
#include "ui/views/settings/SettingsPage.h"
#include "ui/views/settings/SettingsRows.h"
#include "ui/views/settings/SettingsSidebar.h"
#include "ui/views/settings/SettingsStyle.h"
#include "ui/views/settings/TelegramSection.h"
#include "ui/views/settings/ToolsSettingsPage.h"
#include "ui/views/settings/WindowSettingsPage.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPainter>
#include <QStackedWidget>
#include <algorithm>

namespace tovrin {

namespace {

// The line between the sidebar and the pane.
class Divider : public QWidget {
public:
    explicit Divider(QWidget* parent) : QWidget(parent) { setFixedWidth(1); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), ForgeStyle::qColor(ForgeTheme::edge));
    }
};

int indexOf(SettingsCategory category) {
    return static_cast<int>(std::ranges::find(allSettingsCategories, category) -
                            allSettingsCategories.begin());
}

} // namespace

PreferencesView::PreferencesView(const PreferencesEnvironment& environment, QWidget* parent)
    : QWidget(parent, Qt::Window), m_environment(environment),
      m_hooks(environment.makeHooks ? environment.makeHooks() : nullptr),
      m_sidebar(new SettingsSidebar([this](SettingsCategory category) { select(category); }, this)),
      m_pages(new QStackedWidget(this)) {
    ViewAccessibility::install();
    setWindowTitle(SettingsRows::qText(PreferencesText::windowTitle));
    setObjectName(QStringLiteral("preferences"));
    setFixedSize(windowWidth, windowHeight);
    setPalette(SettingsStyle::palette(palette()));
    setStyleSheet(SettingsStyle::styleSheet());

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_sidebar);
    row->addWidget(new Divider(this));
    row->addWidget(m_pages, 1);

    m_pages->addWidget(new GeneralSettingsPage(m_environment.preferences, m_environment.loginItems));
    m_pages->addWidget(new AlertsSettingsPage(m_environment.preferences, m_environment.sounds));
    auto* connectors = new SettingsPage;
    connectors->addGroup(new TelegramSection(m_environment.telegram, m_environment.preferences));
    connectors->addGroup(new HostsSection(m_environment.preferences));
    m_pages->addWidget(connectors);
    m_pages->addWidget(new WindowSettingsPage(m_environment.preferences, m_environment.shortcuts));
    m_pages->addWidget(new ToolsSettingsPage(m_environment.preferences, m_hooks.get()));

    // The sidebar takes the keyboard first; Tab then walks the selected page's controls.
    m_sidebar->list()->setFocus();
    select(SettingsCategory::general);
}

PreferencesView::~PreferencesView() {
    // The pages observe the hooks model, so they go before it does.
    delete m_pages;
}

void PreferencesView::present() {
    m_environment.loginItems.refresh();
    m_environment.telegram.load();
    if (m_hooks) m_hooks->refresh();
    show();
    raise();
    activateWindow();
}

SettingsCategory PreferencesView::selection() const {
    return m_sidebar->selection();
}

void PreferencesView::select(SettingsCategory category) {
    if (m_sidebar->selection() != category) m_sidebar->select(category);
    m_pages->setCurrentIndex(indexOf(category));
}

QWidget* PreferencesView::page(SettingsCategory category) const {
    return m_pages->widget(indexOf(category));
}

void PreferencesView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
}

} // namespace tovrin
