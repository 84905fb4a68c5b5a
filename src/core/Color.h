#pragma once

namespace tovrin {

// An sRGB colour, channels from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const Color&) const = default;
};

} // namespace tovrin
