#pragma once

#include "ui/viewmodels/SettingsCategory.h"
#include "ui/views/settings/PreferencesEnvironment.h"

#include <QWidget>
#include <memory>

class QStackedWidget;

namespace tovrin {

class SettingsSidebar;

// The settings window: a sidebar of categories beside the selected category's groups. Every
// control writes straight to its setting or model, and follows changes made elsewhere.
class PreferencesView : public QWidget {
public:
    static constexpr int windowWidth = 700;
    static constexpr int windowHeight = 600;

    explicit PreferencesView(const PreferencesEnvironment& environment, QWidget* parent = nullptr);
    ~PreferencesView() override;

    // Reads again what may have changed outside the application, then brings the window forward.
    void present();

    SettingsCategory selection() const;
    void select(SettingsCategory category);
    // The scrolling page of a category.
    QWidget* page(SettingsCategory category) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PreferencesEnvironment m_environment;
    std::unique_ptr<HookSettingsViewModel> m_hooks;
    SettingsSidebar* m_sidebar;
    QStackedWidget* m_pages;
};

} // namespace tovrin
