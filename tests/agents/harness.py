#!/usr/bin/env python3
"""Runs the real command-line agents against the mock model API and checks what the hooks do.

Meant to be started by run-real-agents.sh, inside a network namespace that has only loopback.

Modes:
  tovrin   (default) install the product's hook templates and writer into a temporary HOME the way the
           application does, run each scenario, and check the status files that the writer leaves.
  capture  install a logging hook on every event each agent offers and save the payloads under
           tests/agents/captured/<agent>/ (paths made neutral), for the writer's unit tests.
"""

import argparse
import json
import os
import re
import shlex
import shutil
import signal
import socket
import subprocess
import sys
import threading
import time
from datetime import datetime
from pathlib import Path

HERE = Path(__file__).resolve().parent
REPO = HERE.parent.parent
ADAPTERS = Path(os.environ.get("TOVRIN_ADAPTERS_DIR") or REPO / "resources" / "Adapters")
PREFIX = Path(os.environ.get("TOVRIN_AGENTS_PREFIX") or REPO / "build" / "agents")
MODULES = PREFIX / "node_modules"
PLACEHOLDER = "{{AGENT_STATUS_SH}}"
TOOL_PROMPT = "Please create the probe file. TOVRIN-RUN-TOOL"
TEXT_PROMPT = "Say hello."
API_KEY = "sk-mock-0123456789abcdefghijklmnop"  # fake; the mock accepts anything
NEUTRAL_HOME = "/home/user"
NEUTRAL_WORK = "/home/user/project"

STATES = {"working", "waiting", "idle"}
DATE_RE = re.compile(r"^\d{4}-\d{2}-\d{2}T\d{2}:\d{2}:\d{2}(Z|[+-]\d{2}:?\d{2})$")


# ---- agents ----------------------------------------------------------------------------------------

class Agent:
    """What differs between agents: files in HOME, command lines and the words on their screens."""

    name = ""
    tool_id = ""           # the tool id the status file must carry
    template = None        # template name under configs/, None when Tovrin has none for this agent
    config_path = ""       # where Tovrin installs the rendered template, relative to HOME
    events = []            # every hook event, for capture mode
    tui_ready = ""         # regex: the input box is up
    tui_prompt = ""        # regex: an approval prompt is open
    tui_done = "the command ran"
    exit_command = "/exit"
    scenarios = ["print-text", "tui-tool"]
    hold_prompt = 0        # seconds an approval prompt stays open after the waiting state was seen

    def accept_trust(self, tmux):
        """Answers a dialog at start that must be accepted for hooks to run; False when none came."""
        return False

    def scenarios_for(self, mode):
        return self.scenarios

    def version(self):
        pkg = MODULES / self.package / "package.json"
        return json.loads(pkg.read_text())["version"] if pkg.exists() else None

    def env(self, port):
        return {}

    def setup_home(self, home, work, port):
        pass

    def capture_config(self, hook):
        """(relative path, JSON) of a config that runs `hook <agent> <event>` on every event."""
        raise NotImplementedError


def two_level(events, hook, agent, matcher=None):
    def group(event):
        g = {"hooks": [{"type": "command", "command": f"{hook} {agent} {event}"}]}
        if matcher is not None:
            g = {"matcher": matcher, **g}
        return [g]
    return {"hooks": {e: group(e) for e in events}}


class Claude(Agent):
    name = "claude"
    package = "@anthropic-ai/claude-code"
    tool_id = "claude-code"
    template = "claude-code"
    config_path = ".claude/settings.json"
    events = ["SessionStart", "SessionEnd", "UserPromptSubmit", "PreToolUse", "PermissionRequest",
              "PermissionDenied", "PostToolUse", "PostToolUseFailure", "Notification", "Stop", "StopFailure",
              "SubagentStart", "SubagentStop", "PreCompact"]
    tui_ready = r"❯"
    tui_prompt = r"Do you want to proceed\?"
    scenarios = ["print-text", "print-tool", "tui-tool"]
    hold_prompt = 7

    def binary(self):
        # The wrapper package's postinstall would copy this binary over its placeholder; npm's
        # install-script policy may skip that, so run the platform binary directly.
        return str(MODULES / "@anthropic-ai/claude-code-linux-x64/claude")

    def env(self, port):
        return {"ANTHROPIC_BASE_URL": f"http://127.0.0.1:{port}", "ANTHROPIC_API_KEY": API_KEY}

    def setup_home(self, home, work, port):
        state = {"hasCompletedOnboarding": True, "theme": "dark",
                 "customApiKeyResponses": {"approved": [API_KEY[-20:]], "rejected": []},
                 "projects": {str(work): {"hasTrustDialogAccepted": True,
                                          "hasCompletedProjectOnboarding": True}}}
        (home / ".claude.json").write_text(json.dumps(state))

    def print_cmd(self, prompt):
        return [self.binary(), "-p", prompt]

    def tui_cmd(self, trusted=False):
        # Interactive sessions default to a mode that answers prompts by itself.
        return [self.binary(), "--permission-mode", "default"]

    def capture_config(self, hook):
        return self.config_path, two_level(self.events, hook, self.name)


