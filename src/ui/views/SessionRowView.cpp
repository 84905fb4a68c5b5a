#include "ui/views/SessionRowView.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/ToolBadge.h"
#include "ui/viewmodels/MenuBarViewModel.h"
#include "ui/viewmodels/SessionRowText.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/SymbolButton.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <chrono>

namespace tovrin {
namespace {

constexpr double hoverGlow = 0.1;

QString qString(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

SessionRowView::SessionRowView(const AgentSession& session, MenuBarViewModel& model, QWidget* parent)
    : QWidget(parent), m_session(session), m_model(model),
      m_title(new ElidedLabel(ForgeStyle::systemFont(14), QColor())),
      m_subtitle(new ElidedLabel(ForgeStyle::systemFont(12), ForgeStyle::qColor(ForgeTheme::ashDim))) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);

    auto* lines = new QVBoxLayout;
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);
    lines->addWidget(m_title);
    lines->addWidget(m_subtitle);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 7, 16, 7);
    row->setSpacing(10);
    row->addWidget(new ToolBadge(session.tool, 22, this), 0, Qt::AlignVCenter);
    row->addLayout(lines, 1);

    refreshTexts();
}

void SessionRowView::setSession(const AgentSession& session) {
    m_session = session;
    refreshTexts();
    if (m_reveal) m_reveal->setToolTip(qString(SessionRowText::revealToolTip(m_session)));
}

void SessionRowView::refreshTexts() {
    setAccessibleName(qString(m_session.title));
    m_title->setText(qString(m_session.title));
    m_title->setColor(ForgeStyle::qColor(SessionRowText::titleColor(m_session.state)));
    const auto now = std::chrono::system_clock::now();
    m_subtitle->setText(qString(SessionRowText::subtitle(m_session, now)),
                        qString(SessionRowText::ageSuffix(m_session, now)).size());
}

void SessionRowView::setHovering(bool hovering) {
    if (hovering == m_hovering) return;
    m_hovering = hovering;
    update();

    // The buttons exist only while hovered, so a row at rest carries nothing that could be clicked
    // by accident and nothing for assistive tools to wade through.
    if (!hovering) {
        delete m_buttons;
        m_buttons = nullptr;
        m_reveal = nullptr;
        m_hide = nullptr;
        return;
    }
    m_buttons = new QWidget(this);
    auto* buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(8);

    m_reveal = new SymbolButton("folder", 14, ForgeStyle::qColor(ForgeTheme::bronze), m_buttons);
    m_reveal->setToolTip(qString(SessionRowText::revealToolTip(m_session)));
    connect(m_reveal, &QAbstractButton::clicked, this,
            [this] { m_model.focuser().revealInFinder(m_session); });

    m_hide = new SymbolButton("xmark", 12, ForgeStyle::qColor(ForgeTheme::ashDim), m_buttons);
    m_hide->setToolTip(qString(std::string(SessionRowText::hideToolTip)));
    connect(m_hide, &QAbstractButton::clicked, this, [this] { m_model.store().dismiss(m_session); });

    buttons->addWidget(m_reveal);
    buttons->addWidget(m_hide);
    static_cast<QHBoxLayout*>(layout())->addWidget(m_buttons, 0, Qt::AlignVCenter);
    m_buttons->show();
}

void SessionRowView::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    setHovering(true);
}

void SessionRowView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    setHovering(false);
}

void SessionRowView::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->button() == Qt::LeftButton;
    event->accept();
}

void SessionRowView::mouseReleaseEvent(QMouseEvent* event) {
    const bool tapped =
        m_pressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    m_pressed = false;
    event->accept();
    if (tapped) m_model.focuser().focus(m_session);
}

void SessionRowView::paintEvent(QPaintEvent*) {
    if (!m_hovering) return;
    QPainter painter(this);
    QLinearGradient glow(0, 0, width(), 0);
    glow.setColorAt(0, ForgeStyle::qColor(ForgeTheme::ember, hoverGlow));
    glow.setColorAt(1, ForgeStyle::qColor(ForgeTheme::ember, 0));
    painter.fillRect(rect(), glow);
}

} // namespace tovrin
