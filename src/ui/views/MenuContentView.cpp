#include "ui/views/MenuContentView.h"

#include "ui/theme/BronzeHairline.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/PanelContent.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/FloatingWindowToggle.h"
#include "ui/views/FocusOrder.h"
#include "ui/views/PanelButton.h"
#include "ui/views/PanelHeader.h"
#include "ui/views/SessionListView.h"
#include "ui/views/SessionRowView.h"
#include "ui/views/SessionScroller.h"
#include "ui/views/ViewAccessibility.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <utility>

namespace tovrin {

MenuContentView::MenuContentView(TrayViewModel& model, PreferencesStore& preferences, AppActions actions,
                                 QWidget* parent)
    : QWidget(parent), m_model(model), m_header(new PanelHeader(this)), m_list(new SessionListView(model)),
      m_scroller(new SessionScroller(m_list, this)),
      m_empty(new ElidedLabel(ForgeStyle::systemFont(14), ForgeStyle::qColor(ForgeTheme::ash), this)),
      m_hostNoticeBox(new QWidget(this)), m_toggle(new FloatingWindowToggle(preferences, this)),
      m_footer(new AppActionsFooter(std::move(actions), this)) {
    ViewAccessibility::install();
    setFixedWidth(panelWidth);
    m_empty->setText(QString::fromUtf8(PanelContent::emptyStateText.data(),
                                       static_cast<qsizetype>(PanelContent::emptyStateText.size())));
    m_empty->setContentsMargins(18, 18, 18, 18);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(new BronzeHairline(this));
    column->addWidget(m_scroller);
    column->addWidget(m_empty);
    column->addWidget(m_hostNoticeBox);
    auto* notices = new QVBoxLayout(m_hostNoticeBox);
    notices->setContentsMargins(18, 4, 18, 10);
    notices->setSpacing(2);
    column->addWidget(new BronzeHairline(this));
    column->addWidget(m_toggle);
    column->addWidget(new BronzeHairline(this));
    column->addWidget(m_footer);

    new ChangeRelay(
        model.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

void MenuContentView::refresh() {
    m_header->setAggregate(m_model.aggregate());
    const bool hasSessions = m_model.hasSessions();
    m_scroller->setVisible(hasSessions);
    m_empty->setVisible(!hasSessions);

    const auto& notices = m_model.hostNotices();
    while (m_hostNotices.size() > notices.size()) {
        delete m_hostNotices.back();
        m_hostNotices.pop_back();
    }
    while (m_hostNotices.size() < notices.size()) {
        m_hostNotices.push_back(new ElidedLabel(ForgeStyle::systemFont(12),
                                                ForgeStyle::qColor(ForgeTheme::ember), m_hostNoticeBox));
        m_hostNoticeBox->layout()->addWidget(m_hostNotices.back());
    }
    for (std::size_t i = 0; i < notices.size(); ++i) {
        const auto text = QString::fromStdString(notices[i]);
        m_hostNotices[i]->setText(text);
        m_hostNotices[i]->setToolTip(text);
        m_hostNotices[i]->setAccessibleName(text);
    }
    m_hostNoticeBox->setVisible(!notices.empty());
}

void MenuContentView::setListHeightLimit(int limit) {
    m_scroller->setHeightLimit(limit);
}

int MenuContentView::chromeHeight() const {
    return sizeHint().height() - (m_scroller->isVisibleTo(this) ? m_scroller->sizeHint().height() : 0);
}

void MenuContentView::keyPressEvent(QKeyEvent* event) {
    // Focus rests here while nothing is chosen yet: Down starts at the top, Up at the bottom.
    if (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up) {
        focusNextPrevChild(event->key() == Qt::Key_Down);
        return;
    }
    QWidget::keyPressEvent(event);
}

bool MenuContentView::focusNextPrevChild(bool next) {
    std::vector<QWidget*> order;
    for (SessionRowView* row : m_list->rows())
        order.push_back(row);
    order.push_back(m_toggle);
    for (int i = 0; i < AppActionsFooter::buttonCount; ++i)
        order.push_back(m_footer->button(i));
    QWidget* focused = FocusOrder::step(order, next);
    if (focused && m_scroller->isAncestorOf(focused)) m_scroller->ensureWidgetVisible(focused, 0, 0);
    return focused != nullptr;
}

void MenuContentView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
}

} // namespace tovrin
