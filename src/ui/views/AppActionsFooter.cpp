#include "ui/views/AppActionsFooter.h"

#include "ui/viewmodels/PanelContent.h"
#include "ui/views/PanelButton.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace tovrin {

AppActionsFooter::AppActionsFooter(AppActions actions, QWidget* parent)
    : QWidget(parent), m_actions(std::move(actions)) {
    const std::array<std::function<void()>*, 4> handlers{&m_actions.onPreferences, &m_actions.onFeedback,
                                                         &m_actions.onAbout, &m_actions.onQuit};
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 11, 16, 11);
    column->setSpacing(12);
    QHBoxLayout* row = nullptr;
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        if (i % 2 == 0) {
            row = new QHBoxLayout;
            row->setSpacing(14);
            column->addLayout(row);
        }
        const PanelContent::LabelledSymbol& item = PanelContent::footerItems[i];
        auto* button =
            new PanelButton(QString::fromUtf8(item.text.data(), static_cast<qsizetype>(item.text.size())),
                            std::string(item.symbol), this);
        std::function<void()>* handler = handlers[i];
        connect(button, &QAbstractButton::clicked, this, [handler] {
            if (*handler) (*handler)();
        });
        // Equal stretch: each label takes half the row.
        row->addWidget(button, 1);
        m_buttons[i] = button;
    }
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

} // namespace tovrin
