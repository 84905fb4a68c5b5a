#include "ui/theme/AppBrandIcon.h"

#include "ui/theme/SvgImage.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QSvgRenderer>

namespace tovrin::AppBrandIcon {

namespace {

// Large enough for the About window's 96 points at a pixel ratio of 2, and for any smaller use.
constexpr int side = 256;

QPixmap fromIcon(const QIcon& icon) {
    if (icon.isNull()) return {};
    return icon.pixmap(side, side);
}

QPixmap builtIn() {
    QSvgRenderer renderer(QStringLiteral(":/tovrin/icons/tovrin.svg"));
    const std::optional<QImage> picture = renderSvg(renderer, side);
    return picture ? QPixmap::fromImage(*picture) : QPixmap();
}

QPixmap find() {
    if (QPixmap installed = fromIcon(QIcon::fromTheme(QStringLiteral("tovrin"))); !installed.isNull())
        return installed;
    if (QPixmap embedded = builtIn(); !embedded.isNull()) return embedded;
    return fromIcon(QApplication::windowIcon());
}

} // namespace

const QPixmap& image() {
    static const QPixmap found = find();
    return found;
}

} // namespace tovrin::AppBrandIcon
