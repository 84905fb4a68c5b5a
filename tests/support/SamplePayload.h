#pragma once

#include "hooks/AdapterResources.h"
#include "support/TempDir.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tovrin::test {

inline constexpr std::string_view sampleWriter = "#!/bin/sh\n# sample status writer\nexit 0\n";

// A payload folder at `root`: the sample writer and one small template per hook target, each
// in the shape its target's merge strategy expects.
AdapterResources writeSamplePayload(const std::filesystem::path& root);

} // namespace tovrin::test