class Codex(Agent):
    name = "codex"
    package = "@openai/codex"
    tool_id = "codex-cli"
    template = "codex"
    config_path = ".codex/hooks.json"
    events = ["SessionStart", "UserPromptSubmit", "PreToolUse", "PermissionRequest", "PostToolUse", "Stop",
              "Interrupt", "SessionEnd", "PreCompact", "PostCompact", "SubagentStart", "SubagentStop"]
    tui_ready = r"›"
    tui_prompt = r"Would you like to run the following command\?"
    exit_command = "/quit"
    # Hooks are skipped until trusted in the TUI's /hooks screen; the flag stands in for that review.
    trust_flag = "--dangerously-bypass-hook-trust"

    def binary(self):
        return str(MODULES / ".bin/codex")

    def env(self, port):
        return {"MOCK_API_KEY": "mock"}

    def setup_home(self, home, work, port):
        (home / ".codex").mkdir(parents=True, exist_ok=True)
        (home / ".codex/config.toml").write_text(f'''model = "mock-model"
model_provider = "mock"

[model_providers.mock]
name = "Mock"
base_url = "http://127.0.0.1:{port}/v1"
wire_api = "responses"
env_key = "MOCK_API_KEY"
request_max_retries = 0
stream_max_retries = 0

[features]
plugins = false
apps = false
remote_plugin = false

[projects."{work}"]
trust_level = "trusted"
''')

    scenarios = ["print-text", "tui-tool", "tui-trusted"]
    def accept_trust(self, tmux):
        """What a user does once: "Trust all and continue" in the review dialog at start."""
        if not tmux.wait_for(r"Hooks need review", 30):
            return False
        for _ in range(5):
            time.sleep(0.5)
            if re.search(r"› 2\. Trust all", tmux.screen()):
                tmux.keys("Enter")
                return True
            tmux.keys("Down")
        return False

    def print_cmd(self, prompt):
        return [self.binary(), "exec", self.trust_flag, prompt]

    def tui_cmd(self, trusted=False):
        return [self.binary()] + ([] if trusted else [self.trust_flag]) + ["-a", "on-request"]

    def capture_config(self, hook):
        return self.config_path, two_level(self.events, hook, self.name)


class Copilot(Agent):
    name = "copilot"
    package = "@github/copilot"
    tool_id = "copilot-cli"
    template = "copilot-cli"
    config_path = ".copilot/hooks/tovrin.json"
    events = ["sessionStart", "sessionEnd", "userPromptSubmitted", "preToolUse", "postToolUse",
              "postToolUseFailure", "permissionRequest", "notification", "agentStop", "errorOccurred",
              "subagentStart", "subagentStop", "preCompact"]
    tui_ready = r"Interactive"
    tui_prompt = r"Do you want to run this command\?"
    scenarios = ["print-text", "print-tool", "tui-tool"]

    def binary(self):
        return str(MODULES / ".bin/copilot")

    def env(self, port):
        return {"COPILOT_OFFLINE": "true", "COPILOT_PROVIDER_TYPE": "anthropic",
                "COPILOT_PROVIDER_BASE_URL": f"http://127.0.0.1:{port}",
                "COPILOT_PROVIDER_API_KEY": API_KEY, "COPILOT_MODEL": "claude-sonnet-4.5"}

    def setup_home(self, home, work, port):
        (home / ".copilot").mkdir(parents=True, exist_ok=True)
        (home / ".copilot/config.json").write_text(json.dumps({"trustedFolders": [str(work)]}))

    def print_cmd(self, prompt):
        return [self.binary(), "-p", prompt]

    def tui_cmd(self, trusted=False):
        return [self.binary()]

    def capture_config(self, hook):
        hooks = {e: [{"type": "command", "bash": f"{hook} {self.name} {e}"}] for e in self.events}
        return ".copilot/hooks/capture.json", {"version": 1, "hooks": hooks}


class Gemini(Agent):
    name = "gemini"
    package = "@google/gemini-cli"
    tool_id = None         # no tool id of its own; Tovrin's nearest target is Antigravity
    template = "antigravity"
    config_path = ".gemini/config/hooks.json"
    events = ["SessionStart", "SessionEnd", "BeforeAgent", "AfterAgent", "BeforeTool", "AfterTool",
              "Notification", "PreCompress"]
    tui_ready = r"Type your message"
    tui_prompt = r"Allow execution"
    exit_command = "/quit"

    def binary(self):
        return str(MODULES / ".bin/gemini")

    def env(self, port):
        return {"GEMINI_API_KEY": "mock", "GOOGLE_GEMINI_BASE_URL": f"http://127.0.0.1:{port}",
                "GEMINI_CLI_TRUST_WORKSPACE": "true"}

    def setup_home(self, home, work, port):
        settings = home / ".gemini/settings.json"
        settings.parent.mkdir(parents=True, exist_ok=True)
        current = json.loads(settings.read_text()) if settings.exists() else {}
        current.setdefault("security", {})["auth"] = {"selectedType": "gemini-api-key"}
        settings.write_text(json.dumps(current, indent=2))

    def print_cmd(self, prompt):
        return [self.binary(), "-p", prompt]

    def tui_cmd(self, trusted=False):
        return [self.binary()]

    def scenarios_for(self, mode):
        # Tovrin has no Gemini CLI target: one run shows whether anything of ours fires.
        return self.scenarios if mode == "capture" else ["print-text"]

    def capture_config(self, hook):
        return ".gemini/settings.json", two_level(self.events, hook, self.name, matcher="*")


