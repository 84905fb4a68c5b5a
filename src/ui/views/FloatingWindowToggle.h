#pragma once

#include "ui/views/PanelButton.h"

namespace tovrin {

class PreferencesStore;

// Shows or hides the floating window; it always offers the opposite of what is set.
class FloatingWindowToggle : public PanelButton {
public:
    explicit FloatingWindowToggle(PreferencesStore& preferences, QWidget* parent = nullptr);

private:
    void refresh();

    PreferencesStore& m_preferences;
};

} // namespace tovrin
