"""A private desktop for end-to-end tests of the tray application, read over the accessibility bus.

    with DesktopSession(sys.argv[1]) as desktop:        # the path of the built `tovrin`
        desktop.write_session("w1", "waiting", seconds_ago=120)
        app = desktop.launch("--show=sessions")           # tovrin-desktop, found beside `tovrin`
        row = desktop.wait_for(app, "list item", name_prefix="Session w1, ")
        desktop.press(desktop.wait_for(app, "push button", "About"))

Everything runs on its own session bus, accessibility bus, X server (Xvfb) and window manager
(openbox), with HOME, the XDG folders and the status folder in a temporary folder, so nothing of the
machine's desktop is touched. A missing tool ends the script with SKIPPED (77).
"""

import datetime
import importlib.util
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
AT_SPI_BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


class Failure(Exception):
    pass


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(SKIPPED)


# A session bus that starts nothing on demand, so that no keyring, notification or portal daemon of
# the machine comes up for the test and outlives it.
BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={folder}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def _require_tools():
    for tool in ("Xvfb", "openbox", "dbus-daemon", "dbus-send", "xprop", "xdotool"):
        if not shutil.which(tool):
            skip(f"{tool} not found")
    if not os.access(AT_SPI_BUS_LAUNCHER, os.X_OK):
        skip("at-spi-bus-launcher not found")
    # Only looked for: imported, it would settle on a bus before ours is up.
    if importlib.util.find_spec("pyatspi") is None:
        skip("python3-pyatspi not found")


def _iso(moment):
    return moment.strftime("%Y-%m-%dT%H:%M:%SZ")


