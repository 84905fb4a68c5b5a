#include "ui/views/settings/SettingsPage.h"

#include <QVBoxLayout>

namespace tovrin {

SettingsPage::SettingsPage(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    auto* content = new QWidget;
    m_column = new QVBoxLayout(content);
    m_column->setContentsMargins(20, 20, 20, 20);
    m_column->setSpacing(22);
    m_column->addStretch(1);
    setWidget(content);
    // The scroll area makes its content opaque; the window's iron shows through instead.
    content->setAutoFillBackground(false);
}

void SettingsPage::addGroup(QWidget* group) {
    m_column->insertWidget(m_column->count() - 1, group);
}

} // namespace tovrin
