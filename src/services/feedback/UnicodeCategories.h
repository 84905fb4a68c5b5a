#pragma once

namespace tovrin::UnicodeCategories {

// Whether Unicode classes the code point as a letter, a mark or a number (general categories L, M,
// N), whatever its script. Unassigned code points are none of these.
bool isLetterMarkOrNumber(char32_t c);

} // namespace tovrin::UnicodeCategories
