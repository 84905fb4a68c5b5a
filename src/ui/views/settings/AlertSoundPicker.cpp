#include "ui/views/settings/AlertSoundPicker.h"

#include "alerts/SoundCatalog.h"
#include "alerts/SoundPlayer.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/QtSoundFileChooser.h"
#include "ui/views/settings/SettingsComboBox.h"
#include "ui/views/settings/SettingsRows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace tovrin {

using SettingsRows::qText;

namespace {

constexpr int idRole = Qt::UserRole;

QStandardItem* sectionHeading(const std::string& title) {
    auto* item = new QStandardItem(QString::fromStdString(title));
    // Headings can't be chosen; the list's keyboard handling steps over them.
    item->setFlags(Qt::NoItemFlags);
    return item;
}

// Draws section headings as small bronze titles; the style would draw them as greyed-out rows.
class SectionHeadingDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (index.flags().testFlag(Qt::ItemIsEnabled)) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        painter->save();
        painter->setFont(ForgeStyle::systemFont(11, QFont::DemiBold));
        painter->setPen(ForgeStyle::qColor(ForgeTheme::bronzeDim));
        painter->drawText(option.rect.adjusted(4, 0, -4, 0), Qt::AlignLeft | Qt::AlignBottom,
                          index.data(Qt::DisplayRole).toString());
        painter->restore();
    }
};

QPushButton* button(std::string_view text, QWidget* parent) {
    auto* control = new QPushButton(qText(text), parent);
    control->setFont(ForgeStyle::systemFont(12));
    return control;
}

} // namespace

AlertSoundPicker::AlertSoundPicker(Property<std::string>& selection, const AlertSoundServices& services,
                                   QWidget* parent)
    : QWidget(parent), m_selection(selection), m_catalog(services.catalog), m_player(services.player),
      m_ownChooser(services.chooser ? nullptr : std::make_unique<QtSoundFileChooser>(this)),
      m_model(services.catalog.custom(), services.chooser ? *services.chooser : *m_ownChooser,
              services.revealFolder),
      m_label(SettingsRows::bodyLabel(qText(AlertSoundPickerText::label), this)),
      m_list(new SettingsComboBox(this)), m_add(button(AlertSoundPickerText::addButton, this)),
      m_remove(button(AlertSoundPickerText::removeButton, this)),
      m_openFolder(button(AlertSoundPickerText::openFolderButton, this)), m_caption(new QLabel(this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(SettingsRows::labelled(m_label, m_list));

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addWidget(m_openFolder);
    buttons->addStretch(1);
    column->addLayout(buttons);

    m_caption->setWordWrap(true);
    m_caption->setFont(ForgeStyle::systemFont(11));
    column->addWidget(m_caption);

    m_list->setModel(new QStandardItemModel(m_list));
    m_list->setItemDelegate(new SectionHeadingDelegate(m_list));
    connect(m_list, &QComboBox::activated, this, [this](int index) {
        const std::string id = m_list->itemData(index, idRole).toString().toStdString();
        if (!id.empty() && id != m_current) m_selection.set(id);
    });
    connect(m_add, &QPushButton::clicked, this, [this] {
        if (const auto added = m_model.addSound()) m_selection.set(added->id);
    });
    connect(m_remove, &QPushButton::clicked, this,
            [this] { m_selection.set(m_model.removeSelection(m_current)); });
    connect(m_openFolder, &QPushButton::clicked, this, [this] { m_model.revealFolder(); });

    new ChangeRelay(
        m_model.objectWillChange, [this] { sync(); }, this);
    m_current = m_selection();
    m_selectionSubscription = m_selection.observe([this](const std::string& id) { selectionChanged(id); });
    sync();
}

void AlertSoundPicker::setListEnabled(bool enabled) {
    m_label->setEnabled(enabled);
    m_list->setEnabled(enabled);
}

void AlertSoundPicker::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Files put into the folder by hand show each time the picker appears.
    m_model.refresh();
}

void AlertSoundPicker::selectionChanged(const std::string& id) {
    if (id == m_current) return;
    m_current = id;
    if (const auto file = m_catalog.sound(id)) m_player.play(*file);
    // The list is rebuilt outside the store's notification, which may come from the list itself.
    scheduleSync();
}

void AlertSoundPicker::scheduleSync() {
    if (m_syncPending) return;
    m_syncPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_syncPending = false;
            sync();
        },
        Qt::QueuedConnection);
}

void AlertSoundPicker::sync() {
    const auto sections = m_model.sections(m_current);
    if (sections != m_shownSections) rebuildList(sections);
    const int row = m_list->findData(QString::fromStdString(m_current), idRole);
    {
        const QSignalBlocker quiet(m_list);
        m_list->setCurrentIndex(row);
    }
    m_remove->setEnabled(AlertSoundPickerViewModel::canRemove(m_current));

    const AlertSoundCaption caption = m_model.caption();
    m_caption->setText(QString::fromStdString(caption.text));
    QPalette palette = m_caption->palette();
    palette.setColor(QPalette::WindowText,
                     ForgeStyle::qColor(caption.isError ? ForgeTheme::waitingRed : ForgeTheme::ashDim));
    m_caption->setPalette(palette);
}

void AlertSoundPicker::rebuildList(const std::vector<AlertSoundSection>& sections) {
    const QSignalBlocker quiet(m_list);
    auto* model = static_cast<QStandardItemModel*>(m_list->model());
    model->clear();
    for (const AlertSoundSection& section : sections) {
        model->appendRow(sectionHeading(section.title));
        for (const AlertSound& sound : section.rows) {
            auto* item = new QStandardItem(QString::fromStdString(sound.displayName));
            item->setData(QString::fromStdString(sound.id), idRole);
            model->appendRow(item);
        }
    }
    m_shownSections = sections;
    m_list->updateGeometry();
}

} // namespace tovrin
