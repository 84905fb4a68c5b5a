#include "ui/viewmodels/PreferencesViewModel.h"

#include "core/PreferencesStore.h"

#include <algorithm>
#include <cmath>

namespace tovrin {

std::int64_t StepperRange::stepped(std::int64_t value, int direction) const {
    if (direction > 0) return value >= maximum ? value : std::min(value + step, maximum);
    if (direction < 0) return value <= minimum ? value : std::max(value - step, minimum);
    return value;
}

std::string PreferencesViewModel::sessionTimeoutText() const {
    return "Session timeout: " + std::to_string(m_preferences.ttlSeconds()) + "s";
}

void PreferencesViewModel::stepSessionTimeout(int direction) {
    m_preferences.ttlSeconds.set(sessionTimeoutRange.stepped(m_preferences.ttlSeconds(), direction));
}

bool PreferencesViewModel::canStepSessionTimeout(int direction) const {
    return sessionTimeoutRange.canStep(m_preferences.ttlSeconds(), direction);
}

std::string PreferencesViewModel::repeatReminderText() const {
    return "Repeat every " + std::to_string(m_preferences.repeatReminderSeconds()) + "s";
}

void PreferencesViewModel::stepRepeatReminder(int direction) {
    m_preferences.repeatReminderSeconds.set(
        repeatReminderRange.stepped(m_preferences.repeatReminderSeconds(), direction));
}

bool PreferencesViewModel::canStepRepeatReminder(int direction) const {
    return repeatReminderRange.canStep(m_preferences.repeatReminderSeconds(), direction);
}

bool PreferencesViewModel::isRepeatReminderStepperEnabled() const {
    return m_preferences.repeatReminderEnabled();
}

bool PreferencesViewModel::isSoundListEnabled() const {
    return m_preferences.soundEnabled();
}

std::string PreferencesViewModel::opacityText() const {
    const double percent = m_preferences.chipOpacity();
    // A value beyond what an integer holds can only come from a hand-edited file; show it capped.
    const double whole = std::isfinite(percent) ? std::clamp(std::trunc(percent), -1e15, 1e15) : 0;
    return std::to_string(static_cast<std::int64_t>(whole)) + "%";
}

int PreferencesViewModel::opacitySliderValue() const {
    const double percent = m_preferences.chipOpacity();
    if (!std::isfinite(percent)) return opacityMaximum;
    return static_cast<int>(std::clamp(std::trunc(percent), double{opacityMinimum}, double{opacityMaximum}));
}

void PreferencesViewModel::setOpacity(int percent) {
    m_preferences.chipOpacity.set(std::clamp(percent, opacityMinimum, opacityMaximum));
}

bool PreferencesViewModel::isChipOnlyWhenWaitingEnabled() const {
    return m_preferences.showFloatingChip();
}

bool PreferencesViewModel::isOpacityEnabled() const {
    return m_preferences.showFloatingChip();
}

} // namespace tovrin
