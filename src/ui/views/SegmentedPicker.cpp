#include "ui/views/SegmentedPicker.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

namespace tovrin {
namespace {

using SettingsStyle::cssColor;

QString segmentStyle(bool first, bool last) {
    const QString left = first ? QStringLiteral("6px") : QStringLiteral("0");
    const QString right = last ? QStringLiteral("6px") : QStringLiteral("0");
    return QStringLiteral("QPushButton { color: %1; background: %2; border: 1px solid %3; padding: 4px 12px;"
                          " border-top-left-radius: %6; border-bottom-left-radius: %6;"
                          " border-top-right-radius: %7; border-bottom-right-radius: %7; }"
                          "QPushButton:checked { color: %4; background: %3; }"
                          "QPushButton:focus { border-color: %5; }")
        .arg(cssColor(ForgeTheme::ash), cssColor(ForgeTheme::ironBottom), cssColor(ForgeTheme::edge),
             cssColor(ForgeTheme::bronze), cssColor(ForgeTheme::ember), left, right);
}

} // namespace

SegmentedPicker::SegmentedPicker(const QStringList& labels, std::function<void(int)> onChoose,
                                 QWidget* parent)
    : QWidget(parent), m_onChoose(std::move(onChoose)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (qsizetype i = 0; i < labels.size(); ++i) {
        auto* button = new QPushButton(labels[i], this);
        button->setAccessibleName(labels[i]);
        button->setCheckable(true);
        button->setAutoDefault(false);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setStyleSheet(segmentStyle(i == 0, i == labels.size() - 1));
        button->installEventFilter(this);
        const int index = static_cast<int>(i);
        connect(button, &QPushButton::clicked, this, [this, index] { choose(index); });
        row->addWidget(button);
        if (!m_segments.empty()) setTabOrder(m_segments.back(), button);
        m_segments.push_back(button);
    }
    setCurrent(0);
}

void SegmentedPicker::setCurrent(int index) {
    if (index < 0 || index >= static_cast<int>(m_segments.size())) return;
    m_current = index;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const bool chosen = static_cast<int>(i) == index;
        m_segments[i]->setChecked(chosen);
        m_segments[i]->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void SegmentedPicker::choose(int index) {
    // Shown at once, so that a press never looks ignored while the owner takes it in.
    setCurrent(index);
    if (m_onChoose) m_onChoose(index);
}

bool SegmentedPicker::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const int step = key == Qt::Key_Left || key == Qt::Key_Up      ? -1
                     : key == Qt::Key_Right || key == Qt::Key_Down ? 1
                                                                   : 0;
    const int next = m_current + step;
    if (step == 0 || next < 0 || next >= static_cast<int>(m_segments.size()))
        return QWidget::eventFilter(watched, event);
    choose(next);
    segment(next)->setFocus(Qt::TabFocusReason);
    return true;
}

} // namespace tovrin
