#include "ui/theme/FlameFill.h"

#include "ui/theme/FlamePainting.h"
#include "ui/theme/ForgeTheme.h"

#include <QPainter>

namespace tovrin {

void FlameFill::paintEvent(QPaintEvent*) {
    const FireTextMode current = mode();
    if (current == FireTextMode::flat) return;
    const FlameCurves::FlameFillFrame frame =
        current == FireTextMode::still ? FlameCurves::flameFillStillFrame(*flame())
                                       : FlameCurves::flameFillFrame(*flame(), FlamePainting::now());
    QPainter painter(this);
    painter.fillRect(rect(), FlamePainting::gradient(frame.fill, frame.brightness, QRectF(rect())));
    painter.fillRect(rect(), ForgeStyle::qColor(frame.overlay, frame.overlayOpacity));
}

} // namespace tovrin
