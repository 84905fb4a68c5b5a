#include "ui/theme/ForgeTheme.h"

#include <QFontDatabase>

namespace tovrin::ForgeStyle {

QColor qColor(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QColor qColor(const Color& color, double opacity) {
    return qColor(Color{color.red, color.green, color.blue, color.alpha * opacity});
}

QFont engraved(double pixelSize, QFont::Weight weight) {
    QFont font;
    if (QFontDatabase::families().contains(QString::fromLatin1(ForgeTheme::engravedFontFamily))) {
        font.setFamily(QString::fromLatin1(ForgeTheme::engravedFontFamily));
    } else {
        font.setFamilies({QStringLiteral("serif")});
        font.setStyleHint(QFont::Serif);
    }
    font.setPixelSize(static_cast<int>(pixelSize + 0.5));
    font.setWeight(weight);
    return font;
}

QFont systemFont(double pixelSize, QFont::Weight weight) {
    QFont font;
    font.setPixelSize(static_cast<int>(pixelSize + 0.5));
    font.setWeight(weight);
    return font;
}

QLinearGradient ironGradient(double height) {
    QLinearGradient gradient(0, 0, 0, height);
    gradient.setColorAt(0, qColor(ForgeTheme::ironTop));
    gradient.setColorAt(1, qColor(ForgeTheme::ironBottom));
    return gradient;
}

} // namespace tovrin::ForgeStyle
