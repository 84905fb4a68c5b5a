#include "app/desktop/DesktopDisplayFacts.h"

#include "ui/theme/MotionSettings.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

namespace tovrin {

DisplayFacts desktopDisplayFacts() {
    DisplayFacts facts;
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        facts.screenWidth = screen->size().width();
        facts.screenHeight = screen->size().height();
        facts.screenScaleFactor = screen->devicePixelRatio();
    }
    // Our windows set their own palettes; the application's is still the desktop's.
    facts.darkColorScheme = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    facts.rightToLeftLayout = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    facts.reduceMotion = reduceMotion();
    return facts;
}

} // namespace tovrin
