#include "ui/views/settings/HookInstallSection.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/HookSettingsViewModel.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/GlyphCaption.h"
#include "ui/views/settings/HookTargetRow.h"
#include "ui/views/settings/SettingsRows.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace tovrin {

namespace {

using SettingsRows::qText;
using SettingsStyle::cssColor;

constexpr double bodySize = 13;

QPushButton* footerButton(const QString& text, const QString& style, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setAccessibleName(text);
    button->setFont(ForgeStyle::systemFont(bodySize, QFont::DemiBold));
    button->setStyleSheet(style);
    return button;
}

// The one action the section invites: ember, filled.
QString prominentStyle() {
    return QStringLiteral("QPushButton { color: %1; background: %2; border: 1px solid %2; }"
                          "QPushButton:hover { background: %3; }"
                          "QPushButton:pressed { background: %4; }"
                          "QPushButton:focus { border-color: %5; }")
        .arg(cssColor(ForgeTheme::ironBottom), cssColor(ForgeTheme::ember), cssColor(ForgeTheme::ember, 0.85),
             cssColor(ForgeTheme::ember, 0.7), cssColor(ForgeTheme::bronze));
}

// Bordered like the others, its words in red: it takes every hook out at once, unasked.
QString destructiveStyle() {
    return QStringLiteral("QPushButton { color: %1; }").arg(cssColor(ForgeTheme::waitingRed));
}

std::optional<HookSettingsViewModel::Row> rowFor(const HookSettingsViewModel& model, const std::string& id) {
    const auto& rows = model.rows();
    const auto found = std::ranges::find(rows, id, [](const auto& row) { return row.target.id; });
    if (found == rows.end()) return std::nullopt;
    return *found;
}

} // namespace

HookInstallSection::HookInstallSection(HookSettingsViewModel& model, QWidget* parent)
    : SettingsGroup(qText(HookSettingsText::heading), parent), m_model(model) {
    m_notice = new GlyphCaption;
    addRow(m_notice);

    for (const HookTarget& target : m_model.targets()) {
        // The model's rows are replaced on each refresh, so a click looks its row up when it comes.
        const auto act = [this, id = target.id](bool install) {
            const auto row = rowFor(m_model, id);
            if (!row) return;
            if (install)
                m_model.install(*row);
            else
                m_model.uninstall(*row);
        };
        auto* row = new HookTargetRow([act] { act(true); }, [act] { act(false); });
        row->hide();
        addRow(row);
        m_rows.push_back(row);
    }

    m_footer = new QWidget;
    auto* footer = new QVBoxLayout(m_footer);
    footer->setContentsMargins(0, 0, 0, 0);
    footer->setSpacing(8);

    m_buttons = new QWidget(m_footer);
    m_setUp = footerButton(QString(), prominentStyle(), m_buttons);
    connect(m_setUp, &QPushButton::clicked, this, [this] { m_model.installDefaults(); });
    m_removeAll = footerButton(qText(HookSettingsText::removeAll), destructiveStyle(), m_buttons);
    connect(m_removeAll, &QPushButton::clicked, this, [this] { m_model.uninstallAll(); });
    auto* buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins(0, 0, 0, 2);
    buttons->addWidget(m_setUp);
    buttons->addStretch(1);
    buttons->addWidget(m_removeAll);
    footer->addWidget(m_buttons);

    m_captionColumn = new QVBoxLayout;
    m_captionColumn->setSpacing(6);
    footer->addLayout(m_captionColumn);
    addRow(m_footer);

    new ChangeRelay(
        model.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

void HookInstallSection::refresh() {
    const auto notice = m_model.notice();
    m_notice->setVisible(notice.has_value());
    if (notice)
        m_notice->setContent(QString::fromStdString(notice->text), hookToneColor(notice->tone),
                             notice->glyph);

    // Without a payload there are no rows, so every target's row stays hidden.
    const auto& targets = m_model.targets();
    for (std::size_t index = 0; index < targets.size(); ++index) {
        const auto row = rowFor(m_model, targets[index].id);
        m_rows[index]->setVisible(row.has_value());
        if (row)
            m_rows[index]->present(row->target.displayName, HookRowPresentation::of(row->target, row->state));
    }

    m_footer->setVisible(!notice);
    if (!notice) showFooter(m_model.footer());
}

void HookInstallSection::showFooter(const HookFooterPresentation& footer) {
    m_setUp->setVisible(footer.setUpButton.has_value());
    if (footer.setUpButton) {
        m_setUp->setText(QString::fromStdString(*footer.setUpButton));
        m_setUp->setAccessibleName(m_setUp->text());
    }
    m_removeAll->setVisible(footer.showsRemoveAll);
    m_buttons->setVisible(footer.setUpButton || footer.showsRemoveAll);

    showCaptions(footer.captions.size());
    for (std::size_t index = 0; index < footer.captions.size(); ++index) {
        const HookCaption& caption = footer.captions[index];
        m_captions[index]->setContent(QString::fromStdString(caption.text), hookToneColor(caption.tone),
                                      caption.glyph);
    }
}

void HookInstallSection::showCaptions(std::size_t count) {
    while (m_captions.size() < count) {
        m_captions.push_back(new GlyphCaption(m_footer));
        m_captionColumn->addWidget(m_captions.back());
    }
    while (m_captions.size() > count) {
        delete m_captions.back();
        m_captions.pop_back();
    }
}

} // namespace tovrin
