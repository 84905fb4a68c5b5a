// The status-file decoder on arbitrary bytes. Besides the sanitizers' checks: what lies in the
// padding behind the data never changes the answer, and the reused parser gives the same answer
// for the same file.
#include "sessions/SessionFileDecoder.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static tovrin::SessionFileDecoder decoder;
    // Exactly the bytes and the padding, so that a read past the padding is an overflow.
    std::vector<char> padded(size + tovrin::SessionFileDecoder::padding, '\xff');
    if (size > 0) std::memcpy(padded.data(), data, size);
    const auto fromPadded = decoder.decodePadded(padded.data(), size);
    const auto fromCopy = decoder.decode(std::string_view(reinterpret_cast<const char*>(data), size));
    if (fromPadded != fromCopy) std::abort();
    return 0;
}