AGENTS = {a.name: a for a in (Claude(), Codex(), Copilot(), Gemini())}


# ---- plumbing --------------------------------------------------------------------------------------

def shell_quoted(text):
    """Same rule as the application's renderer: bare when every character is safe, else single quotes."""
    if re.fullmatch(r"[A-Za-z0-9/._-]*", text):
        return text
    return "'" + text.replace("'", "'\\''") + "'"


def substitute(value, replacement):
    if isinstance(value, str):
        return value.replace(PLACEHOLDER, replacement)
    if isinstance(value, list):
        return [substitute(v, replacement) for v in value]
    if isinstance(value, dict):
        return {k: substitute(v, replacement) for k, v in value.items()}
    return value


def render_template(name, writer_path):
    template = json.loads((ADAPTERS / "configs" / f"{name}.json").read_text())
    return substitute(template, shell_quoted(str(writer_path)))


def write_json(path, value):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(value, indent=2) + "\n")


def merge_into(path, value):
    """Merges a rendered template into a config file the agent may also use for other settings."""
    current = json.loads(path.read_text()) if path.exists() else {}
    current.update(value)
    write_json(path, current)


def pid_alive(pid):
    try:
        os.kill(pid, 0)
    except ProcessLookupError:
        return False
    except PermissionError:
        return True
    try:
        state = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()[0]
        return state != "Z"
    except OSError:
        return False


def proc_comm(pid):
    try:
        return Path(f"/proc/{pid}/comm").read_text().strip()
    except OSError:
        return None


def proc_parent(pid):
    try:
        return int(Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()[1])
    except (OSError, ValueError, IndexError):
        return None


def descends_from(pid, root):
    seen = 0
    while pid and pid > 1 and seen < 64:
        if pid == root:
            return True
        pid = proc_parent(pid)
        seen += 1
    return False


def wait_until(predicate, timeout, step=0.1):
    end = time.time() + timeout
    while time.time() < end:
        value = predicate()
        if value:
            return value
        time.sleep(step)
    return predicate()


class StatusWatcher(threading.Thread):
    """Polls the status directory and records every change of every file, with the pid's liveness then."""

    def __init__(self, directory, root_pid_getter):
        super().__init__(daemon=True)
        self.directory = directory
        self.root_pid = root_pid_getter
        self.changes = []      # (t, file name, parsed content or None when removed, raw text, pid info)
        self.current = {}
        self.stopped = threading.Event()

    def run(self):
        while not self.stopped.is_set():
            self.poll()
            time.sleep(0.01)
        self.poll()

    def poll(self):
        seen = {}
        try:
            names = [n for n in os.listdir(self.directory) if n.endswith(".json") and not n.startswith(".")]
        except OSError:
            names = []
        for name in names:
            try:
                seen[name] = (self.directory / name).read_text()
            except OSError:
                continue
        now = time.time()
        for name, raw in seen.items():
            if self.current.get(name) != raw:
                try:
                    parsed = json.loads(raw)
                except ValueError:
                    parsed = {"__unparsable__": raw}
                info = None
                if isinstance(parsed, dict) and isinstance(parsed.get("pid"), int):
                    pid = parsed["pid"]
                    root = self.root_pid()
                    info = {"alive": pid_alive(pid), "comm": proc_comm(pid),
                            "inAgentTree": bool(root) and descends_from(pid, root)}
                self.changes.append((now, name, parsed, raw, info))
        for name in set(self.current) - set(seen):
            self.changes.append((now, name, None, None, None))
        self.current = seen

    def stop(self):
        self.stopped.set()
        self.join(5)


class Tmux:
    """A pseudo-terminal for the interactive runs, driven through a private tmux server."""

    def __init__(self, socket_path):
        self.sock = str(socket_path)

    def tmux(self, *args, check=True):
        return subprocess.run(["tmux", "-S", self.sock, *args], capture_output=True, text=True, check=check)

    def start(self, script):
        self.tmux("-f", "/dev/null", "new-session", "-d", "-x", "120", "-y", "45", f"bash {shlex.quote(str(script))}")
        self.tmux("set-option", "-g", "remain-on-exit", "on")
        return int(self.tmux("display-message", "-p", "#{pane_pid}").stdout.strip())

    def screen(self):
        result = self.tmux("capture-pane", "-p", check=False)
        return result.stdout if result.returncode == 0 else ""

    def wait_for(self, pattern, timeout):
        return wait_until(lambda: re.search(pattern, self.screen()), timeout, 0.2)

    def type_line(self, text):
        # A pause before Enter: several TUIs treat fast input as a paste and keep the Enter in it.
        self.tmux("send-keys", "-l", text)
        time.sleep(0.6)
        self.tmux("send-keys", "Enter")

    def keys(self, *keys):
        self.tmux("send-keys", *keys)

    def pane_dead(self):
        result = self.tmux("display-message", "-p", "#{pane_dead}", check=False)
        return result.returncode != 0 or result.stdout.strip() == "1"

    def kill(self):
        self.tmux("kill-server", check=False)


