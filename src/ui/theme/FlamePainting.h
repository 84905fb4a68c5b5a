#pragma once

#include "ui/viewmodels/FlameCurves.h"

#include <QLinearGradient>
#include <QRectF>

namespace tovrin::FlamePainting {

// The flame's vertical gradient over a rectangle, every stop lifted (or lowered) in brightness by
// adding `brightness` to each channel, as a brightness filter on the finished drawing would.
QLinearGradient gradient(const FlameCurves::FlameGradient& fill, double brightness, const QRectF& over);

// The time of the frame being drawn, on the flame's clock.
double now();

} // namespace tovrin::FlamePainting
