#include "ui/theme/BronzeHairline.h"

#include "ui/theme/ForgeTheme.h"

#include <QLinearGradient>
#include <QPainter>

namespace tovrin {

BronzeHairline::BronzeHairline(QWidget* parent) : QWidget(parent) {
    setFixedHeight(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TranslucentBackground);
}

void BronzeHairline::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QLinearGradient fade(0, 0, width(), 0);
    fade.setColorAt(0, ForgeStyle::qColor(HairlineColors::ends));
    fade.setColorAt(0.5, ForgeStyle::qColor(HairlineColors::middle));
    fade.setColorAt(1, ForgeStyle::qColor(HairlineColors::ends));
    painter.fillRect(rect(), fade);
}

} // namespace tovrin
