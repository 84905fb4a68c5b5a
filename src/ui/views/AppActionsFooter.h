#pragma once

#include <QWidget>
#include <array>
#include <functional>

namespace tovrin {

class PanelButton;

// What the footer's buttons do; each host wires its own.
struct AppActions {
    std::function<void()> onPreferences, onFeedback, onAbout, onQuit;
};

// The application's four actions in two rows of two: Preferences and Feedback, About and Quit.
class AppActionsFooter : public QWidget {
public:
    explicit AppActionsFooter(AppActions actions, QWidget* parent = nullptr);

    static constexpr int buttonCount = 4;

    // In reading order.
    PanelButton* button(int index) const { return m_buttons.at(static_cast<std::size_t>(index)); }

private:
    AppActions m_actions;
    std::array<PanelButton*, buttonCount> m_buttons{};
};

} // namespace tovrin
