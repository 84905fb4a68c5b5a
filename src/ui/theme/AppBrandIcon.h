#pragma once

#include <QPixmap>

namespace tovrin::AppBrandIcon {

// The application's own icon, found once: the installed theme icon "tovrin", else the copy built
// into the program, else the application's window icon, else an empty image.
const QPixmap& image();

} // namespace tovrin::AppBrandIcon