class MockServer:
    def __init__(self, log_path):
        self.proc = subprocess.Popen([sys.executable, str(HERE / "mock_model.py"), "--port", "0",
                                      "--port-file", str(log_path) + ".port", "--log", str(log_path)],
                                     stderr=subprocess.DEVNULL)
        port_file = Path(str(log_path) + ".port")
        if not wait_until(port_file.exists, 10, 0.05):
            raise RuntimeError("mock server did not start")
        self.port = int(port_file.read_text())

    def stop(self):
        self.proc.terminate()
        self.proc.wait(5)


# ---- one run ---------------------------------------------------------------------------------------

class Run:
    def __init__(self, agent, scenario, mode, root, port):
        self.agent, self.scenario, self.mode, self.port = agent, scenario, mode, port
        self.dir = root / f"{agent.name}-{scenario}"
        if self.dir.exists():
            shutil.rmtree(self.dir)
        self.home = self.dir / "home"
        self.work = self.dir / "project"
        self.status = self.dir / "status"
        self.hook_log = self.dir / "hooks.jsonl"
        for d in (self.home, self.work, self.status):
            d.mkdir(parents=True)
        subprocess.run(["git", "init", "-q", str(self.work)], check=True)
        self.root_pid = None
        self.screens = []
        self.notes = []
        self.checks = []
        self.exit_code = None

    # -- setup --

    def install(self):
        self.agent.setup_home(self.home, self.work, self.port)
        if self.mode == "capture":
            rel, config = self.agent.capture_config(str(HERE / "log-hook.sh"))
            merge_into(self.home / rel, config)
            return
        tovrin = self.home / ".tovrin"
        if os.environ.get("TOVRIN_TRACE") != "1":
            # Untraced: exactly what the application installs, so the timing of hooks is untouched.
            tovrin.mkdir(parents=True)
            wrapper = tovrin / "agent-status.sh"
            shutil.copy2(ADAPTERS / "agent-status.sh", wrapper)
            wrapper.chmod(0o755)
            self.install_rendered(wrapper)
            return
        real = tovrin / "real" / "agent-status.sh"
        real.parent.mkdir(parents=True)
        shutil.copy2(ADAPTERS / "agent-status.sh", real)
        real.chmod(0o755)
        # The path the application installs to; here a tracer that logs the call and then becomes
        # the real writer (exec keeps its pid, so the writer sees the same parent processes).
        wrapper = tovrin / "agent-status.sh"
        wrapper.write_text(f"""#!/bin/bash
stdin=$(cat)
{shlex.quote(str(HERE / 'log-hook.sh'))} tovrin "$*" <<<"$stdin"
exec {shlex.quote(str(real))} "$@" <<<"$stdin"
""")
        wrapper.chmod(0o755)
        self.install_rendered(wrapper)

    def install_rendered(self, wrapper):
        rendered = render_template(self.agent.template, wrapper)
        write_json(self.dir / "rendered.json", rendered)
        if isinstance(self.agent, Gemini):
            self.install_gemini(rendered)
        else:
            merge_into(self.home / self.agent.config_path, rendered)

    def install_gemini(self, rendered):
        # Where the application puts it: the Antigravity file, which the Gemini CLI does not read.
        merge_into(self.home / self.agent.config_path, rendered)
        if os.environ.get("TOVRIN_GEMINI_SETTINGS_PROBE"):
            # Probe: offer the block's inner structure to the Gemini CLI's own settings.
            block = rendered.get("tovrin", rendered)
            hooks = {k: v for k, v in block.items() if isinstance(v, list)}
            merge_into(self.home / ".gemini/settings.json", {"hooks": hooks})
            self.notes.append("probe: block's events copied into ~/.gemini/settings.json 'hooks'")

    def env(self):
        env = {k: v for k, v in os.environ.items()
               if k in ("PATH", "LANG", "LC_ALL", "USER", "LOGNAME", "SHELL", "TZ")}
        env.update({"HOME": str(self.home), "TERM": "xterm-256color", "SHELL": "/bin/bash",
                    "AGENT_STATUS_DIR": str(self.status), "TOVRIN_HOOK_LOG": str(self.hook_log),
                    "NO_UPDATE_NOTIFIER": "1", "DISABLE_AUTOUPDATER": "1"})
        env.update(self.agent.env(self.port))
        return env

    # -- driving --

    def run(self):
        self.install()
        self.watcher = StatusWatcher(self.status, lambda: self.root_pid)
        self.watcher.start()
        started = time.time()
        try:
            if self.scenario.startswith("print-"):
                self.run_print(TOOL_PROMPT if self.scenario == "print-tool" else TEXT_PROMPT)
            else:
                self.run_tui()
            # Late hooks (SessionEnd duplicates, async handlers) may still be writing. Codex's
            # app-server daemon ends a session about a minute after its terminal has gone.
            settle = float(os.environ.get("TOVRIN_SETTLE_SECONDS", 75 if self.scenario == "tui-trusted" else 3))
            time.sleep(2)
            wait_until(lambda: not self.watcher.current, settle - 2, 0.2)
            time.sleep(1)
        finally:
            self.watcher.stop()
            # What the application would see once the agent has gone, before any clean-up of ours.
            self.final_files = self.session_files()
            self.alive_after_exit = {p: proc_comm(p) for p in self.pids_written() if pid_alive(p)}
            self.leftovers = self.kill_leftovers()
            # Codex copies its daemon (~360 MB) and Copilot unpacks itself (~235 MB) into every
            # fresh HOME; keep the artefacts small.
            shutil.rmtree(self.home / ".codex" / "packages", ignore_errors=True)
            shutil.rmtree(self.home / ".cache", ignore_errors=True)
        self.duration = time.time() - started
        (self.dir / "screens.txt").write_text("\n\n=====\n\n".join(self.screens))
        self.events = self.read_hook_log()
        if self.mode == "tovrin":
            self.check()

    def run_print(self, prompt):
        proc = subprocess.Popen(self.agent.print_cmd(prompt), cwd=self.work, env=self.env(),
                                stdin=subprocess.DEVNULL, stdout=open(self.dir / "stdout.txt", "w"),
                                stderr=open(self.dir / "stderr.txt", "w"), start_new_session=True)
        self.root_pid = proc.pid
        try:
            self.exit_code = proc.wait(120)
        except subprocess.TimeoutExpired:
            os.killpg(proc.pid, signal.SIGKILL)
            self.exit_code = proc.wait()
            self.notes.append("timed out after 120 s")
        self.turn_end = time.time()
        self.agent_exit = time.time()

    def run_tui(self):
        script = self.dir / "run.sh"
        env = self.env()
        script.write_text("cd " + shlex.quote(str(self.work)) + "\n"
                          + "".join(f"export {k}={shlex.quote(v)}\n" for k, v in env.items())
                          + "exec " + shlex.join(self.agent.tui_cmd(self.scenario == "tui-trusted")) + "\n")
        tmux = Tmux(self.dir / "tmux.sock")
        self.tui_waiting_state = None
        self.turn_end = None
        try:
            self.root_pid = tmux.start(script)
            tty, pane_id = tmux.tmux("display-message", "-p", "#{pane_tty} #{pane_id}").stdout.split()
            self.pane = {"tty": tty, "id": pane_id}
            if self.scenario == "tui-trusted":
                if not self.agent.accept_trust(tmux):
                    self.notes.append("could not accept the hook review dialog")
                self.screens.append(tmux.screen())
            if not tmux.wait_for(self.agent.tui_ready, 30):
                self.notes.append("TUI never became ready")
                return
            time.sleep(1.5)
            self.screens.append(tmux.screen())
            tmux.type_line(TOOL_PROMPT)
            if tmux.wait_for(self.agent.tui_prompt, 30):
                self.screens.append(tmux.screen())
                self.prompt_seen = time.time()
                # Hooks run asynchronously; give the writer a moment to land.
                self.tui_waiting_state = wait_until(lambda: self.current_state() == "waiting", 8) and "waiting"
                self.tui_waiting_state = self.tui_waiting_state or self.current_state()
                # Claude re-announces an open prompt as a Notification after a few seconds.
                time.sleep(self.agent.hold_prompt)
                self.tui_waiting_state_late = self.current_state()
                self.screens.append(tmux.screen())
                tmux.keys("Enter")
            else:
                self.notes.append("no approval prompt appeared")
                self.screens.append(tmux.screen())
            if tmux.wait_for(self.agent.tui_done, 30):
                self.turn_end = time.time()
                time.sleep(2)
                self.idle_state_after_turn = self.current_state()
            else:
                self.notes.append("turn did not finish")
            self.screens.append(tmux.screen())
            tmux.type_line(self.agent.exit_command)
            if not wait_until(tmux.pane_dead, 20, 0.2):
                self.notes.append(f"{self.agent.exit_command} did not end the agent; sent C-c C-c")
                tmux.keys("C-c")
                time.sleep(0.5)
                tmux.keys("C-c")
                wait_until(tmux.pane_dead, 10, 0.2)
            self.agent_exit = time.time()
            self.screens.append(tmux.screen())
        finally:
            tmux.kill()

    def pids_written(self):
        return {c[2]["pid"] for c in self.watcher.changes
                if isinstance(c[2], dict) and isinstance(c[2].get("pid"), int)}

    def kill_leftovers(self):
        """Ends processes of this run that outlived the agent (daemons), and says which they were."""
        marker = f"HOME={self.home}".encode() + b"\0"
        found = []
        for entry in os.listdir("/proc"):
            if not entry.isdigit() or int(entry) == os.getpid():
                continue
            try:
                environ = Path(f"/proc/{entry}/environ").read_bytes()
                if marker not in environ or not pid_alive(int(entry)):
                    continue
                cmd = Path(f"/proc/{entry}/cmdline").read_bytes().replace(b"\0", b" ").decode(errors="replace")
            except OSError:
                continue
            found.append((int(entry), cmd.replace(str(self.home), "~")[:140]))
        for pid, _ in found:
            try:
                os.kill(pid, signal.SIGKILL)
            except OSError:
                pass
        if found:
            self.notes.append("still running after the agent exited (killed): "
                              + "; ".join(f"{pid} {cmd}" for pid, cmd in found))
        return found

    def session_files(self):
        """Current parsed status files that belong to this agent's tool id (all files when unknown)."""
        files = {}
        for name, raw in self.watcher.current.items():
            try:
                content = json.loads(raw)
            except ValueError:
                continue
            files[name] = content
        return files

    def current_state(self):
        states = [c.get("state") for c in self.session_files().values() if isinstance(c, dict)]
        return states[-1] if len(states) == 1 else (",".join(map(str, states)) or None)

    def read_hook_log(self):
        if not self.hook_log.exists():
            return []
        events = []
        for line in self.hook_log.read_text().splitlines():
            try:
                events.append(json.loads(line))
            except ValueError:
                pass
        return events

    # -- checks (tovrin mode) --

    def ok(self, name, passed, detail=""):
        self.checks.append((name, bool(passed), detail))

    def info(self, name, detail):
        self.checks.append((name, None, detail))

    def check(self):
        agent = self.agent
        calls = [e for e in self.events if e["agent"] == "tovrin"]
        if os.environ.get("TOVRIN_TRACE") == "1":
            self.info("hook calls", " ".join(e["event"] for e in calls) or "none")
        changes = self.watcher.changes
        if agent.tool_id is None:
            # Gemini CLI: the Antigravity file is not its own, so nothing of ours is expected to run.
            self.info("status files", f"{len({c[1] for c in changes})} file(s) written")
            rejected = [l for l in (self.dir / "stderr.txt").read_text().splitlines()
                        if "hook" in l.lower()] if (self.dir / "stderr.txt").exists() else []
            for line in rejected:
                self.info("gemini says", line.strip())
            return
        if os.environ.get("TOVRIN_TRACE") == "1":
            self.ok("hooks ran", calls, f"{len(calls)} writer call(s)")
        written = [c for c in changes if c[2] is not None]
        self.ok("status file written", written, f"{len(written)} write(s) seen")
        if not written:
            return
        bad = [(c[1], problem) for c in written for problem in validate(c[2])]
        self.ok("files decode", not bad, "; ".join(f"{n}: {p}" for n, p in bad[:4]))
        tools = sorted({c[2].get("tool") for c in written if isinstance(c[2], dict)}, key=str)
        self.ok("tool id", tools == [agent.tool_id], f"tool={tools}")
        ids = session_ids(calls) or self.session_ids_from_transcripts()
        file_ids = sorted({c[2].get("sessionId") for c in written if isinstance(c[2], dict)}, key=str)
        self.ok("session id", file_ids and set(file_ids) <= ids, f"file={file_ids} agent={sorted(ids)}")
        names = sorted({c[1] for c in written})
        self.ok("one file per session", len(names) == len(file_ids), f"files={names}")
        cwds = sorted({c[2].get("cwd") for c in written if isinstance(c[2], dict)}, key=str)
        self.ok("cwd", cwds == [str(self.work)], f"cwd={cwds}")

        pids = [(c[2].get("pid"), c[4]) for c in written if isinstance(c[2], dict)]
        with_pid = [(p, i) for p, i in pids if p is not None]
        # Trusted Codex runs hooks in a background app server that its sessions share and that
        # outlives them: its pid and terminal belong to no one session, so none may be recorded.
        shared_server = self.scenario == "tui-trusted"
        if shared_server:
            self.ok("no pid of the shared app server", not with_pid, f"pids={sorted({p for p, _ in with_pid})}")
        elif not with_pid:
            self.ok("pid", False, "no pid in any write")
        else:
            wrong = [(p, i) for p, i in with_pid if not (i and i["alive"] and i["inAgentTree"])]
            comms = sorted({(i or {}).get("comm") or "?" for _, i in with_pid})
            self.ok("pid is the live agent", not wrong,
                    f"pids={sorted({p for p, _ in with_pid})} comm={comms}"
                    + (f" bad={wrong[:2]}" if wrong else ""))
            gone = sorted(self.alive_after_exit)
            self.ok("pid gone after exit", not gone,
                    f"still alive: " + ", ".join(f"{p} ({self.alive_after_exit[p]})" for p in gone) if gone else "")

        before_exit = [c for c in changes if c[0] <= getattr(self, "agent_exit", time.time())]
        states = squash([c[2].get("state") if c[2] else "(removed)" for c in before_exit])
        self.info("states during run", " → ".join(states))
        if self.scenario == "print-tool":
            self.ok("waiting seen", "waiting" in states, "")
        if self.scenario.startswith("tui-"):
            self.ok("waiting while prompt open", self.tui_waiting_state == "waiting",
                    f"state then: {self.tui_waiting_state}")
            if self.agent.hold_prompt:
                late = getattr(self, "tui_waiting_state_late", None)
                self.ok(f"still waiting {self.agent.hold_prompt} s later", late == "waiting", f"state then: {late}")
            self.ok("idle after turn", getattr(self, "idle_state_after_turn", None) == "idle",
                    f"state 2 s after the answer: {getattr(self, 'idle_state_after_turn', None)}")
        else:
            last = [s for s in states if s != "(removed)"]
            self.ok("idle after turn", last and last[-1] == "idle", f"last state: {last[-1] if last else None}")
        if shared_server:
            terminals = [l for l in (c[2].get("locator") for c in written if isinstance(c[2], dict))
                         if l and (l.get("tty") or l.get("tmuxPane"))]
            self.ok("no terminal of the shared app server", not terminals, f"locators={terminals[:2]}")
        elif self.scenario.startswith("tui-"):
            self.check_locator(written)
        waiting = [c[2] for c in written if isinstance(c[2], dict) and c[2].get("state") == "waiting"]
        if waiting:
            self.info("waiting reason", waiting[0].get("reason"))
        final = self.final_files
        if not final:
            self.ok("session ended", True, "file removed")
        else:
            desc = "; ".join(f"{n}: state={c.get('state')} pid={c.get('pid')}" for n, c in final.items())
            # A record whose pid is gone drops out of the application's list; only a live-looking
            # leftover (no pid, or not idle) would linger there.
            ended = all(c.get("state") == "idle" and c.get("pid") not in self.alive_after_exit
                        and isinstance(c.get("pid"), int) for c in final.values())
            self.ok("session ended", ended, ("file left, pid gone: " if ended else "file left: ") + desc)

    def session_ids_from_transcripts(self):
        """Without the tracer: the ids that the agents put in their transcript file names."""
        ids = set()
        for path in self.home.rglob("*.jsonl"):
            ids.update(re.findall(r"[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}", str(path)))
        return ids

    def check_locator(self, written):
        pane = getattr(self, "pane", None)
        locators = [c[2].get("locator") for c in written if isinstance(c[2], dict)]
        last = next((l for l in reversed(locators) if l), None)
        if not pane or not last:
            self.ok("locator", False, f"locator={last} pane={pane}")
            return
        self.ok("locator", last.get("tty") == pane["tty"] and last.get("tmuxPane") == pane["id"],
                f"locator={last} pane={pane}")


