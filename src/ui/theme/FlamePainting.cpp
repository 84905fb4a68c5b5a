#include "ui/theme/FlamePainting.h"

#include "ui/theme/ForgeTheme.h"

#include <algorithm>

namespace tovrin::FlamePainting {

namespace {

Color brightened(const Color& color, double amount) {
    const auto lift = [amount](double channel) { return std::clamp(channel + amount, 0.0, 1.0); };
    return {lift(color.red), lift(color.green), lift(color.blue), color.alpha};
}

} // namespace

QLinearGradient gradient(const FlameCurves::FlameGradient& fill, double brightness, const QRectF& over) {
    QLinearGradient result(over.left(), over.top(), over.left(), over.bottom());
    for (const FlameCurves::GradientStop& stop : fill)
        result.setColorAt(stop.location, ForgeStyle::qColor(brightened(stop.color, brightness)));
    return result;
}

double now() {
    return FlameCurves::timeOf(SystemClock().now());
}

} // namespace tovrin::FlamePainting
