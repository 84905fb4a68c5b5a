#include "ui/theme/ToolBadge.h"

#include "hooks/ToolIdentity.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/ToolIcons.h"

#include <QPainter>
#include <QPainterPath>

namespace tovrin {

namespace {

constexpr double cornerShare = 0.28;
constexpr double logoShare = 0.62;
constexpr double symbolShare = 0.55;

QImage tinted(const QImage& mask, const QColor& color) {
    QImage result = mask.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), color);
    return result;
}

} // namespace

ToolBadge::ToolBadge(const std::string& tool, int size, QWidget* parent)
    : QWidget(parent), m_tool(tool), m_size(size) {
    setFixedSize(size, size);
    setAttribute(Qt::WA_TranslucentBackground);
    setAccessibleName(QString::fromStdString(ToolIdentity::named(tool).displayName));
}

void ToolBadge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF box(0, 0, m_size, m_size);
    // Looked up on each draw: a hit is a map look-up, a miss is tried again later.
    if (const auto icon = AppIconProvider::icon(m_tool)) {
        painter.drawPixmap(box, *icon, QRectF(icon->rect()));
        return;
    }
    const ToolIdentity identity = ToolIdentity::named(m_tool);
    QPainterPath tile;
    tile.addRoundedRect(box, m_size * cornerShare, m_size * cornerShare);
    painter.fillPath(tile, ForgeStyle::qColor(identity.tint));
    const QColor white(Qt::white);
    if (const auto logo = BrandLogoProvider::templateImage(m_tool)) {
        const double side = m_size * logoShare;
        const QRectF target(box.center().x() - side / 2, box.center().y() - side / 2, side, side);
        painter.drawImage(target, tinted(*logo, white));
        return;
    }
    const double side = m_size * symbolShare;
    Symbols::paint(painter, identity.symbol,
                   QRectF(box.center().x() - side / 2, box.center().y() - side / 2, side, side), white);
}

} // namespace tovrin
