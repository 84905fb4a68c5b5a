#include "ui/views/FeedbackView.h"

#include "services/feedback/FeedbackViewModel.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/SoftGlow.h"
#include "ui/theme/Symbols.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/QtText.h"
#include "ui/views/SegmentedPicker.h"
#include "ui/views/SmallWindow.h"
#include "ui/views/SpinnerButton.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

namespace tovrin {
namespace {

constexpr int columnWidth = 380;
constexpr int sealSide = 44;
constexpr std::string_view sealSymbol = "checkmark.seal.fill";

QString messageEditorStyle() {
    using SettingsStyle::cssColor;
    return QStringLiteral(
               "QPlainTextEdit { color: %1; background: %2; border: 1px solid %3; border-radius: 8px;"
               " padding: 4px; selection-background-color: %4; }"
               "QPlainTextEdit:focus { border-color: %4; }")
        .arg(cssColor(ForgeTheme::ash), cssColor(ForgeTheme::ironBottom), cssColor(ForgeTheme::edge),
             cssColor(ForgeTheme::ember));
}

QLabel* wrappingLine(std::string_view text, const QFont& font, const Color& color, Qt::Alignment alignment,
                     QWidget* parent) {
    QLabel* label = SmallWindow::textLine(qText(text), font, color, parent, alignment);
    label->setWordWrap(true);
    label->setFixedWidth(columnWidth);
    return label;
}

QLabel* engravedLine(std::string_view text, double size, double tracking, Qt::Alignment alignment,
                     QWidget* parent) {
    QFont font = ForgeStyle::engraved(size, QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    return SmallWindow::textLine(qText(text), font, ForgeTheme::bronze, parent, alignment);
}

// The seal of the sent face; its ember glow is painted by the window behind it, so that the glow
// can spread past the seal's own frame.
class Seal : public QWidget {
public:
    explicit Seal(QWidget* parent) : QWidget(parent) { setFixedSize(sealSide, sealSide); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Symbols::paint(painter, sealSymbol, QRectF(rect()), ForgeStyle::qColor(ForgeTheme::ember));
    }
};

} // namespace

FeedbackView::FeedbackView(FeedbackViewModel& model, QWidget* parent) : QWidget(parent), m_model(model) {
    setWindowTitle(qText(FeedbackText::windowTitle));
    setObjectName(QStringLiteral("feedback"));
    setPalette(SettingsStyle::palette(palette()));
    setStyleSheet(SettingsStyle::styleSheet() + messageEditorStyle());

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(28, 24, 28, 22);
    column->setSpacing(0);
    column->setSizeConstraint(QLayout::SetFixedSize);
    m_form = buildForm();
    m_sent = buildSentFace();
    column->addWidget(m_form);
    column->addWidget(m_sent);

    auto* send = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(send, &QShortcut::activated, this, [this] { m_model.submit(); });
    auto* sendFromKeypad = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Enter), this);
    connect(sendFromKeypad, &QShortcut::activated, this, [this] { m_model.submit(); });

