#include "ui/views/ShortcutRecorder.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/views/QtText.h"
#include "ui/views/ShortcutKeys.h"
#include "ui/views/SymbolButton.h"

#include <QApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <algorithm>

namespace tovrin {
namespace {

constexpr int fieldWidth = 130;
constexpr int fieldHeight = 24;
constexpr int textPadding = 8;
constexpr double clearSymbolSide = 9;
constexpr int clearMargin = 3;
// A release this close to the field still counts as on it.
constexpr int releaseSlack = 3;
constexpr double disabledOpacity = 0.45;

QPalette alertPalette(QPalette palette) {
    const auto set = [&palette](QPalette::ColorRole role, const Color& color) {
        palette.setColor(role, ForgeStyle::qColor(color));
    };
    set(QPalette::Window, ForgeTheme::ironTop);
    set(QPalette::WindowText, ForgeTheme::ash);
    set(QPalette::Base, ForgeTheme::ironBottom);
    set(QPalette::Text, ForgeTheme::ash);
    set(QPalette::Button, ForgeTheme::edge);
    set(QPalette::ButtonText, ForgeTheme::ash);
    set(QPalette::Highlight, ForgeTheme::ember);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

ShortcutRecorder::ShortcutRecorder(KeyboardShortcuts& shortcuts, QWidget* parent)
    : QAbstractButton(parent), m_model(shortcuts, ShortcutName::toggleFloatingChip()),
      m_clearButton(
          new SymbolButton("xmark", clearSymbolSide, ForgeStyle::qColor(ForgeTheme::ashDim), this)) {
    setFocusPolicy(Qt::StrongFocus);
    setFont(ForgeStyle::systemFont(13));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Toggle shortcut"));
    if (const auto note = m_model.reachNote()) setToolTip(qText(*note));

    // Backspace clears from the keyboard; the button is for the pointer and stays out of the tab order.
    m_clearButton->setFocusPolicy(Qt::NoFocus);
    m_clearButton->setAccessibleName(qText(RecorderText::clearShortcut));
    m_clearButton->setToolTip(qText(RecorderText::clearShortcut));
    connect(m_clearButton, &QAbstractButton::clicked, this, [this] { m_model.clear(); });
    connect(this, &QAbstractButton::clicked, this, [this] { startRecording(); });

    m_changes = m_model.onChange([this] { refresh(); });
    refresh();
}

ShortcutRecorder::~ShortcutRecorder() {
    if (m_holdsKeyboard) {
        releaseKeyboard();
        qApp->removeEventFilter(this);
    }
}

QString ShortcutRecorder::reachNote() const {
    const auto note = m_model.reachNote();
    return note ? qText(*note) : QString();
}

QSize ShortcutRecorder::sizeHint() const {
    const QFontMetrics metrics(font());
    const int widest = std::max({metrics.horizontalAdvance(text()),
                                 metrics.horizontalAdvance(qText(RecorderText::recordShortcut)),
                                 metrics.horizontalAdvance(qText(RecorderText::pressShortcut))});
    // Room for the clear button on both sides keeps the text centred.
    const int side = textPadding + m_clearButton->width() + clearMargin;
    return {std::max(fieldWidth, widest + 2 * side), fieldHeight};
}

QSize ShortcutRecorder::minimumSizeHint() const {
    return {fieldWidth, fieldHeight};
}

void ShortcutRecorder::startRecording() {
    if (!hasFocus()) setFocus(Qt::OtherFocusReason);
    m_model.beginRecording();
}

void ShortcutRecorder::refresh() {
    const bool recording = m_model.isRecording();
    if (recording != m_holdsKeyboard) {
        m_holdsKeyboard = recording;
        if (recording) {
            grabKeyboard();
            qApp->installEventFilter(this);
        } else {
            releaseKeyboard();
            qApp->removeEventFilter(this);
        }
    }
    const QString shown = qText(m_model.text());
    setText(shown);
    setAccessibleDescription(shown.isEmpty() ? qText(m_model.placeholder()) : shown);
    m_clearButton->setVisible(m_model.canClear());
    updateGeometry();
    update();
}

bool ShortcutRecorder::event(QEvent* event) {
    // While recording, keys that the window's own shortcuts use are recorded rather than acted on.
    if (event->type() == QEvent::ShortcutOverride && m_model.isRecording()) {
        event->accept();
        return true;
    }
    return QAbstractButton::event(event);
}

bool ShortcutRecorder::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && m_model.isRecording()) {
        const QPoint global = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        const QRect area = rect().adjusted(-releaseSlack, -releaseSlack, releaseSlack, releaseSlack);
        if (!area.contains(mapFromGlobal(global))) m_model.endRecording();
    }
    return false;
}

void ShortcutRecorder::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    // Only the user's own move into the field records: not the focus a window hands back when it opens
    // or comes forward.
    switch (event->reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::MouseFocusReason:
    case Qt::ShortcutFocusReason:
        startRecording();
        break;
    default:
        break;
    }
}

