#pragma once

#include "services/update/AppcastItem.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tovrin {

// Whether `candidate` is a higher version than `current`. Versions are dot-separated numbers ("57",
// "1.4.2") compared part by part, a missing part counting as zero; anything else is no version, and
// then the answer is false.
bool isNewerVersion(std::string_view candidate, std::string_view current);

// The release to offer: the newest item above the running build and above a version the user
// skipped, among those that carry everything an install needs (address, length and signature).
std::optional<AppcastItem> newestApplicable(const std::vector<AppcastItem>& items,
                                            std::string_view currentBuild,
                                            std::string_view skippedVersion = {});

} // namespace tovrin
