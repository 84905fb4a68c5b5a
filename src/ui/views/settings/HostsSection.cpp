#include "ui/views/settings/HostsSection.h"

#include "core/PreferencesStore.h"
#include "sessions/RemoteHostList.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/SettingsRows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tovrin {

namespace {

constexpr std::string_view caption =
    "Agents on these machines join the list. Tovrin connects with your own ssh (its configuration, "
    "agent and keys) and never asks for a password. Install the hooks there with "
    "\"tovrin hooks install <agent> --host <destination>\".";

} // namespace

HostsSection::HostsSection(PreferencesStore& preferences, QWidget* parent)
    : SettingsGroup(QStringLiteral("Hosts"), parent), m_preferences(preferences) {
    m_hostRows = new QWidget(this);
    m_hostRowsLayout = new QVBoxLayout(m_hostRows);
    m_hostRowsLayout->setContentsMargins(0, 0, 0, 0);
    m_hostRows->hide();
    addRow(m_hostRows);

    m_destination = new QLineEdit(this);
    m_destination->setPlaceholderText(QStringLiteral("user@host or an ssh alias"));
    m_destination->setAccessibleName(QStringLiteral("Host to add"));
    m_destination->setFont(ForgeStyle::systemFont(13));
    connect(m_destination, &QLineEdit::returnPressed, this, [this] { add(); });
    m_add = SettingsRows::actionButton(
        "Add host", [this] { add(); }, this);
    auto* adding = new QHBoxLayout;
    adding->setContentsMargins(0, 0, 0, 0);
    adding->setSpacing(10);
    adding->addWidget(m_destination, 1);
    adding->addWidget(m_add);
    addRow(adding);

    m_refusal = SettingsRows::bodyLabel(QString(), this);
    QPalette palette = m_refusal->palette();
    palette.setColor(QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::waitingRed));
    m_refusal->setPalette(palette);
    m_refusal->setWordWrap(true);
    m_refusal->hide();
    addRow(m_refusal);
    addCaption(SettingsRows::qText(caption));

    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

void HostsSection::add() {
    const auto added = RemoteHostList(m_preferences).add(m_destination->text().trimmed().toStdString());
    m_refusal->setText(added ? QString() : QString::fromStdString(added.error()));
    m_refusal->setAccessibleName(m_refusal->text());
    m_refusal->setVisible(!added);
    if (added) m_destination->clear();
}

void HostsSection::refresh() {
    // Any setting calls here; rows are made again only when the hosts changed.
    const auto& hosts = m_preferences.remoteHosts();
    if (hosts == m_shownHosts) return;
    m_shownHosts = hosts;
    // Later: a row's own button may be what is being pressed.
    for (QPushButton* button : m_removeButtons)
        button->parentWidget()->deleteLater();
    m_removeButtons.clear();
    for (const auto& host : hosts) {
        auto* row = new QWidget(m_hostRows);
        const QString name = QString::fromStdString(host);
        auto* remove = SettingsRows::actionButton(
            "Remove", [this, host] { (void)RemoteHostList(m_preferences).remove(host); }, row);
        auto* line = SettingsRows::labelled(SettingsRows::bodyLabel(name, row), remove);
        remove->setAccessibleName(QStringLiteral("Remove ") + name);
        row->setLayout(line);
        m_hostRowsLayout->addWidget(row);
        m_removeButtons.push_back(remove);
    }
    m_hostRows->setVisible(!hosts.empty());
}

} // namespace tovrin
