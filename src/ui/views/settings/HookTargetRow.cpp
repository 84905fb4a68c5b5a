#include "ui/views/settings/HookTargetRow.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/StatusDot.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tovrin {

namespace {

constexpr double bodySize = 13;
constexpr double captionSize = 11;

QLabel* textLabel(double size, const Color& color, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setFont(ForgeStyle::systemFont(size));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, ForgeStyle::qColor(color));
    label->setPalette(palette);
    return label;
}

} // namespace

QColor hookToneColor(HookTone tone) {
    switch (tone) {
    case HookTone::workingAmber:
        return ForgeStyle::qColor(ForgeTheme::workingAmber);
    case HookTone::waitingRed:
        return ForgeStyle::qColor(ForgeTheme::waitingRed);
    case HookTone::bronze:
        return ForgeStyle::qColor(ForgeTheme::bronze);
    case HookTone::ashDim:
        break;
    }
    return ForgeStyle::qColor(ForgeTheme::ashDim);
}

HookTargetRow::HookTargetRow(std::function<void()> install, std::function<void()> uninstall, QWidget* parent)
    : QWidget(parent), m_install(std::move(install)), m_uninstall(std::move(uninstall)),
      m_dot(new StatusDot(hookToneColor(HookTone::ashDim), false, this)),
      m_name(textLabel(bodySize, ForgeTheme::ash, this)),
      m_secondLine(textLabel(captionSize, ForgeTheme::ashDim, this)), m_button(new QPushButton(this)),
      m_notFound(textLabel(captionSize, ForgeTheme::ashDim, this)) {
    m_secondLine->setWordWrap(true);
    m_secondLine->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_button->setFont(ForgeStyle::systemFont(bodySize));
    connect(m_button, &QPushButton::clicked, this, [this] {
        if (m_control == HookRowPresentation::Control::removeButton)
            m_uninstall();
        else
            m_install();
    });

    auto* lines = new QVBoxLayout;
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);
    lines->addWidget(m_name);
    lines->addWidget(m_secondLine);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    // The dot's glow margin already keeps it clear of the name.
    row->setSpacing(6);
    row->addWidget(m_dot, 0, Qt::AlignVCenter);
    row->addLayout(lines, 1);
    row->addWidget(m_button, 0, Qt::AlignVCenter);
    row->addWidget(m_notFound, 0, Qt::AlignVCenter);
}

void HookTargetRow::present(const std::string& displayName, const HookRowPresentation& presentation) {
    using Control = HookRowPresentation::Control;
    m_control = presentation.control;
    m_dot->setColor(hookToneColor(presentation.dot));
    m_dot->setGlows(presentation.glows);
    const QString name = QString::fromStdString(displayName);
    m_name->setText(name);
    m_secondLine->setText(QString::fromStdString(presentation.secondLine.value_or("")));
    m_secondLine->setVisible(presentation.secondLine.has_value());

    const QString control = QString::fromStdString(presentation.controlText);
    const bool isButton = presentation.control != Control::notFoundText;
    m_button->setVisible(isButton);
    m_notFound->setVisible(!isButton);
    if (isButton) {
        m_button->setText(control);
        m_button->setAccessibleName(control);
        // Every row has such a button; the target tells them apart.
        m_button->setAccessibleDescription(name);
        m_button->setEnabled(presentation.control != Control::disabledInstallButton);
    } else {
        m_notFound->setText(control);
    }
}

} // namespace tovrin
