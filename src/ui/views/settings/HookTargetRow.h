#pragma once

#include "ui/viewmodels/HookSettingsViewModel.h"

#include <QWidget>
#include <functional>
#include <string>

class QLabel;
class QPushButton;

namespace tovrin {

class StatusDot;

// One hook target in the settings window: a dot for its state, its name over a second line, and
// at the right the button that installs or removes its hooks, or word that the agent isn't there.
class HookTargetRow : public QWidget {
public:
    HookTargetRow(std::function<void()> install, std::function<void()> uninstall, QWidget* parent = nullptr);

    void present(const std::string& displayName, const HookRowPresentation& presentation);

    QPushButton* button() const { return m_button; }
    QLabel* notFound() const { return m_notFound; }

private:
    std::function<void()> m_install;
    std::function<void()> m_uninstall;
    HookRowPresentation::Control m_control = HookRowPresentation::Control::installButton;
    StatusDot* m_dot;
    QLabel* m_name;
    QLabel* m_secondLine;
    QPushButton* m_button;
    QLabel* m_notFound;
};

// The theme's colour for a tone of the hooks section.
QColor hookToneColor(HookTone tone);

} // namespace tovrin
