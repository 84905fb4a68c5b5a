#include "ui/views/FloatingChipView.h"

#include "ui/theme/BronzeHairline.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/SoftGlow.h"
#include "ui/viewmodels/ChipHeader.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/AppActionsFooter.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/FloatingChipHeader.h"
#include "ui/views/FocusOrder.h"
#include "ui/views/PanelButton.h"
#include "ui/views/SessionListView.h"
#include "ui/views/SessionRowView.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <utility>

namespace tovrin {

namespace {

constexpr double bodyOpacity = 0.92;
constexpr double borderOpacity = 0.08;
constexpr double shadowOpacity = 0.18;
constexpr double shadowRadius = 6;
constexpr double shadowDrop = 2;
constexpr int listInset = 4;

QPainterPath bodyShape(const QRect& body) {
    QPainterPath path;
    path.addRoundedRect(QRectF(body), FloatingChipView::cornerRadius, FloatingChipView::cornerRadius);
    return path;
}

// The iron behind the list and the footer, top to bottom over its own height.
class IronBackdrop : public QWidget {
public:
    explicit IronBackdrop(QWidget* content, int topInset, QWidget* parent = nullptr) : QWidget(parent) {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, topInset, 0, 0);
        column->setSpacing(0);
        content->setFixedWidth(FloatingChipView::listWidth);
        column->addWidget(content, 0, Qt::AlignLeft);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
    }
};

// Drawn over everything else: it cuts the body's children to the rounded shape, puts the soft shadow
// under the whole and draws the border on top. Children paint rectangles, so the cut has to come after
// them; being the topmost sibling, this is repainted whenever any of them is, at the flame's pace too,
// so the shadow and the cut are kept between frames.
class BodyFinish : public QWidget {
public:
    explicit BodyFinish(FloatingChipView* chip) : QWidget(chip), m_chip(chip) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_TranslucentBackground);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        prepare(painter);

        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.fillPath(m_outside, Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        painter.drawImage(QPointF(0, 0), m_shadow);

        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, borderOpacity), 1));
        painter.setBrush(Qt::NoBrush);
        const double radius = FloatingChipView::cornerRadius - 0.5;
        painter.drawRoundedRect(QRectF(m_chip->bodyRect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }

private:
    void prepare(const QPainter& painter) {
        const double ratio = painter.device()->devicePixelRatioF();
        if (m_preparedFor == size() && m_shadow.devicePixelRatio() == ratio) return;
        m_preparedFor = size();
        const QPainterPath shape = bodyShape(m_chip->bodyRect());
        QPainterPath whole;
        whole.addRect(QRectF(rect()));
        m_outside = whole.subtracted(shape);

        m_shadow = QImage(size() * ratio, QImage::Format_ARGB32_Premultiplied);
        m_shadow.setDevicePixelRatio(ratio);
        m_shadow.fill(Qt::transparent);
        QPainter shadow(&m_shadow);
        shadow.setRenderHint(QPainter::Antialiasing);
        shadow.translate(0, shadowDrop);
        SoftGlow::paint(shadow, shape, Qt::black, shadowOpacity, shadowRadius);
    }

    FloatingChipView* m_chip;
    QSize m_preparedFor;
    QPainterPath m_outside;
    QImage m_shadow;
};

} // namespace

FloatingChipView::FloatingChipView(TrayViewModel& model, FloatingChipActions actions, QWidget* parent)
    : QWidget(parent), m_model(model), m_actions(std::move(actions)), m_header(new FloatingChipHeader(this)),
      m_list(new SessionListView(model)) {
    setAttribute(Qt::WA_TranslucentBackground);

    const auto forward = [this](std::function<void()> FloatingChipActions::*action) {
        return [this, action] {
            if (m_actions.*action) (m_actions.*action)();
        };
    };
    AppActions footerActions{
        forward(&FloatingChipActions::onOpenSettings), forward(&FloatingChipActions::onOpenFeedback),
        forward(&FloatingChipActions::onOpenAbout), forward(&FloatingChipActions::onQuit)};
    m_footer = new AppActionsFooter(std::move(footerActions));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(shadowMargin, shadowMargin, shadowMargin, shadowMargin);
    // The host sizes the chip from reportSize; a window's minimum from an older layout must not hold it.
    column->setSizeConstraint(QLayout::SetNoConstraint);
    column->setSpacing(0);
    column->addWidget(m_header);
    m_unfolded = {new BronzeHairline(this), new IronBackdrop(m_list, listInset, this),
                  new BronzeHairline(this), new IronBackdrop(m_footer, 0, this)};
    for (QWidget* part : m_unfolded)
        column->addWidget(part);

    m_finish = new BodyFinish(this);
    m_finish->raise();
    m_header->onActivate = [this] { tapHeader(); };

    new ChangeRelay(
        model.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

QRect FloatingChipView::bodyRect() const {
    return rect().adjusted(shadowMargin, shadowMargin, -shadowMargin, -shadowMargin);
}

void FloatingChipView::refresh() {
    m_header->setContent(ChipHeader::content(m_model, m_expanded));
    const bool showsList = ChipHeader::showsList(m_expanded, m_model.hasSessions());
    for (QWidget* part : m_unfolded)
        part->setVisible(showsList);
    reportSize();
}

void FloatingChipView::tapHeader() {
    const bool next = ChipHeader::toggledExpanded(m_expanded, m_model.hasSessions());
    if (next == m_expanded) return;
    m_expanded = next;
    refresh();
}

void FloatingChipView::reportSize() {
    const QSize size = sizeHint();
    if (m_actions.onSizeChange) m_actions.onSizeChange({double(size.width()), double(size.height())});
}

bool FloatingChipView::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    // A child changed what it needs, the list after the model moved, say: the window follows.
    if (event->type() == QEvent::LayoutRequest) reportSize();
    return handled;
}

void FloatingChipView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    reportSize();
}

void FloatingChipView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_finish->setGeometry(rect());
}

void FloatingChipView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect body = bodyRect();
    QLinearGradient material(0, body.top(), 0, body.bottom());
    material.setColorAt(0, ForgeStyle::qColor(ForgeTheme::ironTop, bodyOpacity));
    material.setColorAt(1, ForgeStyle::qColor(ForgeTheme::ironBottom, bodyOpacity));
    painter.fillPath(bodyShape(body), material);
}

void FloatingChipView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_press = Press{event->position(), event->globalPosition(), window()->pos()};
}

void FloatingChipView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_press) return;
    const QPointF moved = event->globalPosition() - m_press->global;
    if (!m_press->dragging && moved.manhattanLength() < QApplication::startDragDistance()) return;
    m_press->dragging = true;
    window()->move(m_press->windowOrigin + moved.toPoint());
}

void FloatingChipView::mouseReleaseEvent(QMouseEvent* event) {
    if (!m_press || event->button() != Qt::LeftButton) return;
    const Press press = *std::exchange(m_press, std::nullopt);
    if (!press.dragging && m_header->geometry().contains(press.local.toPoint())) tapHeader();
}

bool FloatingChipView::focusNextPrevChild(bool next) {
    std::vector<QWidget*> order;
    for (SessionRowView* row : m_list->rows())
        order.push_back(row);
    for (int i = 0; i < AppActionsFooter::buttonCount; ++i)
        order.push_back(m_footer->button(i));
    return FocusOrder::step(order, next) != nullptr;
}

} // namespace tovrin
