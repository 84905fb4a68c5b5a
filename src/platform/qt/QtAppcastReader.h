#pragma once

#include "services/update/AppcastReading.h"

namespace tovrin {

// Reads the update feed with Qt's XML stream reader. The release fields are matched by their
// namespace, whatever prefix the feed binds it to; an item's version may also be given on its
// enclosure, as older feeds do.
class QtAppcastReader final : public AppcastReading {
public:
    Result<std::vector<AppcastItem>, std::string> read(std::string_view feed) const override;
};

} // namespace tovrin
