#include "ui/theme/AppBrandIcon.h"

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
    if (!renderer.isValid()) return {};
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(0, 0, side, side));
    painter.end();
    return QPixmap::fromImage(picture);
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
