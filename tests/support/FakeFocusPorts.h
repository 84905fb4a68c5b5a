#pragma once

#include "focus/AppActivating.h"
#include "focus/EditorRaising.h"
#include "focus/FolderRevealing.h"
#include "focus/ProcessRunner.h"
#include "focus/ShellRunner.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tovrin::test {

// One ordered, thread-safe record of what the fakes below were asked to do, e.g.
// "start /usr/bin/tmux select-pane -t %3", "activate Konsole", "raise Cursor /w/proj", "reveal /w".
class FocusLog {
public:
    void add(std::string entry) {
        {
            std::lock_guard lock(m_mutex);
            m_entries.push_back(std::move(entry));
        }
        m_changed.notify_all();
    }
    std::vector<std::string> entries() const {
        std::lock_guard lock(m_mutex);
        return m_entries;
    }
    // Waits until an entry equals `entry`; false after a few seconds.
    bool waitFor(const std::string& entry) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(5), [&] {
            return std::find(m_entries.begin(), m_entries.end(), entry) != m_entries.end();
        });
    }
    void clear() {
        std::lock_guard lock(m_mutex);
        m_entries.clear();
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::string> m_entries;
};

// Logs "start <program> <arguments>" for programs started, "read <program> <arguments>" for those
// whose output is asked for; answers the latter from `outputs`, by that same line without "read ".
class FakeProcessRunner final : public ProcessRunner {
public:
    explicit FakeProcessRunner(FocusLog& log) : m_log(log) {}
    bool start(const std::filesystem::path& program, const std::vector<std::string>& arguments) override {
        m_log.add("start " + commandLine(program, arguments));
        return startSucceeds;
    }
    std::optional<std::string> output(const std::filesystem::path& program,
                                      const std::vector<std::string>& arguments) override {
        const std::string line = commandLine(program, arguments);
        m_log.add("read " + line);
        const auto it = outputs.find(line);
        return it == outputs.end() ? std::nullopt : std::optional(it->second);
    }
    bool startSucceeds = true;
    std::map<std::string, std::string> outputs;

private:
    static std::string commandLine(const std::filesystem::path& program,
                                   const std::vector<std::string>& arguments) {
        std::string line = program.string();
        for (const std::string& argument : arguments)
            line += " " + argument;
        return line;
    }

    FocusLog& m_log;
};

// A shell over a fake runner that finds exactly the programs of `installed`.
class RecordingShell final : public ShellRunner {
public:
    RecordingShell(ProcessRunner& runner, FocusLog&, std::set<std::string> installed)
        : ShellRunner(
              runner, [] { return std::optional<std::string>(); },
              [installed = std::move(installed)](const std::string& file) {
                  return installed.contains(file);
              }) {}
};

class FakeAppActivator final : public AppActivating {
public:
    explicit FakeAppActivator(FocusLog& log) : m_log(log) {}
    void activate(const std::string& name) override { m_log.add("activate " + name); }

private:
    FocusLog& m_log;
};

// Knows the editors of `editors` by session tool; raising succeeds when `raises` says so.
class FakeEditorRaiser final : public EditorRaising {
public:
    explicit FakeEditorRaiser(FocusLog& log) : m_log(log) {}
    std::optional<Editor> editor(const AgentSession& session) const override {
        const auto it = editors.find(session.tool);
        return it == editors.end() ? std::nullopt : std::optional(it->second);
    }
    bool raiseWindow(const Editor& editor, const std::string& cwd) override {
        m_log.add("raise " + editor.activationName + " " + cwd);
        return raises;
    }
    std::map<std::string, Editor> editors;
    bool raises = true;

private:
    FocusLog& m_log;
};

class FakeFolderRevealer final : public FolderRevealing {
public:
    explicit FakeFolderRevealer(FocusLog& log) : m_log(log) {}
    void reveal(const std::string& path) override {
        if (onReveal) onReveal();
        m_log.add("reveal " + path);
    }
    std::function<void()> onReveal;

private:
    FocusLog& m_log;
};

} // namespace tovrin::test
