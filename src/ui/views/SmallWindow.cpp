#include "ui/views/SmallWindow.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QCursor>
#include <QGuiApplication>
#include <QLabel>
#include <QPalette>
#include <QScreen>
#include <QWidget>

namespace tovrin::SmallWindow {

using SettingsStyle::cssColor;

void presentCentred(QWidget& window) {
    window.adjustSize();
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (screen) window.move(screen->availableGeometry().center() - window.rect().center());
    window.show();
    window.raise();
    window.activateWindow();
}

void useForgePalette(QWidget& window) {
    QPalette dark = window.palette();
    dark.setColor(QPalette::Window, ForgeStyle::qColor(ForgeTheme::ironBottom));
    dark.setColor(QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::ash));
    dark.setColor(QPalette::ButtonText, ForgeStyle::qColor(ForgeTheme::ash));
    window.setPalette(dark);
}

QString borderedButtonStyle(const Color& tint) {
    return QStringLiteral("QPushButton { color: %1; background: %2; border: 1px solid %3; border-radius: 6px;"
                          " padding: 4px 14px; }"
                          "QPushButton:hover { background: %4; }"
                          "QPushButton:focus { border-color: %1; }"
                          "QPushButton:pressed { background: %5; }"
                          "QPushButton:disabled { color: %6; background: %7; border-color: %8; }")
        .arg(cssColor(tint), cssColor(tint, 0.14), cssColor(tint, 0.45), cssColor(tint, 0.22),
             cssColor(tint, 0.3), cssColor(ForgeTheme::ashDim), cssColor(ForgeTheme::edge, 0.35),
             cssColor(ForgeTheme::edge));
}

QString prominentButtonStyle() {
    // The focus ring is drawn inside, in the window's iron, so that it shows on the solid fill.
    return QStringLiteral(
               "QPushButton { color: white; background: %1; border: 1px solid %1; border-radius: 6px;"
               " padding: 4px 16px; }"
               "QPushButton:hover { background: %2; }"
               "QPushButton:focus { border: 2px solid %3; }"
               "QPushButton:pressed { background: %4; }"
               "QPushButton:disabled { background: %5; border-color: %6; }"
               "QPushButton QLabel { color: white; background: transparent; }"
               "QPushButton QLabel:disabled { color: %7; }")
        .arg(cssColor(ForgeTheme::ember), cssColor(ForgeTheme::ember, 0.85), cssColor(ForgeTheme::bronze),
             cssColor(ForgeTheme::ember, 0.7), cssColor(ForgeTheme::edge, 0.35), cssColor(ForgeTheme::edge),
             cssColor(ForgeTheme::ashDim));
}

QString plainButtonStyle() {
    return QStringLiteral("QPushButton { color: %1; background: transparent; border: 1px solid transparent;"
                          " border-radius: 6px; padding: 4px 8px; }"
                          "QPushButton:hover { color: %2; }"
                          "QPushButton:focus { border-color: %3; }")
        .arg(cssColor(ForgeTheme::ash), cssColor(ForgeTheme::bronze), cssColor(ForgeTheme::edge));
}

QLabel* textLine(const QString& text, const QFont& font, const Color& color, QWidget* parent,
                 Qt::Alignment alignment) {
    auto* label = new QLabel(text, parent);
    label->setFont(font);
    label->setAlignment(alignment);
    label->setStyleSheet(QStringLiteral("color: %1; background: transparent;").arg(cssColor(color)));
    return label;
}

} // namespace tovrin::SmallWindow