def validate(doc):
    """Problems that would make the application skip the file."""
    if not isinstance(doc, dict) or "__unparsable__" in doc:
        return ["not a JSON object"]
    problems = []
    for key, kind in (("schemaVersion", int), ("tool", str), ("surface", str), ("sessionId", str),
                      ("state", str), ("cwd", str), ("title", str), ("startedAt", str), ("updatedAt", str)):
        if key not in doc or doc[key] is None or not isinstance(doc[key], kind) or isinstance(doc[key], bool):
            problems.append(f"{key} missing or not {kind.__name__}")
    for key in ("reason", "transcriptPath", "root"):
        if doc.get(key) is not None and not isinstance(doc[key], str):
            problems.append(f"{key} not a string")
    pid = doc.get("pid")
    if pid is not None and (not isinstance(pid, int) or isinstance(pid, bool) or not -2**31 <= pid < 2**31):
        problems.append("pid not a 32-bit integer")
    if isinstance(doc.get("state"), str) and doc["state"] not in STATES:
        problems.append(f"state {doc['state']!r}")
    for key in ("startedAt", "updatedAt"):
        if isinstance(doc.get(key), str) and not DATE_RE.match(doc[key]):
            problems.append(f"{key} {doc[key]!r} not an internet date-time without fractions")
    loc = doc.get("locator")
    if loc is not None:
        if not isinstance(loc, dict):
            problems.append("locator not an object")
        else:
            for k in ("termProgram", "tmuxPane", "itermSession", "weztermPane", "tty", "app"):
                if loc.get(k) is not None and not isinstance(loc[k], str):
                    problems.append(f"locator.{k} not a string")
    return problems


