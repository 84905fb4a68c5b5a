#include "ui/views/settings/SettingsStyle.h"

#include "ui/theme/ForgeTheme.h"

namespace tovrin::SettingsStyle {

QString cssColor(const Color& color, double opacity) {
    const QColor c = ForgeStyle::qColor(color, opacity);
    return QStringLiteral("rgba(%1, %2, %3, %4)").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alphaF());
}

QPalette palette(QPalette base) {
    const auto set = [&base](QPalette::ColorRole role, const Color& color, double opacity = 1) {
        base.setColor(role, ForgeStyle::qColor(color, opacity));
    };
    set(QPalette::Window, ForgeTheme::ironTop);
    set(QPalette::WindowText, ForgeTheme::ash);
    set(QPalette::Base, ForgeTheme::ironBottom);
    set(QPalette::AlternateBase, ForgeTheme::ironTop);
    set(QPalette::Text, ForgeTheme::ash);
    set(QPalette::Button, ForgeTheme::edge);
    set(QPalette::ButtonText, ForgeTheme::ash);
    set(QPalette::Highlight, ForgeTheme::ember);
    set(QPalette::Link, ForgeTheme::bronze);
    set(QPalette::PlaceholderText, ForgeTheme::ashDim);
    set(QPalette::ToolTipBase, ForgeTheme::ironTop);
    set(QPalette::ToolTipText, ForgeTheme::ash);
    base.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        base.setColor(QPalette::Disabled, role, ForgeStyle::qColor(ForgeTheme::ashDim));
    return base;
}

QString styleSheet() {
    const QString edge = cssColor(ForgeTheme::edge);
    const QString ember = cssColor(ForgeTheme::ember);
    return QStringLiteral(
               "QPushButton { color: %1; background: %2; border: 1px solid %3; border-radius: 5px;"
               " padding: 3px 12px; }"
               "QPushButton:hover { border-color: %4; }"
               "QPushButton:pressed { background: %3; }"
               "QPushButton:focus { border-color: %5; }"
               "QPushButton:disabled { color: %6; background: %7; border-color: %7; }"
               "QLineEdit { color: %1; background: %8; border: 1px solid %3; border-radius: 5px;"
               " padding: 3px 6px; selection-background-color: %5; }"
               "QLineEdit:focus { border-color: %5; }"
               "QLineEdit:disabled { color: %6; }"
               "QSlider::groove:horizontal { height: 4px; background: %3; border-radius: 2px; }"
               "QSlider::sub-page:horizontal { background: %5; border-radius: 2px; }"
               "QSlider::sub-page:horizontal:disabled { background: %6; }"
               "QSlider::handle:horizontal { background: white; width: 16px; margin: -6px 0; border-radius: "
               "8px; }"
               "QSlider::handle:horizontal:disabled { background: %1; }"
               "QSlider:focus { outline: none; }"
               "QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }"
               "QScrollBar::handle:vertical { background: %9; border-radius: 3px; min-height: 24px; }"
               "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
               "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }"
               "QListWidget#sidebar { background: transparent; border: none; outline: none; }"
               "QListWidget#sidebar::item { color: %1; padding: 5px 6px; margin: 1px 8px; border-radius: "
               "6px; }"
               "QListWidget#sidebar::item:selected { color: %4; background: %10; }"
               "QListWidget#sidebar:focus::item:selected { color: %11; }"
               "QComboBox QAbstractItemView { color: %1; background: %12; border: 1px solid %3; outline: "
               "none;"
               " selection-color: white; selection-background-color: %13; }"
               "QComboBox QAbstractItemView::item { padding: 3px 0; }")
        .arg(cssColor(ForgeTheme::ash), cssColor(ForgeTheme::edge, 0.55), edge,
             cssColor(ForgeTheme::bronzeDim), ember, cssColor(ForgeTheme::ashDim),
             cssColor(ForgeTheme::edge, 0.25), cssColor(ForgeTheme::ironBottom),
             cssColor(ForgeTheme::ash, 0.25))
        .arg(cssColor(ForgeTheme::ember, 0.16), cssColor(ForgeTheme::bronze), cssColor(ForgeTheme::ironTop),
             cssColor(ForgeTheme::ember, 0.35));
}

} // namespace tovrin::SettingsStyle
