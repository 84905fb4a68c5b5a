#include "ui/views/SessionRowView.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/ToolBadge.h"
#include "ui/viewmodels/SessionRowText.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/SymbolButton.h"
#include "ui/views/ViewAccessibility.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <chrono>

namespace tovrin {
namespace {

constexpr double hoverGlow = 0.1;
constexpr int focusEdge = 2;

QString qString(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

SessionRowView::SessionRowView(const AgentSession& session, TrayViewModel& model, QWidget* parent)
    : QWidget(parent), m_session(session), m_model(model),
      m_title(new ElidedLabel(ForgeStyle::systemFont(14), QColor())),
      m_subtitle(new ElidedLabel(ForgeStyle::systemFont(12), ForgeStyle::qColor(ForgeTheme::ashDim))) {
    ViewAccessibility::install();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    // Reached by the keyboard only: a click raises the session and needs no focus.
    setFocusPolicy(Qt::TabFocus);

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
    const auto now = std::chrono::system_clock::now();
    const bool renamed =
        SessionRowText::accessibleName(session, now) != SessionRowText::accessibleName(m_session, now);
    m_session = session;
    refreshTexts();
    if (m_reveal) m_reveal->setToolTip(qString(SessionRowText::revealToolTip(m_session)));
    if (renamed) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void SessionRowView::activate() {
    m_model.focuser().focus(m_session);
}

void SessionRowView::reveal() {
    m_model.focuser().revealInFileManager(m_session);
}

void SessionRowView::dismiss() {
    m_model.store().dismiss(m_session);
}

void SessionRowView::refreshTexts() {
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

    // The keyboard and assistive tools reach both through the row itself.
    m_reveal = new SymbolButton("folder", 14, ForgeStyle::qColor(ForgeTheme::bronze), m_buttons);
    m_reveal->setFocusPolicy(Qt::NoFocus);
    m_reveal->setAccessibleName(qString(std::string(SessionRowText::revealName)));
    m_reveal->setToolTip(qString(SessionRowText::revealToolTip(m_session)));
    connect(m_reveal, &QAbstractButton::clicked, this, [this] { reveal(); });

    m_hide = new SymbolButton("xmark", 12, ForgeStyle::qColor(ForgeTheme::ashDim), m_buttons);
    m_hide->setFocusPolicy(Qt::NoFocus);
    m_hide->setAccessibleName(qString(std::string(SessionRowText::hideName)));
    m_hide->setToolTip(qString(std::string(SessionRowText::hideToolTip)));
    connect(m_hide, &QAbstractButton::clicked, this, [this] { dismiss(); });

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
    if (tapped) activate();
}

void SessionRowView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Select:
        activate();
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        focusNextPrevChild(event->key() == Qt::Key_Down);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void SessionRowView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    // As with the panel's buttons: only focus the user moved here lights the row.
    m_keyboardFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    update();
}

void SessionRowView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    m_keyboardFocus = false;
    update();
}

void SessionRowView::paintEvent(QPaintEvent*) {
    if (!m_hovering && !m_keyboardFocus) return;
    QPainter painter(this);
    QLinearGradient glow(0, 0, width(), 0);
    glow.setColorAt(0, ForgeStyle::qColor(ForgeTheme::ember, hoverGlow));
    glow.setColorAt(1, ForgeStyle::qColor(ForgeTheme::ember, 0));
    painter.fillRect(rect(), glow);
    // The edge tells the keyboard's row apart from the one under the pointer.
    if (m_keyboardFocus)
        painter.fillRect(QRect(0, 0, focusEdge, height()), ForgeStyle::qColor(ForgeTheme::ember));
}

} // namespace tovrin
