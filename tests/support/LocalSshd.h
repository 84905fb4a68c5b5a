#pragma once

#include "support/ChildProcesses.h"
#include "support/PollUntil.h"
#include "support/TempDir.h"

#include <arpa/inet.h>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <pwd.h>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <vector>

namespace tovrin::test {

// A private sshd on 127.0.0.1 with its own host and user keys, reached as `ssh -F <config()>
// tovrin-test-host` by the user running the tests. kill() drops it with every connection it
// holds, as a host that vanishes; start() brings it back on the same port.
class LocalSshd {
public:
    static constexpr const char* host = "tovrin-test-host";
    static constexpr const char* daemon = "/usr/sbin/sshd";

    // Whether sshd and ssh-keygen are installed and sshd has its privilege separation folder.
    static bool available() {
        std::error_code ignored;
        std::filesystem::create_directories("/run/sshd", ignored);
        return ::access(daemon, X_OK) == 0 && std::filesystem::is_directory("/run/sshd") &&
               exitStatusOf(spawnQuietly({"ssh-keygen", "-?"})) >= 0 &&
               exitStatusOf(spawnQuietly({"ssh", "-V"})) == 0;
    }

    // `remoteStatusDir`: the status folder that commands run there see as $AGENT_STATUS_DIR;
    // `remoteEnvironment`: more NAME=value settings for them, such as HOME (no blanks in either).
    explicit LocalSshd(const std::string& remoteStatusDir = "",
                       const std::vector<std::string>& remoteEnvironment = {})
        : m_port(freePort()) {
        std::string environment = "SHLVL=1";
        if (!remoteStatusDir.empty()) environment += " AGENT_STATUS_DIR=" + remoteStatusDir;
        for (const auto& setting : remoteEnvironment)
            environment += " " + setting;
        const auto& d = m_dir.path();
        for (const char* key : {"host_key", "user_key"}) {
            if (exitStatusOf(spawnQuietly(
                    {"ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", (d / key).string()})) != 0)
                throw std::runtime_error("ssh-keygen failed");
        }
        m_dir.write("authorized_keys", readText(d / "user_key.pub"));
        m_dir.write("known_hosts", std::string(host) + " " + readText(d / "host_key.pub"));
        const std::string port = std::to_string(m_port);
        m_dir.write("sshd_config", "Port " + port + "\nListenAddress 127.0.0.1\nHostKey " +
                                       (d / "host_key").string() + "\nAuthorizedKeysFile " +
                                       (d / "authorized_keys").string() + "\nPidFile " +
                                       (d / "sshd.pid").string() +
                                       "\nStrictModes no\nUsePAM no\nPasswordAuthentication no\n"
                                       "KbdInteractiveAuthentication no\nPermitRootLogin prohibit-password\n"
                                       // It stands for many hosts at once: past 10 handshakes at a
                                       // time, sshd by default drops some new connections at random.
                                       "MaxStartups 100\n"
                                       // bash run by sshd reads ~/.bashrc unless nested; the tests
                                       // must not depend on what the user's startup files do.
                                       "SetEnv " +
                                       environment + "\n");
        const passwd* user = ::getpwuid(::geteuid());
        m_dir.write("ssh_config",
                    std::string("Host ") + host + "\n  HostName 127.0.0.1\n  Port " + port + "\n  User " +
                        (user ? user->pw_name : "root") + "\n  IdentityFile " + (d / "user_key").string() +
                        "\n  IdentitiesOnly yes\n  UserKnownHostsFile " + (d / "known_hosts").string() +
                        "\n  GlobalKnownHostsFile /dev/null\n  HostKeyAlias " + host +
                        "\n  StrictHostKeyChecking yes\n  LogLevel ERROR\n");
        start();
    }
    ~LocalSshd() { kill(); }
    LocalSshd(const LocalSshd&) = delete;
    LocalSshd& operator=(const LocalSshd&) = delete;

    const std::filesystem::path& dir() const { return m_dir.path(); }
    std::filesystem::path config() const { return m_dir.path() / "ssh_config"; }

    void start() {
        const std::string log = (m_dir.path() / "sshd.log").string();
        std::vector<std::string> argv = {daemon, "-D", "-e", "-f", (m_dir.path() / "sshd_config").string()};
        std::vector<char*> args;
        for (auto& a : argv)
            args.push_back(a.data());
        args.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                         0600);
        const int error = ::posix_spawn(&m_pid, daemon, &actions, nullptr, args.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0 || !pollUntil([this] { return accepts(); }))
            throw std::runtime_error("sshd did not start: " + readText(log));
    }

    // SIGKILL to sshd and everything it started: its connections and the commands they run.
    void kill() {
        if (m_pid <= 0) return;
        std::set<int> tree = {m_pid};
        for (bool grew = true; grew;) {
            grew = false;
            for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
                std::ifstream stat(entry.path() / "stat");
                std::string line;
                if (!std::getline(stat, line) || line.rfind(')') == std::string::npos) continue;
                std::istringstream rest(line.substr(line.rfind(')') + 1));
                char state = 0;
                int parent = 0;
                rest >> state >> parent;
                if (tree.contains(parent) && tree.insert(std::stoi(line)).second) grew = true;
            }
        }
        for (int pid : tree)
            ::kill(pid, SIGKILL);
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        m_pid = 0;
    }

private:
    static int freePort() {
        const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (::bind(fd, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
            ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) != 0)
            throw std::runtime_error("no free port");
        ::close(fd);
        return ntohs(address.sin_port);
    }

    bool accepts() const {
        const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(m_port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const bool connected = ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        ::close(fd);
        return connected;
    }

    TempDir m_dir;
    int m_port;
    pid_t m_pid = 0;
};

} // namespace tovrin::test
