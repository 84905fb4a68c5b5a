#pragma once

#include <string>
#include <string_view>

namespace tovrin {

// The SHA-256 digest of the bytes, as 64 lower-case hex digits.
std::string sha256Hex(std::string_view bytes);

} // namespace tovrin