class DesktopSession:
    def __init__(self, tovrin, timeout=20):
        _require_tools()
        self.tovrin = os.path.abspath(tovrin)
        prefix = os.path.dirname(os.path.dirname(self.tovrin))
        self.desktop_executable = os.path.join(prefix, "libexec", "tovrin", "tovrin-desktop")
        self.timeout = timeout
        self._processes = []
        self._apps = []
        self._logs = []
        self._quiet = None

    # --- set-up and tear-down -------------------------------------------------------------------

    def __enter__(self):
        self.home = tempfile.mkdtemp(prefix="tovrin-a11y-")
        env = {
            "HOME": self.home,
            "XDG_CONFIG_HOME": f"{self.home}/.config",
            "XDG_DATA_HOME": f"{self.home}/.local/share",
            "XDG_CACHE_HOME": f"{self.home}/.cache",
            "XDG_STATE_HOME": f"{self.home}/.local/state",
            "XDG_RUNTIME_DIR": f"{self.home}/run",
            "AGENT_STATUS_DIR": f"{self.home}/status",
        }
        for folder in env.values():
            os.makedirs(folder, mode=0o700, exist_ok=True)
        # What the helpers say goes here, out of the test's output.
        self._quiet = open(os.path.join(self.home, "desktop.log"), "w")
        os.environ.update(env)
        # Our own bus, display and accessibility bus only.
        for name in ("AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY", "SESSION_MANAGER"):
            os.environ.pop(name, None)
        try:
            self._start_session_bus()
            self._start_display()
            self._start_window_manager()
            self._start(AT_SPI_BUS_LAUNCHER, "--launch-immediately")
            self.poll(lambda: self._bus_has("org.a11y.Bus"), "the accessibility bus")
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._apps + self._processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(timeout=5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        for log in self._logs + [self._quiet]:
            if log:
                log.close()
        shutil.rmtree(self.home, ignore_errors=True)
        return False

    def _start(self, *command, **options):
        options.setdefault("stdout", self._quiet)
        options.setdefault("stderr", self._quiet)
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, **options)
        self._processes.append(process)
        return process

    def _start_session_bus(self):
        config = os.path.join(self.home, "bus.conf")
        with open(config, "w") as out:
            out.write(BUS_CONFIG.format(folder=os.environ["XDG_RUNTIME_DIR"]))
        bus = self._start("dbus-daemon", f"--config-file={config}", "--nofork", "--print-address=1",
                          stdout=subprocess.PIPE, text=True)
        address = bus.stdout.readline().strip()
        if not address:
            raise Failure("the private session bus did not start")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = address

    def _start_display(self):
        read_end, write_end = os.pipe()
        self._start("Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24", "-nolisten", "tcp",
                    pass_fds=(write_end,))
        os.close(write_end)
        with os.fdopen(read_end) as reply:
            number = reply.readline().strip()
        if not number:
            raise Failure("Xvfb did not start")
        os.environ["DISPLAY"] = f":{number}"

    def _start_window_manager(self):
        openbox = self._start("openbox", "--sm-disable")

        def managing():
            if openbox.poll() is not None:
                raise Failure("openbox ended at start")
            root = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, text=True)
            return "window id" in root.stdout
        self.poll(managing, "openbox to manage the display")

    @staticmethod
    def _bus_has(name):
        # Asked without starting anything: at-spi-bus-launcher takes the name itself.
        reply = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                "org.freedesktop.DBus.NameHasOwner", f"string:{name}"], capture_output=True, text=True)
        return "boolean true" in reply.stdout

    # --- the application ------------------------------------------------------------------------

    def write_session(self, session_id, state, tool="claude-code", seconds_ago=0, **fields):
        """A status file as the agents' writer leaves it; its pid is ours, so it stays alive."""
        updated = datetime.datetime.now(datetime.timezone.utc) - datetime.timedelta(seconds=seconds_ago)
        record = {
            "schemaVersion": 1, "tool": tool, "surface": "cli", "sessionId": session_id, "pid": os.getpid(),
            "state": state, "cwd": f"{self.home}/projects/{session_id}", "title": f"Session {session_id}",
            "startedAt": _iso(updated - datetime.timedelta(minutes=10)), "updatedAt": _iso(updated),
        }
        record.update(fields)
        path = os.path.join(os.environ["AGENT_STATUS_DIR"], f"{tool}__{session_id}.json")
        with open(path, "w") as out:
            json.dump(record, out)

    def launch(self, *arguments):
        """Starts the tray application with its accessibility on; returns its AT-SPI application."""
        if not os.access(self.desktop_executable, os.X_OK):
            raise Failure(f"no tray application at {self.desktop_executable}")
        environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
        log = open(os.path.join(self.home, "tovrin-desktop.log"), "w")
        self._logs.append(log)
        process = subprocess.Popen([self.desktop_executable, *arguments], env=environment, stdin=subprocess.DEVNULL,
                                   stdout=log, stderr=subprocess.STDOUT)
        self._apps.append(process)
        import pyatspi

        def registered():
            if process.poll() is not None:
                raise Failure(f"the tray application ended with {process.returncode}:\n{self.log()}")
            desktop = pyatspi.Registry.getDesktop(0)
            for index in range(desktop.childCount):
                app = desktop.getChildAtIndex(index)
                if app is not None and app.get_process_id() == process.pid:
                    return app
            return None
        return self.poll(registered, "the tray application on the accessibility bus")

    def defaults(self):
        """The settings the application keeps, as it last wrote them; empty before it wrote any."""
        try:
            with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "tovrin", "defaults.json")) as text:
                return json.load(text)
        except (OSError, ValueError):
            return {}

    def log(self):
        try:
            with open(os.path.join(self.home, "tovrin-desktop.log")) as text:
                return text.read()
        except OSError:
            return "(not started)"

    # --- reading and acting over AT-SPI ---------------------------------------------------------

    def poll(self, probe, what, timeout=None):
        """Asks `probe` until it answers something true, and returns that; `what` (or what it
        returns, if callable) says what was awaited when time runs out."""
        deadline = time.monotonic() + (timeout or self.timeout)
        while True:
            found = probe()
            if found:
                return found
            if time.monotonic() > deadline:
                raise Failure(f"timed out waiting for {what() if callable(what) else what}")
            time.sleep(0.2)

    @staticmethod
    def find(root, role, name=None, name_prefix=None, showing=True):
        """The first node under `root` of that role (as pyatspi spells it, e.g. "push button") and name."""
        import pyatspi

        def matches(node):
            if node is None or node.getRoleName() != role:
                return False
            if name is not None and node.name != name:
                return False
            if name_prefix is not None and not node.name.startswith(name_prefix):
                return False
            return not showing or node.getState().contains(pyatspi.STATE_SHOWING)
        return pyatspi.findDescendant(root, matches)

    def wait_for(self, root, role, name=None, name_prefix=None):
        return self.poll(lambda: self.find(root, role, name, name_prefix),
                         lambda: f'{role} "{name or name_prefix}" in\n{self.outline(root)}')

    def wait_until_gone(self, root, role, name):
        self.poll(lambda: self.find(root, role, name) is None, f'{role} "{name}" to go')

    @staticmethod
    def press(node, action="press"):
        actions = node.queryAction()
        names = [actions.getName(index).lower() for index in range(actions.nActions)]
        if action not in names:
            raise Failure(f'"{node.name}" offers no {action}, only {names}')
        actions.doAction(names.index(action))

    @staticmethod
    def has_state(node, state):
        """Whether `node` is, say, "focused" or "checked" now."""
        import pyatspi
        return node.getState().contains(getattr(pyatspi, f"STATE_{state.upper()}"))

    @staticmethod
    def key(name):
        """A key typed on the X server, to whichever window has the focus."""
        subprocess.run(["xdotool", "key", name], check=True)

    @staticmethod
    def outline(root, depth=0):
        """The tree under `root` as indented "role: name" lines, for failure messages."""
        if root is None:
            return ""
        lines = [f'{"  " * depth}{root.getRoleName()}: {root.name}']
        for index in range(root.childCount):
            lines.append(DesktopSession.outline(root.getChildAtIndex(index), depth + 1))
        return "\n".join(line for line in lines if line)


def run(test):
    """Runs `test(desktop)` in a fresh desktop session; prints and exits as CTest expects."""
    if len(sys.argv) != 2:
        print(f"usage: {sys.argv[0]} <path of the built tovrin>")
        sys.exit(2)
    try:
        with DesktopSession(sys.argv[1]) as desktop:
            try:
                test(desktop)
            except Exception:
                print(f"--- tray application output ---\n{desktop.log()}")
                raise
    except Exception as failure:
        print(f"FAIL: {failure}")
        sys.exit(1)
    print("ok")
