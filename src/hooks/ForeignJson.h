#pragma once

#include "core/Result.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

// Reads and prints other programs' configuration documents so that what we write back says
// exactly what the user wrote: a document we could not give back value for value is refused
// on read, and nothing we print can grow without bound.
namespace tovrin::ForeignJson {

// Real configuration files nest a few levels and weigh kilobytes.
inline constexpr std::size_t maxDepth = 64;
inline constexpr std::size_t maxReadBytes = std::size_t{8} << 20;
inline constexpr std::size_t maxWriteBytes = std::size_t{64} << 20;

struct ReadProblem {
    enum class Kind {
        notJSON,       // not strict JSON: comments, trailing commas, bad UTF-8 ...
        notAnObject,   // detail: the JSON type of the top-level value
        tooLarge,      // more than maxReadBytes
        tooDeep,       // nested deeper than maxDepth
        inexactNumber, // detail: a number's text that would not be written back the same
        duplicateKey,  // detail: a key that one object holds twice
    };
    Kind kind = Kind::notJSON;
    std::string detail;
};

enum class PrintProblem { tooLarge, notUTF8 };

Result<nlohmann::json, ReadProblem> read(std::string_view text);
// A key or text from a file for a message: quoted, escaped so that no byte reaches a terminal
// raw, and cut short.
std::string quoted(const std::string& text);
// Two spaces of indentation, keys sorted at every depth, and a final newline.
Result<std::string, PrintProblem> pretty(const nlohmann::json& document, std::size_t limit = maxWriteBytes);

} // namespace tovrin::ForeignJson
