#include "ui/views/settings/SettingsSidebar.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"
#include "ui/views/settings/SettingsRows.h"

#include <QIcon>
#include <QListWidget>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

namespace tovrin {

using SettingsRows::qText;

namespace {

constexpr int iconSide = 17;

QIcon categoryIcon(SettingsCategory category, double devicePixelRatio) {
    QIcon icon;
    const auto glyph = symbol(category);
    icon.addPixmap(
        Symbols::pixmap(glyph, ForgeStyle::qColor(ForgeTheme::bronzeDim), iconSide, devicePixelRatio),
        QIcon::Normal);
    icon.addPixmap(Symbols::pixmap(glyph, ForgeStyle::qColor(ForgeTheme::ember), iconSide, devicePixelRatio),
                   QIcon::Selected);
    return icon;
}

} // namespace

SettingsSidebar::SettingsSidebar(std::function<void(SettingsCategory)> onSelect, QWidget* parent)
    : QWidget(parent), m_list(new QListWidget(this)) {
    setFixedWidth(sidebarWidth);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 12, 0, 12);
    column->addWidget(m_list);

    m_list->setObjectName(QStringLiteral("sidebar"));
    m_list->setAccessibleName(QStringLiteral("Categories"));
    m_list->setFont(ForgeStyle::systemFont(13));
    m_list->setIconSize(QSize(iconSide, iconSide));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    for (const SettingsCategory category : allSettingsCategories) {
        auto* item = new QListWidgetItem(categoryIcon(category, devicePixelRatioF()), qText(title(category)));
        item->setData(Qt::AccessibleTextRole, qText(title(category)));
        m_list->addItem(item);
    }
    m_list->setCurrentRow(0);
    connect(m_list, &QListWidget::currentRowChanged, this, [select = std::move(onSelect)](int row) {
        if (row >= 0 && select) select(allSettingsCategories.at(static_cast<std::size_t>(row)));
    });
    // A screen reader selects an item without making it current; the page follows either.
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        const auto selected = m_list->selectedItems();
        if (!selected.isEmpty() && selected.front() != m_list->currentItem())
            m_list->setCurrentItem(selected.front());
    });
}

SettingsCategory SettingsSidebar::selection() const {
    const int row = m_list->currentRow();
    return row < 0 ? SettingsCategory::general : allSettingsCategories.at(static_cast<std::size_t>(row));
}

void SettingsSidebar::select(SettingsCategory category) {
    const auto found = std::ranges::find(allSettingsCategories, category);
    m_list->setCurrentRow(static_cast<int>(found - allSettingsCategories.begin()));
}

void SettingsSidebar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
}

} // namespace tovrin
