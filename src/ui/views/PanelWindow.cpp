#include "ui/views/PanelWindow.h"

#include "ui/viewmodels/PanelPlacement.h"
#include "ui/views/MenuContentView.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

namespace tovrin {
namespace {

// A click on the tray icon while the panel is open may first close the panel, when the tray takes
// over, and then reach the icon; within this time that second half must not open it again.
constexpr qint64 reopenGuardMs = 300;

PanelRect panelRect(const QRect& r) {
    return {r.x(), r.y(), r.width(), r.height()};
}

} // namespace

PanelWindow::PanelWindow(TrayViewModel& model, PreferencesStore& preferences, AppActions actions,
                         QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::X11BypassWindowManagerHint | Qt::NoDropShadowWindowHint),
      m_content(new MenuContentView(model, preferences, std::move(actions), this)) {
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowTitle(QStringLiteral("Sessions"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_content);
    m_content->installEventFilter(this);
}

void PanelWindow::toggleAt(const QRect& anchor) {
    if (isVisible()) {
        close();
        return;
    }
    if (m_sinceClosed.isValid() && !m_sinceClosed.hasExpired(reopenGuardMs)) return;
    openAt(anchor);
}

void PanelWindow::openAt(const QRect& anchor) {
    m_anchor = anchor.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : anchor;
    fit();
    show();
    // Each opening starts with nothing chosen, so the first Down lands on the top row.
    m_content->setFocus(Qt::ActiveWindowFocusReason);
    raise();
    activateWindow();
}

void PanelWindow::fit() {
    m_fitPending = false;
    QScreen* screen = QGuiApplication::screenAt(m_anchor.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    const QRect available = screen ? screen->availableGeometry() : QRect(0, 0, 1920, 1080);

    m_content->setListHeightLimit(available.height() - m_content->chromeHeight());
    m_content->layout()->activate();
    const QSize wanted = m_content->sizeHint();
    const PanelRect frame = PanelPlacement::frame(panelRect(m_anchor), MenuContentView::panelWidth,
                                                  wanted.height(), panelRect(available));
    setGeometry(frame.x, frame.y, frame.width, frame.height);
}

bool PanelWindow::event(QEvent* event) {
    // Another window took over, say the session's own window after a click on its row.
    if (event->type() == QEvent::WindowDeactivate && isVisible()) close();
    return QWidget::event(event);
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event) {
    // The content changed its height (sessions came or went): refit once it has settled.
    if (watched == m_content && event->type() == QEvent::LayoutRequest && isVisible() && !m_fitPending) {
        m_fitPending = true;
        QMetaObject::invokeMethod(
            this, [this] { fit(); }, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void PanelWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_sinceClosed.start();
}

} // namespace tovrin
