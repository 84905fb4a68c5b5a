#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tovrin {

// Starts the program with the given standard input, output and error descriptors (-1: /dev/null),
// the environment inherited and every signal at its default.
std::optional<pid_t> spawnChild(const std::filesystem::path& program,
                                const std::vector<std::string>& arguments, std::array<int, 3> standardFiles);
// Waits for the child's end; its wait status.
int waitForChild(pid_t pid);

struct FinishedChild {
    int exitStatus = -1; // -1 when killed by a signal
    std::string output;
    std::string errorLine;       // the last non-blank line of its error output, printable and cut short
    bool outputTooLarge = false; // it was killed for writing more than the limit
};

// Runs the program with `input` as its standard input and waits for its end, blocking the caller
// (never the main loop's thread); nothing when it could not be started.
std::optional<FinishedChild> runWithInput(const std::filesystem::path& program,
                                          const std::vector<std::string>& arguments, std::string_view input,
                                          std::size_t outputLimit);

} // namespace tovrin