def session_ids(calls):
    ids = set()
    for e in calls:
        stdin = e.get("stdin")
        if isinstance(stdin, dict):
            for key in ("session_id", "sessionId", "conversationId"):
                if isinstance(stdin.get(key), str):
                    ids.add(stdin[key])
    return ids


def squash(states):
    out = []
    for s in states:
        if not out or out[-1] != s:
            out.append(s)
    return out


# ---- capture mode ----------------------------------------------------------------------------------

def neutral(value, run):
    """The payload with this machine's paths replaced by neutral ones."""
    text = json.dumps(value)
    for real, fake in ((str(run.work), NEUTRAL_WORK), (str(run.home), NEUTRAL_HOME),
                       (str(run.status), NEUTRAL_HOME + "/.agent-status"), (str(run.dir), "/tmp/agent-run"),
                       (str(MODULES), "/usr/lib/node_modules"), (str(HERE), "/opt/hooks")):
        text = text.replace(real, fake)
    for key in (API_KEY, "mock-api-key"):
        text = text.replace(key, "<redacted>")
    return json.loads(text)


def save_captures(run):
    out = HERE / "captured" / run.agent.name
    out.mkdir(parents=True, exist_ok=True)
    saved = []
    for e in run.events:
        if e["agent"] != run.agent.name:
            continue
        stdin = e.get("stdin")
        name = e["event"]
        # Variants that a writer treats differently get files of their own.
        variant = None
        if isinstance(stdin, dict):
            variant = stdin.get("notification_type")
            if name.lower() in ("sessionstart", "sessionend"):
                variant = stdin.get("reason") or stdin.get("source")
        if isinstance(variant, str) and variant:
            name += "-" + re.sub(r"[^A-Za-z0-9_]", "_", variant)
        if name in saved:
            continue
        saved.append(name)
        # Scenarios run text, tool, interactive: the interactive run's payload, the most realistic, stays.
        write_json(out / f"{name}.json", neutral(stdin, run))
    first = next((e for e in run.events if e["agent"] == run.agent.name), None)
    if first:
        chain = [{"comm": c["comm"], "cmd": c["cmd"].split(" ")[0].rsplit("/", 1)[-1]} for c in first["chain"]]
        context = {"argv": first["argv"], "env": neutral(first["env"], run), "stdinIsTty": first["stdinIsTty"],
                   "processChain": chain[:3],
                   "agentEnvNames": sorted(n for n in first["envNames"]
                                           if re.match(r"(CLAUDE|CODEX|COPILOT|GEMINI|GITHUB)", n))}
    sequence = [e["event"] + (f"({e['stdin'].get('notification_type')})"
                              if isinstance(e.get("stdin"), dict) and e["stdin"].get("notification_type") else "")
                for e in run.events if e["agent"] == run.agent.name]
    if first:
        context["sequence"] = sequence
        write_json(out / f"_run-{run.scenario}.json", context)
    return saved, sequence