void ShortcutRecorder::focusOutEvent(QFocusEvent* event) {
    QAbstractButton::focusOutEvent(event);
    m_model.endRecording();
}

void ShortcutRecorder::hideEvent(QHideEvent* event) {
    QAbstractButton::hideEvent(event);
    m_model.endRecording();
}

void ShortcutRecorder::keyPressEvent(QKeyEvent* event) {
    if (!m_model.isRecording()) {
        QAbstractButton::keyPressEvent(event);
        return;
    }
    event->accept();
    const ShortcutKeys::Press press = ShortcutKeys::pressOf(*event);
    if (press.keySym == 0) return;
    // The event's own modifiers leave out the modifier key that is going down.
    const std::uint32_t modifiers =
        isModifierKey(press.keySym) ? ShortcutKeys::modifierMask(QGuiApplication::queryKeyboardModifiers())
                                    : press.modifiers;
    const RecorderKeyResult result = m_model.keyDown(press.keySym, modifiers);
    switch (result.action) {
    case RecorderAction::refused:
        QApplication::beep();
        break;
    case RecorderAction::passOn:
        event->ignore();
        break;
    case RecorderAction::confirmHeldByAnotherProgram:
        askToUseHeldShortcut(*result.shortcut);
        break;
    default:
        break;
    }
}

void ShortcutRecorder::keyReleaseEvent(QKeyEvent* event) {
    if (!m_model.isRecording()) {
        QAbstractButton::keyReleaseEvent(event);
        return;
    }
    event->accept();
    if (isModifierKey(ShortcutKeys::pressOf(*event).keySym))
        m_model.modifiersChanged(ShortcutKeys::modifierMask(QGuiApplication::queryKeyboardModifiers()));
}

void ShortcutRecorder::askToUseHeldShortcut(const Shortcut& shortcut) {
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Tovrin"),
                                qText(RecorderText::usedByAnotherProgram), QMessageBox::NoButton, this);
    box->setInformativeText(qText(RecorderText::canBeChanged));
    box->setPalette(alertPalette(box->palette()));
    QPushButton* ok = box->addButton(qText(RecorderText::ok), QMessageBox::RejectRole);
    QPushButton* useAnyway = box->addButton(qText(RecorderText::forceUse), QMessageBox::AcceptRole);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, this, [this, box, useAnyway, shortcut] {
        if (box->clickedButton() == useAnyway) {
            m_model.take(shortcut);
        } else {
            // Not taken: the field is the user's again, to try another.
            setFocus(Qt::OtherFocusReason);
            startRecording();
        }
    });
    box->open();
}

void ShortcutRecorder::resizeEvent(QResizeEvent* event) {
    QAbstractButton::resizeEvent(event);
    m_clearButton->move(width() - m_clearButton->width() - clearMargin,
                        (height() - m_clearButton->height()) / 2);
}

void ShortcutRecorder::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : disabledOpacity);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    painter.fillPath(outline, ForgeStyle::qColor(ForgeTheme::edge, 0.55));
    const Color border = m_model.isRecording() ? ForgeTheme::ember
                         : hasFocus()          ? ForgeTheme::bronzeDim
                                               : ForgeTheme::edge;
    painter.setPen(QPen(ForgeStyle::qColor(border), 1));
    painter.drawPath(outline);

    const bool empty = text().isEmpty();
    const QString shown = empty ? qText(m_model.placeholder()) : text();
    const int side = textPadding + (m_clearButton->isVisible() ? m_clearButton->width() + clearMargin : 0);
    const QRect textBox = rect().adjusted(side, 0, -side, 0);
    painter.setFont(font());
    painter.setPen(ForgeStyle::qColor(empty ? ForgeTheme::ashDim : ForgeTheme::ash));
    painter.drawText(textBox, Qt::AlignCenter,
                     QFontMetrics(font()).elidedText(shown, Qt::ElideRight, textBox.width()));
}

} // namespace tovrin
