#pragma once

#include "ui/viewmodels/ChipLayout.h"

#include <memory>

class QMenu;

namespace tovrin {

class ChangeRelay;
class DefaultsStore;
class FloatingChipPanel;
class FloatingChipPinning;
class TrayViewModel;
class PreferencesStore;

// Owns the floating chip's window: where it stands, when it shows, how opaque it is. The window keeps
// its top-right corner when its content grows or shrinks, and that corner is written to the defaults
// on every move, so the chip comes back to it after a restart whatever its size. Main thread only.
class FloatingChipWindowController {
public:
    // `pinning`, when given, keeps the window on every workspace on X11; it must outlive the controller.
    FloatingChipWindowController(TrayViewModel& viewModel, PreferencesStore& preferences,
                                 DefaultsStore& defaults, FloatingChipPinning* pinning = nullptr);
    ~FloatingChipWindowController();
    FloatingChipWindowController(const FloatingChipWindowController&) = delete;
    FloatingChipWindowController& operator=(const FloatingChipWindowController&) = delete;

    // Makes the window, sized to its content and placed at the saved corner, but does not show it.
    void buildPanel();
    // Follows the model (visibility) and the preferences (opacity, visibility) from now on.
    void observe();
    void applyOpacity();
    void evaluateVisibility();
    // Without a tray the chip is the application's face: always shown, with the tray's menu on a
    // right click. Call after buildPanel; `menu` must outlive the controller.
    void standInForTray(QMenu& menu);

    // Absent until buildPanel.
    FloatingChipPanel* panel() const { return m_panel.get(); }

private:
    void positionAtSavedAnchor();
    bool shouldShow() const;
    void windowDidMove();
    void resizeTo(ChipSize measured);
    void pinWindow();

    TrayViewModel& m_viewModel;
    PreferencesStore& m_preferences;
    DefaultsStore& m_defaults;
    FloatingChipPinning* m_pinning;
    bool m_standsInForTray = false;
    ChipLayout::Resizer m_resizer;
    std::unique_ptr<ChangeRelay> m_modelRelay;
    std::unique_ptr<ChangeRelay> m_preferencesRelay;
    // Last, so that it goes first: its callbacks reach into the members above.
    std::unique_ptr<FloatingChipPanel> m_panel;
};

} // namespace tovrin
