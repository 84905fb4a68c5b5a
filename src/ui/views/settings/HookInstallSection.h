#pragma once

#include "ui/views/settings/SettingsGroup.h"

#include <vector>

class QPushButton;
class QVBoxLayout;

namespace tovrin {

class GlyphCaption;
class HookSettingsViewModel;
class HookTargetRow;
struct HookFooterPresentation;

// The agent hooks group of the settings window: one row per hook target, then the set-up and
// remove-all buttons and the captions below them, or only the notice that the payload is missing.
// Redrawn from the model after each of its changes; the widgets stay, so the keyboard focus does.
class HookInstallSection : public SettingsGroup {
public:
    explicit HookInstallSection(HookSettingsViewModel& model, QWidget* parent = nullptr);

    const std::vector<HookTargetRow*>& targetRows() const { return m_rows; }
    QPushButton* setUpButton() const { return m_setUp; }
    QPushButton* removeAllButton() const { return m_removeAll; }
    // The footer's captions in order; the notice stands alone when there is no payload.
    const std::vector<GlyphCaption*>& captions() const { return m_captions; }
    GlyphCaption* notice() const { return m_notice; }

private:
    void refresh();
    void showFooter(const HookFooterPresentation& footer);
    void showCaptions(std::size_t count);

    HookSettingsViewModel& m_model;
    GlyphCaption* m_notice;
    std::vector<HookTargetRow*> m_rows; // one per target, in the model's order
    QWidget* m_footer;
    QWidget* m_buttons;
    QPushButton* m_setUp;
    QPushButton* m_removeAll;
    QVBoxLayout* m_captionColumn;
    std::vector<GlyphCaption*> m_captions;
};

} // namespace tovrin
