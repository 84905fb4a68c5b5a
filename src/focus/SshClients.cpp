#include "focus/SshClients.h"

#include "focus/TmuxHostWindow.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace tovrin {

std::vector<std::int64_t> sshClientsTo(const std::string& destination) {
    std::vector<std::int64_t> clients;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        std::string command;
        if (!std::getline(std::ifstream(entry.path() / "comm"), command) || command != "ssh") continue;
        std::ifstream cmdline(entry.path() / "cmdline", std::ios::binary);
        bool named = false;
        for (std::string argument; !named && std::getline(cmdline, argument, '\0');)
            named = argument == destination;
        const auto pid = std::stoll(name);
        if (named && parentProcess(pid) != ::getpid()) clients.push_back(pid);
    }
    return clients;
}

} // namespace tovrin
