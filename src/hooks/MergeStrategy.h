#pragma once

#include <string>

namespace tovrin {

// How our hook entries are merged into an agent's configuration file.
struct MergeStrategy {
    enum class Kind {
        namedBlock,    // we own one top-level key
        twoLevel,      // hooks.<event>[group].hooks[entry]
        flat,          // hooks.<event>[entry], beside a top-level "version"
        dedicatedFile, // we own the whole file
    };

    Kind kind = Kind::dedicatedFile;
    std::string key; // the owned key of namedBlock; empty otherwise

    static MergeStrategy namedBlock(std::string k) { return {Kind::namedBlock, std::move(k)}; }
    static MergeStrategy twoLevel() { return {Kind::twoLevel, {}}; }
    static MergeStrategy flat() { return {Kind::flat, {}}; }
    static MergeStrategy dedicatedFile() { return {Kind::dedicatedFile, {}}; }

    bool operator==(const MergeStrategy&) const = default;
};

} // namespace tovrin
