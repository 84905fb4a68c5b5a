#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tovrin {

class PreferencesStore;

// The words of the settings window's own groups.
namespace PreferencesText {
inline constexpr std::string_view windowTitle = "Tovrin Settings";

inline constexpr std::string_view behaviorGroup = "Behavior";
inline constexpr std::string_view launchAtLogin = "Launch at login";
inline constexpr std::string_view flagSilentWorking = "Treat a silent working agent as waiting";
inline constexpr std::string_view flagSilentWorkingCaption =
    "Catches an agent blocked on a question that fired no event (e.g. Copilot). May briefly flag a "
    "long-running tool as waiting.";

inline constexpr std::string_view privacyGroup = "Privacy";
inline constexpr std::string_view usageAnalytics = "Share anonymous usage statistics";
inline constexpr std::string_view usageAnalyticsCaption =
    "Helps gauge how many people use Tovrin. No personal data, no agent content — just an anonymous, "
    "app-level count.";

inline constexpr std::string_view alertsGroup = "Alerts";
inline constexpr std::string_view soundEnabled = "Play a sound when an agent starts waiting";
inline constexpr std::string_view notificationBanner = "Show a notification banner";
inline constexpr std::string_view notificationBannerCaption =
    "A desktop notification — reaches you in another app or workspace, where the tray icon can't.";
inline constexpr std::string_view repeatReminder = "Repeat the alert while still waiting";

inline constexpr std::string_view floatingWindowGroup = "Floating window";
inline constexpr std::string_view showFloatingChip = "Floating window (always on top)";
inline constexpr std::string_view toggleShortcut = "Toggle shortcut";
inline constexpr std::string_view chipOnlyWhenWaiting = "Only show it when an agent is waiting";
inline constexpr std::string_view opacity = "Opacity";
inline constexpr std::string_view floatingWindowCaption =
    "Drag the floating chip anywhere; click it to expand the list. The shortcut shows or hides it from "
    "any app.";

inline constexpr std::string_view autoFocusGroup = "Auto-focus";
inline constexpr std::string_view autoFocusPicker = "Bring the waiting window forward";
inline constexpr std::string_view autoFocusCaption =
    "Raises the agent's window for you. It steals keyboard focus, so “Only when one is waiting” avoids "
    "jumping around when several agents finish at once.";

inline constexpr std::string_view showInListGroup = "Show in the list";
inline constexpr std::string_view showInListCaption =
    "The waiting signal is approximated from each tool's hooks. Expect the occasional false color — this "
    "list is the source of truth.";

// The stepper buttons show only a sign, so these say what they do.
inline constexpr std::string_view increase = "Increase";
inline constexpr std::string_view decrease = "Decrease";
} // namespace PreferencesText

// The values a stepper offers. A step never leaves the range; a stored value off the grid (45 on a
// grid of 30) stays as it is until stepped.
struct StepperRange {
    std::int64_t minimum;
    std::int64_t maximum;
    std::int64_t step;

    std::int64_t stepped(std::int64_t value, int direction) const;
    bool canStep(std::int64_t value, int direction) const { return stepped(value, direction) != value; }
};

// What the settings window's own controls show and allow, read from the store at the moment asked.
// The store never checks ranges; the controls keep to them.
class PreferencesViewModel {
public:
    static constexpr StepperRange sessionTimeoutRange{30, 3600, 30};
    static constexpr StepperRange repeatReminderRange{10, 600, 10};
    static constexpr int opacityMinimum = 20;
    static constexpr int opacityMaximum = 100;

    explicit PreferencesViewModel(PreferencesStore& preferences) : m_preferences(preferences) {}

    std::string sessionTimeoutText() const;
    void stepSessionTimeout(int direction);
    bool canStepSessionTimeout(int direction) const;

    std::string repeatReminderText() const;
    void stepRepeatReminder(int direction);
    bool canStepRepeatReminder(int direction) const;
    bool isRepeatReminderStepperEnabled() const;

    // The sound picker's list; its buttons work with the sound off too.
    bool isSoundListEnabled() const;

    // Opacity cut to a whole number of percent, as the label reads and the slider stands.
    std::string opacityText() const;
    int opacitySliderValue() const;
    void setOpacity(int percent);
    bool isChipOnlyWhenWaitingEnabled() const;
    bool isOpacityEnabled() const;

private:
    PreferencesStore& m_preferences;
};

} // namespace tovrin