    new ChangeRelay(
        m_model.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

QWidget* FeedbackView::buildForm() {
    auto* form = new QWidget(this);
    form->setFixedWidth(columnWidth);
    auto* column = new QVBoxLayout(form);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(14);

    auto* header = new QVBoxLayout;
    header->setSpacing(5);
    header->addWidget(engravedLine(FeedbackText::heading, 18, 2, Qt::AlignLeft, form));
    header->addWidget(wrappingLine(FeedbackText::intro, ForgeStyle::systemFont(12), ForgeTheme::ashDim,
                                   Qt::AlignLeft, form));
    column->addLayout(header);

    QStringList kinds;
    std::transform(allFeedbackKinds.begin(), allFeedbackKinds.end(), std::back_inserter(kinds),
                   [](FeedbackKind kind) { return qText(label(kind)); });
    m_picker = new SegmentedPicker(
        kinds, [this](int index) { m_model.kind.set(allFeedbackKinds.at(static_cast<std::size_t>(index))); },
        form);
    m_picker->setAccessibleName(qText(FeedbackText::kindPicker));
    m_picker->setFont(ForgeStyle::systemFont(12));
    column->addWidget(m_picker);

    m_message = new QPlainTextEdit(form);
    m_message->setAccessibleName(qText(FeedbackText::messageField));
    m_message->setPlaceholderText(qText(FeedbackText::messagePlaceholder));
    m_message->setFont(ForgeStyle::systemFont(13));
    m_message->setFixedHeight(118);
    m_message->setTabChangesFocus(true);
    connect(m_message, &QPlainTextEdit::textChanged, this, [this] {
        const std::string text = m_message->toPlainText().toStdString();
        if (text != m_model.message()) m_model.message.set(text);
    });
    column->addWidget(m_message);

    m_email = new QLineEdit(form);
    m_email->setAccessibleName(qText(FeedbackText::emailField));
    m_email->setPlaceholderText(qText(FeedbackText::emailPlaceholder));
    m_email->setFont(ForgeStyle::systemFont(13));
    connect(m_email, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_model.email.set(text.toStdString()); });
    column->addWidget(m_email);

    m_failure = wrappingLine({}, ForgeStyle::systemFont(12), ForgeTheme::waitingRed, Qt::AlignLeft, form);
    m_failure->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(m_failure);

    auto* footer = new QHBoxLayout;
    m_cancel = new QPushButton(qText(FeedbackText::cancel), form);
    m_cancel->setFont(ForgeStyle::systemFont(13));
    m_cancel->setStyleSheet(SmallWindow::plainButtonStyle());
    m_cancel->setAutoDefault(false);
    connect(m_cancel, &QPushButton::clicked, this, &QWidget::close);
    footer->addWidget(m_cancel);
    footer->addStretch(1);
    m_send = new SpinnerButton(Qt::white, form);
    m_send->setFont(ForgeStyle::systemFont(13));
    m_send->setStyleSheet(SmallWindow::prominentButtonStyle());
    m_send->setAutoDefault(false);
    connect(m_send, &QPushButton::clicked, this, [this] { m_model.submit(); });
    footer->addWidget(m_send);
    column->addLayout(footer);

    setTabOrder(m_picker->segment(static_cast<int>(kinds.size()) - 1), m_message);
    setTabOrder(m_message, m_email);
    setTabOrder(m_email, m_cancel);
    setTabOrder(m_cancel, m_send);
    return form;
}

QWidget* FeedbackView::buildSentFace() {
    auto* face = new QWidget(this);
    face->setFixedWidth(columnWidth);
    auto* column = new QVBoxLayout(face);
    column->setContentsMargins(0, 10, 0, 10);
    column->setSpacing(13);

    m_seal = new Seal(face);
    column->addWidget(m_seal, 0, Qt::AlignHCenter);
    column->addWidget(engravedLine(FeedbackText::thanks, 20, 0, Qt::AlignHCenter, face));
    column->addWidget(wrappingLine(FeedbackText::onItsWay, ForgeStyle::systemFont(13), ForgeTheme::ash,
                                   Qt::AlignHCenter, face));
    column->addSpacing(2);
    m_done = new QPushButton(qText(FeedbackText::done), face);
    m_done->setFont(ForgeStyle::systemFont(13));
    m_done->setStyleSheet(SmallWindow::borderedButtonStyle());
    m_done->setAutoDefault(true);
    connect(m_done, &QPushButton::clicked, this, &QWidget::close);
    column->addWidget(m_done, 0, Qt::AlignHCenter);
    return face;
}

void FeedbackView::refresh() {
    const bool sent = m_model.showsSent();
    const bool faceChanged = m_sent->isVisibleTo(this) != sent;
    m_form->setVisible(!sent);
    m_sent->setVisible(sent);

    const auto kind = std::find(allFeedbackKinds.begin(), allFeedbackKinds.end(), m_model.kind());
    m_picker->setCurrent(static_cast<int>(std::distance(allFeedbackKinds.begin(), kind)));
    const QString message = QString::fromStdString(m_model.message());
    if (m_message->toPlainText() != message) m_message->setPlainText(message);
    const QString email = QString::fromStdString(m_model.email());
    if (m_email->text() != email) m_email->setText(email);

    const auto failure = m_model.failure();
    m_failure->setText(failure ? QString::fromStdString(*failure) : QString());
    m_failure->setVisible(failure.has_value());

    m_send->setLabel(qText(m_model.sendLabel()), m_model.sending());
    m_send->setEnabled(m_model.sendEnabled());

    // The keyboard follows the face that shows, as the one that had it is gone.
    if (faceChanged && isVisible()) focusFace();
}

void FeedbackView::focusFace() {
    if (m_sent->isVisibleTo(this))
        m_done->setFocus();
    else
        m_message->setFocus();
}

void FeedbackView::present() {
    SmallWindow::presentCentred(*this);
    focusFace();
}

void FeedbackView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void FeedbackView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
    if (!m_sent->isVisible()) return;
    const QRectF seal(m_seal->mapTo(this, QPoint()), m_seal->size());
    SoftGlow::paint(painter, Symbols::pixmap(sealSymbol, Qt::white, sealSide, devicePixelRatioF()).toImage(),
                    seal, ForgeStyle::qColor(ForgeTheme::ember), 0.45, 18);
}

} // namespace tovrin
