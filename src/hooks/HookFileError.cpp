#include "hooks/HookFileError.h"

namespace tovrin {

std::string HookFileError::unreadable(const std::filesystem::path& file,
                                      const ForeignJson::ReadProblem& problem) {
    using Kind = ForeignJson::ReadProblem::Kind;
    switch (problem.kind) {
    case Kind::notJSON:
        break;
    case Kind::notAnObject:
        return untouched(file, " holds a JSON " + problem.detail + ", not an object");
    case Kind::tooLarge:
        return untouched(file, " is larger than " + std::to_string(ForeignJson::maxReadBytes >> 20) + " MB");
    case Kind::tooDeep:
        return untouched(file, " nests deeper than " + std::to_string(ForeignJson::maxDepth) + " levels");
    case Kind::inexactNumber:
        return untouched(file, " holds the number " + problem.detail.substr(0, 40) +
                                   ", which Tovrin could not write back exactly");
    case Kind::duplicateKey:
        return untouched(file,
                         " holds the key " + ForeignJson::quoted(problem.detail) + " twice in one object");
    }
    return unreadableJSON(file);
}

} // namespace tovrin
