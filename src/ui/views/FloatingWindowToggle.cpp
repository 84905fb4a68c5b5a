#include "ui/views/FloatingWindowToggle.h"

#include "core/PreferencesStore.h"
#include "ui/viewmodels/PanelContent.h"
#include "ui/views/ChangeRelay.h"

namespace tovrin {

FloatingWindowToggle::FloatingWindowToggle(PreferencesStore& preferences, QWidget* parent)
    : PanelButton(QString(), std::string(), parent), m_preferences(preferences) {
    setContentsMargins(16, 11, 16, 11);
    connect(this, &QAbstractButton::clicked, this,
            [this] { m_preferences.showFloatingChip.set(!m_preferences.showFloatingChip()); });
    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

void FloatingWindowToggle::refresh() {
    const auto label = PanelContent::floatingWindowToggle(m_preferences.showFloatingChip());
    setLabel(QString::fromUtf8(label.text.data(), static_cast<qsizetype>(label.text.size())),
             std::string(label.symbol));
}

} // namespace tovrin
