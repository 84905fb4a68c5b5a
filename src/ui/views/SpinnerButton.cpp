#include "ui/views/SpinnerButton.h"

#include "ui/views/settings/ProgressSpinner.h"

#include <QHBoxLayout>
#include <QLabel>

namespace tovrin {
namespace {

constexpr int spinnerSide = 12;

} // namespace

SpinnerButton::SpinnerButton(const QColor& spinnerColor, QWidget* parent)
    : QPushButton(parent), m_spinner(new ProgressSpinner(spinnerColor, spinnerSide, this)),
      m_label(new QLabel(this)) {
    // The label's row replaces the button's own text, so that the spinner can stand beside it.
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_spinner->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 5, 16, 5);
    row->setSpacing(6);
    row->addStretch(1);
    row->addWidget(m_spinner, 0, Qt::AlignVCenter);
    row->addWidget(m_label, 0, Qt::AlignVCenter);
    row->addStretch(1);
    m_spinner->hide();
}

void SpinnerButton::setLabel(const QString& text, bool spinning) {
    m_label->setText(text);
    setAccessibleName(text);
    m_spinner->setVisible(spinning);
    updateGeometry();
}

QSize SpinnerButton::sizeHint() const {
    return layout()->sizeHint();
}

} // namespace tovrin
