#pragma once

#include "core/Clock.h"
#include "core/Color.h"
#include "ui/viewmodels/ForgePalette.h"

#include <array>

namespace tovrin {

// The flame is closed-form: everything a frame shows is a function of the time alone, so views keep no
// animation state and any toolkit that can draw a gradient and a glow can render it.
namespace FlameCurves {

inline constexpr double framesPerSecond = 24;
inline constexpr double frameInterval = 1.0 / framesPerSecond;

// Seconds from the Unix epoch to 1 January 2001 UTC, the reference the curves' phases are tied to.
inline constexpr double referenceUnixSeconds = 978307200.0;

// Seconds since the flame's time reference.
double timeOf(TimePoint when);

// Sum of three sines, mapped into [0, 1]; the amplitudes add up to 1 so it never leaves that range.
double flicker(double t);

// How far the middle stop of the gradient is pushed up or down at time t.
double fireTextRise(double t);
double flameFillRise(double t);

struct GradientStop {
    double location = 0;
    Color color;

    bool operator==(const GradientStop&) const = default;
};

// Vertical, top to bottom: core, mid, base.
using FlameGradient = std::array<GradientStop, 3>;

double midStopLocation(double rise);
FlameGradient gradient(const FlamePalette& flame, double rise);

struct Glow {
    Color color;
    double opacity = 0;
    double radius = 0;

    bool operator==(const Glow&) const = default;
};

// One frame of burning text: the glyph fill, a brightness lift and two glows, the outer one first.
struct FireTextFrame {
    FlameGradient fill;
    double brightness = 0;
    Glow outerGlow;
    Glow innerGlow;

    bool operator==(const FireTextFrame&) const = default;
};

// One frame of a flame-filled area: the fill, a brightness shift around rest and a glow overlay.
struct FlameFillFrame {
    FlameGradient fill;
    double brightness = 0;
    Color overlay;
    double overlayOpacity = 0;

    bool operator==(const FlameFillFrame&) const = default;
};

// f is a flicker value in [0, 1], rise the shift of the middle gradient stop.
FireTextFrame burn(const FlamePalette& flame, double f, double rise);
FlameFillFrame wash(const FlamePalette& flame, double f, double rise);

FireTextFrame fireTextFrame(const FlamePalette& flame, double t);
FlameFillFrame flameFillFrame(const FlamePalette& flame, double t);

// Under Reduce Motion the flame rests at mid flicker with no rise, drawn once.
FireTextFrame fireTextStillFrame(const FlamePalette& flame);
FlameFillFrame flameFillStillFrame(const FlamePalette& flame);

} // namespace FlameCurves

// How a piece of fire text is drawn: flat bronze without a flame, else still or burning.
enum class FireTextMode { flat, still, burning };

FireTextMode fireTextMode(bool hasFlame, bool reduceMotion);

// Only a burning flame needs the redraw schedule; everything else is drawn once.
inline bool needsFlickerSchedule(FireTextMode mode) {
    return mode == FireTextMode::burning;
}

} // namespace tovrin
