#include "ui/views/PanelHeader.h"

#include "ui/theme/AppBrandIcon.h"
#include "ui/theme/FireText.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/SoftGlow.h"
#include "ui/viewmodels/PanelContent.h"
#include "ui/views/ViewAccessibility.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

namespace tovrin {
namespace {

constexpr int markSide = 32;
constexpr double markRadius = 9;
constexpr int glowReach = 8;

// The brand icon in a rounded square; the widget reaches past it by the glow on every side.
class BrandMark : public QWidget {
public:
    explicit BrandMark(QWidget* parent) : QWidget(parent) {
        setFixedSize(markSide + 2 * glowReach, markSide + 2 * glowReach);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        const QRectF box(glowReach, glowReach, markSide, markSide);
        QPainterPath shape;
        shape.addRoundedRect(box, markRadius, markRadius);
        SoftGlow::paint(painter, shape, ForgeStyle::qColor(ForgeTheme::ember), 0.5, glowReach);

        painter.setClipPath(shape);
        const QPixmap& image = AppBrandIcon::image();
        if (image.isNull()) {
            painter.fillPath(shape, ForgeStyle::ironGradient(markSide));
        } else {
            painter.drawPixmap(box, image, QRectF(image.rect()));
        }
    }
};

} // namespace

PanelHeader::PanelHeader(QWidget* parent) : QWidget(parent) {
    ViewAccessibility::install();
    const QString brand = QString::fromUtf8(PanelContent::brandText.data(),
                                            static_cast<qsizetype>(PanelContent::brandText.size()));
    m_brandLine = new FireText(brand, ForgeStyle::engraved(14, QFont::DemiBold), 1.5, this);
    // Drawn as glyph outlines, the line keeps no text that assistive tools could read.
    m_brandLine->setAccessibleName(brand);

    // The glows of mark and text take their share of the padding and of the gap between them.
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16 - glowReach, 12 - glowReach, 16, 12 - glowReach);
    row->setSpacing(std::max(0, 11 - glowReach - FireText::glowMargin));
    row->addWidget(new BrandMark(this), 0, Qt::AlignVCenter);
    row->addWidget(m_brandLine, 0, Qt::AlignVCenter);
    row->addStretch(1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PanelHeader::setAggregate(const AggregateStatus& aggregate) {
    const auto flame = PanelContent::aggregateFlame(aggregate);
    if (flame != m_brandLine->flame()) m_brandLine->setFlame(flame);
}

} // namespace tovrin
