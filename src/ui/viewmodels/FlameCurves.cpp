#include "ui/viewmodels/FlameCurves.h"

#include <algorithm>
#include <cmath>

namespace tovrin {
namespace FlameCurves {

namespace {

constexpr double restingFlicker = 0.5;

} // namespace

double timeOf(TimePoint when) {
    return Seconds(when.time_since_epoch()).count() - referenceUnixSeconds;
}

double flicker(double t) {
    const double sum =
        0.5 * std::sin(8 * t) + 0.3 * std::sin(13.7 * t + 1.3) + 0.2 * std::sin(23.1 * t + 0.7);
    return (sum + 1) * 0.5;
}

double fireTextRise(double t) {
    return 0.1 * std::sin(5.3 * t);
}

double flameFillRise(double t) {
    return 0.12 * std::sin(4.7 * t);
}

double midStopLocation(double rise) {
    return std::clamp(rise + 0.45, 0.2, 0.7);
}

FlameGradient gradient(const FlamePalette& flame, double rise) {
    return {{{0, flame.core}, {midStopLocation(rise), flame.mid}, {1, flame.base}}};
}

FireTextFrame burn(const FlamePalette& flame, double f, double rise) {
    return {
        gradient(flame, rise),
        0.06 * f,
        {flame.glow, 0.45 + 0.45 * f, 3 + 5 * f},
        {flame.core, 0.35 * f, 1},
    };
}

FlameFillFrame wash(const FlamePalette& flame, double f, double rise) {
    return {gradient(flame, rise), 0.05 * (f - restingFlicker), flame.glow, 0.14 * f};
}

FireTextFrame fireTextFrame(const FlamePalette& flame, double t) {
    return burn(flame, flicker(t), fireTextRise(t));
}

FlameFillFrame flameFillFrame(const FlamePalette& flame, double t) {
    return wash(flame, flicker(t), flameFillRise(t));
}

FireTextFrame fireTextStillFrame(const FlamePalette& flame) {
    return burn(flame, restingFlicker, 0);
}

FlameFillFrame flameFillStillFrame(const FlamePalette& flame) {
    return wash(flame, restingFlicker, 0);
}

} // namespace FlameCurves

FireTextMode fireTextMode(bool hasFlame, bool reduceMotion) {
    if (!hasFlame) return FireTextMode::flat;
    return reduceMotion ? FireTextMode::still : FireTextMode::burning;
}

} // namespace tovrin
