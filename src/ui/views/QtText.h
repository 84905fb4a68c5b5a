#pragma once

#include <QString>
#include <string_view>

namespace tovrin {

// Our texts are UTF-8 in std::string; the widgets take QString.
inline QString qText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace tovrin