# ---- main ------------------------------------------------------------------------------------------

def assert_offline():
    s = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
    s.settimeout(2)
    try:
        s.connect(("192.0.2.1", 80))   # TEST-NET-1: unroutable by design
    except OSError:
        return
    finally:
        s.close()
    sys.exit("harness: the network is reachable; run through run-real-agents.sh (unshare -n)")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("agents", nargs="*", default=list(AGENTS))
    parser.add_argument("--mode", choices=["tovrin", "capture"], default="tovrin")
    parser.add_argument("--scenario", action="append", help="run only these scenarios")
    parser.add_argument("--out", help="folder for run artefacts")
    parser.add_argument("--trace", action="store_true",
                        help="log every writer call (argv, payload); slows each hook by a few tens of ms")
    args = parser.parse_args()
    if args.trace:
        os.environ["TOVRIN_TRACE"] = "1"
    assert_offline()
    unknown = [a for a in args.agents if a not in AGENTS]
    if unknown:
        sys.exit(f"unknown agent(s): {unknown}; known: {list(AGENTS)}")
    if args.mode == "tovrin":
        missing = [p for p in [ADAPTERS / "agent-status.sh"]
                   + [ADAPTERS / "configs" / f"{AGENTS[a].template}.json" for a in args.agents]
                   if not p.exists()]
        if missing:
            sys.exit("harness: missing product files: " + ", ".join(map(str, missing)))
    root = Path(args.out or PREFIX / "runs" / datetime.now().strftime("%Y%m%d-%H%M%S")).resolve()
    root.mkdir(parents=True, exist_ok=True)
    mock = MockServer(root / "mock.jsonl")
    failures = 0
    summary = []
    started = time.time()
    try:
        for name in args.agents:
            agent = AGENTS[name]
            print(f"== {name} {agent.version()} ==", flush=True)
            for scenario in agent.scenarios_for(args.mode):
                if args.scenario and scenario not in args.scenario:
                    continue
                run = Run(agent, scenario, args.mode, root, mock.port)
                run.run()
                print(f"-- {name} {scenario}: {run.duration:.1f} s" + (f", exit {run.exit_code}" if run.exit_code is not None else "")
                      + "".join(f"\n   note: {n}" for n in run.notes), flush=True)
                if args.mode == "capture":
                    saved, sequence = save_captures(run)
                    print("   events: " + " → ".join(sequence))
                    summary.append((name, scenario, None, f"{len(saved)} payload(s)"))
                    continue
                for check, passed, detail in run.checks:
                    mark = {True: "PASS", False: "FAIL", None: "info"}[passed]
                    print(f"   {mark}  {check}" + (f": {detail}" if detail else ""))
                    failures += passed is False
                    if passed is not None:
                        summary.append((name, scenario, passed, check))
                for fname, content in run.final_files.items():
                    print(f"   final {fname}: {json.dumps(content)}")
                last_written = [c for c in run.watcher.changes if c[2] is not None]
                if last_written:
                    print(f"   last write: {last_written[-1][3].strip()}")
    finally:
        mock.stop()
    total = time.time() - started
    print(f"\nartefacts: {root}")
    if args.mode == "tovrin":
        passed = sum(1 for s in summary if s[2])
        print(f"took {total:.0f} s")
        print(f"{passed} passed, {failures} failed")
    else:
        print(f"captured into {HERE / 'captured'}  ({total:.0f} s)")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
